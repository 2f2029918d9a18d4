#include "app/folderfiles.h"

#include "base/failure.h"

#include <system_error>

namespace app {

namespace fs = std::filesystem;

std::vector<fs::path> files_in(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error, ignored;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        if (at->is_regular_file(ignored)) {
            files.push_back(at->path());
        }
    }
    if (error) {
        throw base::FileFailure("the folder cannot be read: " + error.message(), folder);
    }
    return files;
}

} // namespace app
