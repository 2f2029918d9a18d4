// Blocks of cells as spreadsheets put them on the clipboard: cells end with TAB, rows with a line
// end, a cell that holds one of these or a quotation mark stands in quotation marks.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace ui {

// Rows of cells; rows may differ in length. The end of the last line makes no further row.
std::vector<QStringList> parse_tab_separated(const QString& text);

QString tab_separated(const std::vector<QStringList>& rows);

} // namespace ui
