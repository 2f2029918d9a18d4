// Types and thicknesses of the layers ("Layer Options" or "Cross Section Options").
#pragma once

#include "core/form.h"
#include "grid/griddefinition.h"

namespace grid {

// A row for each layer with the columns "Layer", "Type" (0 confined, 1 unconfined) and "Thickness".
// The unconfined layers lie on top: no 1 below a 0. Field "txtNFREE" is their number, field
// "Geometry" says where the layers get their thickness from: 0 the table, 1 the arrays of top and
// bottom.
class Layer_Type : public core::TableForm {
public:
    std::span<const core::FieldInfo> fields() const override;
    std::span<const core::FieldInfo> columns() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    void save(core::Project& project, core::ModelFiles& files) override;
    bool enabled(std::string_view name) const override;

    int rows() const override { return static_cast<int>(file_.layers.size()); }
    std::string cell(int row, std::string_view column) const override;
    std::optional<base::Refusal> set_cell(int row, std::string_view column,
                                          std::string_view text) override;
    std::optional<base::Refusal> set_all(std::string_view column, std::string_view text) override;
    // Makes layers 1 to `count` unconfined and the others confined. More than there are layers is
    // refused and clears the field. Setting "txtNFREE" does the same and gives the refusal as a
    // notice.
    std::optional<base::Refusal> set_unconfined(int count);

    // "Layer Options" or "Cross Section Options".
    const char* caption() const;

protected:
    std::vector<core::Notice> changed(std::string_view name) override;

private:
    std::size_t index(int row) const;
    bool type_allowed(int row, int type) const;
    void show_unconfined();

    LayerFile file_;
    int orientation_ = 0;
};

} // namespace grid
