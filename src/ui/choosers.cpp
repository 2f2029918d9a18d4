#include "ui/choosers.h"

#include <QColorDialog>
#include <QPrintDialog>
#include <QPrinter>

namespace ui {

Choosers::Choosers() {
    colour = [](QWidget* parent, const QColor& old) -> std::optional<QColor> {
        const QColor chosen = QColorDialog::getColor(old, parent);
        return chosen.isValid() ? std::optional(chosen) : std::nullopt;
    };
    printer = [](QWidget* parent, QPrinter& chosen) {
        return QPrintDialog(&chosen, parent).exec() == QDialog::Accepted;
    };
}

} // namespace ui
