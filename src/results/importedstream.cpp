#include "results/importedstream.h"

#include "base/failure.h"
#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace results {

namespace {

constexpr std::string_view mark = "# ";
constexpr std::string_view species = "CONC ";
constexpr int most_species = 99;

std::string named(std::string_view keyword) {
    return std::string(mark) + std::string(keyword);
}

bool is_concentration(std::string_view keyword) {
    const int number =
        keyword.starts_with(species) ? base::leading_int32(keyword.substr(species.size())) : 0;
    return number >= 1 && number <= most_species && keyword == concentration_key(number);
}

} // namespace

std::string concentration_key(int number) {
    return numbered_key("# CONC", number).substr(mark.size());
}

ImportedStream::ImportedStream(const std::filesystem::path& file,
                               std::span<const std::string_view> keywords, base::Interaction& user)
    : stream_(file) {
    Block* open = nullptr;
    while (const auto key = stream_.next_key()) {
        const std::uint64_t behind = stream_.position();
        if (open != nullptr) {
            open->behind_next = behind;
            open = nullptr;
        }
        const std::string_view keyword = std::string_view(*key).substr(
            std::min(key->size(), key->starts_with(mark) ? mark.size() : key->size()));
        if (std::ranges::find(keywords, keyword) != keywords.end() || is_concentration(keyword)) {
            open = &blocks_[std::string(keyword)];
            *open = {behind, stream_.size() + 1};
        }
        user.show_meter(
            static_cast<int>(100 * behind / std::max<std::uint64_t>(stream_.size(), 1)));
    }
    stream_.require_unchanged();
    std::erase_if(blocks_, [this](const auto& block) { return is_empty(block.second); });
}

void ImportedStream::fail(const std::string& what) const {
    throw base::FileFailure(what, file());
}

bool ImportedStream::is_empty(const Block& block) {
    stream_.go_to(block.begin);
    const auto line = stream_.next_line();
    return !line || line->starts_with('#');
}

const ImportedStream::Block* ImportedStream::find(std::string_view keyword) const {
    const auto block = blocks_.find(keyword);
    return block == blocks_.end() ? nullptr : &block->second;
}

const ImportedStream::Block& ImportedStream::go_to(std::string_view keyword) {
    const Block& block = *find(keyword);
    stream_.go_to(block.begin);
    return block;
}

void ImportedStream::require_within(const Block& block, std::string_view keyword) {
    const bool last = block.behind_next > stream_.size();
    const bool within = last || (stream_.next_key() && stream_.position() == block.behind_next);
    if (!within) {
        fail(fmt::format("{} has fewer values than the grid asks for", named(keyword)));
    }
    stream_.require_unchanged();
}

std::string ImportedStream::line(std::string_view keyword, std::size_t limit) {
    if (!has(keyword)) {
        return {};
    }
    go_to(keyword);
    std::string text = base::to_utf8(stream_.next_line(limit).value_or(""));
    stream_.require_unchanged();
    return text;
}

std::string ImportedStream::text(std::string_view keyword) {
    return std::string(base::trimmed(line(keyword)));
}

std::vector<std::string> ImportedStream::lines(std::string_view keyword, std::size_t most) {
    std::vector<std::string> found;
    if (!has(keyword)) {
        return found;
    }
    go_to(keyword);
    while (found.size() < most) {
        const auto line = stream_.next_line();
        if (!line || line->starts_with('#')) {
            break;
        }
        found.emplace_back(base::trimmed(*line));
    }
    stream_.require_unchanged();
    return found;
}

int ImportedStream::integer(std::string_view keyword, int otherwise) {
    return has(keyword) ? base::leading_int32(line(keyword)) : otherwise;
}

template <class T>
std::vector<T> ImportedStream::read(std::string_view keyword, std::uint64_t count) {
    if (!has(keyword)) {
        return {};
    }
    const Block& block = go_to(keyword);
    const auto reader = [&] {
        return BlockReader(stream_, RepeatCount::rounded_32, named(keyword), true);
    };
    if (count > stream_.size()) { // a damaged count takes no memory
        reader().skip(count);
        stream_.go_to(block.begin);
    }
    std::vector<T> values(count);
    reader().read(values);
    require_within(block, keyword);
    return values;
}

std::vector<float> ImportedStream::values(std::string_view keyword, std::uint64_t count) {
    return read<float>(keyword, count);
}

std::vector<double> ImportedStream::doubles(std::string_view keyword, std::uint64_t count) {
    return read<double>(keyword, count);
}

Field ImportedStream::field(std::string_view keyword, const StreamGrid& grid,
                            base::Interaction& user) {
    const Block& block = go_to(keyword);
    Field field = read_field(stream_, grid, FieldOrder::stream, RepeatCount::rounded_32,
                             named(keyword), {}, user);
    require_within(block, keyword);
    return field;
}

void ImportedStream::runs(std::string_view keyword, std::uint64_t cells, const VisitRun& visit) {
    const Block& block = go_to(keyword);
    const std::string what = "a value of " + named(keyword);
    while (cells > 0) {
        const std::string token = stream_.InputNumber(what);
        const std::size_t asterisk = token.find('*');
        std::uint64_t count = 1;
        std::string_view text = token;
        if (asterisk != std::string::npos) {
            text.remove_prefix(asterisk + 1);
            const double number = std::nearbyint(base::leading_number(token.substr(0, asterisk)));
            count = static_cast<std::uint64_t>(
                std::clamp<double>(number, 1, std::numeric_limits<std::int32_t>::max()));
        }
        count = std::min(count, cells);
        visit(text, count);
        cells -= count;
    }
    require_within(block, keyword);
}

} // namespace results
