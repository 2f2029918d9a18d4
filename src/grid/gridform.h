// The dialogs of the mesh: Model Dimension and the size of single columns and rows.
#pragma once

#include "core/form.h"
#include "grid/griddefinition.h"

namespace grid {

inline constexpr const char* arrays_exist =
    "The size cannot be changed while arrays exist. Use the refinement.";
inline constexpr const char* orientation_is_fixed =
    "The orientation of a saved model cannot be changed.";

// Model Dimension: numbers of layers, columns and rows, one size for all columns and one for all
// rows, and in a new model the orientation. OK makes the mesh anew.
class Grid_Number : public core::Form {
public:
    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    bool enabled(std::string_view name) const override;
    // Refuses values that are not positive, too large numbers, another orientation of a defined
    // mesh, and other numbers while a defined mesh has arrays.
    std::optional<base::Refusal> check() const override;
    // Writes the grid and default layers, sets sheet, origin and flags. The first mesh of a model
    // also fixes its orientation and removes arrays of another size.
    void save(core::Project& project, core::ModelFiles& files) override;

    // Caption of the frame of the numbers: "Layers" or "Cross Sections".
    const char* frame_caption() const;

protected:
    std::vector<core::Notice> changed(std::string_view name) override;

private:
    GridFile new_grid() const;
    bool same_numbers() const;
    void set_orientation(core::Project& project) const;

    bool defined_ = false; // the mesh, before this dialog
    bool has_arrays_ = false;
    int NX_ = 0, NY_ = 0, NZ_ = 0; // of the model as loaded
    int orientation_ = 0;
};

// Width of one column and height of one row.
class GridSize : public core::Form {
public:
    // Column and row from 1; outside the grid of the grid file loading is a FileFailure.
    GridSize(int column, int row) : column_(column), row_(row) {}

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    std::optional<base::Refusal> check() const override;
    void save(core::Project& project, core::ModelFiles& files) override;

private:
    int column_, row_;
    std::optional<GridFile> grid_; // nothing while the mesh is not defined
};

} // namespace grid
