// The small dialogs of the contour table. Each gives nothing after Cancel.
#pragma once

#include "plot/contourlevels.h"

#include <optional>

class QString;
class QWidget;

namespace ui {

class Desk;

// ContourLevels, filled with `preset`.
std::optional<plot::LevelRange> ask_level_range(Desk& desk, const plot::LevelRange& preset,
                                                QWidget* parent);
// ContourLabels, for a table of so many levels.
std::optional<plot::LabelChoice> ask_labels(Desk& desk, std::size_t levels, QWidget* parent);
// ColorSpecturm: the colours of the lowest and the highest level.
std::optional<plot::ColourRange> ask_colours(Desk& desk, const QString& title,
                                             const plot::ColourRange& preset, QWidget* parent);
// One value for all rows of the column "Label Height" or "Label Spacing".
std::optional<float> ask_label_size(Desk& desk, const char* column, float preset, QWidget* parent);
// labelFormat
std::optional<plot::LabelFormat> ask_label_format(Desk& desk, const plot::LabelFormat& preset,
                                                  QWidget* parent);

} // namespace ui
