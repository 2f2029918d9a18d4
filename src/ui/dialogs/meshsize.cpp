// Sizes and refinement factors of the current column, row and layer.

#include "app/workspace.h"
#include "grid/mesheditor.h"
#include "ui/desk.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/plaindialog.h"
#include "ui/text.h"
#include "ui/valuefield.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace ui {

namespace {

class GridSizeDialog : public PlainDialog {
public:
    GridSizeDialog(Desk& desk, grid::MeshEditor& mesh, int orientation, QWidget* parent);

    bool changed() const { return changed_; }

protected:
    bool take() override;

private:
    enum Line { head_line, column_line, row_line, layer_line };

    ValueField* add_size(Line line, const char* name, const QString& caption, int number,
                         float size);
    CountField* add_factor(Line line, const char* name, const QString& caption, int factor);
    bool is_good(const grid::MeshSize& size, QWidget* field) {
        return !refused(grid::MeshEditor::size_refusal(size), field);
    }

    grid::MeshEditor& mesh_;
    bool changed_ = false;
    QGridLayout* fields_;
    ValueField* width_;
    ValueField* height_;
    CountField* column_factor_;
    CountField* row_factor_;
    CountField* layer_factor_;
};

template <typename Values>
auto at(const Values& values, int number) {
    return values[std::size_t(number - 1)];
}

GridSizeDialog::GridSizeDialog(Desk& desk, grid::MeshEditor& mesh, int orientation, QWidget* parent)
    : PlainDialog(desk, "GridSize", "Column / Row / Layer", "worksheet.md#The mesh", parent),
      mesh_(mesh), fields_(new QGridLayout) {
    body().addLayout(fields_);
    fields_->addWidget(new QLabel(tr("Size [m]")), head_line, 2);
    fields_->addWidget(new QLabel(tr("Refinement factor")), head_line, 3);
    const auto& [columns, rows, layers] = mesh.division();
    width_ = add_size(column_line, "txtColumnSize", tr("&Column:"), mesh.column(),
                      at(mesh.grid().Column_Width, mesh.column()));
    column_factor_ = add_factor(column_line, "txtColumnFactor", tr("Factor of the column"),
                                at(columns, mesh.column()));
    height_ = add_size(row_line, "txtRowSize", tr("&Row:"), mesh.row(),
                       at(mesh.grid().Row_Height, mesh.row()));
    row_factor_ =
        add_factor(row_line, "txtRowFactor", tr("Factor of the row"), at(rows, mesh.row()));
    layer_factor_ = add_factor(layer_line, "txtLayerFactor", tr("Factor of the layer"),
                               at(layers, mesh.layer()));
    auto* const layer =
        label_of(layer_factor_, to_qt(grid::orientation_words(orientation).singular));
    fields_->addWidget(layer, layer_line, 0);
    fields_->addWidget(new QLabel(QString::number(mesh.layer())), layer_line, 1);
}

ValueField* GridSizeDialog::add_size(Line line, const char* name, const QString& caption,
                                     int number, float size) {
    auto* const field = new ValueField(size);
    field->setObjectName(name);
    fields_->addWidget(label_of(field, caption), line, 0);
    fields_->addWidget(new QLabel(QString::number(number)), line, 1);
    fields_->addWidget(field, line, 2);
    return field;
}

CountField* GridSizeDialog::add_factor(Line line, const char* name, const QString& caption,
                                       int factor) {
    auto* const field = new CountField(factor);
    field->setObjectName(name);
    field->setAccessibleName(caption);
    field->setEnabled(mesh_.refines());
    fields_->addWidget(field, line, 3);
    return field;
}

bool GridSizeDialog::take() {
    const grid::MeshSize size{width_->value(), height_->value(), column_factor_->value(),
                              row_factor_->value(), layer_factor_->value()};
    // One after the other: what is refused has the field that it was typed into.
    const bool good = is_good({size.width, 1, {}, {}, {}}, width_) &&
                      is_good({1, size.height, {}, {}, {}}, height_) &&
                      is_good({1, 1, size.factor_x, {}, {}}, column_factor_) &&
                      is_good({1, 1, {}, size.factor_y, {}}, row_factor_) &&
                      is_good({1, 1, {}, {}, size.factor_layer}, layer_factor_);
    if (!good) {
        return false;
    }
    const bool same = !width_->typed() && !height_->typed() &&
                      size.factor_x == at(mesh_.division().columns, mesh_.column()) &&
                      size.factor_y == at(mesh_.division().rows, mesh_.row()) &&
                      size.factor_layer == at(mesh_.division().layers, mesh_.layer());
    if (!same && refused(mesh_.set_size(size), width_)) {
        return false;
    }
    changed_ = !same;
    return true;
}

} // namespace

bool edit_mesh_size(Desk& desk, grid::MeshEditor& mesh, const app::Workspace& model,
                    QWidget* window) {
    GridSizeDialog dialog(desk, mesh, model.project.flags.GridOrientation(), window);
    return dialog.exec() == QDialog::Accepted && dialog.changed();
}

} // namespace ui
