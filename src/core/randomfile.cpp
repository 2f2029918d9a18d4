#include "core/randomfile.h"

#include "base/binaryio.h"
#include "base/failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <limits>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace core {

namespace {

constexpr auto largest_offset = static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());

// Opening must not wait for the writer of a named pipe that stands where an array is expected.
int open_flags(RandomFile::Mode mode) {
    return (mode == RandomFile::Mode::read ? O_RDONLY : O_RDWR) | O_NONBLOCK;
}

off_t file_offset(std::uint64_t offset, std::uint64_t count, const std::filesystem::path& file) {
    if (offset > largest_offset || count > largest_offset - offset) {
        errno = EFBIG;
        throw_errno("written", file);
    }
    return static_cast<off_t>(offset);
}

} // namespace

RandomFile::RandomFile(const std::filesystem::path& place, Mode mode, std::filesystem::path shown)
    : file_(place, open_flags(mode), std::move(shown)) {
    struct stat state {};
    if (::fstat(file_.get(), &state) != 0) {
        throw_errno("read", file_.shown());
    }
    if (!S_ISREG(state.st_mode)) {
        throw base::FileFailure("is no ordinary file", file_.shown());
    }
    size_ = static_cast<std::uint64_t>(state.st_size);
}

void RandomFile::read(std::uint64_t offset, std::span<char> bytes) const {
    while (!bytes.empty() && offset < size_) {
        const ssize_t count =
            ::pread(file_.get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            throw_errno("read", shown());
        }
        if (count == 0) {
            break;
        }
        offset += static_cast<std::uint64_t>(count);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    std::ranges::fill(bytes, '\0');
}

void RandomFile::read_singles(std::uint64_t offset, std::span<float> values) const {
    const std::span bytes(reinterpret_cast<char*>(values.data()), values.size_bytes());
    read(offset, bytes);
    if constexpr (std::endian::native != std::endian::little) {
        base::bytes_to_singles(bytes, values);
    }
}

void RandomFile::write(std::uint64_t offset, std::string_view bytes) {
    off_t at = file_offset(offset, bytes.size(), shown());
    while (!bytes.empty()) {
        const ssize_t count = ::pwrite(file_.get(), bytes.data(), bytes.size(), at);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            throw_errno("written", shown());
        }
        at += count;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    size_ = std::max(size_, static_cast<std::uint64_t>(at));
}

void RandomFile::write_singles(std::uint64_t offset, std::span<const float> values) {
    if constexpr (std::endian::native == std::endian::little) {
        write(offset, {reinterpret_cast<const char*>(values.data()), values.size_bytes()});
    } else {
        std::string bytes(values.size_bytes(), '\0');
        base::singles_to_bytes(values, bytes);
        write(offset, bytes);
    }
}

// The zero bytes take no room at first. Without the test a damaged table could make a file that no
// disk holds once it is copied.
void RandomFile::require_free_space(std::uint64_t growth) const {
    struct statvfs disk {};
    if (::fstatvfs(file_.get(), &disk) != 0) {
        return;
    }
    const std::uint64_t available = std::uint64_t{disk.f_bavail} * disk.f_frsize;
    if (growth > available) {
        throw base::FileFailure(
            fmt::format("needs {} more bytes, where the disk has {} left", growth, available),
            shown());
    }
}

void RandomFile::extend(std::uint64_t size) {
    if (size <= size_) {
        return;
    }
    require_free_space(size - size_);
    if (::ftruncate(file_.get(), file_offset(size, 0, shown())) != 0) {
        throw_errno("written", shown());
    }
    size_ = size;
}

} // namespace core
