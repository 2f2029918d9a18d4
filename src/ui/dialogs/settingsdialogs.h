// The dialogs of a model's settings, as the commands of the menu open them.
#pragma once

namespace ui {

struct CommandContext;

void edit_simulation_type(CommandContext& context);
void edit_coupling(CommandContext& context);
void edit_type_info(CommandContext& context);

void edit_outer_iteration(CommandContext& context);
void edit_NAG(CommandContext& context);
void edit_BiCGStab(CommandContext& context);
void edit_PLU(CommandContext& context);

void edit_reference_density(CommandContext& context);
void edit_fluid_heat_production(CommandContext& context);
void edit_dispersion(CommandContext& context);
void edit_tracer_source(CommandContext& context);
void edit_continua(CommandContext& context);

// "Model Dimension", which makes the mesh. False: cancelled, or nothing was changed.
bool edit_grid_number(CommandContext& context);

} // namespace ui
