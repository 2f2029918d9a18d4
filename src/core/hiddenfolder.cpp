// The lock of the hidden folder, and what a command that was cut off has left in it.
#include "base/failure.h"
#include "core/filemoves.h"
#include "core/movelist.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace core {

namespace fs = std::filesystem;

namespace {

constexpr int lock_attempts = 3000;  // of 20 ms
constexpr int removal_attempts = 10; // a command that holds it longer removes it itself

// A descriptor of the folder when this process could lock it, -1 when another one holds it or has
// just removed it. FileFailure when it can never be locked. A link is no hidden folder: what it
// leads to belongs to somebody else.
int try_lock(const fs::path& hidden) {
    const int descriptor = ::open(hidden.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        if (errno == ENOTDIR || errno == ELOOP) {
            throw base::FileFailure("is in the way of the files that a command keeps aside",
                                    hidden);
        }
        if (errno != ENOENT) {
            throw_errno("opened", hidden);
        }
        return -1;
    }
    struct stat opened {
    }, named{};
    const bool locked = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    const int reason = errno;
    if (!locked && reason != EWOULDBLOCK && reason != EINTR) {
        ::close(descriptor);
        errno = reason;
        throw_errno("locked", hidden);
    }
    const bool ours = locked && ::fstat(descriptor, &opened) == 0 &&
                      ::lstat(hidden.c_str(), &named) == 0 && opened.st_ino == named.st_ino &&
                      opened.st_dev == named.st_dev;
    if (!ours) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

// The same for a folder that was just made if need be: it must be writable, as its parent must.
int try_lock_made(const fs::path& hidden) {
    int lock = -1;
    try {
        lock = try_lock(hidden);
        for (const fs::path& folder : {hidden, hidden.parent_path()}) {
            if (lock >= 0 && ::access(folder.c_str(), W_OK | X_OK) != 0) {
                throw_errno("written", hidden.parent_path());
            }
        }
    } catch (const base::FileFailure&) {
        ::rmdir(hidden.c_str()); // unless somebody's files are in it
        if (lock >= 0) {
            ::close(lock);
        }
        throw;
    }
    return lock;
}

} // namespace

int lock_folder(const fs::path& hidden) {
    for (int attempt = 0; attempt < lock_attempts; ++attempt) {
        if (::mkdir(hidden.c_str(), 0777) != 0 && errno != EEXIST) {
            throw_errno("written", hidden.parent_path());
        }
        if (const int lock = try_lock_made(hidden); lock >= 0) {
            return lock;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    throw base::FileFailure("is in use by another program", hidden.parent_path());
}

void unlock_folder(const fs::path& hidden, int lock) noexcept {
    // A list of moves that could not be taken back is left to the next command.
    if (!has_move_list(hidden)) {
        drop_files_aside(hidden);
    }
    ::rmdir(hidden.c_str());
    ::close(lock);
}

void remove_hidden_folder(const fs::path& hidden) noexcept {
    for (int attempt = 0; attempt < removal_attempts && is_there(hidden); ++attempt) {
        try {
            if (const int lock = try_lock(hidden); lock >= 0) {
                return unlock_folder(hidden, lock);
            }
        } catch (const base::FileFailure&) {
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

void settle_locked(const fs::path& hidden, int lock) {
    try {
        if (has_move_list(hidden)) {
            settle_move_list(hidden);
        }
        drop_files_aside(hidden);
    } catch (...) {
        unlock_folder(hidden, lock);
        throw;
    }
}

void finish_pending(const fs::path& hidden) {
    if (::access(hidden.c_str(), W_OK | X_OK) != 0 ||
        ::access(hidden.parent_path().c_str(), W_OK | X_OK) != 0) {
        return;
    }
    for (int attempt = 0; attempt < lock_attempts; ++attempt) {
        if (!is_there(hidden)) {
            return;
        }
        if (const int lock = try_lock(hidden); lock >= 0) {
            settle_locked(hidden, lock);
            unlock_folder(hidden, lock);
            return;
        }
        if (!has_move_list(hidden)) {
            return; // a command of another program is at work but moves no files: all is as before
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

} // namespace core
