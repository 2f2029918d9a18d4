// Zone companion files: polygons with a value, at most 20 for each layer of each period.
//
// The bytes only: an 18-byte mark, a table of 1000 16-bit record numbers, records of one block of
// 7820 bytes for each layer. What zones mean to the cells is the worksheet's business.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

namespace core {

class ModelFiles;
class RandomFile;

struct Zone {
    static constexpr int max_nodes = 40;

    int nodes = 0;
    float value = 0;
    // Values of further parameters in slots 1 to 12; slots 13 to 16 are the bounding box (x
    // minimum, y minimum, x maximum, y maximum). Index from 0 here.
    std::array<float, 16> param{};
    // Nodes 1 to `nodes`; index 0 repeats the last one and `nodes` + 1 the first one once closed.
    std::array<float, max_nodes + 3> x{}, y{};
};

inline constexpr int max_zones = 20;

// The layout of the file: mark and record numbers, then a block for each layer of each record. An
// older file has the same with another mark.
inline constexpr std::string_view zone_mark = "BALDO5000_ZONEFILE";
inline constexpr std::string_view older_zone_mark = "BALDO4000_ZONEFILE";
inline constexpr std::size_t zone_head_bytes = 2018;
inline constexpr std::size_t zone_block_bytes = 7820;

// Puts the lowest (then leftmost) node first, closes the ring and computes the bounding box. The
// direction stays. Nothing for a zone without nodes.
void Close_Zone(Zone& zone);

// A period outside 1 to 1000, a layer outside 1 to `layers`, a number without extension and a
// primary number above 1100 are a RangeFailure in every operation.
class ZoneFile {
public:
    // Number of the session's scratch file <base>.{Z}.
    static constexpr int scratch = 0;
    static std::filesystem::path scratch_file(const ModelFiles& files);

    // `layers` of the primary parameter that the zones belong to.
    ZoneFile(ModelFiles& files, int layers) : files_(&files), layers_(layers) {}

    // Closed zones of one layer of one period; empty for a missing file, a period without record
    // and a file with an unknown mark. Bytes behind the end of the file count as 0. FileFailure for
    // a count of zones or nodes that cannot be.
    std::vector<Zone> read_zones(int period, int layer, int number) const;
    // A primary number is turned into its zone number. A period without record gets the next one,
    // with empty blocks for its other layers. A missing file and one with an unknown mark begin
    // anew.
    void write_zones(int period, int layer, int number, const std::vector<Zone>& zones);
    // Mark, table and a full set of empty blocks for period 1, in the place of an older file.
    void create_zone_file(int number);
    // Rewrites an older file in the present layout; false when there was nothing to do.
    bool Upgrade_Zone_File(int number);
    bool has_period(int period, int number) const;

private:
    class Table;

    std::filesystem::path file_of(int number) const;
    RandomFile open_for_writing(int number, bool fresh);
    Table read_table(int number) const;
    void require_place(int period, int layer) const;
    void require_near_end(const RandomFile& file, int period, int record) const;
    std::uint64_t record_start(int record) const;
    std::uint64_t block_start(int record, int layer) const;

    ModelFiles* files_;
    int layers_;
};

} // namespace core
