#include "convert/formula.h"

#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/project.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace convert {

namespace {

constexpr const char* message_title = "Convert Data";
constexpr const char* dialog_title = "Convert TERVEX results with Formula";
constexpr std::string_view proposal = "Formula for data conversion";
constexpr std::string_view zone_word = "GEOLOGY", table_word = "GWB";

// The bucket table before scaling: the value from an index on. It is 0 from the last one on.
struct Step {
    int from;
    double value;
};
constexpr Step bucket_steps[] = {
    {0, 0},          {2, 0.0001947},  {4, 0.001279},   {5, 0.00127},    {6, 0.001258},
    {7, 0.001245},   {10, 0.001205},  {14, 0.001152},  {20, 0.001074},  {21, 0.00106},
    {30, 0.0009416}, {31, 0.0009284}, {40, 0.0008095}, {50, 0.0006772}, {60, 0.0005447},
    {70, 0.0004121}, {80, 0.0002793}, {90, 0.0001461}, {92, 0.0001192}, {96, 0},
};
constexpr int last_bucket = 120;
constexpr double bucket_scale = 200;

std::array<double, last_bucket + 1> GWB_Chemistry() {
    std::array<double, last_bucket + 1> table{};
    for (const Step& step : bucket_steps) {
        for (int index = step.from; index <= last_bucket; ++index) {
            table[static_cast<std::size_t>(index)] = step.value * bucket_scale;
        }
    }
    return table;
}

bool holds(std::string_view token, std::string_view word) {
    return token.find(word) != std::string_view::npos;
}

// The number behind the first `skipped` characters.
double number_behind(std::string_view token, std::size_t skipped) {
    return base::leading_number(token.substr(std::min(skipped, token.size())));
}

std::string block_key(std::string_view keyword, double number) {
    const bool is_block = number >= 1 && number < 100;
    return is_block ? results::numbered_key(keyword, static_cast<int>(number)) : std::string();
}

std::vector<std::string_view> tokens_of(std::string_view formula) {
    std::vector<std::string_view> tokens;
    for (std::string_view rest = base::trimmed(formula, " ");;) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        tokens.push_back(rest.substr(0, end));
        if (end == rest.size()) {
            return tokens;
        }
        rest.remove_prefix(end + 1);
    }
}

template <class Change>
void change_cells(results::Field& result, Change change) {
    for (int layer = 1; layer <= result.nK(); ++layer) {
        for (int row = 1; row <= result.nJ(); ++row) {
            for (int column = 1; column <= result.nI(); ++column) {
                const double value =
                    change(double{result.at(layer, row, column)}, layer, row, column);
                const auto rounded = static_cast<float>(value);
                if (!std::isfinite(rounded)) {
                    throw base::RangeFailure(
                        fmt::format("the value of column {}, row {}, layer {} is too large", column,
                                    row, layer));
                }
                result.at(layer, row, column) = rounded;
            }
        }
    }
}

double bucket_value(const std::array<double, last_bucket + 1>& table, double value) {
    const double index = std::nearbyint(value); // halves to even
    if (!(index >= 0 && index <= last_bucket)) {
        throw base::RangeFailure(fmt::format("{} is outside 0 to {} of the table {}",
                                             base::exact_text(static_cast<float>(value)),
                                             last_bucket, table_word));
    }
    return table[static_cast<std::size_t>(index)];
}

class Calculation {
public:
    Calculation(results::StreamReader& stream, const results::StreamGrid& grid,
                base::Interaction& user)
        : stream_(stream), grid_(grid), user_(user) {}

    // Operators are carried out as their operands come in: nothing of the value is needed to read
    // on, so that two fields are enough.
    results::Field run(const std::vector<std::string_view>& tokens) {
        Get_Array(tokens[0]);
        if (operand_.grid() != grid_) {
            operand_ = results::Field(grid_); // nothing to repeat yet
        }
        results::Field result = first_value(tokens[0]);
        for (std::size_t t = 2; t < tokens.size(); t += 2) {
            Get_Array(tokens[t]);
            user_.status("Calculating values, patience ...");
            apply(tokens[t - 1], tokens[t], result);
        }
        return result;
    }

private:
    void Get_Array(std::string_view token) {
        if (token == table_word) {
            return;
        }
        const std::string key = operand_key(token);
        user_.status(fmt::format("Reading {}, patience ...", key.empty() ? token : key.substr(2)));
        if (key.empty() || !stream_.find_prefix(key)) {
            stream_.go_to(stream_.size());
            return;
        }
        operand_ = results::Field(); // before memory is taken for the next one
        operand_ = results::read_field(stream_, grid_, results::FieldOrder::stream,
                                       results::RepeatCount::rounded_32, key, nullptr, user_);
    }

    results::Field first_value(std::string_view token) const {
        results::Field result = operand_;
        if (holds(token, zone_word)) {
            const double zone = number_behind(token, zone_word.size());
            change_cells(result,
                         [&](double value, int, int, int) { return value == zone ? 1.0 : 0.0; });
        }
        return result;
    }

    void apply(std::string_view sign, std::string_view token, results::Field& result) const {
        const results::Field& operand = operand_;
        if (token == table_word) {
            const auto table = GWB_Chemistry();
            change_cells(result,
                         [&](double value, int, int, int) { return bucket_value(table, value); });
        } else if (sign == "+") {
            change_cells(result, [&](double value, int layer, int row, int column) {
                return value + double{operand.at(layer, row, column)};
            });
        } else if (sign == "*") {
            change_cells(result, [&](double value, int layer, int row, int column) {
                return value * double{operand.at(layer, row, column)};
            });
        }
    }

    results::StreamReader& stream_;
    results::StreamGrid grid_;
    base::Interaction& user_;
    results::Field operand_;
};

base::Refusal no_formula() {
    return {message_title, "No formula defined!\nPlease define calculation."};
}

} // namespace

std::string operand_key(std::string_view token) {
    if (holds(token, "CONCM")) {
        return block_key("# CONCM", number_behind(token, 5));
    }
    if (holds(token, "CONC")) {
        return block_key("# CONC", number_behind(token, 4));
    }
    return fmt::format("# {}", holds(token, zone_word) ? zone_word : token);
}

results::Field evaluate_formula(std::string_view formula, results::StreamReader& stream,
                                const results::StreamGrid& grid, base::Interaction& user) {
    return Calculation(stream, grid, user).run(tokens_of(formula));
}

std::optional<base::Refusal> export_formula(const Source& source, DataSet type,
                                            std::string_view formula, const Written& written) {
    const std::string_view text = base::trimmed(formula, " ");
    if (text.empty() || text == proposal) {
        return no_formula();
    }
    const core::Project& project = source.project;
    const results::StreamGrid grid = model_grid(project);
    if (auto refusal = grid_refusal(source.stream, grid, dialog_title)) {
        return refusal;
    }
    const LegacyAxes axes{worksheet_sizes(project, source.files)};
    const results::Field value = evaluate_formula(text, source.stream, grid, source.user);
    constexpr const char* name = "Calc";
    const std::filesystem::path file = vtk_file(source.stream.file(), name);
    OutputFile out(source.target, file);
    out.add(legacy_head(type, project.title(), {project.NX(), project.NY(), project.NZ()}));
    out.add(legacy_body(type, axes, scalars_attribute(name)));
    print_scalars(value, ValueForm::stored, source.stream.file(), out.sink());
    out.finish();
    written(base::file_name(file));
    return std::nullopt;
}

} // namespace convert
