#include "input/simulatorfield.h"

#include "base/failure.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "input/compact.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace input {

namespace {

constexpr std::uintmax_t table_bytes = 4000;

} // namespace

ModelArrays::ModelArrays(core::ModelFiles& files, const core::Project& project)
    : files_(&files), project_(&project), store_(files, project), grid_(project) {}

bool ModelArrays::is_defined(const ArrayItem& item) const {
    return item.flag_row >= 0 && project_->flags.is_defined(item.flag_row, item.flag_column);
}

void ModelArrays::fail(const ArrayItem& item, const std::string& what) const {
    throw base::FileFailure(what, files_->name_of(core::file_ext(item.number)));
}

bool ModelArrays::has(const ArrayItem& item) const {
    if (!exists(item) && is_defined(item)) {
        fail(item, "the array was defined, but its file is missing");
    }
    return exists(item);
}

// Nothing is allocated for a grid that the file cannot hold.
void ModelArrays::require_layer(const ArrayItem& item) const {
    if (!exists(item)) {
        fail(item, "the file is missing");
    }
    const std::uintmax_t needed = table_bytes + store_.cells_of_layer() * sizeof(float);
    if (const std::uintmax_t size = store_.file_size(item.number); size < needed) {
        fail(item, fmt::format("has {} bytes, where one layer of {} columns and {} rows needs {}",
                               size, store_.NX(), store_.NY(), needed));
    }
}

void ModelArrays::visit_rows(const ArrayItem& item, int period, const VisitRow& visit) const {
    if (!store_.has_period(item.number, period)) {
        return;
    }
    require_layer(item);
    const auto columns = static_cast<std::size_t>(store_.NX());
    std::vector<float> values(store_.cells_of_layer());
    const auto reader = store_.layer_reader(item.number, period, 0);
    for (int layer = 1; layer <= store_.NZ(); ++layer) {
        reader.read(layer, values);
        for (int row = 1; row <= store_.NY(); ++row) {
            const auto index = grid_.index({1, row, layer});
            const auto first = static_cast<std::size_t>(row - 1) * columns;
            visit(std::span(values).subspan(first, columns), index.J, index.K);
        }
    }
}

SimulatorField ModelArrays::read(const ArrayItem& item) const {
    SimulatorField field(grid_, core::parameter_default(item.number));
    if (has(item)) {
        visit_rows(item, 1, [&field](std::span<const float> cells, int J, int K) {
            std::ranges::copy(cells, field.row(J, K).begin());
        });
    }
    return field;
}

std::vector<float> ModelArrays::read_layer(const ArrayItem& item, int layer) const {
    require_layer(item);
    std::vector<float> values(store_.cells_of_layer());
    store_.read_array(item.number, 1, layer, values, core::parameter_default(item.number));
    return values;
}

std::span<float> SimulatorField::row(int J, int K) {
    if (values_.empty()) {
        values_.assign(static_cast<std::size_t>(grid_.N()), everywhere_);
    }
    const auto first = static_cast<std::size_t>(grid_.place({1, J, K}));
    return std::span(values_).subspan(first, static_cast<std::size_t>(grid_.I0()));
}

float SimulatorField::at(int I, int J, int K) const {
    return values_.empty() ? everywhere_
                           : values_[static_cast<std::size_t>(grid_.place({I, J, K}))];
}

void SimulatorField::Constant_Parameter(const ModelArrays& arrays, const ArrayItem& boundary) {
    arrays.visit_rows(boundary, 1, [this](std::span<const float> codes, int J, int K) {
        if (std::ranges::find(codes, -1.0F) == codes.end()) {
            return;
        }
        const std::span<float> cells = row(J, K);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (codes[i] == -1.0F && cells[i] != 0) {
                cells[i] = -std::abs(cells[i]);
            }
        }
    });
}

void SimulatorField::add_to(Runs& runs) const {
    if (values_.empty()) {
        runs.add(everywhere_, grid_.N());
    } else {
        runs.add(values_);
    }
}

} // namespace input
