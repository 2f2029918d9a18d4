// A parameter that was chosen in a result file, ready to be read.
#pragma once

#include "results/fieldreading.h"
#include "results/fieldsource.h"
#include "results/resultfile.h"
#include "results/streamreader.h"

#include <optional>
#include <string_view>

namespace results {

struct ResultSource {
    ResultFile result;
    StreamReader stream;
};

// Finds the result file of `path` and opens it; nothing, as find_result_file, when a project has
// none.
std::optional<ResultSource> open_result(const std::filesystem::path& path, base::Interaction& user);

struct ChosenField {
    ResultSource source;
    StreamGrid grid;
    Parameter parameter;
    int GridOrientation = 0;

    // Each searches from the beginning; nothing, with the messages of the search, for what is not
    // there. Fields in the units of the viewer come from `faster` where it has them.
    std::optional<ParameterField> read(CellOrder order, Values values, base::Interaction& user,
                                       FieldSource* faster = nullptr);
    std::optional<Axes> read_axes(base::Interaction& user);
};

// Opens the result file of `path` and finds the parameter of `text` in its lists. Nothing, with the
// messages of the search, when the grid or the name is not there.
std::optional<ChosenField> choose_field(const std::filesystem::path& path, std::string_view text,
                                        base::Interaction& user);

} // namespace results
