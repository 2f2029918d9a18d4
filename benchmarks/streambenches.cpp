#include "benches.h"
#include "childprocess.h"
#include "models.h"

#include "base/numbertext.h"
#include "base/textfile.h"
#include "results/streamreader.h"

#include <benchmark/benchmark.h>

#include <fmt/format.h>

#include <charconv>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace bench {

namespace fs = std::filesystem;

namespace {

constexpr int columns = 200, rows = 200, layers = 100;
constexpr std::size_t cells = std::size_t{columns} * rows * layers;
constexpr std::string_view parameters[] = {"PRES", "POR",    "PERM", "VX",  "VY",    "VZ",
                                           "TEMP", "DICHTE", "PHI",  "ICE", "RHOCM", "TSOL"};
constexpr std::size_t stream_bytes = 1'000'000'000;

// The values of a grid as a simulator leaves them: plain ones, small ones, and some runs.
std::string block_text() {
    const std::vector<float> plain = temperatures.values(cells),
                             small = permeabilities.values(cells);
    constexpr float usual[] = {0.25F, 1E-12F, -1.2E-13F, 99.87031F};
    std::string text;
    for (std::size_t i = 0; i < cells;) {
        const std::size_t run = i % 64 == 0 ? std::min<std::size_t>(8, cells - i) : 1;
        const float value = i % 4 == 0 ? usual[i / 4 % 4] : i % 4 == 1 ? small[i] : plain[i];
        base::append_Format_Print(text, value, static_cast<std::int64_t>(run));
        i += run;
    }
    return text + "\r\n";
}

// The least that reads such a block: no separators but blanks, no check of anything.
std::size_t bare_from_chars(std::string_view text, std::vector<double>& values) {
    const char* at = text.data();
    const char* const end = at + text.size() - 2;
    std::size_t read = 0;
    while (at < end) {
        double value = 0;
        std::size_t run = 1;
        at = std::from_chars(at, end, value).ptr;
        if (*at == '*') {
            run = static_cast<std::size_t>(value);
            at = std::from_chars(at + 1, end, value).ptr;
        }
        for (; run > 0; --run) {
            values[read++] = value;
        }
        ++at;
    }
    return read;
}

void read_by_stream_operator(const fs::path& file, std::vector<double>& values) {
    std::ifstream in(file, std::ios::binary);
    std::string key;
    std::getline(in, key);
    for (std::size_t read = 0; read < values.size();) {
        double value = 0;
        in >> value;
        std::size_t run = 1;
        if (in.peek() == '*') {
            run = static_cast<std::size_t>(value);
            in.get();
            in >> value;
        }
        std::fill_n(values.begin() + static_cast<std::ptrdiff_t>(read), run, value);
        read += run;
    }
}

void read_by_block_reader(const fs::path& file, std::vector<double>& values) {
    results::StreamReader stream(file);
    stream.JumpToPos("# TEMP");
    results::BlockReader(stream, results::RepeatCount::strict_32, "# TEMP", true).read(values);
    stream.require_unchanged();
}

// One block in a file and in memory.
class Block {
public:
    explicit Block(fs::path file) : file_(std::move(file)) {}

    const fs::path& file() {
        text();
        return file_;
    }
    const std::string& text() {
        if (text_.empty()) {
            text_ = block_text();
            std::ofstream(file_, std::ios::binary) << "# TEMP\r\n" << text_;
            require_equal_values();
        }
        return text_;
    }

private:
    void require_equal_values() {
        std::vector<double> bare(cells), read(cells);
        bare_from_chars(text_, bare);
        read_by_block_reader(file_, read);
        if (std::memcmp(bare.data(), read.data(), cells * sizeof(double)) != 0) {
            throw std::runtime_error("the block reader and from_chars differ");
        }
    }

    fs::path file_;
    std::string text_;
};

// A whole result file whose arrays stand on one line each.
fs::path write_stream(const fs::path& file, const std::string& block) {
    if (fs::exists(file)) {
        return file;
    }
    std::ofstream out(file, std::ios::binary);
    out << fmt::format("# I0\r\n {} \r\n# J0\r\n {} \r\n# K0\r\n {} \r\n# DELX\r\n{}*10. \r\n"
                       "# DELY\r\n{}*10. \r\n# DELZ\r\n{}*5. \r\n",
                       columns, rows, layers, columns, rows, layers);
    std::size_t next = 0;
    while (static_cast<std::size_t>(out.tellp()) < stream_bytes) {
        out << (next < std::size(parameters)
                    ? fmt::format("# {}\r\n", parameters[next])
                    : results::numbered_key("# CONC", int(next - std::size(parameters)) + 1) +
                          "\r\n")
            << block;
        ++next;
    }
    out << "# LAST\r\n1. \r\n";
    return file;
}

void bare_memchr(const fs::path& file) {
    std::vector<char> block(std::size_t{1} << 20);
    const int in = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    std::size_t lines = 0;
    for (ssize_t count = 0; (count = ::read(in, block.data(), block.size())) > 0;) {
        const char* const end = block.data() + count;
        const char* at = block.data();
        while ((at = static_cast<const char*>(
                    std::memchr(at, '\n', static_cast<std::size_t>(end - at)))) != nullptr) {
            ++lines;
            if (++at == end) {
                break;
            }
        }
    }
    ::close(in);
    benchmark::DoNotOptimize(lines);
}

void all_key_lines(const fs::path& file) {
    results::StreamReader stream(file);
    while (stream.next_key()) {
    }
}

double bytes_to_find_again(const fs::path& file) {
    results::StreamReader stream(file);
    stream.JumpToPos("# LAST");
    const std::uint64_t before = stream.bytes_read();
    for (const char* const word : {"# VX", "# PHI", "# LAST"}) {
        stream.rewind();
        stream.JumpToPos(word);
    }
    return static_cast<double>(stream.bytes_read() - before);
}

double field_memory(const fs::path& file) {
    return run_child(TD_PROGRAM, {"result", "read", file.string(), "PHI", "--as", "raw", "--layer",
                                  "1", "--no-cache"})
        .peak_bytes;
}

} // namespace

void add_streams(const fs::path& folder) {
    const auto block = std::make_shared<Block>(folder / "block.nlo");
    const auto add_values = [&](const char* name, auto read) {
        benchmark::RegisterBenchmark(name, [block, read](benchmark::State& state) {
            block->text();
            std::vector<double> values(cells);
            for ([[maybe_unused]] auto _ : state) {
                read(*block, values);
                benchmark::DoNotOptimize(values.data());
            }
        })->Iterations(1);
    };
    add_values("stream block",
               [](Block& b, auto& values) { read_by_block_reader(b.file(), values); });
    add_values("stream from_chars",
               [](Block& b, auto& values) { bare_from_chars(b.text(), values); });
    add_values("stream ifstream",
               [](Block& b, auto& values) { read_by_stream_operator(b.file(), values); });
    const auto add_scan = [&](const char* name, auto scan) {
        return benchmark::RegisterBenchmark(name,
                                            [=](benchmark::State& state) {
                                                const fs::path file = write_stream(
                                                    folder / "stream.nlo", block->text());
                                                for ([[maybe_unused]] auto _ : state) {
                                                    scan(state, file);
                                                }
                                            })
            ->Iterations(1);
    };
    add_scan("stream key lines", [](auto&, const fs::path& file) { all_key_lines(file); });
    add_scan("stream memchr", [](auto&, const fs::path& file) { bare_memchr(file); });
    add_scan("stream found again", [](auto& state, const fs::path& file) {
        state.counters["cost"] = bytes_to_find_again(file);
    })->Repetitions(1);
    add_scan("stream field memory", [](auto& state, const fs::path& file) {
        state.counters["cost"] = field_memory(file);
    })->Repetitions(1);
}

} // namespace bench
