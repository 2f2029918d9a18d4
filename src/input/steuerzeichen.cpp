#include "input/steuerzeichen.h"

#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelflags.h"
#include "sim/typfile.h"

#include <algorithm>
#include <array>

namespace input {

namespace typ = sim::typ;

namespace {

constexpr std::size_t KOPLNG_size = 4;
constexpr std::size_t IPUTDI_size = 12;

std::string simulation_key(std::string key, const core::ModelFlags& flags) {
    constexpr std::size_t flow_field = 3;
    if (flags.is_defined(1, 1) && key.size() > flow_field && key[flow_field] == '-') {
        key[flow_field] = 'R';
    }
    return key;
}

std::string coupling(std::string_view line, const core::ModelFlags& flags) {
    std::string letters(line.substr(0, KOPLNG_size));
    letters.resize(KOPLNG_size, '-');
    if (flags.HeatActive() != 1) {
        letters[0] = letters[0] == 'C' ? '-' : letters[0];
        letters[3] = letters[3] == 'P' ? '-' : letters[3];
    }
    if (flags.FlowActive() != 1) {
        letters.replace(0, 3, "---");
    }
    if (flags.TransportActive() != 1) {
        letters[1] = '-';
    }
    if (flags.ChemistryMode() == 0) {
        letters[2] = '-';
    }
    return letters;
}

// The pieces behind each "#" of the coupling line, from two characters behind it to the next one.
void take_rock_capacity(std::string_view line, TervexSteuerzeichen& texts) {
    const std::array<std::string*, 4> pieces{&texts.A0, &texts.A1, &texts.A2, &texts.rock_density};
    std::size_t mark = line.find('#');
    if (mark == std::string_view::npos || mark + 1 == line.size()) {
        return;
    }
    for (std::string* piece : pieces) {
        if (mark == std::string_view::npos) {
            return;
        }
        const std::size_t begin = std::min(mark + 2, line.size());
        const std::size_t next = line.find('#', mark + 1);
        const std::size_t end = std::max(begin, std::min(next, line.size()));
        *piece = base::trimmed(line.substr(begin, end - begin));
        mark = next;
    }
}

std::string weighting(std::string text) {
    return text == "1" || text == "0" ? text + ".0" : text;
}

// The simulator reads a number without a point in another way.
std::string pointed(std::string text) {
    if (text.find('.') != std::string::npos) {
        return text;
    }
    return text.find('E') == std::string::npos ? text + ".0" : base::with_point(text);
}

std::string pointed_any_case(std::string text) {
    if (text.find('.') == std::string::npos) {
        std::ranges::replace(text, 'e', 'E');
    }
    return pointed(std::move(text));
}

} // namespace

std::string first_piece(std::string_view line) {
    std::string_view piece = base::trimmed(line.substr(0, line.find(',')));
    if (piece.size() >= 2 && piece.front() == '"' && piece.back() == '"') {
        piece = piece.substr(1, piece.size() - 2);
    }
    return std::string(piece);
}

TervexSteuerzeichen::TervexSteuerzeichen(const sim::TypFile& file, const core::ModelFlags& flags) {
    const auto line = [&file](int number) { return first_piece(file.line(number)); };
    KEY = simulation_key(line(typ::KEY), flags);
    KOPLNG = coupling(line(typ::KOPLNG), flags);
    take_rock_capacity(line(typ::KOPLNG), *this);
    IPUTDI = line(typ::IPUTDI).substr(0, IPUTDI_size);
    const std::string output = line(typ::IPUTDI);
    LINFO = output.substr(output.size() - std::min<std::size_t>(1, output.size()));
    OMF = weighting(line(typ::OMF));
    OMT = weighting(line(typ::OMT));
    OMS = weighting(line(typ::OMS));
    APARF = pointed(line(typ::APARF));
    APART = pointed(line(typ::APART));
    APARS = pointed(line(typ::APARS));
    ERRF = pointed(line(typ::ERRF));
    ERRT = pointed(line(typ::ERRT));
    ERRS = pointed(line(typ::ERRS));
    MXIT = line(typ::MXIT);
    basal_heat_flow = pointed_any_case(line(typ::basal_heat_flow));
    HPF = pointed_any_case(line(typ::HPF));
    COMPM = line(typ::COMPM);
    RHOF = line(typ::RHOF);
}

} // namespace input
