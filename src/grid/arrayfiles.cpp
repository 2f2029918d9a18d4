#include "grid/arrayfiles.h"

#include "base/binaryio.h"
#include "core/extensions.h"
#include "core/modelfiles.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>

namespace grid {

namespace {

constexpr std::uintmax_t tables_size = 4000;
constexpr int first_scratch = 199, last_scratch = 200;
constexpr int plot_result = 53; // ".tal" is also a plot file of the simulator

bool may_be_a_result(int number) {
    const std::string digits = core::file_ext(number).substr(1);
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    return number == plot_result || std::all_of(digits.begin(), digits.end(), is_digit);
}

// The largest record number in the tables at the beginning of an array file; nothing when the file
// does not begin with such tables.
std::optional<int> record_count(const std::filesystem::path& file) {
    std::string tables(tables_size, '\0');
    std::ifstream in(file, std::ios::binary);
    if (!in.read(tables.data(), static_cast<std::streamsize>(tables.size()))) {
        return std::nullopt;
    }
    int largest = 0;
    for (std::size_t at = 0; at < tables.size(); at += 2) {
        const int entry = base::int16_at(tables, at);
        if (entry < 0 || entry > core::period_count) {
            return std::nullopt;
        }
        if (at >= tables.size() / 2) {
            largest = std::max(largest, entry);
        }
    }
    return largest;
}

bool is_array_file(int number, const core::ModelFiles& files) {
    if (!core::is_primary(number) || core::file_ext(number).empty() ||
        (number >= first_scratch && number <= last_scratch)) {
        return false;
    }
    const auto file = files.find(core::file_ext(number));
    return file && (!may_be_a_result(number) || record_count(*file).value_or(0) > 0);
}

} // namespace

std::vector<int> existing_arrays(const core::ModelFiles& files) {
    std::vector<int> numbers;
    for (int number = 1; number <= core::parameter_count; ++number) {
        if (is_array_file(number, files)) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

bool array_fits(int number, const core::ModelFiles& files, int nx, int ny, int nz) {
    const auto file = files.find(core::file_ext(number));
    std::error_code missing;
    const std::uintmax_t size = file ? std::filesystem::file_size(*file, missing) : 0;
    if (!file || missing || size < tables_size) {
        return false;
    }
    const std::uintmax_t layer = std::uintmax_t{4} * unsigned(nx) * unsigned(ny);
    const std::uintmax_t record = layer * (core::is_2D_array(number) ? 1 : unsigned(nz));
    const std::uintmax_t values = size - tables_size;
    if (values < record || values % layer != 0) {
        return false;
    }
    const auto records = static_cast<std::uintmax_t>(record_count(*file).value_or(0));
    return values % record == 0 || records == values / record + 1;
}

} // namespace grid
