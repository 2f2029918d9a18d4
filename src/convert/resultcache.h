// The binary result cache <base>.rvb: fields of a result file that are read in one piece.
//
// Little-endian. 400 bytes of directory (100 singles, the number of the parameter in each slot, 0
// for a free one), 600 bytes that nobody writes, then the slots of one grid's singles each. In a
// slot the layer runs fastest, then the row, then the column, as the viewer counts them: layers
// from the top, rows from the south. Slots are in the order in which they were converted.
#pragma once

#include "core/modelfiles.h"
#include "core/randomfile.h"
#include "results/fieldsource.h"

#include <array>
#include <set>

namespace convert {

inline constexpr const char* convert_binary_title = "Convert Data to Binary";
inline constexpr std::size_t cache_slots = 100;

using CacheDirectory = std::array<float, cache_slots>;

// All zero for an empty file. FileFailure for one that ends within the directory.
CacheDirectory read_directory(const core::RandomFile& cache);

// The first slot, from 1, that holds `Number` or is free; 101 when there is none.
std::size_t Compare_Parameter(const CacheDirectory& directory, int Number);

// Stores `field`, which is in the viewer's order and units, in the slot of `Number`, then the
// directory. FileFailure when the directory is full or the disk has no room.
void SaveArray(int Number, const results::Field& field, core::RandomFile& cache);

// The field of `Number` in the viewer's or the stream's order; nothing when the cache does not hold
// it, or not all of it.
std::optional<results::Field> read_slot(int Number, const core::RandomFile& cache,
                                        const results::StreamGrid& grid, results::FieldOrder order,
                                        base::Interaction& user);

// The number under which the viewer looks for a parameter: 1 to 9 for the fixed ones, for "CONC" 9
// and the last character of its list text ("Tracer 3" gives 12, "Ca" gives 9). 0 for others.
int cached_number(std::string_view code, std::string_view scommentar);

// False, with a box, when the result file is newer than the cache.
bool Compare_Age_NLO_RVB(const std::filesystem::path& sFileNLO,
                         const std::filesystem::path& sFileRVB, base::Interaction& user);

// Takes fields from the cache beside a result file (.nlo). A block of a concentration only where
// the number that its list text leads to is its own.
class CachedFields : public results::FieldSource {
public:
    std::optional<results::Field> read(const results::ResultFile& result,
                                       const results::StreamGrid& grid,
                                       const results::Parameter& parameter,
                                       results::FieldOrder order, base::Interaction& user) override;
};

// The cache of a result file while fields are put into it. The file in the folder is replaced as a
// whole by commit(). It counts as up to date only when none of its fields is from an earlier run
// or another grid; otherwise it gets a date before the result file's, so that the viewer does not
// use it.
class CacheUpdate {
public:
    CacheUpdate(const std::filesystem::path& sFileNLO, const results::StreamGrid& grid);

    void SaveArray(int Number, const results::Field& field);
    void commit();

private:
    bool has_stale_slots() const;

    std::filesystem::path nlo_;
    core::ModelFiles files_;
    bool was_stale_;
    std::filesystem::path aside_;
    core::RandomFile cache_;
    std::set<int> converted_;
};

} // namespace convert
