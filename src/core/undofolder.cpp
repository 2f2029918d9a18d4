#include "core/undofolder.h"

#include "base/failure.h"
#include "core/filemoves.h"

#include <fmt/format.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace core {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view prefix = "undo.";
constexpr int largest_number = 1000; // of histories of one process on one model

// A descriptor of the folder that holds its lock; -1 when another one does or it cannot be opened.
int try_lock(const fs::path& folder) {
    const int lock = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (lock >= 0 && ::flock(lock, LOCK_EX | LOCK_NB) != 0) {
        ::close(lock);
        return -1;
    }
    return lock;
}

} // namespace

UndoFolder::~UndoFolder() {
    if (!folder_.empty()) {
        clear();
        remove_hidden_folder(hidden_);
    }
}

// Nobody finds the folder between its making and its locking, for the model is locked.
void UndoFolder::make() {
    for (int number = 1; number <= largest_number; ++number) {
        const fs::path folder = hidden_ / fmt::format("{}{}.{}", prefix, ::getpid(), number);
        if (::mkdir(folder.c_str(), 0777) != 0) {
            if (errno == EEXIST) {
                continue;
            }
            throw_errno("written", folder);
        }
        lock_ = try_lock(folder);
        folder_ = folder;
        if (lock_ < 0) {
            clear();
            throw base::FileFailure("cannot be locked", folder);
        }
        return;
    }
    throw base::FileFailure("holds too many files of commands", hidden_);
}

fs::path UndoFolder::keep(const fs::path& place) {
    if (folder_.empty()) {
        make();
    }
    fs::path kept = folder_ / fmt::format("{}", next_number_++);
    if (::link(place.c_str(), kept.c_str()) != 0) {
        try {
            copy_as_it_is(place, kept, kept);
        } catch (...) {
            drop(kept);
            throw;
        }
    }
    return kept;
}

void UndoFolder::drop(const fs::path& kept) noexcept {
    if (!kept.empty()) {
        ::unlink(kept.c_str());
    }
}

void UndoFolder::clear() noexcept {
    if (folder_.empty()) {
        return;
    }
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
    folder_.clear();
    if (lock_ >= 0) {
        ::close(std::exchange(lock_, -1));
    }
}

bool is_undo_folder(std::string_view name) {
    return name.starts_with(prefix);
}

void drop_dead_undo_folder(const fs::path& folder) noexcept {
    if (const int lock = try_lock(folder); lock >= 0) {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
        ::close(lock);
    }
}

} // namespace core
