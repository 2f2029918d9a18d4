// The simulator against solutions that are known.

#include "minitervex/modelreader.h"
#include "minitervex/simulation.h"
#include "simulator/modelstream.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace minitervex::test {
namespace {

struct Computed {
    Grid grid;
    Vector head, temperature, concentration;
    std::vector<Balance> balances;
};

Computed compute(const ModelStream& stream) {
    const support::TempFolder folder;
    const InputStream input(folder.write("m.nml", stream.text()));
    const Model model = read_model(input);
    Simulation simulation(model);
    for (const Period& period : model.periods)
        for (int n = 0; n < period.steps; ++n)
            simulation.step(period);
    Computed result{
        model.grid, simulation.flow().head(), simulation.temperature(), {}, simulation.balances()};
    if (!simulation.concentrations().empty())
        result.concentration = simulation.concentrations()[0];
    return result;
}

void expect_balanced(const Computed& result) {
    for (const Balance& balance : result.balances)
        EXPECT_LT(std::abs(balance.relative_error()), 1E-6) << balance.name;
}

double largest_error(const Vector& values, int first, const std::function<double(int)>& exact) {
    double error = 0;
    for (int n = first; n < values.size(); ++n)
        error = std::max(error, std::abs(values[n] - exact(n)));
    return error;
}

TEST(KnownSolutions, the_head_between_fixed_heads_is_linear_whatever_the_cells) {
    constexpr int n = 100;
    ModelStream stream(n, 1, 2);
    std::vector<double> widths, centres;
    double edge = 0;
    for (int i = 0; i < n; ++i) {
        widths.push_back(1 + i % 7);
        centres.push_back(edge + widths.back() / 2);
        edge += widths.back();
    }
    stream.set("KEY", "F----").list("DELX", widths);
    stream.cells("PERM", [](int i, int, int) { return i == 0 || i == n - 1 ? -1E-12 : 1E-12; });
    stream.cells("PHI", [](int i, int, int) { return i == 0 ? 20.0 : i == n - 1 ? 10.0 : 3.0; });
    const Computed result = compute(stream);
    const double length = centres.back() - centres.front();
    EXPECT_LT(largest_error(result.head, 0,
                            [&](int cell) {
                                const double x = centres[std::size_t(cell % n)] - centres[0];
                                return 20 - 10 * x / length;
                            }),
              1E-6);
    expect_balanced(result);
}

// A well amid a square whose rim has the heads of the logarithmic profile; the error from a tenth
// of the square's side on, as a part of the drawdown there.
double thiem_error(int n) {
    constexpr double side = 1000, rate = -0.01, transmissivity = 1E-12 * 1E7 * 50;
    const double width = side / n;
    const auto radius = [=](int i, int j) {
        return std::hypot((i - n / 2) * width, (j - n / 2) * width);
    };
    const auto head = [=](int i, int j) {
        return rate / (2 * std::numbers::pi * transmissivity) *
               std::log(side / std::max(radius(i, j), width / 10));
    };
    const auto is_rim = [=](int i, int j) { return i == 0 || j == 0 || i == n - 1 || j == n - 1; };
    ModelStream stream(n, n, 1);
    stream.set("KEY", "F----").fill("PERM", 1E-12);
    stream.list("DELX", std::vector(std::size_t(n), width));
    stream.list("DELY", std::vector(std::size_t(n), width)).list("DELZ", {50});
    stream.cells("PERM", [&](int i, int j, int) { return is_rim(i, j) ? -1E-12 : 1E-12; });
    stream.cells("PHI", [&](int i, int j, int) { return is_rim(i, j) ? head(i, j) : 0; });
    stream.wells({{n / 2, n / 2, 0, rate}});
    const Computed result = compute(stream);
    expect_balanced(result);
    const double range = head(n / 2, 0) - head(n / 2 + n / 10, n / 2);
    const double error = largest_error(result.head, 0, [&](int cell) {
        const int i = cell % n, j = cell / n;
        return radius(i, j) < side / 10 ? result.head[cell] : head(i, j);
    });
    return error / std::abs(range);
}

TEST(KnownSolutions, a_well_in_a_confined_aquifer_gives_the_logarithmic_profile) {
    const double coarse = thiem_error(51), fine = thiem_error(101);
    EXPECT_LT(fine, 0.01);
    EXPECT_GT(coarse / fine, 1.8) << coarse << " " << fine;
}

// The fixed temperature stands at the centre of the first cell.
double half_space_error(int n) {
    constexpr double length = 50, diffusivity = 1E-6, seconds = 86400.0 * 365 * 2;
    const double width = length / n;
    ModelStream stream(1, 1, n);
    stream.set("KEY", "-U---").list("DELZ", std::vector(std::size_t(n), width));
    stream.fill("POR", 0).cells("POR", [](int, int, int k) { return k == 0 ? -1E-9 : 1E-9; });
    stream.cells("TEMP", [](int, int, int k) { return k == 0 ? 30.0 : 10.0; });
    stream.fill("RHOCM", 2E6).fill("WLFM0", 2).period(seconds, 2 * n);
    const Computed result = compute(stream);
    expect_balanced(result);
    return largest_error(result.temperature, 0,
                         [&](int k) {
                             return 10 + 20 * std::erfc(k * width /
                                                        (2 * std::sqrt(diffusivity * seconds)));
                         }) /
           20;
}

TEST(KnownSolutions, heat_goes_into_a_half_space_by_conduction) {
    const double coarse = half_space_error(50), fine = half_space_error(100);
    EXPECT_LT(fine, 0.01);
    EXPECT_GT(coarse / fine, 1.8) << coarse << " " << fine;
}

struct HeadRise {
    double head_error, inflow_error;
};

// The head at one end rises by 1 m, and a column of 50 m takes up water. The other end feels
// nothing of it.
HeadRise head_rise(int n) {
    constexpr double diffusivity = 1E-2, storage = 1E-3, way = 63, seconds = way / diffusivity;
    const double width = 50.0 / n;
    ModelStream stream(n, 1, 1);
    stream.set("KEY", "F----").set("STAT", "INST").set("COMPM", "1.E-7");
    stream.list("DELX", std::vector(std::size_t(n), width)).period(seconds, 2 * n);
    stream.cells("PERM", [](int i, int, int) { return i == 0 ? -1E-12 : 1E-12; });
    stream.cells("PHI", [](int i, int, int) { return i == 0 ? 1.0 : 0.0; });
    const Computed result = compute(stream);
    expect_balanced(result);
    const double taken = storage * (2 * std::sqrt(way / std::numbers::pi) - width / 2);
    return {largest_error(result.head, 0,
                          [&](int i) { return std::erfc(i * width / (2 * std::sqrt(way))); }),
            std::abs(result.balances[0].in / taken - 1)};
}

TEST(KnownSolutions, a_head_that_rises_at_one_end_fills_the_storage_of_a_column) {
    const HeadRise coarse = head_rise(50), fine = head_rise(100);
    EXPECT_LT(fine.head_error, 0.01);
    EXPECT_LT(fine.inflow_error, 0.01);
    EXPECT_GT(coarse.head_error / fine.head_error, 1.8);
}

double front_error(int n) {
    constexpr double length = 100, dispersivity = 10, porosity = 0.25, velocity = 1E-6;
    constexpr double seconds = 0.25 * length / velocity;
    const double width = length / n;
    ModelStream stream(n, 1, 1);
    stream.set("KEY", "F-UP-")
        .set("ANZSUBS", " 1 ")
        .list("DELX", std::vector(std::size_t(n), width));
    stream.set("DIFLS1", "10. ").fill("POR", porosity).fill("VX", velocity * porosity);
    stream.cells("PRES", [](int i, int, int) { return i == 0 ? -0.1 : 0.1; });
    stream.cells("CONC           1", [](int i, int, int) { return i == 0 ? 1.0 : 0.0; });
    stream.period(seconds, n);
    const Computed result = compute(stream);
    expect_balanced(result);
    const double spread = 2 * std::sqrt(dispersivity * velocity * seconds);
    return largest_error(result.concentration, 0, [&](int i) {
        const double x = i * width, way = velocity * seconds;
        return (std::erfc((x - way) / spread) +
                std::exp(x / dispersivity) * std::erfc((x + way) / spread)) /
               2;
    });
}

TEST(KnownSolutions, a_front_moves_and_spreads) {
    const double coarse = front_error(50), fine = front_error(100);
    EXPECT_LT(fine, 0.01);
    EXPECT_GT(coarse / fine, 1.5) << coarse << " " << fine;
}

TEST(KnownSolutions, a_basal_heat_flow_gives_the_geothermal_gradient_of_each_layer) {
    constexpr int n = 100;
    constexpr double flow = 0.07, width = 10;
    const auto conductivity = [](int k) { return k < 60 ? 3.0 : 1.5; };
    ModelStream stream(1, 1, n);
    stream.set("KEY", "-U---").list("DELZ", std::vector(std::size_t(n), width));
    stream.set("QBASAL3D", "0.07 ").period(1E15, 3);
    stream.cells("POR", [](int, int, int k) { return k == n - 1 ? -1E-9 : 1E-9; });
    stream.cells("WLFM0", [&](int, int, int k) { return conductivity(k); });
    const Computed result = compute(stream);
    const auto exact = [&](int cell) {
        double temperature = 10;
        for (int k = n - 1; k > cell; --k)
            temperature += flow * width / 2 * (1 / conductivity(k) + 1 / conductivity(k - 1));
        return temperature;
    };
    EXPECT_LT(largest_error(result.temperature, 0, exact) / (exact(0) - 10), 1E-4);
    expect_balanced(result);
}

TEST(KnownSolutions, production_of_rock_and_water_heats_up_a_closed_cell) {
    ModelStream stream(1, 1, 1);
    stream.set("KEY", "-U---").set("HPF", "3.0").set("HPR", "2. ").set("POR", "0.25 ");
    stream.period(1E6, 4);
    const double capacity = 0.75 * 2E6 + 0.25 * 1000 * 4000;
    EXPECT_NEAR(compute(stream).temperature[0], 10 + 1E6 * (0.75 * 2 + 0.25 * 3) / capacity, 1E-9);
}

TEST(KnownSolutions, the_planes_of_a_model_of_one_cell_stand_there_twice) {
    ModelStream stream(1, 1, 1);
    stream.set("KEY", "FU---").set("STAT", "INST").set("COMPM", "1.E-7");
    stream.set("QRE", "2*1.E-8 1*0. ").set("QTOP3D", "2*5. ").set("POR", "0.25 ");
    const Computed result = compute(stream.period(1E6, 4));
    EXPECT_NEAR(result.head[0], 1E-8 * 1E6 / (1000 * 10 * 1E-7), 1E-9);
    const double capacity = 0.75 * 2E6 + 0.25 * 1000 * 4000;
    EXPECT_NEAR(result.temperature[0], 10 + 1E6 * 5 / capacity, 1E-9);
    EXPECT_NEAR(compute(stream.set("QRE", "1*0. 2*2.E-8 ")).head[0], 20, 1E-9);
}

TEST(KnownSolutions, wells_without_flow_bring_no_heat) {
    ModelStream stream(3, 1, 1);
    stream.set("KEY", "-U---").wells({{1, 0, 0, 1E-3, 80}}).period(1E6, 4);
    const Computed result = compute(stream);
    EXPECT_LT(largest_error(result.temperature, 0, [](int) { return 10; }), 1E-9);
    expect_balanced(result);
}

TEST(Balances, close_with_wells_recharge_storage_heat_and_a_tracer) {
    ModelStream stream(12, 9, 5);
    stream.set("KEY", "FUU--").set("STAT", "INST").set("COMPM", "1.0E-7").set("ANZSUBS", " 1 ");
    stream.list("DELX", std::vector(12, 20.0)).list("DELY", std::vector(9, 30.0));
    stream.list("DELZ", {10, 2, 5, 1, 8}).set("DIFLS1", "5. ").set("DIFTS1", "0.5 ");
    stream.set("QRE", "108*2.E-8 108*1.E-9 ").set("QTOP3D", "108*0.1 ").set("MDIFS1", "1.0E-09");
    stream.set("QRELR", "90*1.E-8 ").set("QREVH", "120*-1.E-8 ").set("QBASAL3D", "108*0.07 ");
    stream.cells("PERM", [](int i, int j, int k) {
        return (i == 11 ? -1 : j == 4 && k == 2 && i == 5 ? 1 : 1) * (k == 1 ? 1E-16 : 1E-11);
    });
    stream.cells("POR", [](int, int, int k) { return k == 4 ? -0.2 : 0.2; });
    stream.cells("PRES", [](int i, int, int) { return i == 0 ? -0.1 : 0.1; });
    stream.cells("CONC           1", [](int i, int j, int) { return i == 0 ? j * 0.1 : 0.0; });
    stream.wells({{3, 4, 2, 1E-3, 40, 2}, {8, 4, 2, -1.5E-3}});
    const Computed result = compute(stream.period(86400.0 * 30, 20));
    ASSERT_EQ(result.balances.size(), 3U);
    expect_balanced(result);
    for (const Balance& balance : result.balances)
        EXPECT_GT(balance.in, 0) << balance.name;
    EXPECT_GE(result.concentration.minCoeff(), -1E-12);
    EXPECT_LE(result.concentration.maxCoeff(), 2 + 1E-12);
    EXPECT_LE(result.temperature.maxCoeff(), 40);
}

} // namespace
} // namespace minitervex::test
