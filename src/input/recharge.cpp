#include "input/recharge.h"

#include "core/project.h"
#include "input/compact.h"
#include "input/creation.h"

#include <fmt/format.h>

#include <algorithm>

namespace input {

namespace {

// True: the model has one cell, and its value is written.
bool is_one_cell(KeywordStream& stream, const SimulatorField& field) {
    if (field.grid().N() != 1) {
        return false;
    }
    stream.put_run(field.at(1, 1, 1), 2);
    stream.end_line();
    return true;
}

} // namespace

void X_Y_Layer(KeywordStream& stream, const SimulatorField& field, int K) {
    if (is_one_cell(stream, field)) {
        return;
    }
    Runs runs = real_runs(stream);
    for (int J = 1; J <= field.grid().J0(); ++J) {
        for (int I = 1; I <= field.grid().I0(); ++I) {
            runs.add(field.at(I, J, K));
        }
    }
    runs.finish();
}

void Y_Z_Layer(KeywordStream& stream, const SimulatorField& field) {
    if (is_one_cell(stream, field)) {
        return;
    }
    Runs runs = real_runs(stream);
    for (int K = 1; K <= field.grid().K0(); ++K) {
        for (int J = 1; J <= field.grid().J0(); ++J) {
            runs.add(field.at(1, J, K));
            runs.add(field.at(field.grid().I0(), J, K));
        }
    }
    runs.finish();
}

void X_Z_Layer(KeywordStream& stream, const SimulatorField& field) {
    if (is_one_cell(stream, field)) {
        return;
    }
    Runs runs = real_runs(stream);
    for (int K = 1; K <= field.grid().K0(); ++K) {
        for (const int J : {1, field.grid().J0()}) {
            for (int I = 1; I <= field.grid().I0(); ++I) {
                runs.add(field.at(I, J, K));
            }
        }
    }
    runs.finish();
}

namespace {

bool has_recharge_on_top(const Creation& creation) {
    if (!creation.arrays.is_defined(arrays::qre) || !creation.arrays.has(arrays::qre)) {
        return false;
    }
    bool found = false;
    creation.arrays.visit_rows(arrays::qre, 1, [&](std::span<const float> row, int, int K) {
        found = found || (K == creation.grid.K0() &&
                          std::ranges::any_of(row, [](float rate) { return rate != 0; }));
    });
    return found;
}

// Whether the recharge item of that cell of ModelFlags reaches the simulator at all.
bool is_in_use(const Creation& creation, int flag_row) {
    const core::ModelFlags& flags = creation.project.flags;
    return flags.FlowActive() == 1 && flags.FlowPrescribed() != 1 && flags.is_defined(flag_row, 14);
}

void zero_line(KeywordStream& stream, std::int64_t count) {
    stream.text_line(fmt::format("{}*0.", count));
}

// One half of a block of two planes; zeros where the plane has no flow of its own.
void plane_or_zeros(Creation& creation, const SimulatorField& field, int K, bool is_given) {
    if (is_given) {
        X_Y_Layer(creation.stream, field, K);
    } else {
        creation.stream.put(
            fmt::format("{}*0. ", std::int64_t{creation.grid.I0()} * creation.grid.J0()));
    }
}

} // namespace

void IQRE(Creation& creation) {
    creation.recharge_on_top = has_recharge_on_top(creation);
    creation.stream.text_line(creation.recharge_on_top ? "RECH" : "NIX");
}

void QRE(Creation& creation) {
    const SimulatorGrid& grid = creation.grid;
    const bool on_base = creation.BASEF == "FLO";
    if (!is_in_use(creation, 2) || (!creation.recharge_on_top && !on_base)) {
        zero_line(creation.stream, 2 * std::int64_t{grid.I0()} * grid.J0());
        return;
    }
    // The only plane cannot take its recharge twice.
    const bool on_top = creation.recharge_on_top && !(grid.K0() == 1 && on_base);
    const SimulatorField field = creation.arrays.read(arrays::qre);
    plane_or_zeros(creation, field, grid.K0(), on_top);
    plane_or_zeros(creation, field, 1, on_base);
    creation.stream.close_line();
}

void QRELR(Creation& creation) {
    if (!is_in_use(creation, 3)) {
        zero_line(creation.stream, 2 * std::int64_t{creation.grid.K0()} * creation.grid.J0());
        return;
    }
    Y_Z_Layer(creation.stream, creation.arrays.read(arrays::qrl));
    creation.stream.close_line();
}

void QREVH(Creation& creation) {
    if (!is_in_use(creation, 4)) {
        zero_line(creation.stream, 2 * std::int64_t{creation.grid.K0()} * creation.grid.I0());
        return;
    }
    X_Z_Layer(creation.stream, creation.arrays.read(arrays::qvh));
    creation.stream.close_line();
}

namespace {

void ConstHeatFlow(Creation& creation, int K, bool is_given) {
    const SimulatorField field =
        is_given ? creation.arrays.read(arrays::qba) : SimulatorField(creation.grid, 0);
    plane_or_zeros(creation, field, K, is_given);
    creation.stream.close_line();
}

} // namespace

void QTOP3D(Creation& creation) {
    ConstHeatFlow(creation, creation.grid.K0(), creation.TOPT == "WSD");
}

void QBASAL3D(Creation& creation) {
    ConstHeatFlow(creation, 1, creation.BASET == "WSD");
}

} // namespace input
