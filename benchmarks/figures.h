// The figures of speed and memory that the program has to keep. Each is a ratio of two costs that
// were measured in one run: what the program does, and the least that could be done instead.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

// Costs by name: CPU seconds of an iteration, one for each repetition, or bytes. What works in two
// threads, and what it is held against, counts the seconds of the clock (UseRealTime).
class Costs {
public:
    void add(const std::string& name, double cost) { costs_[name].push_back(cost); }
    bool has(const std::string& name) const { return costs_.contains(name); }
    double median(const std::string& name) const;

private:
    std::map<std::string, std::vector<double>> costs_;
};

// Gathers the costs that the benchmarks have instead of printing them.
class CostReporter : public benchmark::BenchmarkReporter {
public:
    explicit CostReporter(Costs& costs) : costs_(costs) {}
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;

private:
    Costs& costs_;
};

// Prints a line for each figure whose costs were measured: its text, the ratio, the goal, and
// whether it is met. True when all are.
bool print_figures(const Costs& costs);

} // namespace bench
