#include "ui/commandtables.h"
#include "ui/dialogs/settingsdialogs.h"
#include "ui/dialogs/tabledialogs.h"

namespace ui {

namespace {

constexpr CommandRow rows[] = {
    {"grid_layer_type", edit_layers},
    {"mnuTypeSettings", edit_simulation_type},
    {"mnuTypeCoupling", edit_coupling},
    {"mnuTypeInfo", edit_type_info},
    {"parameters_time", edit_periods},
    {"mnuOuterIteration", edit_outer_iteration},
    {"mnuBiCGStab", edit_BiCGStab},
    {"mnuTimeExplicitImplicit", edit_NAG},
    {"mnuTimePLU", edit_PLU},
    {"estimation_observations", edit_monitoring},
    {"Value_Boreholes", edit_monitoring},
    {"mnuFluidFlowRefDens", edit_reference_density},
    {"mnuPermPorGS", edit_flow_properties},
    {"mnuHeatMatrix", edit_heat_properties},
    {"mnuHeatHPF", edit_fluid_heat_production},
    {"mnuTransportTracer", edit_tracers},
    {"mnuInitTracerIndividual", edit_tracer_source},
    {"mnuTransportMatrix", edit_dispersion},
    {"mnuTransportBox", edit_continua},
    {"mnuTransportReinjectionConc", edit_injected_concentrations},
    {"mnuTransportR", switch_reinjection},
};

} // namespace

std::span<const CommandRow> dialog_commands() {
    return rows;
}

} // namespace ui
