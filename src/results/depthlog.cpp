#include "results/depthlog.h"

#include "base/failure.h"
#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/modelflags.h"
#include "core/project.h"
#include "results/field.h"
#include "results/streamreader.h"

#include <fmt/format.h>

#include <algorithm>
#include <ctime>
#include <limits>

namespace results {

namespace {

constexpr std::string_view point_caption = "Monitoring Point: ";
constexpr std::string_view head_columns =
    " I0, J0, Depth, Perm, Por, Density, Head, Temp, Vx, Vy, Vz, Pres";
constexpr int most_blocks = 99;
constexpr int most_fields = 24;
constexpr int fixed_fields = 12;

// The blocks with their captions, in the order of reading.
struct LogBlock {
    const char* caption;
    const char* key;
};
constexpr LogBlock blocks[] = {
    {"Load pressure data", "# PRES"},
    {"Load porosity data", "# POR"},
    {"Load density data", "# DICHTE"},
    {"Load permeability data", "# PERM"},
    {"Load hydraulic head data", "# PHI"},
    {"Load Vx data", "# VX"},
    {"Load Vy data", "# VY"},
    {"Load Vz data", "# VZ"},
    {"Load temperature data", "# TEMP"},
};
// Their indices in the order of the table's columns.
constexpr std::size_t written_order[] = {3, 1, 2, 4, 8, 5, 6, 7, 0};

// Count behind a key line; 0 without one.
int quiet_counter(StreamReader& stream, std::string_view key) {
    stream.rewind();
    const int count = stream.find_prefix(key) ? stream.next_line_int(key) : 0;
    if (count < 0 || count > most_blocks) {
        throw base::FileFailure(
            fmt::format("{} is {}, where 0 to {} was expected", key, count, most_blocks),
            stream.file());
    }
    return count;
}

// Cells along an axis by the stream, where it tells them.
bool axis_differs(StreamReader& stream, std::string_view key, int expected) {
    stream.rewind();
    return stream.JumpToPos(key) && stream.next_line_int(key) != expected;
}

// The logs of one result: values by block, then point, then layer.
class LogTable {
public:
    LogTable(const core::Project& project, const std::vector<MonitoringCell>& points,
             const std::filesystem::path& result, std::filesystem::path list,
             base::Interaction& user)
        : horizontal_(project.flags.GridOrientation() == core::horizontal), stream_(result),
          list_(std::move(list)), user_(user) {
        grid_.I0 = project.NX();
        grid_.J0 = horizontal_ ? project.NY() : project.NZ();
        grid_.K0 = horizontal_ ? project.NZ() : project.NY();
        std::ranges::copy_if(points, std::back_inserter(points_), &MonitoringCell::has_cell);
    }

    bool fits() {
        return !axis_differs(stream_, "# I0", grid_.I0) &&
               !axis_differs(stream_, "# J0", grid_.J0) && !axis_differs(stream_, "# K0", grid_.K0);
    }

    void read() {
        substances_ = quiet_counter(stream_, "# ANZSUBS");
        minerals_ = quiet_counter(stream_, "# ANZMINS");
        for (const LogBlock& block : blocks) {
            read_block(block.caption, block.key);
        }
        for (int n = 1; n <= substances_; ++n) {
            read_block(fmt::format("Load concentration data: Substance {}", n),
                       numbered_key("# CONC", n));
        }
        for (int n = 1; n <= written_minerals(); ++n) {
            read_block(fmt::format("Load mineral data: Mineral {}", n), numbered_key("# CONCM", n));
        }
    }

    std::string head() const {
        std::string text(head_columns);
        if (substances_ > 0) {
            text += fmt::format(", {}*CONC", substances_);
            text += minerals_ > 0 ? fmt::format(", {}*MIN", minerals_) : "";
        }
        return text;
    }

    void add_points(std::span<const float> altitudes, std::vector<std::string>& lines) const {
        for (std::size_t p = 0; p < points_.size(); ++p) {
            user_.status(fmt::format("Data Load and Store (Monitoring Point {})", points_[p].slot));
            lines.push_back(std::string(point_caption) + points_[p].bore.Name);
            for (int layer = grid_.K0; layer >= 1; --layer) {
                lines.push_back(row_text(p, layer, altitudes[std::size_t(layer - 1)]));
            }
            lines.emplace_back();
        }
    }

private:
    // The table has no column for minerals without substances.
    int written_minerals() const { return substances_ > 0 ? minerals_ : 0; }

    // Row of the field in which a point lies. The sections run along the simulator's J.
    int field_row(const MonitoringCell& point) const {
        if (horizontal_) {
            return point.row;
        }
        if (point.layer < 1 || point.layer > grid_.J0) {
            throw base::FileFailure(fmt::format("Monitoring Point {} lies in section {} of {}",
                                                point.slot, point.layer, grid_.J0),
                                    list_);
        }
        return grid_.J0 + 1 - point.layer;
    }

    void read_block(const std::string& caption, const std::string& key) {
        user_.status(caption);
        stream_.rewind();
        if (!stream_.find_prefix(key)) {
            throw base::FileFailure(fmt::format("has no block {}", key), stream_.file());
        }
        const Field field = read_field(stream_, grid_, FieldOrder::worksheet,
                                       RepeatCount::rounded_32, key, nullptr, user_);
        std::vector<float> values;
        for (const MonitoringCell& point : points_) {
            const int row = field_row(point);
            for (int layer = 1; layer <= grid_.K0; ++layer) {
                values.push_back(field.at(layer, row, point.column));
            }
        }
        values_.push_back(std::move(values));
    }

    std::string row_text(std::size_t point, int layer, float altitude) const {
        const std::size_t cell =
            point * std::size_t(grid_.K0) + static_cast<std::size_t>(layer - 1);
        base::PrintLine line;
        line.add(base::printed(points_[point].column)).zone();
        line.add(base::printed(points_[point].row)).zone().add(base::bare_text(altitude));
        for (const std::size_t block : written_order) {
            line.zone().add(base::bare_text(values_[block][cell]));
        }
        line.add("  ");
        for (std::size_t block = std::size(blocks); block < values_.size(); ++block) {
            line.add(fmt::format(" {} ", base::bare_text(values_[block][cell])));
        }
        return line.text();
    }

    bool horizontal_;
    StreamReader stream_;
    std::filesystem::path list_; // of the points
    base::Interaction& user_;
    StreamGrid grid_;
    std::vector<MonitoringCell> points_;
    int substances_ = 0, minerals_ = 0;
    std::vector<std::vector<float>> values_;
};

std::string date_and_time(std::chrono::system_clock::time_point now) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", local.tm_year + 1900,
                       local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
}

// Heights of the cells down the worksheet: of its layers or, in a cross-section, of its rows.
std::vector<float> altitudes_of(const core::Project& project, const core::ModelFiles& files) {
    const bool horizontal = project.flags.GridOrientation() == core::horizontal;
    return centre_altitudes(horizontal ? Layerdicke(project, files)
                                       : grid_of_project(project, files).Row_Height);
}

} // namespace

Imported Import_Data_Monitor(const core::Project& project, const core::ModelFiles& files,
                             const std::vector<MonitoringCell>& points,
                             const std::filesystem::path& result, core::ModelFiles& target,
                             std::chrono::system_clock::time_point now, base::Interaction& user) {
    const auto table = [&]() -> std::optional<std::string> {
        const std::vector<float> altitudes = altitudes_of(project, files);
        LogTable logs(project, points, result, files.name_of(".pol"), user);
        if (!logs.fits()) {
            base::show(user, {import_title, "The grid of the result file differs from the model."});
            return std::nullopt;
        }
        logs.read();
        std::vector<std::string> lines{files.base_name(), date_and_time(now), logs.head()};
        logs.add_points(altitudes, lines);
        return base::to_text_file(lines);
    };
    return import_table("Import_Data_Monitor", target, ".cal", table, user);
}

namespace {

bool is_row(std::string_view line) {
    return line.starts_with(' ');
}

// Rows of the first point: those behind four lines.
std::size_t count_rows(const std::vector<std::string>& lines) {
    constexpr std::size_t head_lines = 4;
    std::size_t rows = 0;
    while (head_lines + rows < lines.size() && is_row(lines[head_lines + rows])) {
        ++rows;
    }
    return rows;
}

// Behind the line that names the point.
std::size_t find_point(const std::vector<std::string>& lines, std::string_view point,
                       const std::filesystem::path& file) {
    const std::string caption =
        std::string(base::trimmed_right(std::string(point_caption) + std::string(point)));
    const auto found = std::ranges::find(lines, caption, [](const std::string& line) {
        return std::string(base::trimmed_right(line));
    });
    if (found == lines.end()) {
        throw base::FileFailure(fmt::format("has no log of the Monitoring Point \"{}\"", point),
                                file);
    }
    return static_cast<std::size_t>(found - lines.begin()) + 1;
}

// The count before a word of the head line: 3 of "3*CONC"; 0 when the word is not there.
int count_in_head(std::string_view head, std::string_view word) {
    const std::size_t at = head.find(word);
    if (at == std::string_view::npos) {
        return 0;
    }
    const std::size_t begin = head.find_last_of(" ,", at) + 1;
    return base::leading_int32(head.substr(begin, at - begin));
}

int field_of(const std::vector<std::string>& lines, int index, int number,
             const std::filesystem::path& file) {
    const int field = log_parameters[index].field;
    if (index != solute_index && index != mineral_index) {
        return field;
    }
    const std::string_view head = lines.size() > 2 ? std::string_view(lines[2]) : "";
    const int solutes = count_in_head(head, "*CONC");
    const bool solute = index == solute_index;
    const int count = solute ? solutes : count_in_head(head, "*MIN");
    const std::int64_t wanted = std::int64_t{field} + (solute ? 0 : solutes) + number - 1;
    const char* const kind = solute ? "solute" : "mineral";
    if (number < 1 || number > count) {
        throw base::FileFailure(
            fmt::format("has no {} {}, its logs hold {} {}s", kind, number, count, kind), file);
    }
    if (wanted > most_fields) {
        throw base::FileFailure(fmt::format("has {} {} behind the {} fields of a row that are read",
                                            kind, number, most_fields),
                                file);
    }
    return static_cast<int>(wanted);
}

std::vector<float> fields_of_row(const std::vector<std::string>& lines, std::size_t line,
                                 const std::filesystem::path& file) {
    std::vector<float> fields;
    if (line < lines.size() && is_row(lines[line])) {
        base::NumberReader reader(lines[line], file);
        while (fields.size() < most_fields) {
            const auto number = reader.next_if();
            if (!number) {
                break;
            }
            constexpr double largest = std::numeric_limits<float>::max();
            fields.push_back(static_cast<float>(std::clamp(*number, -largest, largest)));
        }
    }
    return fields;
}

} // namespace

LogChart Get_Array(std::string_view bytes, const std::filesystem::path& file,
                   std::string_view point, int index, int number) {
    constexpr std::size_t altitude_field = 3;
    const std::vector<std::string> lines = base::text_lines(bytes);
    const std::size_t rows = count_rows(lines), first = find_point(lines, point, file);
    const auto field = static_cast<std::size_t>(field_of(lines, index, number, file));
    const std::size_t needed = std::max<std::size_t>(field, fixed_fields);
    if (rows == 0) {
        throw base::FileFailure("has no row in line 5", file);
    }
    LogChart chart{
        std::string(point_caption) + std::string(point), log_parameters[index].label, {}, {}};
    for (std::size_t line = first; line < first + rows; ++line) {
        const std::vector<float> fields = fields_of_row(lines, line, file);
        if (fields.size() < needed) {
            throw base::FileFailure(fmt::format("has {} fields in line {}, where {} were expected",
                                                fields.size(), line + 1, needed),
                                    file);
        }
        chart.values.push_back(fields[field - 1]);
        chart.altitudes.push_back(fields[altitude_field - 1]);
    }
    return chart;
}

} // namespace results
