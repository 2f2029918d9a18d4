// The files of a model, read by their layouts alone and with no code of the program.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace support {

// A cell of the worksheet, each from 1.
struct WorksheetCell {
    int column, row, layer;
};

struct ModelPeriod {
    bool used;
    double length, steps, monitoring, shift;
};

struct ModelPoint {
    bool active;
    double x, y;
    int layer;
};

class ModelReader {
public:
    // `base`: full path of the project file without its extension.
    explicit ModelReader(std::filesystem::path base);

    int columns = 0, rows = 0, layers = 0;
    std::vector<double> widths, heights;      // [m], column 1 and row 1 first
    std::vector<int> layer_types;             // layer 1 first
    std::vector<double> thickness;            // [m]
    std::vector<std::string> rock_lines;      // lines of the rock file
    int time_unit = 0;                        // 0 to 5
    std::vector<ModelPeriod> periods;         // 100
    std::vector<ModelPoint> points;           // 100
    std::vector<std::vector<double>> tracers; // number, active mark, concentration, BetaC

    bool has(const std::string& extension) const;
    // Value of a key of the project file, empty when it is missing.
    std::string setting(std::string_view section, std::string_view key) const;
    // A cell of ModelFlags.
    int flag(int a, int b) const;
    // Value of a cell; `otherwise` when the array or its period is not there.
    float value(const std::string& extension, WorksheetCell cell, float otherwise,
                int period = 1) const;
    // The zone's field of a line of the rock file, without the blanks around it.
    std::string zone_field(int line, int zone) const;

private:
    std::string bytes_of(const std::string& extension) const;

    std::filesystem::path base_;
    std::vector<std::string> project_lines_;
    mutable std::map<std::string, std::string>
        arrays_; // files by extension, read when first asked for
};

} // namespace support
