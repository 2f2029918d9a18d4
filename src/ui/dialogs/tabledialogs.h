// The commands whose dialogs are tables: layers, periods, rock, tracers, injected concentrations,
// monitoring; and the switch of re-injection.
#pragma once

namespace ui {

struct CommandContext;

void edit_layers(CommandContext& context);
void edit_periods(CommandContext& context);
void edit_flow_properties(CommandContext& context);
void edit_heat_properties(CommandContext& context);
void edit_tracers(CommandContext& context);
void edit_injected_concentrations(CommandContext& context);
void edit_monitoring(CommandContext& context);
void switch_reinjection(CommandContext& context);

} // namespace ui
