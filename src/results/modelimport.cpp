#include "results/modelimport.h"

#include "results/importparts.h"

#include "base/interaction.h"
#include "core/modelfiles.h"
#include "core/project.h"

#include <fmt/format.h>

#include <limits>
#include <utility>

#include <unistd.h>

namespace results {

namespace {

constexpr std::string_view keywords[] = {
    "TITLE",      "IPUTDI",   "LINFO",    "I0",     "J0",          "K0",         "IDIM",
    "JDIM",       "KDIM",     "KEY",      "STAT",   "KOPLNG",      "KOPPX_FLAG", "KOPPX_FIELD",
    "MXIT",       "NPER",     "PICARD",   "CHI",    "MAXPICARDIT", "ABSPICARDF", "ABSPICARDT",
    "ABSPICARDS", "RHOF",     "TOPF",     "BASEF",  "SEITEF",      "NFREE",      "KFREE",
    "COMPM",      "COMP3D",   "ERRF",     "ERRT",   "ERRS",        "OM",         "OMF",
    "OMT",        "OMS",      "APAR",     "APARF",  "APART",       "APARS",      "ERR",
    "CONTROLF",   "CONTROLT", "CONTROLS", "TOPT",   "BASET",       "SEITET",     "CMA1",
    "CMA2",       "CMA3",     "HPF",      "QTOP3D", "QBASAL3D",    "QBASAL",     "TOPS",
    "BASES",      "SEITES",   "MDIFS1",   "DIFTS1", "DIFLS1",      "BOX",        "ANZSUBS",
    "BETAC",      "ANZCHEM",  "DELTATMP", "TMAXAR", "DELTAR",      "TCON",       "SCON",
    "IWL",        "WELLAR",   "PMONIX",   "PMONIY", "PMONIZ",      "PMONIFR",    "DELX",
    "DELY",       "DELZ",     "GEOLOGY",  "PRES",   "POR",         "ICE",        "TSOL",
    "TLIQ",       "PERM",     "PHI",      "VX",     "VY",          "VZ",         "QRE",
    "QRELR",      "QREVH",    "ANISOI",   "ANISOJ", "TEMP",        "RHOCM",      "WLFM0",
    "WLFMO",      "WLXANI",   "WLYANI",   "XANG",   "YANG",        "HPR",
};

constexpr int most_layers = 80; // or cross-sections

base::Refusal refusal(const char* text) {
    return {import_title, text, base::Icon::warning};
}

// An axis of a result file, or of an input file.
int extent(ImportedStream& stream, std::string_view result_key, std::string_view input_key) {
    const std::string_view key = stream.has(result_key) ? result_key : input_key;
    if (!stream.has(key)) {
        return 0;
    }
    const int count = stream.integer(key, 0);
    if (count < 1 || count > std::numeric_limits<std::int16_t>::max()) {
        stream.fail(fmt::format("# {} is {}, where 1 to {} was expected", key, count,
                                std::numeric_limits<std::int16_t>::max()));
    }
    return count;
}

// Two fields of a grid must fit into the machine, however few bytes the stream tells them with.
void require_memory(ImportedStream& stream, std::uint64_t cells) {
    const std::uint64_t needed = 2 * cells * sizeof(float);
    const std::uint64_t there = static_cast<std::uint64_t>(::sysconf(_SC_PHYS_PAGES)) *
                                static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    if (needed > there) {
        stream.fail(fmt::format("the grid of {} cells needs {} bytes of memory, where the machine "
                                "has {}",
                                cells, needed, there));
    }
}

// Extents and orientation into the project.
std::optional<base::Refusal> set_extents(ImportedStream& stream, int GridOrientation,
                                         core::Project& project) {
    const int I0 = extent(stream, "I0", "IDIM");
    const int J0 = extent(stream, "J0", "JDIM");
    const int K0 = extent(stream, "K0", "KDIM");
    if (I0 == 0 || J0 == 0 || K0 == 0) {
        return refusal("Problems occured during model import!");
    }
    const bool horizontal = GridOrientation == core::horizontal;
    const int NY = horizontal ? J0 : K0, NZ = horizontal ? K0 : J0;
    if (NZ > most_layers) {
        return refusal("Not more than 80 layers or cross sections possible in TD!");
    }
    constexpr std::int64_t most_cells = std::numeric_limits<std::int32_t>::max();
    if (std::int64_t{I0} * J0 * K0 > most_cells) {
        stream.fail(
            fmt::format("the grid of {} x {} x {} cells has more than {}", I0, J0, K0, most_cells));
    }
    require_memory(stream, StreamGrid{I0, J0, K0}.cells());
    project.set_integer("DIMENSION", "NX", I0);
    project.set_integer("DIMENSION", "NY", NY);
    project.set_integer("DIMENSION", "NZ", NZ);
    project.flags.set(1, 4, GridOrientation);
    return std::nullopt;
}

// Whether a field is read individually; nothing when the question is not answered.
std::optional<bool> individual(const std::optional<bool>& choice, const char* keyword,
                               std::string_view name, ImportedStream& stream,
                               base::Interaction& user) {
    if (choice || !stream.has(keyword)) {
        return choice.value_or(true);
    }
    const std::string text = fmt::format("Do you want {} to be read as individual data?\n"
                                         "(otherwise it will be be defined via Property Zones)\n"
                                         "Press 'Yes' for individual or 'No' for Property Zones.",
                                         name);
    switch (user.ask(fmt::format("Import {} Data", name), text, base::Buttons::yes_no)) {
    case base::Answer::yes:
        return true;
    case base::Answer::no:
        return false;
    default:
        return std::nullopt;
    }
}

std::optional<RockChoice> rock_choice(const ImportChoices& choices, ImportedStream& stream,
                                      base::Interaction& user) {
    const auto porosity = individual(choices.individual_porosity, "POR", "Porosity", stream, user);
    if (!porosity) {
        return std::nullopt;
    }
    const auto permeability =
        individual(choices.individual_permeability, "PERM", "Permeability", stream, user);
    if (!permeability) {
        return std::nullopt;
    }
    return RockChoice{*porosity, *permeability};
}

// Fixed concentrations are marked at the pressure, whose values no array holds.
void save_transport_boundary(ModelImport& import) {
    std::vector<bool> fixed;
    if (import.stream.has("PRES")) {
        fixed = marked_cells(import.stream.field("PRES", import.extents, import.user));
    }
    save_boundary(import, Marks::transport, fixed);
}

} // namespace

ImportedModel Import_Model(const std::filesystem::path& source, const ImportChoices& choices,
                           core::Project& project, core::ModelFiles& files,
                           base::Interaction& user) {
    user.status("Checking source file, please wait ...");
    ImportedStream stream(source, keywords, user);
    ImportedModel result;
    result.refusal = set_extents(stream, choices.GridOrientation, project);
    if (result.refusal) {
        return result;
    }
    const auto rock = rock_choice(choices, stream, user);
    if (!rock) {
        result.answered = false;
        return result;
    }
    user.status("Importing project, please wait ...");
    ModelImport import(stream, project, files, user);
    result.complete = Set_ppMenu(import);
    Set_Grid(import);
    Create_Typ(import);
    Create_Trn(import);
    Create_Tracer(import);
    Create_Tma(import);
    Create_Box(import);
    Create_Geological_Structure(import, *rock);
    save_transport_boundary(import);
    save_fields(import);
    save_recharge(import);
    Save_Wells(import);
    Create_Monitors(import);
    project.flags.mark_edited();
    return result;
}

} // namespace results
