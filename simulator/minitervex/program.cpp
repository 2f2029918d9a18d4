#include "minitervex/program.h"

#include "base/failure.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "minitervex/modelreader.h"
#include "minitervex/monitoring.h"
#include "minitervex/progress.h"
#include "minitervex/resultfile.h"

#include <fmt/format.h>

#include <csignal>
#include <fstream>
#include <new>
#include <system_error>

namespace minitervex {

namespace fs = std::filesystem;

namespace {

constexpr const char* help =
    "minitervex [PROJECT]\n"
    "\n"
    "Computes groundwater flow, heat and tracers of PROJECT.nml and writes PROJECT.nlo and the\n"
    "monitoring files PROJECT.100, PROJECT.200 ... beside it. Without PROJECT it runs what\n"
    "tervex.ctl in the current folder names. While it runs the folder holds a file flagfile.\n"
    "\n"
    "For learning, demonstration and tests; production runs use tervex.\n"
    "\n"
    "  --help     this text\n"
    "  --version  the version\n"
    "\n"
    "Exit status: 0 done, 1 not computed, 2 wrong usage, 130 ended early by an interrupt.\n";
constexpr const char* version = "minitervex 0.1.0\n";

volatile std::sig_atomic_t signalled = 0;

class FlagFile {
public:
    explicit FlagFile(fs::path file) : file_(std::move(file)) {
        std::ofstream out(file_);
        if (!out.is_open())
            throw base::FileFailure("cannot be written", file_);
        if (!(out << "minitervex\n" << std::flush)) {
            remove();
            throw base::FileFailure("cannot be written", file_);
        }
    }
    ~FlagFile() { remove(); }
    FlagFile(const FlagFile&) = delete;
    FlagFile& operator=(const FlagFile&) = delete;

private:
    void remove() const {
        std::error_code ignored;
        fs::remove(file_, ignored);
    }

    fs::path file_;
};

fs::path with_ending(fs::path base, const char* ending) {
    base += ending;
    return base;
}

// A project as a person types it: with or without the ending of its input or project file.
fs::path typed_project(const fs::path& folder, const std::string& text) {
    const fs::path project = folder / text;
    const std::string ending = base::lower(project.extension().string());
    return ending == ".nml" || ending == ".td1" ? fs::path(project).replace_extension() : project;
}

fs::path input_file(const fs::path& base) {
    const auto found =
        base::find_ignoring_case(base.parent_path(), base.filename().string() + ".nml");
    if (!found)
        throw base::FileFailure("is not there", with_ending(base, ".nml"));
    return *found;
}

// False: it was stopped.
bool run_periods(Simulation& simulation, Monitoring& monitoring, Progress& progress,
                 const std::function<bool()>& stop) {
    const Model& model = simulation.model();
    int step = 0;
    for (std::size_t p = 0; p < model.periods.size(); ++p) {
        const Period& period = model.periods[p];
        for (int n = 1; n <= period.steps; ++n) {
            simulation.step(period);
            ++step;
            if (n == period.steps ||
                (period.monitoring_every > 0 && n % period.monitoring_every == 0))
                monitoring.record(simulation, step);
            progress.step(simulation, p + 1, step);
            const bool is_last = n == period.steps && p + 1 == model.periods.size();
            if (!is_last && stop())
                return false;
        }
    }
    return true;
}

int compute(const fs::path& base, const Streams& streams, const std::function<bool()>& stop) {
    const fs::path result = with_ending(base, ".nlo");
    const InputStream input(input_file(base));
    const Model model = read_model(input);
    Progress progress(streams.out, streams.err, model);
    require_writable(result);
    progress.begin(input.file());
    Simulation simulation(model);
    Monitoring monitoring(model, base);
    for (const auto& [rank, other] : monitoring.left_out())
        progress.warn(fmt::format(
            "monitoring point {} shares its file with point {}, which writes it", rank, other));
    const bool finished = run_periods(simulation, monitoring, progress, stop);
    write_result(input, simulation, result);
    if (finished)
        progress.end(simulation, result);
    else
        progress.interrupted(simulation, result);
    return finished ? done : interrupted;
}

int run_in(const std::vector<std::string>& arguments, const fs::path& folder,
           const Streams& streams, const std::function<bool()>& stop) {
    const auto fail = [&](const fs::path& file, const std::string& what) {
        streams.err << (file.empty() ? fmt::format("minitervex: {}\n", what)
                                     : fmt::format("minitervex: {}: {}\n", file.string(), what));
        return failed;
    };
    fs::path base;
    try {
        const FlagFile flag(folder / "flagfile");
        base = arguments.empty() ? folder / project_of(folder / "tervex.ctl")
                                 : typed_project(folder, arguments[0]);
        return compute(base, streams, stop);
    } catch (const base::FileFailure& failure) {
        return fail(failure.file(), failure.what());
    } catch (const std::bad_alloc&) {
        return fail(with_ending(base, ".nml"), "the memory is too small for this model");
    } catch (const std::exception& failure) {
        return fail(with_ending(base, ".nml"), failure.what());
    }
}

} // namespace

fs::path project_of(const fs::path& control_file) {
    constexpr std::size_t project_line = 10;
    constexpr std::string_view type = " 3";
    const std::vector<std::string> lines = base::text_lines(base::read_bytes(control_file));
    const std::string_view text =
        lines.size() > project_line ? base::trimmed_right(lines[project_line]) : "";
    if (!text.ends_with(type) || base::trimmed(text.substr(0, text.size() - type.size())).empty())
        throw base::FileFailure("line 11 is not a project and its type 3", control_file);
    return base::trimmed(text.substr(0, text.size() - type.size()));
}

int run_program(const std::vector<std::string>& arguments, const fs::path& folder,
                const Streams& streams, const std::function<bool()>& stop) {
    if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "-h")) {
        streams.out << help;
        return done;
    }
    if (arguments.size() == 1 && arguments[0] == "--version") {
        streams.out << version;
        return done;
    }
    if (arguments.size() > 1 || (arguments.size() == 1 && arguments[0].starts_with('-'))) {
        streams.err << "usage: minitervex [PROJECT]\n";
        return wrong_usage;
    }
    return run_in(arguments, folder, streams, stop);
}

void catch_signals() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        // What nohup, or a shell for its background jobs, has switched off stays so.
        if (std::signal(signal, [](int) { signalled = 1; }) == SIG_IGN)
            std::signal(signal, SIG_IGN);
    // Nobody reads the progress any more: that is no reason to lose the result.
    std::signal(SIGPIPE, SIG_IGN);
}

bool interrupted_by_signal() {
    return signalled != 0;
}

} // namespace minitervex
