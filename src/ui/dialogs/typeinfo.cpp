// "Info / Results": run-time information and the files that the simulator writes.

#include "sim/typeinfo.h"

#include "ui/dialogs/settingsdialogs.h"
#include "ui/formdialog.h"

#include <QGridLayout>
#include <QVBoxLayout>

namespace ui {

void edit_type_info(CommandContext& context) {
    sim::TypeInfo form;
    FormDialog dialog(context, form, "TypeInfo", FormDialog::tr("Info / Results"),
                      "settings.md#Info / Results");
    QGridLayout* levels = dialog.add_frame(FormDialog::tr("Run-time Information"));
    dialog.view().add_row(*levels, "InfoLevel");
    QGridLayout* files = dialog.add_frame(FormDialog::tr("Output Files"));
    for (const core::FieldInfo& field : form.fields()) {
        if (field.kind == core::FieldKind::check) {
            dialog.view().add_row(*files, field.name);
        }
    }
    dialog.run("Info / Results", "[TypeInfo] TypeInfoSave()");
}

} // namespace ui
