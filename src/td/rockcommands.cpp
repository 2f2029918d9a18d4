// Rock, heat, tracers, dispersion, re-injected concentrations, multiple continua.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/form.h"
#include "input/reinjection.h"
#include "input/wells.h"
#include "sim/continua.h"
#include "sim/reinjection.h"
#include "sim/rockfile.h"
#include "sim/rockproperties.h"
#include "sim/simplevalues.h"
#include "sim/transport.h"
#include "td/command.h"

#include <fmt/format.h>

namespace td {

namespace {

using core::Access;
using enum FieldValue;

// An option Z=T that fills a column of a table of zones.
struct ZoneOption {
    OptionSpec option;
    const char* column;
};

// Z is a zone number or "all".
void fill_zones(const Context& context, core::TableForm& table,
                std::span<const ZoneOption> columns) {
    for (const Arguments::Given& given : context.args.given()) {
        for (const ZoneOption& column : columns) {
            if (given.option != column.option.name) {
                continue;
            }
            const auto [zone, text] = split_assignment(given.value);
            const bool all = zone == "all";
            const int only = all ? 0 : integer_of(zone, given.option, 1, table.rows());
            for (int row = all ? 1 : only; row <= (all ? table.rows() : only); ++row) {
                table.set_cell(row, column.column, text);
            }
        }
    }
}

constexpr ZoneOption rock_columns[] = {
    {{"--porosity", "Z=T", "porosity [-]; Z is a zone or all", true}, "Por"},
    {{"--permeability", "Z=T", "permeability [m2]", true}, "Perm"},
    {{"--anisotropy-x", "Z=T", "anisotropy of permeability in x-direction", true}, "ANISOI"},
    {{"--anisotropy-y", "Z=T", "anisotropy of permeability in y-direction", true}, "ANISOJ"},
    {{"--compress", "Z=T", "compressibility of the zone [1/Pa]", true}, "Compress"},
};
constexpr OptionSpec rock_options[] = {
    {"--zones", "N", "number of zones, 1 to 15"},
    rock_columns[0].option,
    rock_columns[1].option,
    rock_columns[2].option,
    rock_columns[3].option,
    rock_columns[4].option,
    {"--compressibility", "T", "rock compressibility of all zones [1/Pa]"},
};

int rock_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        sim::PermPor form;
        form.load(workspace.project, workspace.files);
        if (context.args.has("--zones")) {
            form.set("Zones",
                     fmt::to_string(context.args.integer("--zones", 1, sim::PropertyZonesMax, 1)));
        }
        if (context.args.has("--compressibility")) {
            form.set("COMPM_Value", context.args.value("--compressibility"));
        }
        fill_zones(context, form, rock_columns);
        return accept_form(context, workspace, form);
    });
}

constexpr ZoneOption heat_columns[] = {
    {{"--capacity", "Z=T", "thermal capacity [MJ/(m3 K)]; Z is a zone or all", true}, "Capacity"},
    {{"--conductivity", "Z=T", "thermal conductivity [W/(m K)]", true}, "Cond"},
    {{"--production", "Z=T", "heat production rate [W/m3]", true}, "HPF"},
    {{"--anisotropy-x", "Z=T", "thermal anisotropy in x-direction", true}, "WLXANI"},
    {{"--anisotropy-y", "Z=T", "thermal anisotropy in y-direction", true}, "WLYANI"},
};
constexpr OptionSpec heat_options[] = {
    heat_columns[0].option,
    heat_columns[1].option,
    heat_columns[2].option,
    heat_columns[3].option,
    heat_columns[4].option,
    {"--basal", "T", "basal heat flow of the model [W/m2]"},
    {"--fluid-production", "T", "fluid heat production of the model [W/m3]"},
};

int set_heat_constant(Context& context, app::Workspace& workspace, const char* option,
                      sim::HeatConstant constant) {
    if (!context.args.has(option)) {
        return done;
    }
    sim::HeatConstantForm form(constant);
    form.load(workspace.project, workspace.files);
    form.set("Value", context.args.value(option));
    return accept_form(context, workspace, form);
}

int heat_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        sim::Heat form;
        form.load(workspace.project, workspace.files);
        fill_zones(context, form, heat_columns);
        int status = accept_form(context, workspace, form);
        if (status == done) {
            status = set_heat_constant(context, workspace, "--basal",
                                       sim::HeatConstant::basal_heat_flow);
        }
        if (status == done) {
            status = set_heat_constant(context, workspace, "--fluid-production",
                                       sim::HeatConstant::fluid_heat_production);
        }
        return status;
    });
}

template <typename Form>
int load_block(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        Form form;
        form.load(workspace.project, workspace.files);
        const std::filesystem::path file = context.args.argument("FILE");
        if (const auto refusal = form.load_block(base::read_bytes(file), file)) {
            return context.refuse(*refusal);
        }
        return accept_form(context, workspace, form);
    });
}

template <typename Form>
int clear_block(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        Form form;
        form.load(workspace.project, workspace.files);
        return form.clear(context.user) ? accept_form(context, workspace, form) : int{refused};
    });
}

int rock_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const sim::RockFile rock = sim::RockFile::load(workspace.files);
        context.record({"zones", fmt::to_string(rock.zones())});
        for (int line = sim::rock::Por; line <= sim::rock::WLYANI; ++line) {
            const bool head = line == sim::rock::Heat ||
                              (line == sim::rock::Compress && !rock.has_compressibilities());
            if (head) {
                continue;
            }
            std::vector<std::string> fields{fmt::to_string(line), rock.label(line)};
            for (int zone = 1; zone <= rock.zones(); ++zone) {
                fields.push_back(rock.field(line, zone));
            }
            context.record(fields);
        }
        return int{done};
    });
}

// Tracers and dispersion.

constexpr OptionSpec tracer_options[] = {
    {"--tracer", "N", "tracer, 1 to 5; the options behind it belong to it", true},
    {"--active", "0|1", "the tracer is active", true},
    {"--concentration", "V", "concentration [mmol/L]", true},
    {"--betac", "V", "change of density with concentration [kg/mol]", true},
};

void fill_tracers(const Context& context, core::TableForm& table) {
    int row = 0;
    for (const Arguments::Given& given : context.args.given()) {
        if (given.option == "--tracer") {
            row = integer_of(given.value, "--tracer", 1, table.rows());
            continue;
        }
        if (row == 0) {
            throw UsageError(fmt::format("td tracer set: {} stands before --tracer", given.option));
        }
        if (given.option == "--active") {
            table.set_cell(row, "Active",
                           fmt::to_string(integer_of(given.value, "--active", 0, 1)));
        } else {
            table.set_cell(row, given.option == "--betac" ? "BetaC" : "Concentration", given.value);
        }
    }
}

int tracer_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        sim::TracerForm form;
        form.load(workspace.project, workspace.files);
        fill_tracers(context, form);
        return accept_form(context, workspace, form);
    });
}

int tracer_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        int number = 0;
        for (const sim::Tracer& tracer : sim::TracerTable::load(workspace.files).rows) {
            context.record({fmt::to_string(++number), tracer.active ? "-1" : "0",
                            base::exact_text(tracer.concentration),
                            base::exact_text(tracer.betac)});
        }
        return int{done};
    });
}

int tracer_source(Context& context) {
    const std::string source = context.args.argument("SOURCE");
    if (source.empty()) {
        return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
            const bool zones =
                sim::tracer_source(workspace.project.flags) == sim::TracerSource::zones;
            context.record({zones ? "zones" : "arrays"});
            return int{done};
        });
    }
    const int index = index_of_word(source, "zones|arrays", "td tracer source");
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        sim::TracerIndividual form;
        form.load(workspace.project, workspace.files);
        form.set("Source", fmt::to_string(index));
        return accept_form(context, workspace, form);
    });
}

constexpr FieldOption dispersion_fields[] = {
    {"--diffusion", "MDIFS1_Value", "diffusion coefficient in 1E-08 m2/s"},
    {"--transverse", "DIFTS1_Value", "transverse dispersivity [m]"},
    {"--longitudinal", "DIFLS1_Value", "longitudinal dispersivity [m]"},
};

int dispersion_set(Context& context) {
    sim::DiffDisp form;
    return run_form(context, form, dispersion_fields);
}

int dispersion_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const sim::Dispersion values = sim::Dispersion::load(workspace.files);
        context.record({"diffusion", values.diffusion});
        context.record({"transverse", values.transverse});
        context.record({"longitudinal", values.longitudinal});
        return int{done};
    });
}

// Injected concentrations.

constexpr OptionSpec reinjection_options[] = {
    {"--well", "W", "number of the well in the simulator's input", false, true},
    {"--species", "S", "number of the species", false, true},
    {"--value", "V", "concentration of the injected water", false, true},
};

// Runs `work` on the table of a model; tells when the stored one had another number of species.
int on_reinjection(Context& context, Access access,
                   const std::function<int(app::Workspace&, input::SCON_Table&)>& work) {
    return on_model_files(context, access, [&](app::Workspace& workspace) {
        if (const auto refusal = app::mesh_refusal(workspace)) {
            return context.refuse(*refusal);
        }
        const input::WellTable wells = input::Get_Well_Data(workspace.project, workspace.files);
        input::SCON_Table form(wells);
        form.load(workspace.project, workspace.files);
        if (const auto refusal = form.check()) {
            return context.refuse(*refusal);
        }
        if (const auto& notice = form.load_notice()) {
            context.user.message(notice->icon, notice->title, notice->text);
        }
        return work(workspace, form);
    });
}

int reinjection_set(Context& context) {
    return on_reinjection(
        context, Access::write, [&](app::Workspace& workspace, input::SCON_Table& form) {
            constexpr int first_species = 2; // behind the columns of the well and its rate
            const int well = context.args.integer("--well", 1, form.rows(), 1);
            const int species = context.args.integer("--species", 1, form.species(), 1);
            const auto column = static_cast<std::size_t>(first_species + species - 1);
            form.set_cell(well, form.columns()[column].name, context.args.value("--value"));
            const int status = accept_form(context, workspace, form);
            if (status == done) {
                workspace.save();
            }
            return status;
        });
}

int reinjection_show(Context& context) {
    return on_reinjection(context, Access::read, [&](app::Workspace&, input::SCON_Table& form) {
        int number = 0;
        for (const sim::ReinjectionTable::Row& well : form.table().rows) {
            std::vector<std::string> fields{fmt::to_string(++number), base::exact_text(well.rate)};
            for (const float concentration : well.concentrations) {
                fields.push_back(base::exact_text(concentration));
            }
            context.record(fields);
        }
        return int{done};
    });
}

// Multiple continua.

constexpr FieldOption box_fields[] = {
    {"--active", "chkBox", "multiple continua are computed", zero_one},
    {"--zones", "txtPropZones", "Property Zones, separated by commas; - for none"},
};
constexpr OptionSpec box_options[] = {
    {"--density", "S=T", "fracture density [1/m] of system A, B, C or D", true},
    {"--aperture", "S=T", "fracture aperture [m]", true},
    {"--tortuosity", "S=T", "tortuosity", true},
};
constexpr FieldOption system_fields[] = {
    {"--density", "txtDens", ""}, {"--aperture", "txtApert", ""}, {"--tortuosity", "txtTort", ""}};
constexpr const char* systems[] = {"A", "B", "C", "D"};

void fill_systems(const Context& context, core::Form& form) {
    for (const Arguments::Given& given : context.args.given()) {
        for (const FieldOption& field : system_fields) {
            if (given.option == field.name) {
                const auto [system, text] = split_assignment(given.value);
                index_of_word(system, "A|B|C|D", given.option);
                form.set(field.field + system, text);
            }
        }
    }
}

int boxmodel_set(Context& context) {
    return on_model(context, Access::write, [&](app::Workspace& workspace) {
        sim::BoxmodelForm form;
        form.load(workspace.project, workspace.files);
        fill_form(context, form, box_fields);
        fill_systems(context, form);
        return accept_form(context, workspace, form);
    });
}

int boxmodel_show(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const sim::Boxmodel box = sim::Boxmodel::load(workspace.files);
        context.record({"active", box.active});
        context.record({"zones", box.P_Zones});
        for (std::size_t i = 0; i < std::size(systems); ++i) {
            context.record({systems[i], box.density[i], box.aperture[i], box.tortuosity[i]});
        }
        return int{done};
    });
}

int boxmodel_check(Context& context) {
    return on_model_files(context, Access::read, [&](app::Workspace& workspace) {
        const sim::FractureProperties properties =
            sim::calculated_properties(sim::Boxmodel::load(workspace.files));
        for (std::size_t i = 0; i < std::size(systems); ++i) {
            context.record({systems[i], properties.porosity[i], properties.permeability[i]});
        }
        for (std::size_t i = 0; i + 1 < std::size(systems); ++i) {
            context.record({"exchange", fmt::format("{}-{}", systems[i], systems[i + 1]),
                            properties.exchange[i]});
        }
        return int{done};
    });
}

constexpr ArgumentSpec model_arguments[] = {model_argument};
constexpr ArgumentSpec file_arguments[] = {model_argument, {"FILE", "another rock file (.mco)"}};
constexpr ArgumentSpec source_arguments[] = {model_argument, {"SOURCE", "zones or arrays", false}};

constexpr Command commands[] = {
    {"rock set", "sets flow properties of the zones", model_arguments, rock_options, true,
     rock_set},
    {"rock load",
     "takes the flow properties of another rock file",
     file_arguments,
     {},
     true,
     load_block<sim::PermPor>},
    {"rock clear",
     "clears the flow properties",
     model_arguments,
     {},
     true,
     clear_block<sim::PermPor>},
    {"rock show", "prints the properties of the zones", model_arguments, {}, false, rock_show},
    {"heat set", "sets thermal properties of the zones", model_arguments, heat_options, false,
     heat_set},
    {"heat load",
     "takes the thermal properties of another rock file",
     file_arguments,
     {},
     false,
     load_block<sim::Heat>},
    {"heat clear",
     "clears the thermal properties",
     model_arguments,
     {},
     true,
     clear_block<sim::Heat>},
    {"tracer set", "sets the table of tracers", model_arguments, tracer_options, false, tracer_set},
    {"tracer show", "prints the table of tracers", model_arguments, {}, false, tracer_show},
    {"tracer source",
     "where the initial tracers come from",
     source_arguments,
     {},
     false,
     tracer_source},
    {"dispersion set",
     "sets diffusion and dispersivity",
     model_arguments,
     {},
     false,
     dispersion_set,
     dispersion_fields},
    {"dispersion show",
     "prints diffusion and dispersivity",
     model_arguments,
     {},
     false,
     dispersion_show},
    {"reinjection set", "sets a concentration of injected water", model_arguments,
     reinjection_options, false, reinjection_set},
    {"reinjection show",
     "prints the concentrations of injected water",
     model_arguments,
     {},
     false,
     reinjection_show},
    {"boxmodel set", "sets multiple continua", model_arguments, box_options, false, boxmodel_set,
     box_fields},
    {"boxmodel show", "prints multiple continua", model_arguments, {}, false, boxmodel_show},
    {"boxmodel check",
     "prints properties calculated for multiple continua",
     model_arguments,
     {},
     false,
     boxmodel_check},
};

} // namespace

std::span<const Command> rock_commands() {
    return commands;
}

} // namespace td
