// What the simulator leaves behind.
#include "checks.h"
#include "scratchfolder.h"
#include "targets.h"

#include "base/numbertext.h"
#include "results/field.h"
#include "td/terminaluser.h"

#include <bit>
#include <cmath>
#include <sstream>

namespace fuzz {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t most_values = 20'000;

// A file written in this tick of the clock is waited for when it is opened.
fs::path old_file(const ScratchFolder& folder, std::string_view bytes) {
    const fs::path file = folder.write("m.nlo", bytes);
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(1));
    return file;
}

// Every key line is found by its own text, at the latest where it was met.
void search_keys(results::StreamReader& stream) {
    constexpr int most_keys = 50;
    std::vector<std::pair<std::string, std::uint64_t>> keys;
    for (int n = 0; n < most_keys; ++n) {
        std::optional<std::string> key = stream.next_key();
        if (!key) {
            break;
        }
        keys.emplace_back(std::move(*key), stream.position());
    }
    for (const auto& [key, behind] : keys) {
        stream.rewind();
        require(stream.find_prefix(key), "a key line is not found by its beginning");
        require(stream.position() <= behind, "a key line is passed over");
        stream.rewind();
        const bool may_be_cut = stream.size() > 200;
        require(may_be_cut || stream.JumpToPos(key), "a key line is not found by its text");
    }
}

// The values by the definition: token by token.
std::vector<float> slow_values(results::StreamReader& stream) {
    std::vector<float> values;
    succeeds([&] {
        while (values.size() < most_values) {
            const std::string token = stream.InputNumber("a value");
            const std::size_t asterisk = token.find('*');
            const bool run = asterisk != std::string::npos;
            const double count =
                run ? std::nearbyint(base::leading_number(token.substr(0, asterisk))) : 1;
            if (count > 0x7FFFFFFF) {
                return;
            }
            const auto written = std::min<double>(std::max(count, 1.0), most_values);
            values.insert(values.end(), static_cast<std::size_t>(written),
                          base::leading_single(run ? token.substr(asterisk + 1) : token));
        }
    });
    return values;
}

void compare_values(results::StreamReader& stream) {
    const std::uint64_t begin = stream.position();
    const std::vector<float> expected = slow_values(stream);
    stream.go_to(begin);
    std::vector<float> values(expected.size());
    results::BlockReader block(stream, results::RepeatCount::rounded_32, "# TEMP", true);
    const std::span<float> all(values);
    block.read(all.first(values.size() / 3));
    block.read(all.subspan(values.size() / 3));
    const auto same = [](float a, float b) {
        return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
    };
    require(std::ranges::equal(values, expected, same), "a value differs from its token");
}

void read_grid(results::StreamReader& stream, base::Interaction& user) {
    const auto grid = results::read_stream_grid(stream, user);
    if (!grid) {
        return;
    }
    if (stream.find_prefix("# DELZ")) {
        succeeds([&] {
            results::ReadVektorElements(stream, std::min(grid->K0, 100'000), true, "# DELZ");
        });
    }
    const std::uint64_t block = stream.find_prefix("# TEMP") ? stream.position() : 0;
    const auto order = static_cast<results::FieldOrder>(stream.size() % 3);
    stream.go_to(block);
    if (grid->cells() <= most_values * 10) {
        results::read_field(stream, *grid, order, results::RepeatCount::strict_32, "# TEMP", {},
                            user);
    } else {
        results::BlockReader(stream, results::RepeatCount::strict_32, "# TEMP", true)
            .skip(grid->cells());
    }
}

} // namespace

void stream(std::string_view bytes) {
    const ScratchFolder folder;
    results::StreamReader stream(old_file(folder, bytes));
    search_keys(stream);
    stream.rewind();
    compare_values(stream);
    stream.rewind();
    if (stream.find_prefix("# TEMP")) {
        compare_values(stream);
    }
    std::ostringstream messages;
    td::TerminalUser user(messages, td::StandingAnswer::no, true);
    results::read_counter(stream, "# ANZSUBS", user);
    stream.rewind();
    read_grid(stream, user);
}

} // namespace fuzz
