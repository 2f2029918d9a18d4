// A second reader of the simulator's keyword stream, written from the grammar alone and sharing no
// code with the writer, so that the two can be held against each other.
//
// It is stricter than a simulator has to be: CR LF at every line end, one blank between items, and
// no two neighbouring items that ought to have been folded into one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace support {

struct StreamBlock {
    std::string keyword;            // "PERM"; without the index of a block of several
    int index = 0;                  // 2 of "# CONC           2"; 0 when the key line has none
    std::vector<std::string> lines; // value lines without their ends
};

// n equal values of one value list, as text: "12*3." gives 12 and "3.".
struct StreamItem {
    std::size_t count = 1;
    std::string text;
};

class Stream {
public:
    // Cuts a stream into its blocks; std::runtime_error names the line that breaks the grammar.
    explicit Stream(std::string_view bytes);

    const std::vector<StreamBlock>& blocks() const { return blocks_; }
    bool has(std::string_view keyword) const;
    // The one block of this keyword (and index); std::runtime_error when there is none or more.
    const StreamBlock& block(std::string_view keyword, int index = 0) const;
    // The only value line of a block, without the blanks around it.
    std::string word(std::string_view keyword) const;
    int integer(std::string_view keyword) const;

private:
    std::vector<StreamBlock> blocks_;
};

// The items of a value line in their order.
std::vector<StreamItem> items_of(const std::string& line);
// The values of a line, each as often as its count says.
std::vector<std::string> expanded_texts(const std::string& line);
std::vector<double> expanded(const std::string& line);
// The same for the array in the only line of a block, which must be folded as far as it goes.
std::vector<std::string> array_texts(const StreamBlock& block);
std::vector<double> array_of(const StreamBlock& block);

// The number that a whole text is; std::runtime_error for anything else.
double number_of(std::string_view text);

} // namespace support
