#include "td/withfile.h"

#include "base/failure.h"

namespace td {

int with_file(const std::filesystem::path& file, const std::function<int()>& work) {
    try {
        return work();
    } catch (const base::RangeFailure& failure) {
        throw base::FileFailure(failure.what(), file);
    }
}

} // namespace td
