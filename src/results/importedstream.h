// A keyword stream as the import of a model reads it: the blocks that it knows, found once and then
// read in any order.
#pragma once

#include "results/field.h"
#include "results/streamreader.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace base {
class Interaction;
}

namespace results {

// Blocks go by their keyword without "# ". Of several blocks of one keyword the last one counts; an
// empty block counts as missing. A block that is missing reads as nothing; one with fewer values
// than the grid needs is a FileFailure.
class ImportedStream {
public:
    // Goes through the whole file, with the meter.
    ImportedStream(const std::filesystem::path& file, std::span<const std::string_view> keywords,
                   base::Interaction& user);

    const std::filesystem::path& file() const { return stream_.file(); }
    bool has(std::string_view keyword) const { return find(keyword) != nullptr; }

    // The first line as it stands, at most `limit` bytes of it, in UTF-8.
    std::string line(std::string_view keyword, std::size_t limit = 1000);
    // The same without blanks round it.
    std::string text(std::string_view keyword);
    // All lines up to the next key line, trimmed; at most `most`.
    std::vector<std::string> lines(std::string_view keyword, std::size_t most);
    // The first line that begins with a number, of which the numeric prefix; `otherwise` without.
    int integer(std::string_view keyword, int otherwise);

    // The first `count` values.
    std::vector<float> values(std::string_view keyword, std::uint64_t count);
    std::vector<double> doubles(std::string_view keyword, std::uint64_t count);
    // A field in the order of the stream.
    Field field(std::string_view keyword, const StreamGrid& grid, base::Interaction& user);
    // The items of a block of `cells` values as texts, with the count of each.
    using VisitRun = std::function<void(std::string_view text, std::uint64_t count)>;
    void runs(std::string_view keyword, std::uint64_t cells, const VisitRun& visit);

    [[noreturn]] void fail(const std::string& what) const;

private:
    struct Block {
        std::uint64_t begin = 0;       // behind its key line
        std::uint64_t behind_next = 0; // behind the key line of the next block
    };

    void note(const std::string& key, std::span<const std::string_view> keywords);
    bool is_empty(const Block& block);
    const Block* find(std::string_view keyword) const;
    const Block& go_to(std::string_view keyword);
    // Tells a block that ended before its values.
    void require_within(const Block& block, std::string_view keyword);
    template <class T>
    std::vector<T> read(std::string_view keyword, std::uint64_t count);

    StreamReader stream_;
    std::map<std::string, Block, std::less<>> blocks_;
};

// The key of the block of a species, without "# ".
std::string concentration_key(int number);

} // namespace results
