#include "core/periodtables.h"

#include "base/binaryio.h"
#include "base/failure.h"
#include "core/extensions.h"
#include "core/randomfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace core {

namespace {

constexpr std::size_t entry_bytes = 2;
constexpr std::size_t record_table = PeriodTables::size / 2;
constexpr int last_record = std::numeric_limits<std::int16_t>::max();

std::size_t used_offset(int period) {
    return entry_bytes * static_cast<std::size_t>(period - 1);
}

// Key 0 (no data) leads to the entry before the table, the last one of `period_used`. It is read as
// it stands: 0 unless period 1000 is in use.
std::size_t record_offset(int key) {
    return record_table + entry_bytes * static_cast<std::size_t>(key) - entry_bytes;
}

} // namespace

PeriodTables::PeriodTables() : bytes_(size, '\0') {
    set_entry(used_offset(1), 1);
    set_entry(record_offset(1), 1);
}

PeriodTables::PeriodTables(const RandomFile& file, std::uint64_t record_bytes)
    : bytes_(size, '\0'), file_(file.shown()) {
    if (file.size() < size) {
        throw base::FileFailure(
            fmt::format("ends at byte {}, where the tables of periods were expected up to byte {}",
                        file.size(), size),
            file_);
    }
    file.read(0, bytes_);
    begun_records_ = (file.size() - size + record_bytes - 1) / record_bytes;
    require_first_period(file, record_bytes);
}

void PeriodTables::require_first_period(const RandomFile& file, std::uint64_t record_bytes) const {
    const auto record = static_cast<std::uint64_t>(own_record(1));
    const std::uint64_t end = size + record * record_bytes;
    if (record != 0 && file.size() < end) {
        throw base::FileFailure(
            fmt::format("ends at byte {}, where the record of period 1 was expected up to byte {}",
                        file.size(), end),
            file_);
    }
}

int PeriodTables::period_used(int period) const {
    const std::size_t offset = used_offset(period);
    const int key = base::int16_at(bytes_, offset);
    if (key < 0 || key > period_count) {
        throw base::FileFailure(
            fmt::format("byte {}: the key of period {} is {}, where 0 to {} was expected", offset,
                        period, key, period_count),
            file_);
    }
    return key;
}

int PeriodTables::period_record(int key) const {
    const std::size_t offset = record_offset(key);
    const int record = base::int16_at(bytes_, offset);
    if (record < 0) {
        throw base::FileFailure(
            fmt::format("byte {}: the record number of key {} is {}, where 0 or more was expected",
                        offset, key, record),
            file_);
    }
    return record;
}

int PeriodTables::record_for_reading(int period) const {
    return period_record(period_used(period));
}

int PeriodTables::own_record(int period) const {
    const int key = period_used(period);
    return key == 0 ? 0 : period_record(key);
}

int PeriodTables::next_record() const {
    int largest = 0;
    for (int key = 1; key <= period_count; ++key) {
        largest = std::max<int>(largest, base::int16_at(bytes_, record_offset(key)));
    }
    if (largest >= last_record) {
        throw base::FileFailure(
            fmt::format("a new period would get a record beyond {}", last_record), file_);
    }
    return largest + 1;
}

// A file that was cut off has lost the record of every period at most.
void PeriodTables::require_near_end(int period, int record) const {
    if (static_cast<std::uint64_t>(record) > begun_records_ + period_count) {
        throw base::FileFailure(
            fmt::format("byte {}: period {} would get record {} of a file that holds {}",
                        record_offset(period), period, record, begun_records_),
            file_);
    }
}

int PeriodTables::assign(int period) {
    set_entry(used_offset(period), period);
    const int old = period_record(period);
    const int record = old != 0 ? old : next_record();
    require_near_end(period, record);
    set_entry(record_offset(period), record);
    return record;
}

void PeriodTables::set_entry(std::size_t offset, int value) {
    base::ByteWriter entry;
    entry.int16(static_cast<std::int16_t>(value));
    bytes_.replace(offset, entry_bytes, entry.data());
}

} // namespace core
