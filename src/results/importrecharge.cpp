#include "results/importparts.h"

#include "core/itemcells.h"
#include "input/simulatorfield.h"
#include "results/savedfield.h"

#include <fmt/format.h>

#include <algorithm>

namespace results {

namespace {

// A recharge item that never reached the simulator is one run of zeros, closed by no blank.
bool is_in_use(ImportedStream& stream, std::string_view keyword, const std::vector<float>& values) {
    const bool zero = std::ranges::all_of(values, [](float v) { return v == 0; });
    return !values.empty() &&
           !(zero && stream.line(keyword, 40) == fmt::format("{}*0.", values.size()));
}

// Values of the top plane, then of the base plane, I within J.
void save_planes(ModelImport& import, int number, const std::vector<float>& top,
                 const std::vector<float>& base) {
    const auto columns = static_cast<std::size_t>(import.grid.I0());
    const auto add = [&](const std::vector<float>& plane, int J, std::span<float> cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            cells[i] += plane[static_cast<std::size_t>(J - 1) * columns + i];
        }
    };
    save_cells(import.store, number, import.grid, [&](int J, int K, std::span<float> cells) {
        std::ranges::fill(cells, 0.0F);
        if (K == import.grid.K0()) {
            add(top, J, cells);
        }
        if (K == 1) {
            add(base, J, cells);
        }
    });
}

// Where base and top are one plane, the values that are there count.
void keep_one_plane(std::vector<float>& top, const std::vector<float>& base) {
    if (std::ranges::any_of(base, [](float v) { return v != 0; })) {
        std::ranges::fill(top, 0.0F);
    }
}

void save_top_and_base(ModelImport& import) {
    const std::uint64_t plane =
        static_cast<std::uint64_t>(import.grid.I0()) * static_cast<std::uint64_t>(import.grid.J0());
    const auto values = import.stream.values("QRE", 2 * plane);
    if (!is_in_use(import.stream, "QRE", values)) {
        return;
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(plane);
    std::vector<float> top(values.begin(), middle), base(middle, values.end());
    if (import.grid.K0() == 1) {
        keep_one_plane(top, base);
    }
    save_planes(import, input::arrays::qre.number, top, base);
    import.project.flags.mark_defined(2, 14);
}

// Left and right: I = 1 and I = I0, cell beside cell, J within K.
void save_left_and_right(ModelImport& import) {
    const auto rows = static_cast<std::size_t>(import.grid.J0());
    const auto values =
        import.stream.values("QRELR", 2 * rows * static_cast<std::size_t>(import.grid.K0()));
    if (!is_in_use(import.stream, "QRELR", values)) {
        return;
    }
    save_cells(import.store, input::arrays::qrl.number, import.grid,
               [&](int J, int K, std::span<float> cells) {
                   const std::size_t at = 2 * (static_cast<std::size_t>(K - 1) * rows +
                                               static_cast<std::size_t>(J) - 1);
                   std::ranges::fill(cells, 0.0F);
                   cells.front() = values[at];
                   cells.back() = values[at + 1];
               });
    import.project.flags.mark_defined(3, 14);
}

// Front and back: J = 1, then J = J0, within each K.
void save_front_and_back(ModelImport& import) {
    const auto columns = static_cast<std::size_t>(import.grid.I0());
    const auto values =
        import.stream.values("QREVH", 2 * columns * static_cast<std::size_t>(import.grid.K0()));
    if (!is_in_use(import.stream, "QREVH", values)) {
        return;
    }
    save_cells(import.store, input::arrays::qvh.number, import.grid,
               [&](int J, int K, std::span<float> cells) {
                   std::ranges::fill(cells, 0.0F);
                   const std::size_t first = 2 * static_cast<std::size_t>(K - 1) * columns;
                   if (J == import.grid.J0() || J == 1) {
                       const std::size_t at = J == import.grid.J0() ? first + columns : first;
                       std::ranges::copy(std::span(values).subspan(at, columns), cells.begin());
                   }
               });
    import.project.flags.mark_defined(4, 14);
}

void save_heat_flow(ModelImport& import) {
    const std::uint64_t plane =
        static_cast<std::uint64_t>(import.grid.I0()) * static_cast<std::uint64_t>(import.grid.J0());
    const auto is_zero = [](float v) { return v == 0; };
    auto top = import.stream.values("QTOP3D", plane);
    auto base = import.stream.values("QBASAL3D", plane);
    top.resize(plane);
    base.resize(plane);
    if (std::ranges::all_of(top, is_zero) && std::ranges::all_of(base, is_zero)) {
        return;
    }
    if (import.grid.K0() == 1) {
        keep_one_plane(top, base);
    }
    save_planes(import, input::arrays::qba.number, top, base);
    core::mark_item_defined(import.project.flags, input::arrays::qba.number);
}

} // namespace

void save_recharge(ModelImport& import) {
    save_top_and_base(import);
    save_left_and_right(import);
    save_front_and_back(import);
    save_heat_flow(import);
}

} // namespace results
