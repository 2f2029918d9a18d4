#include "ui/dialogs/about.h"

#include "base/version.h"
#include "ui/icons.h"
#include "ui/text.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

namespace {

QString about_text() {
    return QString("Version %1\n\n"
                   "Makes, describes, checks and runs models of groundwater flow, heat, transport "
                   "and reaction for the simulator tervex.\n\n"
                   "Free software under the GNU General Public License, version 3 or later "
                   "(GPL-3.0-or-later). It comes with no warranty, to the extent permitted by law.")
        .arg(to_qt(base::version));
}

} // namespace

void show_about(QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName("About");
    dialog.setWindowTitle("About Tervex Desk");
    auto* column = new QVBoxLayout(&dialog);
    const int line = dialog.fontMetrics().height();
    const int width = dialog.fontMetrics().averageCharWidth() * 64;

    QPixmap picture = title_picture(width, dialog.devicePixelRatioF());
    auto* title = new QLabel(&dialog);
    title->setPixmap(picture);
    title->setAccessibleName("Tervex Desk");
    column->addWidget(title);
    auto* text = new QLabel(about_text(), &dialog);
    text->setObjectName("about_text");
    text->setTextFormat(Qt::PlainText);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text->setWordWrap(true);
    text->setMaximumWidth(width);
    column->addSpacing(line / 2);
    column->addWidget(text);
    column->addSpacing(line / 2);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
    buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
    buttons->button(QDialogButtonBox::Ok)->setIcon({});
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
    dialog.exec();
}

} // namespace ui
