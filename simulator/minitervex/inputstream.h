// The keyword stream as the simulator reads it: strictly, since a value that is missing or stands
// in the wrong place would make a wrong result.
#pragma once

#include "minitervex/grid.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace minitervex {

struct Block {
    std::string keyword;       // "PERM", "CONC 2"
    std::string_view key_line; // as it stands, without its end
    std::string_view body;     // all bytes up to the next key line
    int line = 1;              // of the key line
};

// One item of a value list: 12*0.25.
struct Item {
    std::int64_t count = 1;
    double value = 0;
};

class InputStream {
public:
    // Reads the whole file. FileFailure when it cannot be read or does not begin with a key line,
    // and for a block that is there twice.
    explicit InputStream(std::filesystem::path file);
    InputStream(const InputStream&) = delete;
    InputStream& operator=(const InputStream&) = delete;

    const std::filesystem::path& file() const { return file_; }
    const std::vector<Block>& blocks() const { return blocks_; }
    bool has(std::string_view keyword) const { return find(keyword) != nullptr; }

    // Each of these fails with FileFailure, which names the line and what is wrong, when the block
    // is missing or holds something else.

    // The first value line, trimmed.
    std::string word(std::string_view keyword) const;
    // The only number of the block.
    double number(std::string_view keyword) const;
    int integer(std::string_view keyword, int lowest, int highest) const;
    // All numbers of the block, exactly `count`, in the order of the stream.
    Vector values(std::string_view keyword, std::int64_t count) const;
    // The same, without holding them, as runs; fails for another sum of counts.
    std::vector<Item> items(std::string_view keyword, std::int64_t count) const;
    std::vector<Item> items(std::string_view keyword, std::int64_t fewest, std::int64_t most) const;

    // FileFailure "# KEYWORD (line n): WHAT".
    [[noreturn]] void fail(std::string_view keyword, std::string_view what) const;

private:
    void add_block(std::string_view key_line, int line);
    const Block* find(std::string_view keyword) const;
    const Block& need(std::string_view keyword) const;

    std::filesystem::path file_;
    std::string bytes_;
    std::vector<Block> blocks_;
};

} // namespace minitervex
