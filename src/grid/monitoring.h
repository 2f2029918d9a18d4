// Monitoring Points and observed values, <base>.pol, and their exchange forms .BOR and .OBS.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace core {
class ModelFiles;
}

namespace grid {

struct Bore {
    std::string Name; // at most 8 characters, without trailing blanks
    bool Active = false;
    float X = 0; // easting [m]
    float Y = 0; // northing [m], in a cross-section height [m]
    std::int16_t Layer = 0;
    std::int16_t Second_Index = 0;
    float Last_Value = 0;
};

struct Observation {
    std::string Bore_Name; // at most 8 characters
    std::int16_t Flag = 0;
    float Time = 0, Weight = 0, Head = 0, Drawdown = 0, Concentration = 0, Compaction = 0,
          Preconsolidation = 0, Subsidence = 0;
};

struct MonitoringList {
    static constexpr int slot_count = 100;
    static constexpr int max_observations = 10000;

    std::array<Bore, slot_count> bores; // slot n at index n - 1
    std::vector<Observation> observations;
    int Observation_Option = 1; // 1 drawdowns, 2 heads
};

// A name as the 8-character fields keep it: its first eight characters, control characters as
// blanks, without trailing blanks.
std::string point_name(std::string_view text);

// What reading a .pol gave: `rewrite` when the file is missing, foreign or of the older form and
// has to be written new at once.
struct ReadPoints {
    MonitoringList list;
    bool rewrite = false;
};
// A file that ends before the last slot counts as foreign; an observation that is cut off is
// dropped.
ReadPoints read_points(std::string_view bytes);
std::string points_bytes(const MonitoringList& list);

// The model's list; empty when there is no file.
MonitoringList Read_Monitoring_Points(const core::ModelFiles& files);
void Write_Monitoring_Points(const MonitoringList& list, core::ModelFiles& files);

// Exchange forms. Reading replaces bores (observations) of `list`: as many rows as the count in the
// second line says and the file has, numbers by their prefix, the rest of a line is the name.
// False, and the list as it was, when the first line is not that of the form.
std::string bores_text(const MonitoringList& list);
bool bores_from_text(std::string_view bytes, MonitoringList& list);
std::string observations_text(const MonitoringList& list);
bool observations_from_text(std::string_view bytes, MonitoringList& list);

} // namespace grid
