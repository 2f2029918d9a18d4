// Small input streams for the simulator, made block by block.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace minitervex::test {

// A complete stream of nx x ny x nz cells of 1 m: no process is on, one period of one step of 1 s.
class ModelStream {
public:
    ModelStream(int nx, int ny, int nz);

    // The value lines of a block; a block that is not there yet comes to the end.
    ModelStream& set(std::string_view keyword, std::string_view lines);
    // Equal values, as many as the block held.
    ModelStream& fill(std::string_view keyword, double value);
    // A value for each cell; i, j and k count from 0.
    ModelStream& cells(std::string_view keyword,
                       const std::function<double(int i, int j, int k)>& value);
    ModelStream& list(std::string_view keyword, const std::vector<double>& values);
    // Values of 100 or 10000 places, the rest 0.
    ModelStream& table(std::string_view keyword, const std::vector<double>& values, int places);
    // One period.
    ModelStream& period(double seconds, int steps);
    // Wells in cells (i, j, k) with their rates, temperatures and concentrations of tracer 1.
    struct WellAt {
        int i, j, k;
        double rate, temperature = 0, concentration = 0;
    };
    ModelStream& wells(const std::vector<WellAt>& wells);

    std::string text() const;

private:
    int nx_, ny_, nz_;
    std::vector<std::pair<std::string, std::string>> blocks_;
};

} // namespace minitervex::test
