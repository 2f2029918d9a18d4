#include "results/tablefile.h"

#include "base/failure.h"

#include <fmt/format.h>

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace results {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t buffer_size = std::size_t{1} << 20;
constexpr std::size_t longest_name = 200; // leaves room in a name of 255 bytes

fs::path behind_links(const fs::path& file) {
    std::error_code failed;
    const fs::path target = fs::weakly_canonical(file, failed);
    return failed ? file : target;
}

void make_folder(const fs::path& target, const fs::path& shown) {
    std::error_code failed;
    if (target.has_parent_path()) {
        fs::create_directories(target.parent_path(), failed);
    }
    if (failed) {
        errno = failed.value();
        core::throw_errno("written", shown);
    }
}

} // namespace

TableFile::TableFile(const fs::path& target) : shown_(target) {
    std::error_code ignored;
    const fs::file_status state = fs::status(target, ignored);
    if (fs::is_other(state)) {
        out_.emplace(target, O_WRONLY, shown_);
        return;
    }
    target_ = behind_links(target);
    if (fs::is_directory(state)) {
        throw base::FileFailure("is a folder", shown_);
    }
    if (fs::exists(state) && ::access(target_.c_str(), W_OK) != 0) {
        core::throw_errno("written", shown_);
    }
    make_folder(target_, shown_);
    const std::string name = target_.filename().string().substr(0, longest_name);
    const fs::path beside = target_.parent_path() / fmt::format(".{}.td-table", name);
    out_.emplace(beside, O_WRONLY | O_CREAT | O_TRUNC, shown_);
    beside_ = beside;
    if (fs::exists(state)) {
        fs::permissions(beside_, state.permissions(), ignored);
    }
}

TableFile::~TableFile() {
    if (!beside_.empty()) {
        std::error_code ignored;
        fs::remove(beside_, ignored);
    }
}

void TableFile::add(std::string_view text) {
    buffer_ += text;
    if (buffer_.size() >= buffer_size) {
        write_buffer();
    }
}

void TableFile::write_buffer() {
    out_->write(buffer_);
    buffer_.clear();
}

void TableFile::finish() {
    write_buffer();
    if (beside_.empty()) {
        return;
    }
    out_->flush();
    if (::rename(beside_.c_str(), target_.c_str()) != 0) {
        core::throw_errno("written", shown_);
    }
    beside_.clear();
}

} // namespace results
