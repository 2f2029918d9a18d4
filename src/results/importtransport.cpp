#include "results/importparts.h"

#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/itemcells.h"
#include "input/simulatorfield.h"
#include "input/timeblocks.h"
#include "results/savedfield.h"
#include "sim/continua.h"
#include "sim/transport.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace results {

namespace {

// The distribution of one tracer; its largest value is that of the table.
float save_tracer(ModelImport& import, int tracer, const std::string& keyword) {
    const Field field = import.stream.field(keyword, import.extents, import.user);
    const int number = input::arrays::tracer(tracer).number;
    Save_Layers(import.store, number, import.grid, field, false);
    core::mark_item_defined(import.project.flags, number);
    float largest = 0;
    for (int K = 1; K <= field.nK(); ++K) {
        for (int J = 1; J <= field.nJ(); ++J) {
            largest = std::max(largest, std::ranges::max(field.row(K, J)));
        }
    }
    return largest;
}

// The mantissa of a diffusion coefficient in units of 1E-08 m2/s.
std::string diffusion_mantissa(std::string text) {
    constexpr std::string_view unit = "E-08";
    if (text.ends_with(unit)) {
        return text.substr(0, text.size() - unit.size());
    }
    return base::value_text(static_cast<float>(base::leading_number(text) / 1E-8));
}

std::string length_text(const std::string& text) {
    return base::value_text(base::leading_single(text));
}

} // namespace

void Create_Tracer(ModelImport& import) {
    if (!import.transport()) {
        return;
    }
    ImportedStream& stream = import.stream;
    sim::TracerTable table;
    const int components = std::max(stream.integer("ANZCHEM", 0), 0);
    const int tracers =
        std::clamp(stream.integer("ANZSUBS", 0) - components, 0, sim::TracerTable::row_count);
    const auto betac = stream.values("BETAC", input::vector_size);
    for (int tracer = 1; tracer <= tracers; ++tracer) {
        sim::Tracer& row = table.rows[static_cast<std::size_t>(tracer - 1)];
        row.active = true;
        const auto species = static_cast<std::size_t>(components + tracer);
        row.betac = species <= betac.size() ? betac[species - 1] : 0;
        const std::string keyword = concentration_key(static_cast<int>(species));
        if (stream.has(keyword)) {
            row.concentration = save_tracer(import, tracer, keyword);
        }
    }
    table.save(import.files);
    import.project.flags.mark_defined(9, 8);
}

void Create_Tma(ModelImport& import) {
    if (!import.transport()) {
        return;
    }
    sim::Dispersion dispersion;
    if (import.stream.has("MDIFS1")) {
        dispersion.diffusion = diffusion_mantissa(import.stream.text("MDIFS1"));
    }
    if (import.stream.has("DIFTS1")) {
        dispersion.transverse = length_text(import.stream.text("DIFTS1"));
    }
    if (import.stream.has("DIFLS1")) {
        dispersion.longitudinal = length_text(import.stream.text("DIFLS1"));
    }
    dispersion.save(import.files);
    import.project.flags.mark_defined(9, 9);
}

void Create_Box(ModelImport& import) {
    if (!import.stream.has("BOX")) {
        return;
    }
    constexpr std::size_t systems = sim::Boxmodel::system_count;
    const int zones = std::clamp(import.stream.integer("BOX", 0), 0, 100);
    const auto count = static_cast<std::size_t>(zones);
    const auto numbers = import.stream.values("BOX", 1 + count + 3 * systems);
    sim::Boxmodel box;
    box.active = "1";
    for (std::size_t i = 1; i <= count; ++i) {
        box.P_Zones += (i > 1 ? "," : "") + base::value_text(std::abs(numbers[i]));
    }
    for (std::size_t i = 0; i < systems; ++i) {
        const std::size_t first = 1 + count + i;
        box.density[i] = base::value_text(numbers[first]);
        box.aperture[i] = base::value_text(numbers[first + systems]);
        box.tortuosity[i] = base::value_text(numbers[first + 2 * systems]);
    }
    box.save(import.files);
    import.project.flags.set(10, 6, 1);
}

} // namespace results
