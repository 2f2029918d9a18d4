// What a model answers of a cell that is a number or a check.
#pragma once

#include <QVariant>

namespace ui {

QVariant number_cell_data(float number, int role);
QVariant check_cell_data(bool on, int role);

} // namespace ui
