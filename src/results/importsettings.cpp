#include "results/importparts.h"

#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/notes.h"
#include "sim/coupling.h"
#include "sim/solver.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace results {

namespace {

namespace typ = sim::typ;

// Lines of .typ that a block gives as it stands.
struct Setting {
    int line;
    std::string_view keyword;
    std::string_view older = {}; // of streams that have one block for all processes
};
constexpr Setting settings[] = {
    {typ::OMF, "OMF", "OM"},
    {typ::OMT, "OMT", "OM"},
    {typ::OMS, "OMS", "OM"},
    {typ::APARF, "APARF", "APAR"},
    {typ::APART, "APART", "APAR"},
    {typ::APARS, "APARS", "APAR"},
    {typ::ERRF, "ERRF", "ERR"},
    {typ::ERRT, "ERRT", "ERR"},
    {typ::ERRS, "ERRS", "ERR"},
    {typ::MXIT, "MXIT"},
    {typ::HPF, "HPF"},
    {typ::COMPM, "COMPM"},
    {typ::RHOF, "RHOF"},
    {typ::basal_heat_flow, "QBASAL"},
};

// Limits of convergence of a stream that has none.
constexpr std::pair<int, const char*> imported_limits[] = {
    {typ::ERRF, "1.0E-04"}, {typ::ERRT, "1.0E-02"}, {typ::ERRS, "1.0E-06"}};

constexpr const char* no_density_of_reference = "998.0";

// Letters of the coupling and the heat capacity of the rock, as the dialog stores them.
std::string coupling_line(ImportedStream& stream) {
    std::string letters = stream.text("KOPLNG").substr(0, 4);
    letters.resize(4, '-');
    std::array<std::string, 4> pieces{"800.0", "1.8", "-0.0025", "2400"};
    if (letters[3] == 'P') {
        constexpr std::string_view coefficients[] = {"CMA1", "CMA2", "CMA3"};
        for (std::size_t i = 0; i < std::size(coefficients); ++i) {
            if (stream.has(coefficients[i])) {
                pieces[i] = stream.text(coefficients[i]);
            }
        }
    }
    for (const std::string& piece : pieces) {
        letters += " # " + piece;
    }
    return letters;
}

// Twelve switches and one letter. A shorter line ends with the letter already.
std::string output_line(ImportedStream& stream) {
    const std::string switches = stream.line("IPUTDI"), letter = stream.text("LINFO");
    const bool whole = switches.size() < 12 && switches.ends_with(letter);
    return whole ? switches : switches + letter;
}

void set_typ_lines(ImportedStream& stream, sim::TypFile& file) {
    for (const auto& [line, limit] : imported_limits) {
        file.set_line(line, limit);
    }
    for (const Setting& setting : settings) {
        const auto keyword = stream.has(setting.keyword) ? setting.keyword : setting.older;
        if (stream.has(keyword)) {
            file.set_line(setting.line, stream.text(keyword));
        }
    }
    if (stream.has("KOPLNG")) {
        file.set_line(typ::KOPLNG, coupling_line(stream));
    }
    if (stream.has("IPUTDI")) {
        file.set_line(typ::IPUTDI, output_line(stream));
    }
}

void set_solvers(ModelImport& import) {
    constexpr int none_yet = 48; // no solver with preconditioner 3
    core::ModelFlags& flags = import.project.flags;
    flags.set(8, 4, import.stream.integer("CONTROLF", none_yet));
    flags.set(8, 5, import.stream.integer("CONTROLT", none_yet));
    flags.set(8, 6, import.stream.integer("CONTROLS", none_yet));
    switch (sim::chosen_solver(flags)) {
    case sim::Solver::NAG:
        flags.mark_defined(9, 3);
        break;
    case sim::Solver::BiCGStab:
        flags.mark_defined(8, 3);
        break;
    case sim::Solver::PLU:
        flags.mark_defined(7, 3);
        break;
    case sim::Solver::none:
        break;
    }
}

// Properties of the water that are kept constant.
void set_water(ModelImport& import, core::Notes& notes) {
    std::istringstream switches(import.stream.text("KOPPX_FLAG"));
    std::istringstream values(import.stream.text("KOPPX_FIELD"));
    std::string text;
    for (std::size_t i = 0; i < sim::water_properties.size(); ++i) {
        if (switches >> text) {
            import.project.flags.set(10, static_cast<int>(i), base::leading_int32(text));
        }
        if (values >> text && text != sim::water_properties[i].initial) {
            notes.set("koppx", sim::water_properties[i].name, "\t" + text);
        }
    }
}

struct PicardBlock {
    const char* keyword;
    const char* key;
    const char* initial; // the line of a model that never set the iteration
};
constexpr std::string_view no_limit = "TransLimit"; // where it is 0
constexpr PicardBlock picard_blocks[] = {
    {"PICARD", "Active", "1"},
    {"CHI", "Chi", " 0.5"},
    {"MAXPICARDIT", "Iteration", "5"},
    {"ABSPICARDF", "FlowLimit", " 0.001"},
    {"ABSPICARDT", "HeatLimit", " 0.001"},
    {"ABSPICARDS", "TransLimit", "0"},
};

// Nothing is noted where the simulator got its own settings.
void set_iteration(ImportedStream& stream, core::Notes& notes) {
    const bool stored = std::ranges::any_of(picard_blocks, [&](const PicardBlock& block) {
        return stream.has(block.keyword) && stream.line(block.keyword) != block.initial;
    });
    if (!stored) {
        return;
    }
    for (const PicardBlock& block : picard_blocks) {
        const std::string line =
            stream.has(block.keyword) ? stream.line(block.keyword) : block.initial;
        const double value = base::leading_number(line);
        if (value != 0 || block.key != no_limit) {
            notes.set("PICARD", block.key, base::value_text(value));
        }
    }
}

} // namespace

bool Set_ppMenu(ModelImport& import) {
    ImportedStream& stream = import.stream;
    core::ModelFlags& flags = import.project.flags;
    std::string KEY = stream.has("KEY") ? stream.text("KEY") : "";
    KEY.resize(5, '-');
    flags.set(9, 4, KEY[0] == 'F' ? 1 : 0);
    flags.set(9, 5, KEY[1] != '-' ? 1 : 0);
    flags.set(9, 6, KEY[2] != '-' ? 1 : 0);
    flags.set(3, 1, KEY[3] == 'P' ? 1 : 0);
    if (KEY[3] == 'R') {
        flags.mark_defined(1, 1);
    }
    flags.set(10, 5, stream.has("ICE") || stream.has("TSOL") || stream.has("TLIQ") ? 1 : 0);
    flags.mark_defined(9, 0);
    flags.mark_defined(9, 1);
    flags.mark_defined(9, 2);
    const bool transient = stream.text("STAT") == "INST";
    import.project.set_integer("OPTIONS", "SIMULATION_MODE", transient ? 2 : 1);
    if (stream.has("TITLE")) {
        import.project.set_title(stream.line("TITLE"));
    }
    return KEY[4] == '-' && stream.integer("ANZCHEM", 0) <= 0;
}

void Create_Typ(ModelImport& import) {
    sim::TypFile file;
    set_typ_lines(import.stream, file);
    std::string KEY = import.stream.has("KEY") ? import.stream.text("KEY") : "";
    KEY.resize(5, '-');
    KEY[3] = KEY[3] == 'R' ? '-' : KEY[3];
    KEY[4] = '-'; // chemistry stays off
    file.set_line(typ::KEY, KEY);
    file.save(import.files);
    if (file.line(typ::RHOF) != no_density_of_reference) {
        import.project.flags.mark_defined(1, 5);
    }
    set_solvers(import);
    core::Notes notes(import.files);
    set_water(import, notes);
    set_iteration(import.stream, notes);
    notes.save(import.files);
}

} // namespace results
