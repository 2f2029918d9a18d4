#include "figures.h"

#include <fmt/format.h>

#include <algorithm>

namespace bench {

namespace {

enum class Goal {
    speed, // peer / measured, at least
    cost,  // measured / peer, at most
    known, // the speed is told, without a goal
};

struct Figure {
    const char* text;
    const char* measured;
    const char* peer; // the benchmark that it is held against; nullptr: the number `limit`
    double limit;
    Goal goal;
    double ratio;
};

constexpr double million = 1E6;
constexpr double array_8M = 8 * million * 4; // bytes
constexpr double field_4M = 4 * million * 4;
constexpr double field_10M = 10 * million * 4;
constexpr double stream_1G = 1000 * million;

constexpr Figure figures[] = {
    {"8M noisy permeabilities to .nml / to_chars", "nml permeability", "to_chars permeability", 0,
     Goal::speed, 0.6},
    {"8M noisy temperatures to .nml / to_chars", "nml temperature", "to_chars temperature", 0,
     Goal::speed, 0.6},
    {"8M equal cells to .nml / 1 GB/s", "nml constant", nullptr, array_8M / 1E9, Goal::speed, 1},
    {"create-input, peak memory / (array + 64 MB)", "create-input memory", nullptr,
     array_8M + 64 * million, Goal::cost, 1},
    {"td check of 1M cells / reading its arrays", "check", "check arrays", 0, Goal::cost, 1.2},
    {"read_array 100 x 100 / open, pread, close", "read_array 100", "open pread 100", 0,
     Goal::known, 0},
    {"LayerReader 100 x 100 / pread of an open file", "LayerReader 100", "pread 100", 0,
     Goal::speed, 0.8},
    {"read_array 400 x 400 / open, pread, close", "read_array 400", "open pread 400", 0,
     Goal::speed, 0.8},
    {"LayerReader 400 x 400 / pread of an open file", "LayerReader 400", "pread 400", 0,
     Goal::speed, 0.8},
    {"read_array 1000 x 1000 / open, pread, close", "read_array 1000", "open pread 1000", 0,
     Goal::speed, 0.8},
    {"LayerReader 1000 x 1000 / pread of an open file", "LayerReader 1000", "pread 1000", 0,
     Goal::speed, 0.8},
    {"leading_number / from_chars", "leading_number", "from_chars", 0, Goal::speed, 0.5},
    {"Format_Print / to_chars", "Format_Print", "to_chars", 0, Goal::speed, 0.5},
    {"value_text / to_chars", "value_text", "to_chars", 0, Goal::speed, 0.5},
    {"value_text of doubles / to_chars", "value_text of doubles", "to_chars of doubles", 0,
     Goal::speed, 0.5},
    {"block of 4M values / from_chars in memory", "stream block", "stream from_chars", 0,
     Goal::speed, 0.7},
    {"block of 4M values / ifstream >>", "stream block", "stream ifstream", 0, Goal::speed, 5},
    {"key lines of a 1 GB stream / memchr", "stream key lines", "stream memchr", 0, Goal::speed,
     0.5},
    {"3 later searches, bytes read / 1 % of the file", "stream found again", nullptr,
     stream_1G / 100, Goal::cost, 1},
    {"field of 1 GB stream, peak mem. / (4/cell+64 MB)", "stream field memory", nullptr,
     field_4M + 64 * million, Goal::cost, 1},
    {".rvb from a field / same bytes, same door", "rvb write", "plain write", 0, Goal::cost, 1.5},
    {"field of 4M cells from .rvb / bare read", "rvb field", "rvb bare read", 0, Goal::speed, 0.5},
    {"import of 10M cells, time per cell / of 1M", "import 10M per cell", "import 1M per cell", 0,
     Goal::cost, 1.2},
    {"import of 10M cells, peak mem. / (8/cell+64 MB)", "import memory", nullptr,
     2 * field_10M + 64 * million, Goal::cost, 1},
    {"4M temperatures to VTK text / to_chars", "vtk temperature", "vtk temperature digits", 0,
     Goal::speed, 0.6},
    {"4M permeabilities to VTK text / to_chars", "vtk permeability", "vtk permeability digits", 0,
     Goal::speed, 0.6},
    {"16M values to .vtr / plain write of the bytes", "vtr", "vtr bytes", 0, Goal::cost, 1.5},
    {"20 levels of 1000 x 1000 / a pass for each level", "contours", "contour pass", 0, Goal::cost,
     4},
    {"session on 2000 x 2000 x 20 opened / copying", "session", "session copy", 0, Goal::cost, 1.3},
    {"refinement to 20M cells / copying the bytes", "refine", "refine copy", 0, Goal::speed, 0.5},
    {"td --version / 10 ms of CPU", "version", nullptr, 0.010, Goal::cost, 1},
    {"window ready, CPU above an empty one / 0.5 s", "window", nullptr, 0.5, Goal::cost, 1},
    {"doublet opened in the window / 0.3 s", "window doublet", nullptr, 0.3, Goal::cost, 1},
    {"table of 2000 x 2000 cells opened / 0.2 s", "table", nullptr, 0.2, Goal::cost, 1},
    {"repaint of 2000 x 2000, whole / 16 ms", "paint whole", nullptr, 0.016, Goal::cost, 1},
    {"the same, zoomed by 5 / 16 ms", "paint zoomed", nullptr, 0.016, Goal::cost, 1},
    {"the same, zoomed by 50 / 16 ms", "paint cells", nullptr, 0.016, Goal::cost, 1},
    {"repaint of 2000 x 2000, turned / 16 ms", "paint turned", nullptr, 0.016, Goal::cost, 1},
    {"the same, zoomed by 7 / 16 ms", "paint turned zoomed", nullptr, 0.016, Goal::cost, 1},
    {"the same in 1600 x 1280 pixels / 30 ms", "paint large", nullptr, 0.030, Goal::cost, 1},
    {"20 levels of 500 x 500 at a new zoom / 50 ms", "paint contours", nullptr, 0.050, Goal::cost,
     1},
    {"the same, turned and zoomed by 3 / 50 ms", "paint contours zoomed", nullptr, 0.050,
     Goal::cost, 1},
    {"20 zones to 1M cells / bare crossing tests", "zones transfer", "zones crossing tests", 0,
     Goal::cost, 2},
};

bool was_measured(const Figure& figure, const Costs& costs) {
    return costs.has(figure.measured) && (figure.peer == nullptr || costs.has(figure.peer));
}

double ratio_of(const Figure& figure, const Costs& costs) {
    const double measured = costs.median(figure.measured);
    const double peer = figure.peer == nullptr ? figure.limit : costs.median(figure.peer);
    return figure.goal == Goal::cost ? measured / peer : peer / measured;
}

bool is_met(const Figure& figure, double ratio) {
    return figure.goal == Goal::cost ? ratio <= figure.ratio : ratio >= figure.ratio;
}

std::string goal_text(const Figure& figure) {
    return figure.goal == Goal::known
               ? "-"
               : fmt::format("{} {:.1f}", figure.goal == Goal::cost ? "<=" : ">=", figure.ratio);
}

} // namespace

double Costs::median(const std::string& name) const {
    std::vector<double> sorted = costs_.at(name);
    std::ranges::sort(sorted);
    return sorted[sorted.size() / 2];
}

void CostReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
            const bool by_clock = !run.run_name.time_type.empty();
            const double seconds = by_clock ? run.real_accumulated_time : run.cpu_accumulated_time;
            const double cost = run.counters.contains("cost") ? run.counters.at("cost").value
                                                              : seconds / double(run.iterations);
            costs_.add(run.run_name.function_name, cost);
        }
    }
}

bool print_figures(const Costs& costs) {
    constexpr const char* line = "{:<48}{:>8}  {:<8}{}\n";
    fmt::print(line, "figure", "ratio", "goal", "");
    bool all_met = true;
    for (const Figure& figure : figures) {
        if (!was_measured(figure, costs)) {
            continue;
        }
        const double ratio = ratio_of(figure, costs);
        const bool met = is_met(figure, ratio);
        all_met = all_met && met;
        fmt::print(line, figure.text, fmt::format("{:.2f}", ratio), goal_text(figure),
                   figure.goal == Goal::known ? ""
                   : met                      ? "pass"
                                              : "short");
    }
    return all_met;
}

} // namespace bench
