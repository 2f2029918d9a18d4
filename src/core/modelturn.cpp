#include "core/modelturn.h"

#include "base/failure.h"
#include "core/modelfiles.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace core {

namespace {

// Taking the lock and giving it back at once is all that tells; what cannot be asked is free.
bool is_held(const std::filesystem::path& hidden) {
    const int descriptor = ::open(hidden.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    const bool held = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(descriptor);
    return held;
}

} // namespace

void wait_for_turn(const std::filesystem::path& project, std::chrono::milliseconds patience) {
    using Clock = std::chrono::steady_clock;
    const std::filesystem::path hidden = hidden_folder_of(project);
    const Clock::time_point end = Clock::now() + patience;
    while (is_held(hidden)) {
        if (Clock::now() >= end) {
            throw base::FileFailure("is in use by another program", project);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

} // namespace core
