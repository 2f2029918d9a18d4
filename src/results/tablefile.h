// A file that other programs will read, written piece by piece.
#pragma once

#include "core/filemoves.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace results {

// The text gathers in a file beside `target`, which takes its name when it is complete: a failure
// leaves the old file. A link stays a link, the file keeps its mode, and a device is written to as
// it is. Missing folders are made. FileFailure when something cannot be written.
class TableFile {
public:
    explicit TableFile(const std::filesystem::path& target);
    ~TableFile(); // drops a file that is not complete
    TableFile(const TableFile&) = delete;
    TableFile& operator=(const TableFile&) = delete;

    void add(std::string_view text);
    void finish();

private:
    void write_buffer();

    std::filesystem::path shown_, target_;
    std::filesystem::path beside_; // empty when the target itself is written
    std::optional<core::Descriptor> out_;
    std::string buffer_;
};

} // namespace results
