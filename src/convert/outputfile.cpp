#include "convert/outputfile.h"

#include "core/modelfiles.h"

#include <fcntl.h>

namespace convert {

namespace {
constexpr std::size_t buffer_size = std::size_t{1} << 20;
constexpr std::size_t large = std::size_t{1} << 16; // not worth a copy
} // namespace

OutputFile::OutputFile(core::ModelFiles& files, const std::filesystem::path& target)
    : files_(&files) {
    out_.emplace(files.open_file_aside(target, true), O_WRONLY | O_TRUNC, target);
    buffer_.reserve(buffer_size);
}

void OutputFile::add(std::string_view bytes) {
    if (bytes.size() >= large || buffer_.size() + bytes.size() > buffer_size) {
        write_buffer();
    }
    if (bytes.size() >= large) {
        out_->write(bytes);
    } else {
        buffer_ += bytes;
    }
}

void OutputFile::write_buffer() {
    out_->write(buffer_);
    buffer_.clear();
}

void OutputFile::finish() {
    write_buffer();
    out_.reset();
    files_->commit();
}

} // namespace convert
