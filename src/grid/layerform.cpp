#include "grid/layerform.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "core/modelfiles.h"
#include "core/project.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>

namespace grid {

namespace {

enum Type { confined = 0, unconfined = 1 };

constexpr const char* types[] = {"0: Confined", "1: Unconfined"};
constexpr const char* geometries[] = {"User Specified", "Calculated"};

constexpr core::FieldInfo layer_fields[] = {
    {"txtNFREE", core::FieldKind::number, "Number of unconfined layers", {}, "", "0"},
    {"Geometry", core::FieldKind::choice, "Thickness [m]", geometries, "", "0"},
};

constexpr core::FieldInfo layer_columns[] = {
    {"Layer", core::FieldKind::number, "Layer"},
    {"Type", core::FieldKind::choice, "Type", types, "", "0"},
    {"Thickness", core::FieldKind::number, "Thickness [m]", {}, "m", "1"},
};

int type_of(std::string_view text) {
    const std::int32_t type = base::leading_int32(text);
    if (type != confined && type != unconfined) {
        throw base::RangeFailure(fmt::format("there is no layer type {}", type));
    }
    return type;
}

[[noreturn]] void refuse_column(std::string_view column) {
    throw base::RangeFailure(fmt::format("the layers have no column \"{}\" to fill", column));
}

} // namespace

std::span<const core::FieldInfo> Layer_Type::fields() const {
    return layer_fields;
}

std::span<const core::FieldInfo> Layer_Type::columns() const {
    return layer_columns;
}

void Layer_Type::load(const core::Project& project, const core::ModelFiles& files) {
    reset_fields();
    orientation_ = project.flags.GridOrientation();
    file_ = LayerFile::load(files, project.NZ()).value_or(LayerFile::defaults(project.NZ()));
    put("Geometry", project.flags.layers_by_thickness() ? "0" : "1");
    show_unconfined();
}

void Layer_Type::save(core::Project& project, core::ModelFiles& files) {
    file_.save(files);
    project.flags.set(0, 0, get("Geometry") == "0" ? 1 : 0);
    project.flags.mark_defined(1, 6);
    project.flags.mark_edited();
}

bool Layer_Type::enabled(std::string_view name) const {
    return name != "Layer" && (name != "Thickness" || get("Geometry") == "0");
}

std::string Layer_Type::cell(int row, std::string_view column) const {
    if (column == "Layer") {
        return fmt::to_string(row);
    }
    if (column == "Type") {
        return fmt::to_string(file_.layers[index(row)].type);
    }
    if (column == "Thickness") {
        return base::exact_text(file_.layers[index(row)].thickness);
    }
    refuse_column(column);
}

std::optional<base::Refusal> Layer_Type::set_cell(int row, std::string_view column,
                                                  std::string_view text) {
    if (column == "Thickness") {
        file_.layers[index(row)].thickness = base::leading_single(text);
        return std::nullopt;
    }
    if (column != "Type") {
        refuse_column(column);
    }
    const int type = type_of(text);
    if (!type_allowed(row, type)) {
        return base::Refusal{"Wrong Data Input",
                             "Unconfined layers below confined layers are not allowed!",
                             base::Icon::warning};
    }
    file_.layers[index(row)].type = type;
    show_unconfined();
    return std::nullopt;
}

// All layers change together, so that none lies wrongly above another.
std::optional<base::Refusal> Layer_Type::set_all(std::string_view column, std::string_view text) {
    if (column != "Type") {
        return TableForm::set_all(column, text);
    }
    const int type = type_of(text);
    for (LayerFile::Layer& each : file_.layers) {
        each.type = type;
    }
    show_unconfined();
    return std::nullopt;
}

std::optional<base::Refusal> Layer_Type::set_unconfined(int count) {
    if (count > rows()) {
        put("txtNFREE", "");
        return base::Refusal{"Input Error",
                             "Too many unconfined layer defined!\nValue will be reset to none.",
                             base::Icon::warning};
    }
    for (int row = 1; row <= rows(); ++row) {
        file_.layers[index(row)].type = row <= count ? unconfined : confined;
    }
    show_unconfined();
    return std::nullopt;
}

const char* Layer_Type::caption() const {
    return orientation_ == core::horizontal ? "Layer Options" : "Cross Section Options";
}

std::vector<core::Notice> Layer_Type::changed(std::string_view name) {
    if (name != "txtNFREE" || get(name).empty()) {
        return {};
    }
    const auto refusal = set_unconfined(base::leading_int32(get(name)));
    return refusal ? std::vector<core::Notice>{{refusal->icon, refusal->title, refusal->text}}
                   : std::vector<core::Notice>();
}

std::size_t Layer_Type::index(int row) const {
    if (row < 1 || row > rows()) {
        throw base::RangeFailure(fmt::format("there is no layer {}", row));
    }
    return static_cast<std::size_t>(row - 1);
}

// An unconfined layer has none but unconfined ones above it, a confined one none of them below.
bool Layer_Type::type_allowed(int row, int type) const {
    const auto changed = file_.layers.begin() + static_cast<std::ptrdiff_t>(index(row));
    const auto is = [](int kind) {
        return [kind](const LayerFile::Layer& each) { return each.type == kind; };
    };
    return type == unconfined ? std::none_of(file_.layers.begin(), changed, is(confined))
                              : std::none_of(changed + 1, file_.layers.end(), is(unconfined));
}

void Layer_Type::show_unconfined() {
    const auto count = std::count_if(file_.layers.begin(), file_.layers.end(),
                                     [](const auto& each) { return each.type == unconfined; });
    put("txtNFREE", fmt::to_string(count));
}

} // namespace grid
