#include "benches.h"
#include "childprocess.h"
#include "models.h"

#include "input/creation.h"
#include "input/inputarrays.h"
#include "td/terminaluser.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <fstream>
#include <sstream>

namespace bench {

namespace fs = std::filesystem;

namespace {

using Block = void (*)(input::Creation&);

void write_block(benchmark::State& state, const fs::path& file, Block block) {
    app::Workspace model = open(file, core::Access::write);
    std::ostringstream messages;
    td::TerminalUser user(messages, td::StandingAnswer::no, true);
    for ([[maybe_unused]] auto _ : state) {
        input::Creation creation(model.project, model.files, user);
        block(creation);
        creation.stream.finish();
    }
}

void write_out(std::ofstream& out, const std::vector<char>& buffer, const char* end) {
    out.write(buffer.data(), end - buffer.data());
}

void to_chars_loop(benchmark::State& state, const fs::path& file, const Noise& noise) {
    constexpr std::size_t longest = 32;
    const std::vector<float> values = noise.values(std::size_t{8'000'000});
    std::vector<char> buffer(std::size_t{1} << 20);
    const char* const full = buffer.data() + buffer.size() - longest;
    for ([[maybe_unused]] auto _ : state) {
        std::ofstream out(file, std::ios::binary | std::ios::trunc);
        char* at = buffer.data();
        for (const float value : values) {
            if (at > full) {
                write_out(out, buffer, at);
                at = buffer.data();
            }
            at = std::to_chars(at, at + longest, value, std::chars_format::general, 7).ptr;
            *at++ = ' ';
        }
        write_out(out, buffer, at);
    }
}

void create_input(benchmark::State& state, const fs::path& file) {
    double peak = 0;
    for ([[maybe_unused]] auto _ : state) {
        const Usage usage = run_child(TD_PROGRAM, {"create-input", file.string(), "--install",
                                                   file.parent_path().string(), "--no", "--quiet"});
        peak = usage.peak_bytes;
    }
    state.counters["cost"] = peak;
}

} // namespace

void add_writing(CubeModel& model) {
    const auto add = [&model](const char* name, auto run) {
        return benchmark::RegisterBenchmark(
            name, [&model, run](benchmark::State& state) { run(state, model.file()); });
    };
    const auto block = [](Block written) {
        return [written](auto& state, const fs::path& file) { write_block(state, file, written); };
    };
    const auto peer = [](const Noise& noise) {
        return [noise](auto& state, const fs::path& file) {
            to_chars_loop(state, file.parent_path() / "peer.txt", noise);
        };
    };
    add("nml permeability", block(input::PERM))->Iterations(1);
    add("to_chars permeability", peer(permeabilities))->Iterations(1);
    add("nml temperature", block(input::TEMP))->Iterations(1);
    add("to_chars temperature", peer(temperatures))->Iterations(1);
    add("nml constant", block(input::PHI));
    add("create-input memory", create_input)->Iterations(1)->Repetitions(1);
}

} // namespace bench
