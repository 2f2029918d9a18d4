// The blocks of the stream that are lists: cell sizes, wells, periods, monitoring points.
#include "examples/examplemodel.h"

#include <gtest/gtest.h>

#include <cmath>

namespace examples {

namespace {

using support::array_of;
using support::WorksheetCell;

TEST_P(ExampleModel, CellsHaveTheSizesOfColumnsRowsAndLayers) {
    const auto reversed = [](std::vector<double> list) {
        return std::vector<double>(list.rbegin(), list.rend());
    };
    std::vector<double> thickness = model().thickness;
    if (model().flag(0, 0) == 0) {
        for (int layer = 1; layer <= model().layers; ++layer) {
            double sum = 0;
            for (int row = 1; row <= model().rows; ++row)
                for (int column = 1; column <= model().columns; ++column)
                    sum += model().value(".top", {column, row, layer}, 0) -
                           model().value(".bot", {column, row, layer}, 0);
            thickness.at(static_cast<std::size_t>(layer - 1)) =
                std::fabs(sum) / (model().columns * model().rows);
        }
    }
    const std::vector<double> heights = reversed(model().heights);
    EXPECT_EQ(stream().integer("I0"), I0());
    EXPECT_EQ(stream().integer("J0"), J0());
    EXPECT_EQ(stream().integer("K0"), K0());
    EXPECT_EQ(told("DELX"), model().widths);
    EXPECT_EQ(told(is_section() ? "DELZ" : "DELY"), heights);
    const std::vector<double> layers = told(is_section() ? "DELY" : "DELZ");
    ASSERT_EQ(layers.size(), thickness.size());
    for (std::size_t n = 0; n < layers.size(); ++n)
        EXPECT_NEAR(layers[n], is_section() ? thickness[n] : reversed(thickness)[n],
                    layers[n] * 1e-5); // the mean of a layer is formed with singles
}

TEST_P(ExampleModel, LayersWithAFreeSurfaceAreNumberedFromBelow) {
    std::vector<double> numbers;
    for (int layer = model().layers; layer >= 1 && !is_section(); --layer)
        if (model().layer_types.at(static_cast<std::size_t>(layer - 1)) != 0)
            numbers.push_back(model().layers + 1 - layer);
    EXPECT_EQ(support::number_of(stream().word("NFREE")), static_cast<double>(numbers.size()));
    numbers.resize(100);
    EXPECT_EQ(told("KFREE"), numbers);
}

TEST_P(ExampleModel, WellsAreNumberedUpwardsAndKeepTheirRatesByPeriod) {
    const std::vector<WorksheetCell> cells = cells_in_order();
    const std::vector<int> periods = used_periods();
    std::vector<double> numbers(cells.size()), rates(100 * 100), temperatures(100 * 100),
        counts(100);
    std::size_t well = 0;
    for (const auto& [K, J, I] : wells()) {
        const auto place = static_cast<std::size_t>(((K - 1) * J0() + J - 1) * I0() + I - 1);
        for (std::size_t p = 0; p < periods.size(); ++p) {
            const WorksheetCell cell = cell_at(I, J, K);
            const float rate = model().value(".wel", cell, 0, periods[p]);
            const bool heats = model().flag(9, 5) == 1 && rate != 0;
            counts[p] += rate != 0 ? 1 : 0;
            rates[p * 100 + well] = seven_digits(rate);
            temperatures[p * 100 + well] =
                heats ? seven_digits(model().value(".299", cell, 0, periods[p])) : 0;
        }
        numbers[place] = static_cast<double>(++well);
    }
    expect_cells(told("IWL"), numbers, cells);
    EXPECT_EQ(told("NWELAR"), counts);
    EXPECT_EQ(array_of(stream().block("WELLAR")), rates);
    EXPECT_EQ(array_of(stream().block("TCON")), temperatures);
    EXPECT_EQ(array_of(stream().block("PUMPAR")), std::vector<double>(100 * 100));
}

TEST_P(ExampleModel, OnlyWaterThatIsInjectedBringsTracers) {
    std::vector<double> concentrations(100 * 100);
    std::size_t well = 0;
    for (const auto& [K, J, I] : wells()) {
        const bool injects = model().value(".wel", cell_at(I, J, K), 0) > 0;
        concentrations.at(100 * well++) = injects && model().has(".sco") ? 1 : 0;
    }
    EXPECT_EQ(told("SCON"), concentrations);
}

TEST_P(ExampleModel, PeriodsInUseAreToldInSeconds) {
    constexpr double seconds[] = {0, 1, 60, 3600, 86400, 31536000};
    std::vector<double> shifts(100), ends(100), steps(100), monitoring;
    double time = 0;
    std::size_t p = 0;
    for (const int number : used_periods()) {
        const auto& period = model().periods[static_cast<std::size_t>(number - 1)];
        const double length = period.length * seconds[model().time_unit];
        time += length;
        shifts[p] = period.shift;
        ends[p] = fifteen_digits(time);
        steps[p++] = fifteen_digits(length / period.steps);
    }
    for (const auto& period : model().periods)
        monitoring.push_back(period.monitoring);
    EXPECT_EQ(stream().integer("NPER"), static_cast<int>(p));
    EXPECT_EQ(told("DELTATMP"), shifts);
    EXPECT_EQ(told("TMAXAR"), ends);
    EXPECT_EQ(told("DELTAR"), steps);
    EXPECT_EQ(told("PMONIFR"), monitoring);
}

TEST_P(ExampleModel, MonitoringPointsLieInTheCellsAroundThem) {
    const double left = support::number_of(model().setting("GRIDPOSITION", "LEFT"));
    const double top = support::number_of(model().setting("GRIDPOSITION", "TOP"));
    const auto number_within = [](const std::vector<double>& sizes, double distance) {
        int number = 0;
        for (double edge = 0; edge < distance; ++number)
            edge += sizes.at(static_cast<std::size_t>(number));
        return number;
    };
    std::vector<double> x(100), y(100), z(100);
    std::size_t n = 0;
    for (const support::ModelPoint& point : model().points) {
        if (!point.active)
            continue;
        const int row = number_within(model().heights, top - point.y);
        x[n] = number_within(model().widths, point.x - left);
        y[n] = is_section() ? point.layer : model().rows + 1 - row;
        z[n] = is_section() ? model().rows + 1 - row : model().layers + 1 - point.layer;
        ++n;
    }
    EXPECT_GE(n, 3U);
    EXPECT_EQ(told("PMONIX"), x);
    EXPECT_EQ(told("PMONIY"), y);
    EXPECT_EQ(told("PMONIZ"), z);
}

} // namespace

} // namespace examples
