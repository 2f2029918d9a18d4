#include "results/importparts.h"

#include "base/numbertext.h"
#include "input/timeblocks.h"
#include "sim/periods.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace results {

namespace {

constexpr int seconds = 1;
constexpr std::uint64_t places = input::vector_size;

std::int32_t steps_of(double length, double step) {
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    const double steps = step > 0 ? std::nearbyint(length / step) : 1;
    return static_cast<std::int32_t>(std::clamp(steps, 1., most));
}

// As it is stored and read again.
double stored(double value) {
    return base::leading_number(base::value_text(value));
}

// With so many significant digits.
double rounded(double value, int digits) {
    return base::leading_number(fmt::format("{:.{}e}", value, digits - 1));
}

// A period that begins at `begin`, as the sums of the stored lengths have it. The stream tells ends
// and steps with 15 digits, the difference of two ends with fewer: of the lengths that they may
// mean, the one that gives both again is taken, the roundest first.
sim::Period period_of(double begin, double end, double step) {
    sim::Period period;
    period.active = true;
    period.length = stored(std::max(end - begin, 0.));
    period.steps = steps_of(period.length, step);
    const auto fits = [&](double length) {
        return base::value_text(begin + length) == base::value_text(end) &&
               base::value_text(length / period.steps) == base::value_text(step);
    };
    constexpr int fewest = 6, most = 15;
    for (int digits = fewest; digits <= most; ++digits) {
        for (const double length : {end - begin, step * period.steps}) {
            if (fits(rounded(length, digits))) {
                period.length = rounded(length, digits);
                return period;
            }
        }
    }
    return period;
}

} // namespace

void Create_Trn(ModelImport& import) {
    ImportedStream& stream = import.stream;
    sim::PeriodTable table;
    table.unit = seconds;
    const int periods = std::clamp(stream.integer("NPER", 0), 0, sim::PeriodTable::row_count);
    auto ends = stream.doubles("TMAXAR", places), steps = stream.doubles("DELTAR", places);
    auto shifts = stream.values("DELTATMP", places), monitoring = stream.values("PMONIFR", places);
    const bool known = !ends.empty();
    steps.resize(places);
    shifts.resize(places);
    double begin = 0;
    for (std::size_t row = 0; row < static_cast<std::size_t>(periods); ++row) {
        sim::Period& period = table.rows[row];
        period.active = true;
        if (known) {
            period = period_of(begin, ends[row], steps[row]);
            begin += period.length;
        }
        period.temperature_shift = shifts[row];
    }
    for (std::size_t row = 0; row < monitoring.size(); ++row) {
        table.rows[row].monitoring_frequency = monitoring[row];
    }
    table.save(import.files);
    import.project.flags.mark_defined(0, import.project.transient() ? 3 : 2);
}

} // namespace results
