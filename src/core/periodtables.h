// The two tables at the beginning of an array file: which record holds which period.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace core {

class RandomFile;

class PeriodTables {
public:
    static constexpr std::uint64_t size = 4000;

    // The tables of a new file: period 1 in record 1.
    PeriodTables();
    // FileFailure when the file ends within the tables or within the record of period 1, which is
    // whole from the creation on.
    PeriodTables(const RandomFile& file, std::uint64_t record_bytes);

    // The record that a reader of the period finds; 0 when there is none.
    int record_for_reading(int period) const;
    // The record that belongs to the period alone; 0 when there is none.
    int own_record(int period) const;
    // The record that a writer of the period uses, entered into both tables: the one it has, or the
    // next one. FileFailure when record numbers are used up, and when the record would lie so far
    // behind the end of the file that the tables cannot be right.
    int assign(int period);

    std::string_view bytes() const { return bytes_; }

private:
    int period_used(int period) const;
    int period_record(int key) const;
    int next_record() const;
    void require_near_end(int period, int record) const;
    void set_entry(std::size_t offset, int value);
    void require_first_period(const RandomFile& file, std::uint64_t record_bytes) const;

    std::string bytes_;
    std::filesystem::path file_;      // named in failures
    std::uint64_t begun_records_ = 0; // that have at least one byte in the file
};

} // namespace core
