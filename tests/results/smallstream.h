// A keyword stream of 2 x 3 x 4 cells in which every value tells its cell: 100 K + 10 J + I.
#pragma once

#include <functional>
#include <string>

namespace smallstream {

inline constexpr int I0 = 2, J0 = 3, K0 = 4;

// A block of one value for each cell, I fastest, then J, then K.
inline std::string block(const std::string& key, const std::function<double(double)>& value) {
    std::string text = key + "\r\n";
    for (int K = 1; K <= K0; ++K) {
        for (int J = 1; J <= J0; ++J) {
            for (int I = 1; I <= I0; ++I) {
                text += std::to_string(value(100 * K + 10 * J + I)) + " ";
            }
        }
    }
    return text + "\r\n";
}

inline std::string own_cells(const std::string& key) {
    return block(key, [](double cell) { return cell; });
}

// Counts, counters and cell sizes; `counters` are those of substances, components and minerals.
inline std::string head(const std::string& counters = "0 0 0") {
    const std::string substances = counters.substr(0, 1), components = counters.substr(2, 1),
                      minerals = counters.substr(4, 1);
    return "# I0\r\n 2 \r\n# J0\r\n 3 \r\n# K0\r\n 4 \r\n"
           "# ANZSUBS\r\n " +
           substances + " \r\n# ANZCHEM\r\n " + components + " \r\n# ANZMINS\r\n" + minerals +
           "\r\n# DELX\r\n10 20.5\r\n# DELY\r\n2*0.5,3.\r\n# DELZ\r\n1 2 4 8\r\n";
}

} // namespace smallstream
