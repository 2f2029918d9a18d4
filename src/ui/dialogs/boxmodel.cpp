// "Multiple Continua": four fracture systems in chosen Property Zones.

#include "sim/continua.h"
#include "ui/desk.h"
#include "ui/dialogs/settingsdialogs.h"
#include "ui/formdialog.h"
#include "ui/text.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

namespace {

struct Property {
    const char* head;
    const char* field; // followed by the letter of the system
};
constexpr Property properties[] = {
    {"Fracture density [1/m]", "txtDens"},
    {"Fracture aperture [m]", "txtApert"},
    {"Tortuosity [-]", "txtTort"},
};
constexpr const char* systems[] = {"A", "B", "C", "D"};

void add_systems(FormDialog& dialog) {
    QGridLayout* grid = dialog.add_frame(FormDialog::tr("Fracture Systems (A>B>C>D)"));
    for (int column = 0; column < int(std::size(properties)); ++column) {
        grid->addWidget(new QLabel(to_qt(properties[column].head)), 0, column + 1);
        grid->setColumnStretch(column + 1, 1);
    }
    int row = 0;
    for (const char* system : systems) {
        grid->addWidget(new QLabel(FormDialog::tr("System %1").arg(system)), ++row, 0);
        for (int column = 0; column < int(std::size(properties)); ++column) {
            const std::string name = std::string(properties[column].field) + system;
            grid->addWidget(dialog.field(name.c_str()), row, column + 1);
        }
    }
}

} // namespace

void edit_continua(CommandContext& context) {
    sim::BoxmodelForm form;
    FormDialog dialog(context, form, "Boxmodel", FormDialog::tr("Multiple Continua"),
                      "settings.md#Multiple Continua");
    dialog.body().addWidget(dialog.field("chkBox"));
    auto* zones = new QGridLayout;
    dialog.body().addLayout(zones);
    dialog.view().add_row(*zones, "txtPropZones");
    dialog.view().set_hint("txtPropZones",
                           FormDialog::tr("Numbers separated by commas, such as 1,3; - for none."));
    add_systems(dialog);
    dialog.body().addStretch();
    QPushButton* check = &dialog.add_button("cmdCheck", FormDialog::tr("Chec&k"));
    QObject::connect(check, &QPushButton::clicked, &dialog, [&] {
        dialog.view().commit();
        const core::Notice notice = form.calculated();
        context.desk.user().message(notice.icon, notice.title, notice.text);
    });
    dialog.run("Multiple Continua", "[Boxmodel] BoxmodelSave()");
}

} // namespace ui
