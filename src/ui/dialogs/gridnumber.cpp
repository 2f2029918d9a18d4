// "Model Dimension": the numbers of layers, columns and rows, and how layers are stacked.

#include "app/workspace.h"
#include "grid/gridform.h"
#include "ui/desk.h"
#include "ui/dialogs/settingsdialogs.h"
#include "ui/formdialog.h"
#include "ui/text.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

namespace {

struct Hint {
    const char* field;
    const char* text;
};
constexpr Hint hints[] = {
    {"txtLayers", "Define the number of layers for the model."},
    {"txtColumns", "Define number of columns and size for the model."},
    {"txtColumnSize", "Define number of columns and size for the model."},
    {"txtRows", "Define number of rows and size for the model."},
    {"txtRowSize", "Define number of rows and size for the model."},
};

// A number and the size of its cells beside each other.
void add_pair(FormView& view, QGridLayout& grid, int row, const char* number, const char* size) {
    grid.addWidget(view.label(number), row, 0);
    grid.addWidget(view.field(number), row, 1);
    grid.addWidget(view.label(size), row, 2);
    grid.addWidget(view.field(size), row, 3);
    grid.setColumnStretch(1, 1);
    grid.setColumnStretch(3, 1);
}

class GridNumberDialog : public FormDialog {
public:
    GridNumberDialog(CommandContext& context, grid::Grid_Number& form, bool new_model)
        : FormDialog(context, form, "Grid_Number", tr("Model Dimension"), "settings.md#Mesh Size"),
          form_(form) {
        if (new_model) {
            add_orientation();
        }
        QGridLayout* layers = add_frame({});
        layers_ = qobject_cast<QGroupBox*>(layers->parentWidget());
        view().add_row(*layers, "txtLayers");
        layers->setColumnStretch(1, 1);
        layers->setColumnStretch(2, 2);
        QGridLayout* cells = add_frame(tr("Columns and Rows"));
        add_pair(view(), *cells, 0, "txtColumns", "txtColumnSize");
        add_pair(view(), *cells, 1, "txtRows", "txtRowSize");
        body().addStretch();
        for (const Hint& hint : hints) {
            view().set_hint(hint.field, to_qt(hint.text));
        }
        findChild<QPushButton*>("cmdOK")->setToolTip(tr("Save the model dimensions."));
        connect(&view(), &FormView::changed, this, &GridNumberDialog::show_frame);
    }

protected:
    void loaded() override { show_frame(); }

private:
    void add_orientation() {
        QGridLayout* frame = add_frame(tr("Model development"));
        QWidget* choice = field("GridOrientation");
        choice->setToolTip(tr("Definition of the layer stacking during model development."));
        frame->addWidget(choice, 0, 0);
    }

    void show_frame() { layers_->setTitle(to_qt(form_.frame_caption())); }

    grid::Grid_Number& form_;
    QGroupBox* layers_ = nullptr;
};

} // namespace

bool edit_grid_number(CommandContext& context) {
    const app::Workspace* model = context.desk.model();
    if (!model) {
        return false;
    }
    grid::Grid_Number form;
    const bool new_model = !model->project.flags.is_defined(1, 2);
    GridNumberDialog dialog(context, form, new_model);
    return dialog.run("Mesh Size", "[Grid_Number] Save_Grid_File()") == QDialog::Accepted;
}

} // namespace ui
