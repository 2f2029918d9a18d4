#include "minitervex/inputstream.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace minitervex {

namespace {

constexpr std::string_view separators = " \t,\r\n";
constexpr std::size_t most_blocks = 1000; // far more than there are keywords

// "# CONC           2" gives "CONC 2".
std::string keyword_of(std::string_view key_line) {
    std::string keyword;
    for (const char c : base::trimmed(key_line.substr(1)))
        if (!(c == ' ' && keyword.ends_with(' ')))
            keyword += c;
    return keyword;
}

// The streams hold texts such as "1E+15.0" beside plain numbers.
std::optional<double> number_of(std::string_view text) {
    const auto number = base::whole_number(text);
    if (number)
        return number;
    for (const std::string_view ending : {".0", "."})
        if (text.ends_with(ending))
            return base::whole_number(text.substr(0, text.size() - ending.size()));
    return std::nullopt;
}

// Goes through a body's words.
class Words {
public:
    explicit Words(std::string_view body) : rest_(body) {}

    std::optional<std::string_view> next() {
        const std::size_t begin = rest_.find_first_not_of(separators);
        if (begin == std::string_view::npos)
            return std::nullopt;
        const std::size_t end = std::min(rest_.find_first_of(separators, begin), rest_.size());
        const std::string_view word = rest_.substr(begin, end - begin);
        rest_.remove_prefix(end);
        return word;
    }

private:
    std::string_view rest_;
};

std::optional<Item> item_of(std::string_view word) {
    Item item;
    const std::size_t star = word.find('*');
    if (star != std::string_view::npos) {
        const auto count = base::whole_integer(word.substr(0, star));
        if (!count || *count < 1)
            return std::nullopt;
        item.count = *count;
        word.remove_prefix(star + 1);
    }
    const auto value = number_of(word);
    if (!value)
        return std::nullopt;
    item.value = *value;
    return item;
}

} // namespace

InputStream::InputStream(std::filesystem::path file)
    : file_(std::move(file)), bytes_(base::read_bytes(file_)) {
    int line = 0;
    for (std::size_t at = 0; at < bytes_.size();) {
        const std::size_t end = std::min(bytes_.find('\n', at), bytes_.size() - 1) + 1;
        const std::string_view text = std::string_view(bytes_).substr(at, end - at);
        ++line;
        if (text.starts_with('#'))
            add_block(text, line);
        else if (!blocks_.empty())
            blocks_.back().body = {blocks_.back().body.data(),
                                   blocks_.back().body.size() + text.size()};
        else if (!base::trimmed(text).empty())
            throw base::FileFailure("is no input file: line 1 is no key line", file_);
        at = end;
    }
    if (blocks_.empty())
        throw base::FileFailure("is empty", file_);
}

void InputStream::add_block(std::string_view key_line, int line) {
    std::string keyword = keyword_of(key_line);
    if (blocks_.size() == most_blocks)
        throw base::FileFailure(fmt::format("line {}: more than {} blocks", line, most_blocks),
                                file_);
    if (has(keyword))
        throw base::FileFailure(
            fmt::format("line {}: the block # {} is there twice", line, keyword.substr(0, 40)),
            file_);
    blocks_.push_back({std::move(keyword),
                       base::trimmed_right(key_line, "\r\n"),
                       {key_line.data() + key_line.size(), 0},
                       line});
}

const Block* InputStream::find(std::string_view keyword) const {
    const auto at = std::ranges::find(blocks_, keyword, &Block::keyword);
    return at == blocks_.end() ? nullptr : &*at;
}

const Block& InputStream::need(std::string_view keyword) const {
    const Block* const block = find(keyword);
    if (block == nullptr)
        throw base::FileFailure(fmt::format("has no block # {}", keyword), file_);
    return *block;
}

void InputStream::fail(std::string_view keyword, std::string_view what) const {
    const Block* const block = find(keyword);
    throw base::FileFailure(block == nullptr
                                ? fmt::format("# {}: {}", keyword, what)
                                : fmt::format("# {} (line {}): {}", keyword, block->line, what),
                            file_);
}

std::string InputStream::word(std::string_view keyword) const {
    const std::string_view body = need(keyword).body;
    return base::to_utf8(base::trimmed(body.substr(0, std::min(body.find('\n'), body.size()))));
}

double InputStream::number(std::string_view keyword) const {
    return values(keyword, 1)[0];
}

int InputStream::integer(std::string_view keyword, int lowest, int highest) const {
    const double value = number(keyword);
    if (!(value >= lowest && value <= highest) || value != static_cast<int>(value))
        fail(keyword, fmt::format("{} is no integer from {} to {}", base::value_text(value), lowest,
                                  highest));
    return static_cast<int>(value);
}

std::vector<Item> InputStream::items(std::string_view keyword, std::int64_t count) const {
    return items(keyword, count, count);
}

std::vector<Item> InputStream::items(std::string_view keyword, std::int64_t fewest,
                                     std::int64_t most) const {
    std::vector<Item> items;
    std::int64_t seen = 0;
    Words words(need(keyword).body);
    while (const auto word = words.next()) {
        const auto item = item_of(*word);
        if (!item)
            fail(keyword, fmt::format("\"{}\" is no number", base::to_utf8(word->substr(0, 40))));
        if (item->count > most - seen)
            fail(keyword, fmt::format("holds more than {} values", most));
        seen += item->count;
        items.push_back(*item);
    }
    if (seen < fewest)
        fail(keyword, fmt::format("holds {} values, where {} belong", seen, fewest));
    return items;
}

Vector InputStream::values(std::string_view keyword, std::int64_t count) const {
    const std::vector<Item> runs = items(keyword, count);
    Vector values(count);
    Eigen::Index at = 0;
    for (const Item& item : runs) {
        values.segment(at, item.count).setConstant(item.value);
        at += item.count;
    }
    return values;
}

} // namespace minitervex
