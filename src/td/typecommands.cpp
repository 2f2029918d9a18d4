// Simulation type, coupling, output switches, reference density, re-injection.

#include "app/workspace.h"
#include "core/form.h"
#include "sim/coupling.h"
#include "sim/simplevalues.h"
#include "sim/simulationtype.h"
#include "sim/typeinfo.h"
#include "sim/typfile.h"
#include "td/command.h"

#include <fmt/format.h>

namespace td {

namespace {

using core::Access;
using enum FieldValue;

constexpr FieldOption type_fields[] = {
    {"--flow", "FluidFlowCheck", "groundwater flow", zero_one},
    {"--flow-type", "FlowType", "flow field", word, "simulated|prescribed"},
    {"--heat", "HeatCheck", "heat transfer", zero_one},
    {"--heat-scheme", "HeatAdvection",
     "advection of heat: Upwind, Scheme 5, Il'in, Central, Smolarkiewicz", word, "U|5|I|Z|S"},
    {"--permafrost", "optPermafrost", "freezing and thawing of pore water", zero_one},
    {"--transport", "TransportCheck", "species transport", zero_one},
    {"--transport-scheme", "TransportAdvection", "advection of species", word, "U|5|I|Z|S"},
    {"--continua", "optBox", "multiple continua", zero_one},
    {"--chemistry", "ChemistryCheck", "chemical reactions", zero_one},
    {"--reaction", "ReactionType", "reactions", word, "equilibrium|kinetic"},
    {"--activity", "optActivity", "chemistry model, 0 to 5", integer, "", 0, 5},
};

int type_set(Context& context) {
    sim::SimulationType form;
    return run_form(context, form, type_fields);
}

const char* on_off(bool on) {
    return on ? "1" : "0";
}

int type_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const core::ModelFlags& flags = workspace.project.flags;
        const sim::TypFile file = sim::TypFile::load(workspace.files);
        context.record({"KEY", file.line(sim::typ::KEY)});
        context.record({"flow", on_off(flags.FlowActive() == 1)});
        context.record({"prescribed", on_off(flags.FlowPrescribed() == 1)});
        context.record({"heat", on_off(flags.HeatActive() == 1)});
        context.record({"permafrost", on_off(flags.Permafrost() == 1)});
        context.record({"transport", on_off(flags.TransportActive() == 1)});
        context.record({"continua", on_off(flags(10, 6) == 1)});
        context.record({"chemistry", fmt::to_string(flags.ChemistryMode())});
        context.record({"activity", fmt::to_string(flags.ActivityModel())});
        return int{done};
    });
}

constexpr FieldOption coupling_fields[] = {
    {"--full", "CompleteCheck", "full coupling: switches all four on", zero_one},
    {"--flow-heat", "FlowHeatCheck", "flow and heat transport", zero_one},
    {"--density", "FlowTransportCheck", "density depends on concentration", zero_one},
    {"--permeability", "FlowChemistryCheck", "permeability depends on porosity", zero_one},
    {"--law", "PermeabilityLaw", "permeability-porosity law", word, "U|W|B|L|H|S"},
    {"--rock-temperature", "HeatConductivityCheck", "rock thermal properties depend on temperature",
     zero_one},
    {"--a0", "txtA0", "thermal coefficient A0"},
    {"--a1", "txtA1", "thermal coefficient A1"},
    {"--a2", "txtA2", "thermal coefficient A2"},
    {"--rock-density", "txtDensity", "rock density [kg/m3]"},
    {"--f1", "Exp1", "fractal exponent, porosity 0 - 1 %"},
    {"--f2", "Exp2", "fractal exponent, porosity 1 - 10 %"},
    {"--f3", "Exp3", "fractal exponent, porosity 10 - 100 %"},
    {"--critical-porosity", "CritPor", "critical porosity [-]"},
};
constexpr OptionSpec coupling_options[] = {
    {"--constant", "NAME=0|1",
     "keeps Density, Conduct, Compress, Capacity or Viscosity of water constant", true},
    {"--water", "NAME=TEXT", "the constant value of a water property", true},
};

const sim::WaterProperty& water_property(const std::string& name) {
    for (const sim::WaterProperty& property : sim::water_properties) {
        if (property.name == name) {
            return property;
        }
    }
    throw UsageError(
        fmt::format("\"{}\" is no water property: Density, Conduct, Compress, Capacity "
                    "or Viscosity",
                    name));
}

void fill_water(const Context& context, sim::Coupling& form) {
    for (const std::string& text : context.args.values("--constant")) {
        const auto [name, value] = split_assignment(text);
        form.set(water_property(name).check_field,
                 fmt::to_string(integer_of(value, "--constant", 0, 1)));
    }
    for (const std::string& text : context.args.values("--water")) {
        const auto [name, value] = split_assignment(text);
        form.set(water_property(name).value_field, value);
    }
}

int coupling_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        sim::Coupling form;
        form.load(workspace.project, workspace.files);
        fill_form(context, form, coupling_fields);
        fill_water(context, form);
        return accept_form(context, workspace, form);
    });
}

struct ShownField {
    const char* name;
    const char* field;
};
constexpr ShownField coupling_shown[] = {
    {"A0", "txtA0"}, {"A1", "txtA1"}, {"A2", "txtA2"}, {"rock-density", "txtDensity"},
    {"f1", "Exp1"},  {"f2", "Exp2"},  {"f3", "Exp3"},  {"critical-porosity", "CritPor"},
};

int coupling_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        sim::Coupling form;
        form.load(workspace.project, workspace.files);
        const sim::TypFile file = sim::TypFile::load(workspace.files);
        context.record({"KOPLNG", file.KOPLNG()});
        for (const ShownField& shown : coupling_shown) {
            context.record({shown.name, form.get(shown.field)});
        }
        for (const sim::WaterProperty& water : sim::water_properties) {
            context.record(
                {"water", water.name, form.get(water.check_field), form.get(water.value_field)});
        }
        return int{done};
    });
}

constexpr FieldOption info_fields[] = {
    {"--level", "InfoLevel", "run-time information", word, "0|1|2|3|5"},
    {"--protocol", "chkProtocol", "protocol file", zero_one},
    {"--plt3d", "chkPLT3D", "PLT3D file", zero_one},
    {"--gnuplot", "chkGnuPlot", "GnuPlot files", zero_one},
    {"--tecplot", "chkTecPlot", "TecPlot files (position 6)", zero_one},
    {"--tecplot2", "chkTecPlot2", "TecPlot files (position 7)", zero_one},
    {"--vtk", "chkVtk", "vtk file", zero_one},
    {"--thermal", "chkThermal", "thermal properties", zero_one},
    {"--dh-chemistry", "chkDHChemistry", "file dhcall.out", zero_one},
};

int info_set(Context& context) {
    sim::TypeInfo form;
    return run_form(context, form, info_fields);
}

int info_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        sim::TypeInfo form;
        form.load(workspace.project, workspace.files);
        context.record({"IPUTDI", form.IPUTDI()});
        context.record({"LINFO", form.LINFO()});
        context.record({"dh-chemistry", form.get("chkDHChemistry")});
        return int{done};
    });
}

int density_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        const std::string& text = context.args.argument("TEXT");
        sim::RefDens form;
        form.load(workspace.project, workspace.files);
        form.set("Check1", text == "off" ? "0" : "1");
        if (text != "off") {
            form.set("Text1", text);
        }
        return accept_form(context, workspace, form);
    });
}

int density_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        context.record({sim::TypFile::load(workspace.files).line(sim::typ::RHOF)});
        return int{done};
    });
}

int reinject(Context& context) {
    const bool on = index_of_word(context.args.argument("SWITCH"), "off|on", "td reinject") == 1;
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        sim::reinject_produced_water(workspace.project.flags, on);
        return int{done};
    });
}

constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr ArgumentSpec density_arguments[] = {model_argument,
                                              {"TEXT", "density [kg/m3], or off for 998.0"}};
constexpr ArgumentSpec switch_arguments[] = {model_argument, {"SWITCH", "on or off"}};

constexpr Command commands[] = {
    {"type set",
     "chooses the processes that are simulated",
     model_arguments,
     {},
     false,
     type_set,
     type_fields},
    {"type show", "prints the processes that are simulated", model_arguments, {}, false, type_show},
    {"coupling set", "couples the processes", model_arguments, coupling_options, false,
     coupling_set, coupling_fields},
    {"coupling show",
     "prints the coupling of the processes",
     model_arguments,
     {},
     false,
     coupling_show},
    {"info-results set",
     "chooses run-time information and result files",
     model_arguments,
     {},
     false,
     info_set,
     info_fields},
    {"info-results show",
     "prints the switches of information and results",
     model_arguments,
     {},
     false,
     info_show},
    {"reference-density set",
     "sets the reference density",
     density_arguments,
     {},
     false,
     density_set},
    {"reference-density show",
     "prints the reference density",
     model_arguments,
     {},
     false,
     density_show},
    {"reinject",
     "switches the re-injection of produced water",
     switch_arguments,
     {},
     false,
     reinject},
};

} // namespace

std::span<const Command> type_commands() {
    return commands;
}

} // namespace td
