#include "results/streamfile.h"

#include "base/failure.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace results {

namespace {

constexpr std::size_t block_size = std::size_t{1} << 20U;

bool same_time(const std::timespec& a, const std::timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

// File times advance in ticks. A file written in the present one could be written again without
// another time.
void wait_for_tick_behind(const std::timespec& written) {
    constexpr std::timespec pause{0, 500'000};
    std::timespec now{};
    while (::clock_gettime(CLOCK_REALTIME_COARSE, &now) == 0 && same_time(now, written)) {
        ::nanosleep(&pause, nullptr);
    }
}

} // namespace

// Opening must not wait for the writer of a named pipe.
StreamFile::StreamFile(const std::filesystem::path& file)
    : file_(file, O_RDONLY | O_NONBLOCK, file), opened_(look()) {
    wait_for_tick_behind(opened_.written);
    opened_ = look();
    block_.resize(static_cast<std::size_t>(std::clamp<std::uint64_t>(size(), 1, block_size)));
}

StreamFile::Look StreamFile::look() const {
    struct stat state {};
    if (::fstat(file_.get(), &state) != 0) {
        core::throw_errno("read", file());
    }
    if (!S_ISREG(state.st_mode)) {
        throw base::FileFailure("is no ordinary file", file());
    }
    return {static_cast<std::uint64_t>(state.st_size), state.st_dev, state.st_ino, state.st_mtim};
}

std::string_view StreamFile::view(std::uint64_t position) const {
    const auto skipped = static_cast<std::size_t>(position - start_);
    return {block_.data() + skipped, filled_ - skipped};
}

std::string_view StreamFile::bytes(std::uint64_t position) {
    if (position < start_ || position >= start_ + filled_) {
        start_ = position;
        filled_ = 0;
        fill_block();
    }
    return view(position);
}

std::string_view StreamFile::more_bytes(std::uint64_t position) {
    const std::string_view kept = bytes(position);
    std::memmove(block_.data(), kept.data(), kept.size());
    start_ = position;
    filled_ = kept.size();
    fill_block();
    return view(position);
}

void StreamFile::fill_block() {
    while (filled_ < block_.size() && start_ + filled_ < size()) {
        const auto wanted = static_cast<std::size_t>(
            std::min<std::uint64_t>(block_.size() - filled_, size() - start_ - filled_));
        const ssize_t count = ::pread(file_.get(), block_.data() + filled_, wanted,
                                      static_cast<off_t>(start_ + filled_));
        if (count < 0 && errno != EINTR) {
            core::throw_errno("read", file());
        }
        if (count == 0) {
            throw base::FileFailure("has become shorter while it was read", file());
        }
        filled_ += static_cast<std::size_t>(std::max(count, ssize_t{0}));
        bytes_read_ += static_cast<std::uint64_t>(std::max(count, ssize_t{0}));
    }
}

void StreamFile::require_unchanged() const {
    const Look now = look();
    if (now.size != opened_.size) {
        throw base::FileFailure(now.size < opened_.size ? "has become shorter while it was read"
                                                        : "has become longer while it was read",
                                file());
    }
    if (!same_time(now.written, opened_.written)) {
        throw base::FileFailure("was written to while it was read", file());
    }
    struct stat named {};
    const bool there = ::stat(file().c_str(), &named) == 0;
    if (!there || named.st_dev != opened_.device || named.st_ino != opened_.inode) {
        throw base::FileFailure("was replaced while it was read", file());
    }
}

void StreamFile::fail(const std::string& what) const {
    require_unchanged();
    throw base::FileFailure(what, file());
}

} // namespace results
