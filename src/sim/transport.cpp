#include "sim/transport.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"

#include <algorithm>
#include <limits>

#include <fmt/format.h>

namespace sim {

namespace {

using Path = std::filesystem::path;

constexpr const char* tracer_items[] = {"tracer number", "active mark", "concentration", "BetaC"};
constexpr std::size_t item_count = std::size(tracer_items);

std::array<double, item_count> read_items(std::string_view line, std::size_t number,
                                          const Path& file) {
    base::NumberReader reader(line, file);
    std::array<double, item_count> items{};
    for (std::size_t i = 0; i < item_count; ++i) {
        const std::optional<double> item = reader.next_if();
        if (!item)
            throw base::FileFailure(fmt::format("line {} ends behind item {}, where the {} was "
                                                "expected",
                                                number, i, tracer_items[i]),
                                    file);
        items[i] = *item;
    }
    return items;
}

float to_single(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    return float(std::clamp(value, -largest, largest));
}

void read_tracer(std::string_view line, std::size_t number, const Path& file, TracerTable& table) {
    const auto items = read_items(line, number, file);
    if (!(items[0] >= 1 && items[0] <= TracerTable::row_count))
        throw base::FileFailure(
            fmt::format("line {} begins with {}, where a tracer number from 1 to {} was expected",
                        number, base::value_text(items[0]), TracerTable::row_count),
            file);
    Tracer& tracer = table.rows[std::size_t(items[0]) - 1];
    tracer.active = items[1] == -1;
    tracer.concentration = to_single(items[2]);
    tracer.betac = to_single(items[3]);
}

constexpr const char* dispersion_items[] = {"diffusion coefficient", "transverse dispersivity",
                                            "longitudinal dispersivity"};

// What a reader takes of a typed text: up to its first comma.
std::string_view number_part(std::string_view text) {
    return base::trimmed(text.substr(0, text.find_first_of(",\r\n")));
}

} // namespace

TracerTable TracerTable::read(std::string_view bytes, const Path& file) {
    TracerTable table;
    int read_lines = 0;
    std::size_t number = 0;
    for (const std::string_view line : base::split_lines(bytes)) {
        ++number;
        if (base::trimmed(line).empty() || read_lines == row_count)
            continue;
        read_tracer(line, number, file, table);
        ++read_lines;
    }
    return table;
}

std::string TracerTable::bytes() const {
    std::vector<std::string> lines;
    for (int number = 1; const Tracer& tracer : rows) {
        lines.push_back(base::PrintLine()
                            .add(base::printed(number++))
                            .zone()
                            .add(base::printed(tracer.active ? -1 : 0))
                            .zone()
                            .add(base::printed(tracer.concentration))
                            .zone()
                            .add(base::printed(tracer.betac))
                            .text());
    }
    return base::to_text_file(lines);
}

TracerTable TracerTable::load(const core::ModelFiles& files) {
    const auto bytes = files.read_if(".ttc");
    return bytes ? read(*bytes, files.name_of(".ttc")) : TracerTable();
}

void TracerTable::save(core::ModelFiles& files) const {
    files.write(".ttc", bytes());
}

int TracerTable::ActiveTracers() const {
    return int(std::ranges::count_if(rows, &Tracer::active));
}

Dispersion Dispersion::read(std::string_view bytes, const Path& file) {
    std::string_view rest = bytes.substr(0, bytes.find('\n'));
    Dispersion result;
    std::string* const texts[] = {&result.diffusion, &result.transverse, &result.longitudinal};
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        const std::size_t comma = rest.find(',');
        *texts[i] = base::to_utf8(base::trimmed(rest.substr(0, comma)));
        if (comma == std::string_view::npos && i + 1 < std::size(texts))
            throw base::FileFailure(fmt::format("line 1 ends behind value {}, where the {} was "
                                                "expected",
                                                i + 1, dispersion_items[i + 1]),
                                    file);
        rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
    }
    return result;
}

std::string Dispersion::bytes() const {
    return base::to_text_file({fmt::format("{},{},{}", number_part(diffusion),
                                           number_part(transverse), number_part(longitudinal))});
}

Dispersion Dispersion::load(const core::ModelFiles& files) {
    const auto bytes = files.read_if(".tma");
    return bytes ? read(*bytes, files.name_of(".tma")) : Dispersion();
}

void Dispersion::save(core::ModelFiles& files) const {
    files.write(".tma", bytes());
}

} // namespace sim
