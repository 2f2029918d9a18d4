// What a person sees of a run.
#pragma once

#include "minitervex/simulation.h"

#include <filesystem>
#include <ostream>
#include <string>

namespace minitervex {

// A time with a fitting unit: "2.5 d".
std::string time_text(double seconds);

class Progress {
public:
    // `silent`: nothing but warnings and failures (# LINFO 3).
    Progress(std::ostream& out, std::ostream& warnings, const Model& model);

    void begin(const std::filesystem::path& input);
    void warn(const std::string& text);
    // A line for every twentieth of all steps, for the first and the last one.
    void step(const Simulation& simulation, std::size_t period, int step);
    void end(const Simulation& simulation, const std::filesystem::path& result);
    void interrupted(const Simulation& simulation, const std::filesystem::path& result);

private:
    void line(const std::string& text);
    void balances(const Simulation& simulation);

    std::ostream& out_;
    std::ostream& warnings_;
    const Model& model_;
    int steps_ = 0; // of all periods
    int told_ = -1; // twentieths
};

} // namespace minitervex
