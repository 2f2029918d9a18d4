// What minitervex refuses to compute, and what it computes in another way than asked.

#include "minitervex/modelreader.h"

#include "base/failure.h"
#include "base/numbertext.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace minitervex {

namespace {

// Every block that this program reads or may pass over without a difference in the result.
constexpr std::string_view known[] = {
    "TITLE",      "IPUTDI",     "LINFO",   "I0",       "J0",       "K0",          "IDIM",
    "JDIM",       "KDIM",       "KEY",     "STAT",     "KOPLNG",   "KOPPX_FLAG",  "KOPPX_FIELD",
    "WARNG",      "MXIT",       "NPER",    "PICARD",   "CHI",      "MAXPICARDIT", "ABSPICARDF",
    "ABSPICARDT", "ABSPICARDS", "RHOF",    "TREF",     "CREF",     "TOPF",        "BASEF",
    "SEITEF",     "NFREE",      "KFREE",   "IFLO",     "IQRE",     "GRAV",        "COMPF",
    "COMPM",      "COMP3D",     "VBASAL",  "ERRF",     "OMF",      "APARF",       "CONTROLF",
    "TOPT",       "BASET",      "SEITET",  "CMA1",     "CMA2",     "CMA3",        "HPF",
    "QTOP3D",     "QBASAL3D",   "OMT",     "APART",    "CONTROLT", "ERRT",        "TOPS",
    "BASES",      "SEITES",     "MDIFS1",  "MDIFD1",   "MDIFD2",   "MDIFD3",      "DIFTS1",
    "DIFLS1",     "ERRS",       "OMS",     "APARS",    "CONTROLS", "ANZSUBS",     "BETAC",
    "ANZCHEM",    "ANZMINS",    "FRACEXP", "IZV",      "SIEQ",     "VMOL",        "AO",
    "EACT",       "RATE",       "NWELAR",  "DELTATMP", "TMAXAR",   "DELTAR",      "TCON",
    "SCON",       "IWL",        "WELLAR",  "PUMPAR",   "PMONIX",   "PMONIY",      "PMONIZ",
    "PMONIFR",    "DELX",       "DELY",    "DELZ",     "GEOLOGY",  "PRES",        "POR",
    "DICHTE",     "PERM",       "RHOCF",   "PHI",      "VX",       "VY",          "VZ",
    "QRE",        "QRELR",      "QREVH",   "ANISOI",   "ANISOJ",   "TEMP",        "RHOCM",
    "WLFM0",      "WLXANI",     "WLYANI",  "XANG",     "YANG",     "HPR",         "AREAKT",
};

constexpr struct {
    std::string_view block, what;
} refused_when_there[] = {
    {"BOX", "multiple continua"}, {"ICE", "permafrost"},   {"TSOL", "permafrost"},
    {"TLIQ", "permafrost"},       {"CONCM 1", "minerals"},
};

// Blocks whose values have to be 0.
constexpr struct {
    std::string_view block, what;
} refused_unless_zero[] = {
    {"ANZCHEM", "chemistry"},
    {"ANZMINS", "minerals"},
    {"BETAC", "a density that depends on concentrations"},
    {"DELTATMP", "a temperature shift"},
    {"PUMPAR", "pumps"},
    {"RHOCF", "a heat capacity of the water per cell"},
    {"VBASAL", "a flow through the base"},
    {"MDIFD1", "a second diffusion coefficient"},
    {"MDIFD2", "a second diffusion coefficient"},
    {"MDIFD3", "a second diffusion coefficient"},
    {"XANG", "an anisotropy that is turned out of the axes"},
    {"YANG", "an anisotropy that is turned out of the axes"},
};

// What stands for flow, heat, tracers, the flow field and chemistry.
constexpr std::string_view key_letters[] = {"F-", "IZSU5-", "IZSU5-", "P-", "-"};

constexpr struct {
    std::size_t letter;
    std::string_view process;
} coupled[] = {
    {0, "the coupling of flow and heat"},
    {1, "a density that depends on concentrations"},
    {2, "a permeability that depends on the porosity"},
    {3, "rock properties that depend on the temperature"},
};

[[noreturn]] void refuse(const InputStream& input, std::string_view block, std::string_view what) {
    input.fail(block, fmt::format("asks for {}, which minitervex cannot compute", what));
}

void require_letters(const InputStream& input) {
    const std::string key = input.word("KEY");
    const std::string coupling = input.word("KOPLNG");
    if (key.size() != 5)
        input.fail("KEY", fmt::format("\"{}\" has not five letters", key.substr(0, 40)));
    if (coupling.size() != 4)
        input.fail("KOPLNG", fmt::format("\"{}\" has not four letters", coupling.substr(0, 40)));
    const std::string flow_type = input.word("STAT");
    if (flow_type != "STAT" && flow_type != "INST")
        input.fail("STAT", fmt::format("\"{}\" is neither STAT nor INST", flow_type.substr(0, 40)));
    if (key[4] != '-')
        refuse(input, "KEY", "chemistry");
    if (key[3] == 'R')
        refuse(input, "KEY", "re-injection of produced water");
    for (std::size_t place = 0; place < key.size(); ++place)
        if (key_letters[place].find(key[place]) == std::string_view::npos)
            input.fail("KEY", fmt::format("\"{}\" has a letter without a meaning", key));
    if (key[0] == '-' && key[3] == 'P')
        input.fail("KEY", "prescribes the flow field of a model without flow");
    for (const auto& [letter, process] : coupled)
        if (coupling[letter] != '-')
            refuse(input, "KOPLNG", process);
}

void require_zeros(const InputStream& input, std::int64_t cells) {
    constexpr std::int64_t wells = 100;
    for (const auto& [block, what] : refused_unless_zero) {
        if (!input.has(block))
            continue;
        const std::int64_t count = block == "PUMPAR"                         ? wells * wells
                                   : block == "BETAC" || block == "DELTATMP" ? wells
                                   : block == "RHOCF" || block == "XANG" || block == "YANG" ? cells
                                                                                            : 1;
        for (const Item& item : input.items(block, count))
            if (item.value != 0)
                refuse(input, block, what);
    }
}

} // namespace

void require_computable(const InputStream& input) {
    require_letters(input);
    for (const auto& [block, what] : refused_when_there)
        if (input.has(block))
            refuse(input, block, what);
    require_zeros(input, read_grid(input).cells());
    if (input.word("IFLO") != "MASS")
        input.fail("IFLO", "minitervex knows only MASS");
    for (const Block& block : input.blocks())
        if (std::ranges::find(known, block.keyword) == std::end(known) &&
            !block.keyword.starts_with("CONC "))
            input.fail(block.keyword.substr(0, 40), "minitervex does not know this block");
}

namespace {

void note_scheme(std::vector<std::string>& notes, char letter, std::string_view what) {
    constexpr std::pair<char, std::string_view> names[] = {
        {'I', "Il'in"}, {'Z', "central differences"}, {'S', "Smolarkiewicz"}, {'5', "scheme 5"}};
    for (const auto& [scheme, name] : names)
        if (letter == scheme)
            notes.push_back(fmt::format("{}: upwind advection instead of {}", what, name));
}

} // namespace

std::vector<std::string> notes_on(const InputStream& input) {
    std::vector<std::string> notes;
    const std::string key = input.word("KEY");
    note_scheme(notes, key[1], "heat");
    note_scheme(notes, key[2], "tracers");
    if (input.integer("NFREE", 0, 1000000) > 0)
        notes.emplace_back("free layers are computed as confined ones");
    for (const std::string_view block : {"OMF", "OMT", "OMS"})
        if (input.has(block) && input.number(block) != 1)
            notes.push_back(fmt::format("# {}: fully implicit in time instead of {}", block,
                                        base::value_text(input.number(block))));
    return notes;
}

} // namespace minitervex
