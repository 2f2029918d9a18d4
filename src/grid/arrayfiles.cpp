#include "grid/arrayfiles.h"

#include "base/binaryio.h"
#include "base/failure.h"
#include "base/textfile.h"
#include "core/extensions.h"
#include "core/modelfiles.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <optional>
#include <set>
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

bool may_have_array(int number) {
    return core::is_primary(number) && !core::file_ext(number).empty() &&
           (number < first_scratch || number > last_scratch);
}

bool is_array_file(int number, const core::ModelFiles& files) {
    const auto file = files.find(core::file_ext(number));
    return file && (!may_be_a_result(number) || record_count(*file).value_or(0) > 0);
}

// Names in lower case. A folder that fails to tell them must not look like one without arrays: a
// new grid would leave those of the old one behind.
std::set<std::string> names_in(const std::filesystem::path& folder) {
    std::set<std::string> names;
    std::error_code failed;
    std::filesystem::directory_iterator at(folder, failed);
    for (; !failed && at != std::filesystem::directory_iterator(); at.increment(failed)) {
        names.insert(base::lower(at->path().filename().string()));
    }
    if (failed) {
        throw base::FileFailure("the folder cannot be read: " + failed.message(), folder);
    }
    return names;
}

} // namespace

std::vector<int> existing_arrays(const core::ModelFiles& files) {
    // One look at the folder for all: ModelFiles takes one for each companion that is missing.
    const std::set<std::string> names = names_in(files.folder());
    const std::string base = files.base_name();
    const auto may_be_there = [&](int number) {
        return files.changed() || names.contains(base::lower(base + core::file_ext(number)));
    };
    std::vector<int> numbers;
    for (int number = 1; number <= core::parameter_count; ++number) {
        if (may_have_array(number) && may_be_there(number) && is_array_file(number, files)) {
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
