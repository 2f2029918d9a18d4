// The bytes of a keyword stream that may be larger than the memory and may be written to by a
// simulator while it is read.
#pragma once

#include "core/filemoves.h"

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <string_view>
#include <vector>

namespace results {

class StreamFile {
public:
    // FileFailure when the file cannot be opened or is no ordinary file.
    explicit StreamFile(const std::filesystem::path& file);

    const std::filesystem::path& file() const { return file_.shown(); }
    // As it was when the file was opened; nothing behind it is read.
    std::uint64_t size() const { return opened_.size; }
    std::uint64_t bytes_read() const { return bytes_read_; }

    // What is in memory from `position` on; the next block is read when that is nothing. Empty at
    // the end of the file only. The view holds until the next call.
    std::string_view bytes(std::uint64_t position);
    // The same with more behind it, as long as the file and a block last.
    std::string_view more_bytes(std::uint64_t position);

    // FileFailure when the file is longer, shorter, written to or replaced since it was opened.
    void require_unchanged() const;
    // The reason of a failure is often that the file has changed; that is told instead.
    [[noreturn]] void fail(const std::string& what) const;

private:
    struct Look {
        std::uint64_t size, device, inode;
        std::timespec written;
    };
    Look look() const;
    std::string_view view(std::uint64_t position) const;
    void fill_block();

    core::Descriptor file_;
    Look opened_;
    std::vector<char> block_;
    std::uint64_t start_ = 0; // of the block in the file
    std::size_t filled_ = 0;
    std::uint64_t bytes_read_ = 0;
};

} // namespace results
