// Fields on standard output.
#pragma once

#include "results/fieldreading.h"
#include "td/command.h"

#include <optional>

namespace td {

inline constexpr OptionSpec layer_option{"--layer", "L", "this layer only"};

// The layer of the option; nothing when it was not given.
std::optional<int> layer_of(const Context& context);

// The grid layer of --layer or, each behind a line "layer L", all of them. RangeFailure for a layer
// that the field does not have.
void print_field(Context& context, const results::ParameterField& field);

} // namespace td
