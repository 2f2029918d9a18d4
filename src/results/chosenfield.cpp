#include "results/chosenfield.h"

#include <utility>

namespace results {

std::optional<ResultSource> open_result(const std::filesystem::path& path,
                                        base::Interaction& user) {
    auto result = find_result_file(path, user);
    if (!result) {
        return std::nullopt;
    }
    StreamReader stream(result->file);
    return ResultSource{std::move(*result), std::move(stream)};
}

std::optional<ParameterField> ChosenField::read(CellOrder order, Values values,
                                                base::Interaction& user, FieldSource* faster) {
    if (faster != nullptr && values == Values::converted) {
        const bool viewer = order == CellOrder::viewer;
        auto field = faster->read(source.result, grid, parameter,
                                  viewer ? FieldOrder::viewer : FieldOrder::stream, user);
        source.stream.require_unchanged();
        if (field) {
            return viewer
                       ? ParameterField(std::move(*field))
                       : ParameterField(std::move(*field),
                                        order == CellOrder::worksheet
                                            ? std::optional(simulator_grid(grid, GridOrientation))
                                            : std::nullopt);
        }
    }
    return read_parameter(source.stream, grid, parameter, order, values, GridOrientation, user);
}

std::optional<Axes> ChosenField::read_axes(base::Interaction& user) {
    source.stream.rewind();
    return results::read_axes(source.stream, grid, user);
}

std::optional<ChosenField> choose_field(const std::filesystem::path& path, std::string_view text,
                                        base::Interaction& user) {
    auto source = open_result(path, user);
    const auto grid = source ? read_stream_grid(source->stream, user) : std::nullopt;
    if (!grid) {
        return std::nullopt;
    }
    const StreamNames names = names_a_block(text)
                                  ? read_names(source->stream, source->result.files, user)
                                  : StreamNames();
    const auto parameter = resolve_parameter(text, names);
    if (!parameter) {
        tell_missing(text, user);
        return std::nullopt;
    }
    const int orientation = source->result.GridOrientation();
    return ChosenField{std::move(*source), *grid, *parameter, orientation};
}

} // namespace results
