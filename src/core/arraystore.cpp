#include "core/arraystore.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/periodtables.h"
#include "core/project.h"
#include "core/randomfile.h"
#include "core/zonefile.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace core {

namespace fs = std::filesystem;

namespace {

// Grid numbers are 16-bit; within them every offset of a record fits into 64 bits.
constexpr int largest_dimension = std::numeric_limits<std::int16_t>::max();
constexpr int first_period_only = 85; // a parameter that does not vary with time
constexpr std::uint64_t single_bytes = 4;
constexpr std::uint64_t cells_of_block = std::uint64_t{1} << 18;

void require(bool holds, const char* what, int number, int last) {
    if (!holds) {
        throw base::RangeFailure(fmt::format("{} {} is outside 1 to {}", what, number, last));
    }
}

std::uint64_t unsigned_product(int a, int b) {
    return static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b);
}

int period_to_read(int number, int period) {
    return number == first_period_only ? 1 : period;
}

void write_filled(RandomFile& file, std::uint64_t offset, std::uint64_t cells, float value) {
    const std::vector<float> block(std::min(cells, cells_of_block), value);
    while (cells > 0) {
        const std::uint64_t count = std::min<std::uint64_t>(cells, block.size());
        file.write_singles(offset, std::span(block).first(count));
        offset += count * single_bytes;
        cells -= count;
    }
}

} // namespace

ArrayStore::ArrayStore(ModelFiles& files, int nx, int ny, int nz)
    : files_(&files), nx_(nx), ny_(ny), nz_(nz) {}

ArrayStore::ArrayStore(ModelFiles& files, const Project& project)
    : ArrayStore(files, project.NX(), project.NY(), project.NZ()) {}

std::size_t ArrayStore::cells_of_layer() const {
    return unsigned_product(std::max(nx_, 0), std::max(ny_, 0));
}

int ArrayStore::layers(int number) const {
    return Force_2D_ || is_2D_array(number) ? 1 : nz_;
}

bool ArrayStore::exists(int number) const {
    const std::string& extension = file_ext(number);
    return !extension.empty() && files_->has(extension);
}

const std::string& ArrayStore::extension_of(int number) const {
    const std::string& extension = file_ext(number);
    if (extension.empty()) {
        throw base::RangeFailure(fmt::format("parameter {} has no file", number));
    }
    return extension;
}

fs::path ArrayStore::file_of(int number) const {
    return files_->name_of(extension_of(number));
}

RandomFile ArrayStore::open(int number) const {
    const std::string& extension = extension_of(number);
    if (!files_->changed()) {
        // Most files have their exact name: one that opens need not be looked for.
        try {
            return RandomFile(files_->base() + base::lower(extension));
        } catch (const base::FileFailure&) {
        }
    }
    const fs::path file = files_->name_of(extension);
    return RandomFile(files_->find_file(file).value_or(file), RandomFile::Mode::read, file);
}

RandomFile ArrayStore::open_for_writing(int number, bool fresh) {
    const fs::path file = file_of(number);
    return RandomFile(files_->open_file_aside(file, fresh), RandomFile::Mode::update, file);
}

void ArrayStore::require_period(int period) const {
    require(period >= 1 && period <= period_count, "period", period, period_count);
}

void ArrayStore::require_grid() const {
    for (const auto& [name, dimension] : {std::pair("NX", nx_), {"NY", ny_}, {"NZ", nz_}}) {
        if (dimension < 1 || dimension > largest_dimension) {
            throw base::FileFailure(fmt::format("{} of the grid is {}, where 1 to {} was expected",
                                                name, dimension, largest_dimension),
                                    files_->project());
        }
    }
}

void ArrayStore::require_layer(int number, int layer) const {
    require_grid();
    require(layer >= 1 && layer <= layers(number), "layer", layer, layers(number));
}

void ArrayStore::require_cells(std::size_t count) const {
    if (count != cells_of_layer()) {
        throw base::RangeFailure(
            fmt::format("{} values are given for a layer of {} cells", count, cells_of_layer()));
    }
}

std::uint64_t ArrayStore::layer_bytes() const {
    return single_bytes * unsigned_product(nx_, ny_);
}

std::uint64_t ArrayStore::record_bytes(int number) const {
    return layer_bytes() * static_cast<std::uint64_t>(layers(number));
}

std::uint64_t ArrayStore::record_start(int number, int record) const {
    return PeriodTables::size + static_cast<std::uint64_t>(record - 1) * record_bytes(number);
}

std::uint64_t ArrayStore::layer_start(int number, int record, int layer) const {
    return record_start(number, record) + static_cast<std::uint64_t>(layer - 1) * layer_bytes();
}

void ArrayStore::read_array(int number, int period, int layer, std::span<float> values,
                            float default_value) const {
    require_period(period);
    require_layer(number, layer);
    require_cells(values.size());
    layer_reader(number, period, default_value).read(layer, values);
}

ArrayStore::LayerReader ArrayStore::layer_reader(int number, int period,
                                                 float default_value) const {
    require_period(period);
    require_layer(number, 1);
    LayerReader reader(*this, number, default_value);
    reader.file_ = std::make_shared<const RandomFile>(open(number));
    const PeriodTables tables(*reader.file_, record_bytes(number));
    reader.record_ = tables.record_for_reading(period_to_read(number, period));
    return reader;
}

ArrayStore::LayerReader ArrayStore::layer_reader_if(int number, int period,
                                                    float default_value) const {
    return exists(number) ? layer_reader(number, period, default_value)
                          : LayerReader(*this, number, default_value);
}

void ArrayStore::LayerReader::read(int layer, std::span<float> values) const {
    store_->require_layer(number_, layer);
    store_->require_cells(values.size());
    if (record_ == 0) {
        std::ranges::fill(values, default_value_);
    } else {
        file_->read_singles(store_->layer_start(number_, record_, layer), values);
    }
}

LayerValues ArrayStore::layer_values(int number) const {
    if (exists(number)) {
        has_period(number, 1);
    }
    return LayerValues(cells_of_layer());
}

bool ArrayStore::has_period(int number, int period) const {
    require_period(period);
    require_layer(number, 1);
    return exists(number) &&
           PeriodTables(open(number), record_bytes(number)).own_record(period) != 0;
}

void ArrayStore::write_array(int number, int period, int layer, std::span<const float> values) {
    require_period(period);
    require_layer(number, layer);
    require_cells(values.size());
    create_array_file(number, 0);
    // From the file as it is, so that a damaged one fails before it is copied aside.
    PeriodTables tables(open(number), record_bytes(number));
    const int record = tables.assign(period);
    RandomFile file = open_for_writing(number, false);
    file.write(0, tables.bytes());
    file.extend(record_start(number, record + 1));
    file.write_singles(layer_start(number, record, layer), values);
}

bool ArrayStore::create_array_file(int number, float default_value) {
    require_layer(number, 1);
    if (exists(number)) {
        return false;
    }
    RandomFile file = open_for_writing(number, true);
    file.extend(record_start(number, 2));
    file.write(0, PeriodTables().bytes());
    write_filled(file, PeriodTables::size, record_bytes(number) / single_bytes, default_value);
    return true;
}

bool ArrayStore::complete_period(int number, int period, float default_value) {
    require_period(period);
    const bool created = create_array_file(number, default_value);
    {
        const RandomFile file = open(number);
        const PeriodTables tables(file, record_bytes(number));
        PeriodTables written = tables;
        const int record = written.assign(period);
        const bool is_read = tables.record_for_reading(period_to_read(number, period)) == record;
        if (is_read && tables.bytes() == written.bytes() &&
            file.size() >= record_start(number, record + 1)) {
            return created;
        }
    }
    // Opened before the first layer is written: that one makes the record of all others.
    const LayerReader reader = layer_reader(number, period, default_value);
    LayerValues values(cells_of_layer());
    for (int layer = 1; layer <= layers(number); ++layer) {
        reader.read(layer, values);
        write_array(number, period, layer, values);
    }
    return true;
}

ArrayStore::CellValue ArrayStore::read_cell_value(int number, int period, int layer, int row,
                                                  int column, float default_value) const {
    require_period(period);
    require_layer(number, layer);
    require(row >= 1 && row <= ny_, "row", row, ny_);
    require(column >= 1 && column <= nx_, "column", column, nx_);
    if (!exists(number)) {
        return {default_value, false};
    }
    const RandomFile file = open(number);
    const PeriodTables tables(file, record_bytes(number));
    const int record = tables.record_for_reading(period_to_read(number, period));
    float value = default_value;
    if (record != 0) {
        const std::uint64_t cell =
            unsigned_product(row - 1, nx_) + static_cast<std::uint64_t>(column - 1);
        file.read_singles(layer_start(number, record, layer) + single_bytes * cell, {&value, 1});
    }
    return {value, true};
}

void ArrayStore::copy_period(int number, int from, int to, float default_value) {
    require_period(from);
    require_period(to);
    if (from == to) {
        return;
    }
    LayerValues values(cells_of_layer());
    for (int layer = 1; layer <= layers(number); ++layer) {
        read_array(number, from, layer, values, default_value);
        write_array(number, to, layer, values);
    }
    if (is_primary(number) && exists(number + zone_offset)) {
        copy_zones(number, from, to);
    }
}

void ArrayStore::copy_zones(int number, int from, int to) {
    ZoneFile zones(*files_, layers(number));
    const int companion = number + zone_offset;
    for (int layer = 1; layer <= layers(number); ++layer) {
        zones.write_zones(to, layer, companion, zones.read_zones(from, layer, companion));
    }
}

void ArrayStore::backup_for_edit(int number, float default_value) {
    if (!is_primary(number)) {
        backup_zones(number);
        return;
    }
    create_array_file(number, default_value);
    files_->copy_file(file_of(number), fmt::format("{}.T{}", files_->base(), number));
}

void ArrayStore::backup_zones(int number) {
    ZoneFile zones(*files_, layers(number - zone_offset));
    if (!exists(number)) {
        zones.create_zone_file(number);
    }
    files_->copy_file(file_of(number), ZoneFile::scratch_file(*files_));
    zones.Upgrade_Zone_File(ZoneFile::scratch);
}

std::vector<ArrayStore::Period> ArrayStore::periods(int number) const {
    require_layer(number, 1);
    const PeriodTables tables(open(number), record_bytes(number));
    std::vector<Period> found;
    for (int period = 1; period <= period_count; ++period) {
        if (const int record = tables.own_record(period); record != 0) {
            found.push_back({period, record});
        }
    }
    return found;
}

std::uintmax_t ArrayStore::file_size(int number) const {
    return open(number).size();
}

} // namespace core
