#include "ui/commandtables.h"
#include "ui/dialogs/tabledialogs.h"

namespace ui {

namespace {

constexpr CommandRow rows[] = {
    {"grid_layer_type", edit_layers},
    {"parameters_time", edit_periods},
    {"mnuPermPorGS", edit_flow_properties},
    {"mnuHeatMatrix", edit_heat_properties},
    {"mnuTransportTracer", edit_tracers},
    {"mnuTransportReinjectionConc", edit_injected_concentrations},
    {"mnuTransportR", switch_reinjection},
    {"estimation_observations", edit_monitoring},
    {"Value_Boreholes", edit_monitoring},
};

} // namespace

std::span<const CommandRow> dialog_commands() {
    return rows;
}

} // namespace ui
