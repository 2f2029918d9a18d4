// Monitoring files: the state of chosen cells over time.
#pragma once

#include "minitervex/simulation.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace minitervex {

// Name part behind the base name's point: "200" for ranks 2 and 20, "100" for 1, 10 and 100.
std::string monitoring_suffix(int rank);

class Monitoring {
public:
    // Begins the files `<base>.100`, `<base>.200` ... with their head lines. Points whose rank
    // shares the name of a lower one get no file.
    Monitoring(const Model& model, const std::filesystem::path& base);

    // Ranks without a file, each with the one that has it.
    const std::vector<std::pair<int, int>>& left_out() const { return left_out_; }

    // Adds a line to each file: time in days, step, head, velocities in m a year of 365 days,
    // porosity, hydraulic conductivity, permeability, temperature, thermal conductivity, pe (0),
    // substances.
    void record(const Simulation& simulation, int step);

private:
    struct File {
        std::filesystem::path path;
        std::ofstream out;
        int cell = 0;
    };

    std::vector<File> files_;
    std::vector<std::pair<int, int>> left_out_;
};

} // namespace minitervex
