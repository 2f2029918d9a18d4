#include "results/fieldreading.h"

#include "base/failure.h"
#include "base/interaction.h"
#include "base/numbertext.h"
#include "core/modelflags.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace results {

namespace {

constexpr double seconds_of_a_day = 86400;

template <class Change>
RowConversion each_value(Change change) {
    return [change](std::span<float> row) { std::ranges::transform(row, row.begin(), change); };
}

float pH_of(float concentration, const std::string& keyword, const std::filesystem::path& file) {
    if (!(concentration > 0)) {
        throw base::FileFailure(fmt::format("\"{}\": a concentration of {} has no pH", keyword,
                                            base::exact_text(concentration)),
                                file);
    }
    return static_cast<float>(-(std::log(double{concentration} / 1000) / std::log(10.0)));
}

RowConversion conversion_of(const Parameter& parameter, const std::filesystem::path& file) {
    switch (parameter.conversion) {
    case Conversion::absolute:
        return each_value([](float value) { return std::abs(value); });
    case Conversion::per_day:
        return each_value(
            [](float value) { return static_cast<float>(double{value} * seconds_of_a_day); });
    case Conversion::pH:
        return each_value([keyword = parameter.keyword, file](float value) {
            return pH_of(value, keyword, file);
        });
    case Conversion::none:
        break;
    }
    return {};
}

void tell_caption(const std::filesystem::path& file, base::Interaction& user) {
    user.status(file.string().ends_with("nlo") ? "Load data from result file"
                                               : "Load data from input file");
}

} // namespace

ParameterField::ParameterField(Field field, std::optional<input::SimulatorGrid> grid)
    : field_(std::move(field)), grid_(grid), layers_(field_.nK()), rows_(field_.nJ()) {
    if (grid_ && !grid_->horizontal()) {
        std::swap(layers_, rows_);
    }
}

float ParameterField::at(int layer, int row, int column) const {
    if (!grid_) {
        return field_.at(layer, row, column);
    }
    const input::SimulatorIndex cell = grid_->index({column, row, layer});
    return field_.at(cell.K, cell.J, cell.I);
}

input::SimulatorGrid simulator_grid(const StreamGrid& grid, int GridOrientation) {
    const bool horizontal = GridOrientation == core::horizontal;
    return {grid.I0, horizontal ? grid.J0 : grid.K0, horizontal ? grid.K0 : grid.J0,
            GridOrientation};
}

void tell_missing(std::string_view word, base::Interaction& user) {
    for (const std::string_view text : {"Error in file format. Can't find choosen parameter ",
                                        "Error in input file structure: Can't find "}) {
        user.message(base::Icon::warning, base::desk_title, fmt::format("{}{}", text, word));
    }
}

std::optional<ParameterField> read_parameter(StreamReader& stream, const StreamGrid& grid,
                                             const Parameter& parameter, CellOrder order,
                                             Values values, int GridOrientation,
                                             base::Interaction& user) {
    stream.rewind();
    if (!LookForString(stream, parameter.keyword, user)) {
        return std::nullopt;
    }
    tell_caption(stream.file(), user);
    const bool converted = values == Values::converted;
    // The viewer takes counts strictly, readers of stored values take what there is.
    Field field = read_field(
        stream, grid, order == CellOrder::viewer ? FieldOrder::viewer : FieldOrder::stream,
        converted ? RepeatCount::strict_32 : RepeatCount::rounded_32, parameter.keyword,
        converted ? conversion_of(parameter, stream.file()) : RowConversion(), user);
    if (order != CellOrder::worksheet) {
        return ParameterField(std::move(field));
    }
    return ParameterField(std::move(field), simulator_grid(grid, GridOrientation));
}

} // namespace results
