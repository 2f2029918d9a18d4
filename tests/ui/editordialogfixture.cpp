#include "editordialogfixture.h"

#include <QApplication>
#include <QTest>

namespace support {

void EditorDialogFixture::type_cell(QTableView& table, int column, int row, const char* text) {
    const QModelIndex cell = table.model()->index(row - 1, column - 1);
    table.setFocus();
    table.setCurrentIndex(cell);
    QTest::keyClick(&table, Qt::Key_F2);
    QWidget* const field = table.indexWidget(cell);
    ASSERT_NE(field, nullptr) << "the cell is not edited";
    type_into(*field, text);
    QTest::keyClick(field, Qt::Key_Return);
    QApplication::processEvents(); // the editor closes behind its key
}

} // namespace support
