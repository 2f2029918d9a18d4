#include "grid/monitoring.h"

#include "base/binaryio.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"

#include <algorithm>
#include <optional>

namespace grid {

namespace {

constexpr std::string_view current_magic = "BALDO5000_OBS_FILE";
constexpr std::string_view older_magic = "BALDO4000_OBS_FILE";
constexpr std::size_t name_width = 8;
constexpr std::size_t head_size = 20; // magic and option

// Sizes of a record. The current form ends each record with two filler bytes.
struct Layout {
    std::size_t bore, observation, filler;
};
constexpr Layout current_layout = {28, 44, 2};
constexpr Layout older_layout = {26, 42, 0};

// The real columns of an observation, in the order of both file forms.
constexpr float Observation::*values[] = {&Observation::Time,
                                          &Observation::Weight,
                                          &Observation::Head,
                                          &Observation::Drawdown,
                                          &Observation::Concentration,
                                          &Observation::Compaction,
                                          &Observation::Preconsolidation,
                                          &Observation::Subsidence};

Bore read_bore(base::ByteReader& reader, std::size_t filler) {
    Bore bore;
    bore.Name = point_name(reader.fixed_text(name_width, "the name of a point"));
    bore.Active = reader.int16("the mark of a point") != 0;
    bore.X = reader.single("the easting of a point");
    bore.Y = reader.single("the northing of a point");
    bore.Layer = reader.int16("the layer of a point");
    bore.Second_Index = reader.int16("the second index of a point");
    bore.Last_Value = reader.single("the last value of a point");
    reader.skip(filler, "the end of a point");
    return bore;
}

void write_bore(const Bore& bore, base::ByteWriter& writer) {
    writer.fixed_text(bore.Name, name_width);
    writer.int16(bore.Active ? -1 : 0);
    writer.single(bore.X);
    writer.single(bore.Y);
    writer.int16(bore.Layer);
    writer.int16(bore.Second_Index);
    writer.single(bore.Last_Value);
    writer.zeros(current_layout.filler);
}

Observation read_observation(base::ByteReader& reader, std::size_t filler) {
    Observation observation;
    observation.Bore_Name = point_name(reader.fixed_text(name_width, "the name of an observation"));
    observation.Flag = reader.int16("the flag of an observation");
    for (const auto value : values) {
        observation.*value = reader.single("a value of an observation");
    }
    reader.skip(filler, "the end of an observation");
    return observation;
}

void write_observation(const Observation& observation, base::ByteWriter& writer) {
    writer.fixed_text(observation.Bore_Name, name_width);
    writer.int16(observation.Flag);
    for (const auto value : values) {
        writer.single(observation.*value);
    }
    writer.zeros(current_layout.filler);
}

// Cuts an exchange line into its numbers and the name behind them.
class ExchangeLine {
public:
    explicit ExchangeLine(std::string_view line) : rest_(line) {}

    std::int16_t int16() { return base::leading_int16(word()); }
    float single() { return base::leading_single(word()); }
    // Without blanks in front, even those that stood for control characters.
    std::string name() const {
        return std::string(base::trimmed(point_name(base::trimmed(rest_))));
    }

private:
    std::string_view word() {
        rest_ = base::trimmed(rest_);
        const std::string_view word = rest_.substr(0, rest_.find_first_of(" \t"));
        rest_.remove_prefix(word.size());
        return word;
    }

    std::string_view rest_;
};

std::string bore_line(const Bore& bore) {
    return base::column_integer(bore.Active ? -1 : 0, 3) + base::column_real(bore.X, 14) +
           base::column_real(bore.Y, 14) + base::column_integer(bore.Layer, 4) +
           base::column_integer(bore.Second_Index, 4) + base::column_real(bore.Last_Value, 14) +
           "   " + bore.Name;
}

Bore bore_of(ExchangeLine line) {
    Bore bore;
    bore.Active = line.int16() != 0;
    bore.X = line.single();
    bore.Y = line.single();
    bore.Layer = line.int16();
    bore.Second_Index = line.int16();
    bore.Last_Value = line.single();
    bore.Name = line.name();
    return bore;
}

std::string observation_line(const Observation& observation) {
    std::string line = base::column_integer(observation.Flag, 3);
    for (const auto value : values) {
        line += base::column_real(observation.*value, 14);
    }
    return line + "   " + observation.Bore_Name;
}

Observation observation_of(ExchangeLine line) {
    Observation observation;
    observation.Flag = line.int16();
    for (const auto value : values) {
        observation.*value = line.single();
    }
    observation.Bore_Name = line.name();
    return observation;
}

// The rows of an exchange file, at most `limit`; nothing when its first line is neither magic.
std::optional<std::vector<std::string>> exchange_rows(std::string_view bytes,
                                                      std::string_view magic,
                                                      std::string_view old_magic, int limit) {
    std::vector<std::string> lines = base::text_lines(bytes);
    const std::string_view first = lines.empty() ? std::string_view() : base::trimmed(lines[0]);
    if (first != magic && first != old_magic) {
        return std::nullopt;
    }
    const std::int32_t count = lines.size() < 2 ? 0 : base::leading_int32(lines[1]);
    lines.erase(lines.begin(), lines.begin() + std::min<std::ptrdiff_t>(2, std::ssize(lines)));
    lines.resize(std::min(lines.size(), static_cast<std::size_t>(std::clamp(count, 0, limit))));
    return lines;
}

} // namespace

std::string point_name(std::string_view text) {
    std::string name(text);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    return std::string(base::trimmed_right(base::first_characters(name, name_width)));
}

ReadPoints read_points(std::string_view bytes) {
    const bool is_current = bytes.starts_with(current_magic);
    const Layout& layout = is_current ? current_layout : older_layout;
    const std::size_t points_end = head_size + MonitoringList::slot_count * layout.bore;
    ReadPoints result;
    result.rewrite = !is_current || bytes.size() < points_end;
    if ((!is_current && !bytes.starts_with(older_magic)) || bytes.size() < points_end) {
        return result;
    }
    base::ByteReader reader(bytes, ".pol");
    reader.skip(current_magic.size(), "the kind of file");
    result.list.Observation_Option = reader.int16("the option") == 2 ? 2 : 1;
    for (Bore& bore : result.list.bores) {
        bore = read_bore(reader, layout.filler);
    }
    const std::size_t rows = std::min<std::size_t>(reader.remaining() / layout.observation,
                                                   MonitoringList::max_observations);
    result.list.observations.reserve(rows);
    for (std::size_t row = 0; row < rows; ++row) {
        result.list.observations.push_back(read_observation(reader, layout.filler));
    }
    return result;
}

std::string points_bytes(const MonitoringList& list) {
    base::ByteWriter writer;
    writer.bytes(current_magic);
    writer.int16(static_cast<std::int16_t>(list.Observation_Option));
    for (const Bore& bore : list.bores) {
        write_bore(bore, writer);
    }
    for (const Observation& observation : list.observations) {
        write_observation(observation, writer);
    }
    return writer.data();
}

MonitoringList Read_Monitoring_Points(const core::ModelFiles& files) {
    const auto bytes = files.read_if(".pol");
    return bytes ? read_points(*bytes).list : MonitoringList();
}

void Write_Monitoring_Points(const MonitoringList& list, core::ModelFiles& files) {
    files.write(".pol", points_bytes(list));
}

std::string bores_text(const MonitoringList& list) {
    std::vector<std::string> lines = {"BALDO5000_BOR_FILE",
                                      base::printed(MonitoringList::slot_count)};
    for (const Bore& bore : list.bores) {
        lines.push_back(bore_line(bore));
    }
    return base::to_text_file(lines);
}

bool bores_from_text(std::string_view bytes, MonitoringList& list) {
    const auto rows = exchange_rows(bytes, "BALDO5000_BOR_FILE", "BALDO4000_BOR_FILE",
                                    MonitoringList::slot_count);
    if (!rows) {
        return false;
    }
    list.bores = {};
    for (std::size_t slot = 0; slot < rows->size(); ++slot) {
        list.bores[slot] = bore_of(ExchangeLine((*rows)[slot]));
    }
    return true;
}

std::string observations_text(const MonitoringList& list) {
    std::vector<std::string> lines = {
        std::string(current_magic),
        base::printed(static_cast<std::int64_t>(list.observations.size()))};
    for (const Observation& observation : list.observations) {
        lines.push_back(observation_line(observation));
    }
    return base::to_text_file(lines);
}

bool observations_from_text(std::string_view bytes, MonitoringList& list) {
    const auto rows =
        exchange_rows(bytes, current_magic, older_magic, MonitoringList::max_observations);
    if (!rows) {
        return false;
    }
    list.observations.clear();
    for (const std::string& row : *rows) {
        list.observations.push_back(observation_of(ExchangeLine(row)));
    }
    return true;
}

} // namespace grid
