// Properties of the rock by zone: flow and heat.
#include "sim/rockproperties.h"

#include "base/textfile.h"
#include "sim/rockfile.h"
#include "ui/desk.h"
#include "ui/dialogs/tabledialog.h"
#include "ui/dialogs/tabledialogs.h"
#include "ui/tablemodel.h"
#include "ui/tableview.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QPushButton>

namespace ui {

namespace {

class RockDialog : public TableDialog {
public:
    RockDialog(CommandContext& context, sim::RockPropertyTable& form, const char* object_name,
               const char* help_page, const QString& title, const char* load_title)
        : TableDialog(context, form, object_name, title, help_page), form_(form) {
        for (const core::FieldInfo& field : form.fields()) {
            auto* row = new QGridLayout;
            row->setColumnStretch(2, 1);
            view().add_row(*row, field.name);
            body().addLayout(row);
        }
        TableView* table = make_table(form, "Table", title);
        table->form_model()->set_row_name(tr("Zone "));
        table->set_shown_rows(sim::PropertyZonesMax);
        body().addWidget(table, 1);
        connect(&add_button("Load_Button", tr("&Load...")), &QPushButton::clicked, this,
                [this, load_title] {
                    load_file(load_title, form_.load_filter(), [this](const auto& file) {
                        return form_.load_block(base::read_bytes(file), file);
                    });
                });
        connect(&add_button("Clear_Button", tr("Cl&ear")), &QPushButton::clicked, this, [this] {
            if (commit() && form_.clear(this->context().desk.user())) {
                refresh();
            }
        });
    }

private:
    sim::RockPropertyTable& form_;
};

} // namespace

void edit_flow_properties(CommandContext& context) {
    sim::PermPor form;
    RockDialog(context, form, "PermPor", "settings.md#Initial Permeability",
               QObject::tr("Permeability / Porosity Definition"), "Load Fluid Flow Rock Properties")
        .run("Permeability / Porosity", "PermPor.OKButton_Click()");
}

void edit_heat_properties(CommandContext& context) {
    sim::Heat form;
    RockDialog(context, form, "Heat", "settings.md#Thermal Rock Properties",
               QObject::tr("Thermal Rock Properties"), "Load Heat Rock Properties")
        .run("Thermal Rock Properties", "HeatSave()");
}

} // namespace ui
