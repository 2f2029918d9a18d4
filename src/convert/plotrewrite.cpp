#include "convert/plotrewrite.h"

#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "results/streamreader.h"
#include "results/tablefile.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace convert {

namespace fs = std::filesystem;

using results::StreamReader;
using results::TableFile;

namespace {

constexpr const char* dialog_title = "Rewrite *.tal to *.plt";
constexpr std::string_view line_end = "\r\n", zone = "ZONE", variables = "VARIABLES";
constexpr std::size_t longest_line = 1 << 20;

struct FixedName {
    std::size_t index;
    const char* name;
};
constexpr FixedName fixed_names[] = {{11, "Temperature"}, {12, "Porosity"}};

constexpr double density_of_rock = 2600; // kg/m3

std::optional<base::Refusal> refusal_of(const fs::path& source, const PlotRewrite& rewrite) {
    if (source.empty()) {
        return base::Refusal{dialog_title, "Browse for a *.tal file first!"};
    }
    if (!rewrite.Permeability && !rewrite.Head && !rewrite.Minerals && !rewrite.Elements) {
        return base::Refusal{dialog_title, "Nothing checked, nothing to be changed!"};
    }
    return std::nullopt;
}

// The lines of the source in its own characters.
class Source {
public:
    explicit Source(const fs::path& file) : stream_(file) {}

    std::optional<std::string> next_if() {
        auto line = stream_.next_line(longest_line);
        ++number_;
        if (line && line->size() == longest_line) {
            throw base::FileFailure(
                fmt::format("line {} has {} bytes or more", number_, longest_line), file());
        }
        return line;
    }
    std::string next(std::string_view what) {
        auto line = next_if();
        if (!line) {
            throw base::FileFailure(
                fmt::format("ends at line {}, where {} was expected", number_, what), file());
        }
        return std::move(*line);
    }
    std::size_t number() const { return number_; }
    const fs::path& file() const { return stream_.file(); }
    int percent() const {
        return stream_.size() == 0 ? 100
                                   : static_cast<int>(100 * stream_.position() / stream_.size());
    }
    void require_unchanged() const { stream_.require_unchanged(); }

private:
    StreamReader stream_;
    std::size_t number_ = 0;
};

std::size_t index_of(std::size_t column, std::size_t columns) {
    if (column < 1 || column > columns) {
        throw base::RangeFailure(fmt::format("column {} is outside 1 to {}", column, columns));
    }
    return column - 1;
}

bool opens_zone(std::string_view line) {
    return line.find(zone) != std::string_view::npos;
}

bool is_pH(std::string_view name) {
    return name == "pH" || name == "PH" || name == "ph";
}

// Rows begin with a number; what else stands between them is no row.
bool is_row(std::string_view line) {
    const std::string_view text = base::trimmed(line);
    return !text.empty() && text.find_first_of("0123456789") <= 2 &&
           text.find_first_not_of("0123456789.+-") != 0;
}

// What is done to the values of each column.
class Columns {
public:
    Columns(const PlotRewrite& rewrite, const std::vector<std::string>& names) {
        for (const auto& [column, step] : rewrite.steps) {
            columns_[index_of(column, most_plot_columns)].step = step;
        }
        for (const auto& [column, weight] : rewrite.molar_weights) {
            columns_[index_of(column, most_plot_columns)].molar_weight = weight;
        }
        for (std::size_t n = 0; n < names.size(); ++n) {
            columns_[n].pH = rewrite.Elements && is_pH(names[n]);
        }
    }

    double value(std::size_t n, double value, const Source& source) const {
        if (n >= columns_.size()) {
            return value;
        }
        const Column& column = columns_[n];
        value = Calculate(column.step.Index, value, column.step.Wert);
        if (column.molar_weight) {
            value = value / 1000 / density_of_rock * 100 * *column.molar_weight;
        }
        return column.pH ? pH_of(value, source) : value;
    }

private:
    struct Column {
        PlotStep step;
        std::optional<double> molar_weight;
        bool pH = false;
    };

    static double pH_of(double concentration, const Source& source) {
        if (!(concentration > 0)) {
            throw base::FileFailure(fmt::format("line {}: a concentration of {} has no pH",
                                                source.number(), base::value_text(concentration)),
                                    source.file());
        }
        return -std::log10(concentration / 1000);
    }

    std::array<Column, most_plot_columns> columns_;
};

// A single as it is printed; values beyond its range are the largest one.
std::string printed(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    return base::printed(static_cast<float>(std::clamp(value, -largest, largest)));
}

std::string Recalculate_Values(std::string_view row, const Columns& columns, const Source& source) {
    constexpr std::string_view separators = " \t,";
    std::string line;
    std::size_t n = 0;
    for (std::size_t at = row.find_first_not_of(separators); at != std::string_view::npos;
         at = row.find_first_not_of(separators, at)) {
        const std::size_t end = std::min(row.find_first_of(separators, at), row.size());
        const double read = base::leading_number(row.substr(at, end - at));
        line += printed(columns.value(n++, read, source));
        at = end;
    }
    return line;
}

// The title, when there is one, and the names up to the line of the first zone.
struct Head {
    std::optional<std::string> title;
    std::vector<std::string> names;
    std::string zone_line;
};

Head read_head(Source& source) {
    Head head;
    std::string line = source.next("the title");
    if (!base::trimmed(line).starts_with(variables)) {
        head.title = std::move(line);
        line = source.next("the variables");
    }
    for (; !opens_zone(line); line = source.next(zone)) {
        for (std::string& name : Get_Parameter(line)) {
            head.names.push_back(std::move(name));
        }
        if (head.names.size() > most_plot_columns) {
            throw base::FileFailure(fmt::format("line {}: more than {} column names",
                                                source.number(), most_plot_columns),
                                    source.file());
        }
    }
    head.zone_line = std::move(line);
    return head;
}

std::string variables_line(const std::vector<std::string>& names) {
    std::string line = fmt::format("{} = ", variables);
    for (const std::string& name : names) {
        line += fmt::format("{}\"{}\"", &name == &names.front() ? "" : ",", name);
    }
    return line;
}

void write_line(TableFile& table, std::string_view line) {
    table.add(line);
    table.add(line_end);
}

void write_zones(Source& source, const Columns& columns, TableFile& table,
                 base::Interaction& user) {
    int shown = 0;
    while (const auto line = source.next_if()) {
        write_line(table, opens_zone(*line) || !is_row(*line)
                              ? *line
                              : Recalculate_Values(*line, columns, source));
        if (source.percent() > shown) {
            shown = source.percent();
            user.show_meter(shown);
        }
    }
}

} // namespace

std::vector<std::string> Get_Parameter(std::string_view Line) {
    constexpr char quote = '"';
    std::vector<std::string> names;
    for (std::size_t open = Line.find(quote); open != std::string_view::npos;) {
        const std::size_t close = Line.find(quote, open + 1);
        if (close == std::string_view::npos) {
            break;
        }
        names.emplace_back(Line.substr(open + 1, close - open - 1));
        open = Line.find(quote, close + 1);
    }
    return names;
}

std::vector<std::string> Edit_Parameter(std::vector<std::string> names,
                                        const PlotRewrite& rewrite) {
    for (const FixedName& fixed : fixed_names) {
        if (fixed.index < names.size()) {
            names[fixed.index] = fixed.name;
        }
    }
    for (const auto& [column, name] : rewrite.new_names) {
        names[index_of(column, names.size())] = base::to_ansi(name);
    }
    return names;
}

double Calculate(PlotOperation Index, double ValNumber, double Wert) {
    switch (Index) {
    case PlotOperation::add:
        return ValNumber + Wert;
    case PlotOperation::subtract:
        return ValNumber - Wert;
    case PlotOperation::multiply:
        return ValNumber * Wert;
    case PlotOperation::divide:
        if (Wert == 0) {
            throw base::RangeFailure("division by 0");
        }
        return ValNumber / Wert;
    case PlotOperation::none:
        break;
    }
    return ValNumber;
}

std::optional<base::Refusal> rewrite_plot(const fs::path& source, const fs::path& target,
                                          const PlotRewrite& rewrite, base::Interaction& user) {
    if (auto refusal = refusal_of(source, rewrite)) {
        return refusal;
    }
    Source lines(source);
    const Head head = read_head(lines);
    const std::vector<std::string> names = Edit_Parameter(head.names, rewrite);
    const Columns columns(rewrite, names);
    TableFile table(target);
    if (head.title) {
        write_line(table, *head.title);
    }
    write_line(table, variables_line(names));
    write_line(table, head.zone_line);
    write_zones(lines, columns, table, user);
    lines.require_unchanged();
    table.finish();
    user.message(base::Icon::information, dialog_title, "Rewrite has finished!");
    return std::nullopt;
}

} // namespace convert
