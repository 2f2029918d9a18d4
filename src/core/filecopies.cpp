// Descriptors, and copies with mode and links, for the moving of files.
#include "core/filemoves.h"

#include "base/failure.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace core {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t block_size = std::size_t{1} << 16;
constexpr mode_t new_file_mode = 0666;
constexpr mode_t mode_bits = 07777;

} // namespace

void throw_errno(std::string_view what, const fs::path& file) {
    const int reason = errno;
    throw base::FileFailure(fmt::format("cannot be {}: {}", what, std::strerror(reason)), file);
}

Descriptor::Descriptor(const fs::path& file, int flags, fs::path shown)
    : shown_(std::move(shown)),
      descriptor_(::open(file.c_str(), flags | O_CLOEXEC, new_file_mode)) {
    if (descriptor_ < 0) {
        throw_errno((flags & O_ACCMODE) == O_RDONLY ? "read" : "written", shown_);
    }
}

Descriptor::~Descriptor() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void Descriptor::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            throw_errno("written", shown_);
        }
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
}

void Descriptor::flush() {
    if (::fsync(descriptor_) != 0 && errno != EINVAL) {
        throw_errno("written", shown_);
    }
}

void copy_bytes(const fs::path& from, const fs::path& to, const fs::path& shown) {
    if (std::error_code ignored; fs::is_other(from, ignored)) {
        throw base::FileFailure("is no ordinary file", from); // a pipe would never end
    }
    Descriptor in(from, O_RDONLY, from);
    Descriptor out(to, O_WRONLY | O_CREAT | O_TRUNC, shown);
    std::string block(block_size, '\0');
    for (;;) {
        const ssize_t count = ::read(in.get(), block.data(), block.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            throw_errno("read", from);
        }
        if (count == 0) {
            return;
        }
        out.write(std::string_view(block).substr(0, static_cast<std::size_t>(count)));
    }
}

void give_mode(const fs::path& file, std::uint32_t mode, const fs::path& shown) {
    struct stat state {};
    const bool has_mode =
        ::stat(file.c_str(), &state) == 0 && ((state.st_mode ^ mode) & mode_bits) == 0;
    if (!has_mode && ::chmod(file.c_str(), mode & mode_bits) != 0) {
        throw_errno("written", shown);
    }
}

void copy_as_it_is(const fs::path& from, const fs::path& to, const fs::path& shown) {
    struct stat state {};
    if (::lstat(from.c_str(), &state) != 0) {
        throw_errno("read", from);
    }
    if (!S_ISLNK(state.st_mode)) {
        copy_bytes(from, to, shown);
        return give_mode(to, state.st_mode, shown);
    }
    std::error_code failed;
    const fs::path target = fs::read_symlink(from, failed);
    ::unlink(to.c_str());
    if (::symlink(target.c_str(), to.c_str()) != 0) {
        throw_errno("written", shown);
    }
}

fs::path behind_links(fs::path file) {
    std::error_code ignored;
    for (int depth = 0; depth < 40 && fs::is_symlink(file, ignored); ++depth) {
        const fs::path target = fs::read_symlink(file, ignored);
        file = (target.is_absolute() ? target : file.parent_path() / target).lexically_normal();
    }
    return file;
}

bool is_there(const fs::path& file) {
    std::error_code ignored;
    return fs::symlink_status(file, ignored).type() != fs::file_type::not_found;
}

} // namespace core
