#include "convert/resultcache.h"

#include "base/binaryio.h"
#include "base/failure.h"
#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "convert/slotorder.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>

namespace convert {

namespace fs = std::filesystem;

using results::Conversion;
using results::Field;
using results::FieldOrder;
using results::StreamGrid;

namespace {

constexpr std::uint64_t directory_bytes = cache_slots * sizeof(float);
constexpr std::uint64_t first_slot = 1000;
constexpr std::string_view cache_extension = ".rvb";
constexpr int tracer_base = 9; // block n of the concentrations has number 9 + n

std::uint64_t slot_start(std::size_t slot, std::uint64_t cells) {
    return first_slot + (slot - 1) * cells * sizeof(float);
}

// Slots up to the first free one: those that a search reaches.
std::size_t used_slots(const CacheDirectory& directory) {
    return static_cast<std::size_t>(std::ranges::find(directory, 0.0F) - directory.begin());
}

// Of the list, where "Ca [mmol/L]" is the label.
std::string_view list_text(const results::Parameter& parameter) {
    const std::string_view label = parameter.label;
    return label.substr(0, label.find(" ["));
}

// 0 for what the cache does not hold, or holds under a number that the list text does not lead to.
int number_to_ask_for(const results::Parameter& parameter) {
    const int number = cached_number(parameter.code, list_text(parameter));
    if (parameter.code != "CONC") {
        return number;
    }
    const std::string_view keyword = parameter.keyword;
    const int block = base::leading_int32(keyword.substr(std::min<std::size_t>(6, keyword.size())));
    const bool is_own = block > 0 && number == tracer_base + block;
    return is_own && parameter.conversion == Conversion::none ? number : 0;
}

bool is_result_file(const fs::path& file) {
    return base::lower(file.extension().string()) == ".nlo";
}

fs::file_time_type time_of(const fs::path& file) {
    std::error_code failed;
    const auto time = fs::last_write_time(file, failed);
    if (failed) {
        throw base::FileFailure(fmt::format("cannot be read: {}", failed.message()), file);
    }
    return time;
}

bool is_older(const fs::path& rvb, const fs::path& nlo) {
    return time_of(nlo) > time_of(rvb);
}

// True when fields of the cache in the folder belong to another run or another grid.
bool is_stale(const fs::path& nlo, const core::ModelFiles& files, std::uint64_t cells) {
    const auto place = files.find(cache_extension);
    if (!place) {
        return false;
    }
    const core::RandomFile cache(*place, core::RandomFile::Mode::read,
                                 files.name_of(cache_extension));
    const std::size_t used = used_slots(read_directory(cache));
    return is_older(*place, nlo) || (used > 0 && cache.size() < slot_start(used + 1, cells));
}

} // namespace

CacheDirectory read_directory(const core::RandomFile& cache) {
    CacheDirectory directory{};
    if (cache.size() > 0 && cache.size() < directory_bytes) {
        throw base::FileFailure(fmt::format("ends at byte {}, where the directory of {} bytes was "
                                            "expected",
                                            cache.size(), directory_bytes),
                                cache.shown());
    }
    cache.read_singles(0, directory);
    return directory;
}

std::size_t Compare_Parameter(const CacheDirectory& directory, int Number) {
    const auto wanted = static_cast<float>(Number);
    const auto slot =
        std::ranges::find_if(directory, [&](float entry) { return entry == wanted || entry == 0; });
    return static_cast<std::size_t>(slot - directory.begin()) + 1;
}

void SaveArray(int Number, const Field& field, core::RandomFile& cache) {
    CacheDirectory directory = read_directory(cache);
    const std::size_t slot = Compare_Parameter(directory, Number);
    if (slot > cache_slots) {
        throw base::FileFailure(fmt::format("the directory is full: none of its {} slots is left "
                                            "for parameter {}",
                                            cache_slots, Number),
                                cache.shown());
    }
    const std::uint64_t cells = field.grid().cells();
    cache.extend(slot_start(slot + 1, cells));
    write_slot(field, slot_start(slot, cells), cache);
    directory[slot - 1] = static_cast<float>(Number);
    cache.write_singles(0, directory);
}

std::optional<Field> read_slot(int Number, const core::RandomFile& cache, const StreamGrid& grid,
                               FieldOrder order, base::Interaction& user) {
    if (cache.size() < directory_bytes || std::min({grid.I0, grid.J0, grid.K0}) < 1) {
        return std::nullopt;
    }
    const CacheDirectory directory = read_directory(cache);
    const std::size_t slot = Compare_Parameter(directory, Number);
    if (slot > cache_slots || directory[slot - 1] != static_cast<float>(Number) ||
        cache.size() < slot_start(slot + 1, grid.cells())) {
        return std::nullopt;
    }
    return read_slot_at(slot_start(slot, grid.cells()), cache, grid, order, user);
}

int cached_number(std::string_view code, std::string_view scommentar) {
    for (const results::FixedParameter& fixed : results::fixed_parameters()) {
        if (code == fixed.code) {
            return fixed.number;
        }
    }
    if (code != "CONC" || scommentar.empty()) {
        return 0;
    }
    return tracer_base + base::leading_int32(scommentar.substr(scommentar.size() - 1));
}

bool Compare_Age_NLO_RVB(const fs::path& sFileNLO, const fs::path& sFileRVB,
                         base::Interaction& user) {
    if (!is_older(sFileRVB, sFileNLO)) {
        return true;
    }
    user.beep();
    user.message(base::Icon::warning, convert_binary_title,
                 "The binary result file *.rvb is older than the TERVEX *.nlo result.\n\r"
                 "You should update the binary result file in Tools|Convert Data to Binary.\n\r"
                 "Data for the Result Viewer are now taken from the *.nlo file.");
    return false;
}

std::optional<Field> CachedFields::read(const results::ResultFile& result, const StreamGrid& grid,
                                        const results::Parameter& parameter, FieldOrder order,
                                        base::Interaction& user) {
    if (!is_result_file(result.file)) {
        return std::nullopt;
    }
    const core::ModelFiles files(result.file, core::Access::read);
    const auto place = files.find(cache_extension);
    if (!place || !Compare_Age_NLO_RVB(result.file, *place, user)) {
        return std::nullopt;
    }
    const int number = number_to_ask_for(parameter);
    if (number == 0) {
        return std::nullopt;
    }
    const core::RandomFile cache(*place, core::RandomFile::Mode::read, *place);
    return read_slot(number, cache, grid, order, user);
}

CacheUpdate::CacheUpdate(const fs::path& sFileNLO, const StreamGrid& grid)
    : nlo_(sFileNLO), files_(sFileNLO, core::Access::write),
      was_stale_(is_stale(nlo_, files_, grid.cells())),
      aside_(files_.open_aside(cache_extension, false)),
      cache_(aside_, core::RandomFile::Mode::update, files_.name_of(cache_extension)) {}

void CacheUpdate::SaveArray(int Number, const Field& field) {
    convert::SaveArray(Number, field, cache_);
    converted_.insert(Number);
}

bool CacheUpdate::has_stale_slots() const {
    const CacheDirectory directory = read_directory(cache_);
    return was_stale_ && !std::ranges::all_of(
                             directory.begin(),
                             directory.begin() + static_cast<std::ptrdiff_t>(used_slots(directory)),
                             [&](float entry) {
                                 return std::ranges::any_of(converted_, [&](int number) {
                                     return entry == static_cast<float>(number);
                                 });
                             });
}

void CacheUpdate::commit() {
    if (has_stale_slots()) {
        fs::last_write_time(aside_, time_of(nlo_) - std::chrono::seconds(1));
    }
    files_.commit();
}

} // namespace convert
