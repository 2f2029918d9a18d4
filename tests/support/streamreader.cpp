#include "support/streamreader.h"

#include <charconv>
#include <stdexcept>
#include <system_error>

namespace support {

namespace {

[[noreturn]] void broken(std::string_view what, std::string_view text) {
    throw std::runtime_error(std::string(what) + ": \"" + std::string(text.substr(0, 60)) + "\"");
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::size_t count_of(std::string_view text) {
    std::size_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || end != text.data() + text.size() || count == 0)
        broken("not a count", text);
    return count;
}

// "# CONC           2": the number ends in column 18 when it has one or two digits.
StreamBlock block_of_key_line(std::string_view line) {
    if (line.substr(0, 2) != "# ")
        broken("not a key line", line);
    StreamBlock block;
    const std::size_t blank = line.find(' ', 2);
    block.keyword = line.substr(2, blank - 2);
    if (block.keyword.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789") !=
        std::string::npos)
        broken("not a keyword", line);
    if (blank != std::string_view::npos)
        block.index = static_cast<int>(count_of(trimmed(line.substr(blank))));
    return block;
}

std::vector<std::string_view> lines_of(std::string_view bytes) {
    std::vector<std::string_view> lines;
    while (!bytes.empty()) {
        const std::size_t end = bytes.find("\r\n");
        if (end == std::string_view::npos)
            broken("line without CR LF", bytes);
        lines.push_back(bytes.substr(0, end));
        if (lines.back().find('\n') != std::string_view::npos)
            broken("LF without CR", lines.back());
        bytes.remove_prefix(end + 2);
    }
    return lines;
}

} // namespace

Stream::Stream(std::string_view bytes) {
    for (const std::string_view line : lines_of(bytes)) {
        if (!line.empty() && line.front() == '#')
            blocks_.push_back(block_of_key_line(line));
        else if (blocks_.empty())
            broken("value before the first key line", line);
        else
            blocks_.back().lines.emplace_back(line);
    }
}

bool Stream::has(std::string_view keyword) const {
    for (const StreamBlock& block : blocks_)
        if (block.keyword == keyword)
            return true;
    return false;
}

const StreamBlock& Stream::block(std::string_view keyword, int index) const {
    const StreamBlock* found = nullptr;
    for (const StreamBlock& block : blocks_) {
        if (block.keyword != keyword || block.index != index)
            continue;
        if (found != nullptr)
            broken("block comes twice", keyword);
        found = &block;
    }
    if (found == nullptr)
        broken("no such block", keyword);
    return *found;
}

std::string Stream::word(std::string_view keyword) const {
    const StreamBlock& found = block(keyword);
    if (found.lines.size() != 1)
        broken("not one value line", keyword);
    return std::string(trimmed(found.lines.front()));
}

int Stream::integer(std::string_view keyword) const {
    return static_cast<int>(count_of(word(keyword)));
}

std::vector<StreamItem> items_of(const std::string& line) {
    std::vector<StreamItem> items;
    std::string_view rest = line;
    while (!rest.empty()) {
        const std::string_view item = rest.substr(0, rest.find(' '));
        rest.remove_prefix(std::min(item.size() + 1, rest.size()));
        const std::size_t star = item.find('*');
        const bool single = star == std::string_view::npos;
        items.push_back({single ? 1 : count_of(item.substr(0, star)),
                         std::string(single ? item : item.substr(star + 1))});
        if (items.back().text.empty())
            broken("two blanks or a count without a value", line);
    }
    return items;
}

std::vector<std::string> expanded_texts(const std::string& line) {
    std::vector<std::string> values;
    for (const StreamItem& item : items_of(line))
        values.insert(values.end(), item.count, item.text);
    return values;
}

std::vector<double> expanded(const std::string& line) {
    std::vector<double> values;
    for (const StreamItem& item : items_of(line))
        values.insert(values.end(), item.count, number_of(item.text));
    return values;
}

std::vector<std::string> array_texts(const StreamBlock& block) {
    if (block.lines.size() != 1)
        broken("array not in one line", block.keyword);
    const std::vector<StreamItem> items = items_of(block.lines.front());
    for (std::size_t n = 1; n < items.size(); ++n)
        if (items[n].text == items[n - 1].text)
            broken("equal values not folded in " + block.keyword, items[n].text);
    return expanded_texts(block.lines.front());
}

std::vector<double> array_of(const StreamBlock& block) {
    std::vector<double> values;
    for (const std::string& text : array_texts(block))
        values.push_back(number_of(text));
    return values;
}

double number_of(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        broken("not a number", text);
    return value;
}

} // namespace support
