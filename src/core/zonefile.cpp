#include "core/zonefile.h"

#include "base/binaryio.h"
#include "base/failure.h"
#include "base/numbertext.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/randomfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace core {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t mark_bytes = zone_mark.size();
constexpr std::size_t entry_bytes = 2;
constexpr std::size_t head_bytes = zone_head_bytes;
constexpr std::size_t block_head_bytes = 20;
constexpr std::size_t slot_bytes = 390;
constexpr std::size_t block_bytes = zone_block_bytes;
constexpr int unused_singles = 4;
constexpr int last_record = std::numeric_limits<std::int16_t>::max();

static_assert(head_bytes == mark_bytes + entry_bytes * period_count &&
              block_bytes == block_head_bytes + max_zones * slot_bytes);

void require(bool holds, const std::string& what) {
    if (!holds) {
        throw base::RangeFailure(what);
    }
}

void append_zone(base::ByteWriter& block, const Zone& zone) {
    require(zone.nodes >= 0 && zone.nodes <= Zone::max_nodes,
            fmt::format("a zone has {} nodes", zone.nodes));
    const std::size_t begin = block.data().size();
    block.int16(static_cast<std::int16_t>(zone.nodes));
    block.single(zone.value);
    for (const float value : zone.param) {
        block.single(value);
    }
    for (std::size_t node = 1; node <= static_cast<std::size_t>(zone.nodes); ++node) {
        block.single(zone.x[node]);
        block.single(zone.y[node]);
    }
    block.zeros(begin + slot_bytes - block.data().size());
}

std::string block_of(const std::vector<Zone>& zones) {
    require(zones.size() <= max_zones,
            fmt::format("{} zones are given for one layer", zones.size()));
    base::ByteWriter block;
    block.single(static_cast<float>(zones.size()));
    for (int i = 0; i < unused_singles; ++i) {
        block.single(0);
    }
    for (const Zone& zone : zones) {
        append_zone(block, zone);
    }
    block.zeros(block_bytes - block.data().size());
    return block.data();
}

// Takes the block of one layer apart. It stands at `start` of the file, for messages.
class BlockReader {
public:
    BlockReader(std::string_view block, std::uint64_t start, const fs::path& file)
        : bytes_(block, file), start_(start), file_(file) {}

    std::vector<Zone> zones() {
        std::vector<Zone> zones(static_cast<std::size_t>(Zone_Count()));
        bytes_.skip(block_head_bytes - bytes_.position(), "the head of a layer");
        for (Zone& zone : zones) {
            read(zone);
            Close_Zone(zone);
        }
        return zones;
    }

private:
    int Zone_Count() {
        const float count = bytes_.single("the number of zones");
        if (!(count >= 0 && count <= max_zones) || count != std::floor(count)) {
            fail(0, fmt::format("the number of zones is {}, where 0 to {} was expected",
                                std::isfinite(count) ? base::exact_text(count) : "no number",
                                max_zones));
        }
        return static_cast<int>(count);
    }

    void read(Zone& zone) {
        const std::size_t begin = bytes_.position();
        zone.nodes = bytes_.int16("the number of nodes");
        if (zone.nodes < 0 || zone.nodes > Zone::max_nodes) {
            fail(begin, fmt::format("the number of nodes is {}, where 0 to {} was expected",
                                    zone.nodes, Zone::max_nodes));
        }
        zone.value = bytes_.single("the value of a zone");
        for (float& value : zone.param) {
            value = bytes_.single("a value of a zone");
        }
        for (std::size_t node = 1; node <= static_cast<std::size_t>(zone.nodes); ++node) {
            zone.x[node] = bytes_.single("a node");
            zone.y[node] = bytes_.single("a node");
        }
        bytes_.skip(begin + slot_bytes - bytes_.position(), "the rest of a zone");
    }

    [[noreturn]] void fail(std::size_t at, const std::string& what) const {
        throw base::FileFailure(fmt::format("byte {}: {}", start_ + at, what), file_);
    }

    base::ByteReader bytes_;
    std::uint64_t start_;
    fs::path file_;
};

} // namespace

void Close_Zone(Zone& zone) {
    if (zone.nodes < 1) {
        return;
    }
    const auto last = static_cast<std::size_t>(zone.nodes);
    std::size_t lowest = 1;
    for (std::size_t node = 2; node <= last; ++node) {
        if (zone.y[node] < zone.y[lowest] ||
            (zone.y[node] == zone.y[lowest] && zone.x[node] < zone.x[lowest])) {
            lowest = node;
        }
    }
    std::size_t corner = 12;
    for (auto* const coordinates : {&zone.x, &zone.y}) {
        float* const first = coordinates->data() + 1;
        std::rotate(first, coordinates->data() + lowest, first + last);
        (*coordinates)[0] = (*coordinates)[last];
        (*coordinates)[last + 1] = (*coordinates)[1];
        const auto [least, greatest] = std::minmax_element(first, first + last);
        zone.param[corner] = *least;
        zone.param[corner + 2] = *greatest;
        ++corner;
    }
}

// Mark and record numbers at the beginning of a zone file.
class ZoneFile::Table {
public:
    explicit Table(const fs::path& file) : bytes_(head_bytes, '\0'), file_(file) {
        bytes_.replace(0, mark_bytes, zone_mark);
    }
    // A file with a foreign mark is as good as none.
    explicit Table(const RandomFile& file) : Table(file.shown()) {
        std::string stored(head_bytes, '\0');
        file.read(0, stored);
        stored_ = stored.starts_with(zone_mark) || stored.starts_with(older_zone_mark);
        if (stored_) {
            bytes_ = stored;
        }
    }

    bool stored() const { return stored_; }
    bool older() const { return bytes_.starts_with(older_zone_mark); }
    std::string_view bytes() const { return bytes_; }

    int record(int period) const {
        const int record = base::int16_at(bytes_, offset(period));
        if (record < 0) {
            throw base::FileFailure(
                fmt::format("byte {}: the record number of period {} is {}, where 0 or more was "
                            "expected",
                            offset(period), period, record),
                file_);
        }
        return record;
    }

    int assign(int period) {
        bytes_.replace(0, mark_bytes, zone_mark);
        if (const int old = record(period); old != 0) {
            return old;
        }
        int largest = 0;
        for (int other = 1; other <= period_count; ++other) {
            largest = std::max<int>(largest, base::int16_at(bytes_, offset(other)));
        }
        if (largest >= last_record) {
            throw base::FileFailure(
                fmt::format("new zones would get a record beyond {}", last_record), file_);
        }
        base::ByteWriter entry;
        entry.int16(static_cast<std::int16_t>(largest + 1));
        bytes_.replace(offset(period), entry_bytes, entry.data());
        return largest + 1;
    }

private:
    static std::size_t offset(int period) {
        return mark_bytes + entry_bytes * static_cast<std::size_t>(period - 1);
    }

    std::string bytes_;
    fs::path file_; // named in failures
    bool stored_ = false;
};

fs::path ZoneFile::scratch_file(const ModelFiles& files) {
    return files.base() + ".{Z}";
}

fs::path ZoneFile::file_of(int number) const {
    if (number == scratch) {
        return scratch_file(*files_);
    }
    const std::string& extension = file_ext(zone_number(number));
    require(!extension.empty(), fmt::format("parameter {} has no zone file", number));
    return files_->name_of(extension);
}

RandomFile ZoneFile::open_for_writing(int number, bool fresh) {
    const fs::path file = file_of(number);
    return RandomFile(files_->open_file_aside(file, fresh), RandomFile::Mode::update, file);
}

ZoneFile::Table ZoneFile::read_table(int number) const {
    const fs::path name = file_of(number);
    const auto place = files_->find_file(name);
    return place ? Table(RandomFile(*place, RandomFile::Mode::read, name)) : Table(name);
}

void ZoneFile::require_place(int period, int layer) const {
    require(period >= 1 && period <= period_count,
            fmt::format("period {} is outside 1 to {}", period, period_count));
    require(layer >= 1 && layer <= layers_,
            fmt::format("layer {} is outside 1 to {}", layer, layers_));
}

// A file that was cut off has lost the record of every period at most. What lies farther behind its
// end is a damaged table.
void ZoneFile::require_near_end(const RandomFile& file, int period, int record) const {
    if (record > period_count && record_start(record - period_count) > file.size()) {
        throw base::FileFailure(fmt::format("period {} would get record {} of a file of {} bytes",
                                            period, record, file.size()),
                                file.shown());
    }
}

std::uint64_t ZoneFile::record_start(int record) const {
    return head_bytes + static_cast<std::uint64_t>(record - 1) *
                            static_cast<std::uint64_t>(layers_) * block_bytes;
}

std::uint64_t ZoneFile::block_start(int record, int layer) const {
    return record_start(record) + static_cast<std::uint64_t>(layer - 1) * block_bytes;
}

std::vector<Zone> ZoneFile::read_zones(int period, int layer, int number) const {
    require_place(period, layer);
    const fs::path name = file_of(number);
    const auto place = files_->find_file(name);
    if (!place) {
        return {};
    }
    const RandomFile file(*place, RandomFile::Mode::read, name);
    const int record = Table(file).record(period);
    if (record == 0) {
        return {};
    }
    const std::uint64_t start = block_start(record, layer);
    std::string block(block_bytes, '\0');
    file.read(start, block);
    return BlockReader(block, start, name).zones();
}

void ZoneFile::write_zones(int period, int layer, int number, const std::vector<Zone>& zones) {
    require_place(period, layer);
    const std::string block = block_of(zones);
    Table table = read_table(number);
    const int record = table.assign(period);
    RandomFile file = open_for_writing(number, !table.stored());
    require_near_end(file, period, record);
    file.write(0, table.bytes());
    file.extend(record_start(record + 1));
    file.write(block_start(record, layer), block);
}

void ZoneFile::create_zone_file(int number) {
    require_place(1, 1);
    Table table(file_of(number));
    table.assign(1);
    RandomFile file = open_for_writing(number, true);
    file.write(0, table.bytes());
    file.extend(record_start(2));
}

bool ZoneFile::Upgrade_Zone_File(int number) {
    const bool older = read_table(number).older();
    if (older) {
        open_for_writing(number, false).write(0, zone_mark);
    }
    return older;
}

bool ZoneFile::has_period(int period, int number) const {
    require_place(period, 1);
    return read_table(number).record(period) != 0;
}

} // namespace core
