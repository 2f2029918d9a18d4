#include "sim/simulationtype.h"

#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/fieldvalue.h"
#include "sim/typfile.h"

#include <algorithm>
#include <iterator>

namespace sim {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr const char* flow_types[] = {"Simulated", "Prescribed"};
constexpr const char* schemes[] = {"Upwind", "Scheme 5", "Il'in", "Central Diff.", "Smolarkiewicz"};
constexpr std::string_view scheme_letters = "U5IZS";
constexpr int scheme_count = int(scheme_letters.size());
constexpr const char* reaction_types[] = {"Equilibrium", "Kinetic"};
constexpr const char* activity_models[] = {"Pitzer Equations",
                                           "Debye-Hückel Theory (DH)",
                                           "Anhydrite (solubility function)",
                                           "CO2 (Duan et al. 2003) + DH",
                                           "Quartz (solubility P / T)",
                                           "Pitzer / DH (Kinetic)"};
constexpr int activity_model_count = int(std::size(activity_models));

constexpr FieldInfo field_table[] = {
    {"FluidFlowCheck", FieldKind::check, "Groundwater Flow", {}, "", "0"},
    {"FlowType", FieldKind::choice, "", flow_types, "", "0"},
    {"HeatCheck", FieldKind::check, "Heat Transfer", {}, "", "0"},
    {"HeatAdvection", FieldKind::choice, "", schemes, "", "0"},
    {"optPermafrost", FieldKind::check, "Permafrost", {}, "", "0"},
    {"TransportCheck", FieldKind::check, "Species Transport", {}, "", "0"},
    {"TransportAdvection", FieldKind::choice, "", schemes, "", "0"},
    {"optBox", FieldKind::check, "Multiple Porosity", {}, "", "0"},
    {"ChemistryCheck", FieldKind::check, "Chemical Reactions", {}, "", "0"},
    {"ReactionType", FieldKind::choice, "", reaction_types, "", "0"},
    {"optActivity", FieldKind::choice, "", activity_models, "", "0"},
};

// Which check an option hangs on.
struct Dependence {
    std::string_view option;
    std::string_view check;
};
constexpr Dependence dependences[] = {
    {"FlowType", "FluidFlowCheck"},    {"HeatAdvection", "HeatCheck"},
    {"optPermafrost", "HeatCheck"},    {"TransportAdvection", "TransportCheck"},
    {"optBox", "TransportCheck"},      {"ReactionType", "ChemistryCheck"},
    {"optActivity", "ChemistryCheck"},
};

// Only these five keys count as transport alone; "--UP-" or "--U-C" pass.
constexpr std::string_view pure_transport[] = {"--I--", "--Z--", "--S--", "--U--", "--5--"};

} // namespace

char scheme_letter(int index) {
    return scheme_letters[std::size_t(std::clamp(index, 0, scheme_count - 1))];
}

int scheme_index(char letter) {
    const std::size_t at = scheme_letters.find(letter);
    return at == std::string_view::npos ? 0 : int(at);
}

SimulationType::SimulationType() {
    reset_fields();
}

std::span<const FieldInfo> SimulationType::fields() const {
    return field_table;
}

void SimulationType::load(const core::Project& project, const core::ModelFiles& files) {
    reset_fields();
    const core::ModelFlags& flags = project.flags;
    std::string key = TypFile::load(files).line(typ::KEY);
    key.resize(5, '-');
    put("FluidFlowCheck", check_text(flags.FlowActive() == 1));
    put("FlowType", check_text(flags.FlowPrescribed() == 1));
    put("HeatCheck", check_text(flags.HeatActive() == 1));
    put("HeatAdvection", std::to_string(scheme_index(key[1])));
    put("optPermafrost", check_text(flags.Permafrost() == 1));
    put("TransportCheck", check_text(flags.TransportActive() == 1));
    put("TransportAdvection", std::to_string(scheme_index(key[2])));
    put("optBox", check_text(flags(10, 6) == 1));
    put("ChemistryCheck", check_text(flags.ChemistryMode() != 0));
    put("ReactionType", check_text(flags.ChemistryMode() == 2));
    put("optActivity",
        std::to_string(std::clamp(flags.ActivityModel(), 0, activity_model_count - 1)));
}

bool SimulationType::enabled(std::string_view name) const {
    for (const Dependence& dependence : dependences)
        if (dependence.option == name)
            return checked(dependence.check);
    return true;
}

std::string SimulationType::KEY() const {
    std::string key = "-----";
    if (checked("FluidFlowCheck"))
        key[0] = 'F';
    if (checked("HeatCheck"))
        key[1] = scheme_letter(choice_index(*this, "HeatAdvection", scheme_count));
    if (checked("TransportCheck"))
        key[2] = scheme_letter(choice_index(*this, "TransportAdvection", scheme_count));
    if (checked("FluidFlowCheck") && choice_index(*this, "FlowType", 2) == 1)
        key[3] = 'P';
    if (checked("ChemistryCheck"))
        key[4] = choice_index(*this, "ReactionType", 2) == 1 ? 'K' : 'C';
    return key;
}

std::optional<base::Refusal> SimulationType::check() const {
    if (std::ranges::find(pure_transport, KEY()) == std::end(pure_transport))
        return std::nullopt;
    return base::Refusal{"Message", "Only Transport is not possible", base::Icon::warning,
                         "TransportCheck"};
}

void SimulationType::save_flags(core::Project& project) const {
    core::ModelFlags& flags = project.flags;
    flags.set(9, 4, checked("FluidFlowCheck"));
    flags.set(9, 5, checked("HeatCheck"));
    flags.set(10, 5, checked("optPermafrost"));
    flags.set(9, 6, checked("TransportCheck"));
    flags.set(10, 6, checked("optBox"));
    // Stays 1 with the flow off, although KEY then has no "P".
    flags.set(3, 1, choice_index(*this, "FlowType", 2));
    const int reaction = 1 + choice_index(*this, "ReactionType", 2);
    flags.set(9, 7, checked("ChemistryCheck") ? reaction : 0);
    flags.set(9, 12, choice_index(*this, "optActivity", activity_model_count));
}

void SimulationType::save(core::Project& project, core::ModelFiles& files) {
    TypFile typ_file = TypFile::load(files);
    typ_file.set_line(typ::KEY, KEY());
    typ_file.save(files);
    save_flags(project);
    project.flags.mark_defined(9, 0);
    project.flags.mark_edited();
}

} // namespace sim
