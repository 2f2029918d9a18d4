// Layer Options.
#include "grid/layerform.h"
#include "ui/dialogs/tabledialog.h"
#include "ui/dialogs/tabledialogs.h"
#include "ui/tableview.h"
#include "ui/text.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QHeaderView>

namespace ui {

namespace {

class LayerDialog : public TableDialog {
public:
    LayerDialog(CommandContext& context, grid::Layer_Type& form)
        : TableDialog(context, form, "Layer_Type", {}, "settings.md#Layer Type"), form_(form) {
        QGridLayout* fields = new QGridLayout;
        fields->setColumnStretch(2, 1);
        view().add_row(*fields, "txtNFREE");
        view().add_row(*fields, "Geometry", Look::across);
        body().addLayout(fields);
        TableView* table = make_table(form, "Table", tr("Layers"));
        table->verticalHeader()->hide();
        body().addWidget(table, 1);
    }

private:
    void updated() override { setWindowTitle(to_qt(form_.caption())); }

    grid::Layer_Type& form_;
};

} // namespace

void edit_layers(CommandContext& context) {
    grid::Layer_Type form;
    LayerDialog(context, form).run("Layer Type", "Layer_Type.OKButton_Click()");
}

} // namespace ui
