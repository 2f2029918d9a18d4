// Dialogs of the toolkit that are no part of base::Interaction.
#pragma once

#include <QColor>

#include <functional>
#include <optional>

class QPrinter;
class QWidget;

namespace ui {

// Held by the desk; a test puts its answers in their place.
struct Choosers {
    // Nothing after Cancel.
    std::function<std::optional<QColor>(QWidget* parent, const QColor& old)> colour;
    // False after Cancel.
    std::function<bool(QWidget* parent, QPrinter& printer)> printer;

    // Those of the toolkit.
    Choosers();
};

} // namespace ui
