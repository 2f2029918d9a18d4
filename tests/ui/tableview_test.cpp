#include "deskfixture.h"

#include "grid/layerform.h"
#include "sim/periods.h"
#include "ui/tablemodel.h"
#include "ui/tableview.h"
#include "ui/tabseparated.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>

namespace {

using support::DeskFixture;

enum Column { use, length, steps, frequency, shift };

// The table of periods in a window of its own.
class TableViewFixture : public DeskFixture {
protected:
    TableViewFixture() { show(table); }

    static void show(QWidget& widget) {
        widget.show();
        widget.activateWindow();
        widget.setFocus();
        QApplication::processEvents();
    }

    void go_to(int row, int column) {
        table.selectionModel()->setCurrentIndex(table.model()->index(row, column),
                                                QItemSelectionModel::ClearAndSelect);
    }
    void select(int row, int column, int last_row, int last_column) {
        go_to(row, column);
        table.selectionModel()->select(
            {table.model()->index(row, column), table.model()->index(last_row, last_column)},
            QItemSelectionModel::ClearAndSelect);
    }
    std::string current() const {
        return std::to_string(table.currentIndex().row()) + "," +
               std::to_string(table.currentIndex().column());
    }
    static QWidget& editor() {
        QWidget* focused = QApplication::focusWidget();
        if (!qobject_cast<QLineEdit*>(focused)) {
            throw std::runtime_error("no editor is open");
        }
        return *focused;
    }
    // A key for the table, or for its open editor.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* open = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QTest::keyClick(open ? open : &table, key, modifiers);
        QApplication::processEvents();
    }
    void type(const char* text) {
        QTest::keyClick(&table, text[0]);
        QTest::keyClicks(&editor(), text + 1);
    }
    static void set_clipboard(const QString& text) { QApplication::clipboard()->setText(text); }

    sim::TemporalDiscretization form;
    ui::TableView table{desk, form};
};

TEST_F(TableViewFixture, typing_replaces_F2_edits_and_Escape_takes_back) {
    go_to(2, steps);
    type("25");
    press(Qt::Key_Return);
    EXPECT_EQ(form.cell(3, "TimeSteps"), "25");
    EXPECT_EQ(current(), "3,2");
    go_to(2, steps);
    press(Qt::Key_F2);
    QTest::keyClick(&editor(), Qt::Key_End);
    QTest::keyClicks(&editor(), "0");
    press(Qt::Key_Tab);
    EXPECT_EQ(form.cell(3, "TimeSteps"), "250");
    EXPECT_EQ(current(), "2,3");
    type("7");
    press(Qt::Key_Escape);
    EXPECT_EQ(form.cell(3, "MonitoringFrequency"), "1");
    press(Qt::Key_Backtab);
    EXPECT_EQ(current(), "2,2");
}

TEST_F(TableViewFixture, space_toggles_checks_and_delete_empties) {
    select(1, use, 3, use);
    press(Qt::Key_Space);
    EXPECT_EQ(form.table().totals().periods, 4);
    select(1, use, 2, steps);
    press(Qt::Key_Delete);
    EXPECT_EQ(form.table().totals().periods, 2);
    EXPECT_EQ(form.cell(2, "PeriodLength"), "0");
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                      table.visualRect(table.model()->index(1, use)).center());
    EXPECT_EQ(form.cell(2, "Use"), "1");
}

TEST_F(TableViewFixture, a_refused_cell_keeps_its_text_and_shows_one_box) {
    go_to(0, steps);
    type("100000000");
    user.expect_message("Time Parameter", "The number of time steps must be < 100000000");
    press(Qt::Key_Return);
    EXPECT_EQ(form.cell(1, "TimeSteps"), "1");
    EXPECT_EQ(current(), "0,2");
    type("100000001");
    user.expect_message("Time Parameter", "The number of time steps must be < 100000000");
    EXPECT_FALSE(table.finish_editing());
    EXPECT_TRUE(table.finish_editing());
}

TEST_F(TableViewFixture, an_untouched_cell_keeps_all_digits_of_its_value) {
    form.set_cell(1, "PeriodLength", "0.12345678901");
    const double stored = form.table().rows[0].length;
    go_to(0, length);
    press(Qt::Key_F2);
    press(Qt::Key_Return);
    EXPECT_EQ(form.table().rows[0].length, stored);
}

TEST_F(TableViewFixture, blocks_go_to_the_clipboard_and_back) {
    form.set_cell(2, "PeriodLength", "3.5");
    select(0, use, 1, steps);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "1\t1\t1\n0\t3.5\t1\n");
    set_clipboard("yes\t\"12\"\t4\r\nTRUE\t1e3\t5\r\n");
    go_to(97, use);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.cell(98, "Use") + form.cell(98, "PeriodLength"), "112");
    EXPECT_EQ(form.cell(99, "PeriodLength") + " " + form.cell(99, "TimeSteps"), "1000 5");
    EXPECT_EQ(form.cell(100, "PeriodLength"), "1");
    set_clipboard("6");
    select(0, shift, 2, shift);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.cell(3, "TemperatureShift"), "6");
}

TEST_F(TableViewFixture, a_pasted_block_ends_at_the_edge_and_reports_its_first_refusal) {
    QString block;
    for (int row = 0; row < 5; ++row) {
        block += "1\t300000000\t9\t9\t9\t9\t9\t9\n";
    }
    set_clipboard(block);
    go_to(98, length);
    user.expect_message("Time Parameter", "The number of time steps must be < 100000000");
    table.paste();
    EXPECT_EQ(form.cell(100, "TimeSteps") + form.cell(100, "Multiplier"), "19");
    set_clipboard("0\n0\n0");
    go_to(0, use);
    user.expect_message("Time Parameter",
                        "The data of the first stress period must always be used!");
    table.paste();
    EXPECT_EQ(form.table().totals().periods, 1);
}

TEST_F(TableViewFixture, a_right_click_on_a_head_sets_all_rows) {
    go_to(4, use);
    QTimer::singleShot(0, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        menu->setActiveAction(menu->actions().front());
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QHeaderView* head = table.horizontalHeader();
    const QPoint place(head->sectionViewportPosition(steps) + 3, 3);
    in_dialog([&] { emit head->customContextMenuRequested(place); }, "AllRows",
              [&](QDialog& dialog) {
                  auto& field = widget<QLineEdit>(dialog, "Value");
                  EXPECT_EQ(field.text(), "1");
                  EXPECT_EQ(field.selectedText(), "1");
                  support::type_into(field, "200000000");
                  user.expect_message("Time Parameter",
                                      "The number of time steps must be < 100000000");
                  QTest::keyClick(&field, Qt::Key_Return);
                  support::type_into(field, "12");
                  QTest::keyClick(&field, Qt::Key_Return);
              });
    EXPECT_EQ(form.cell(1, "TimeSteps") + form.cell(100, "TimeSteps"), "1212");
    go_to(4, frequency);
    in_dialog([&] { table.findChild<QAction*>("table_all_rows")->trigger(); }, "AllRows",
              [&](QDialog& dialog) { support::click(widget<QWidget>(dialog, "cmdCancel")); });
    EXPECT_EQ(form.cell(5, "MonitoringFrequency"), "1");
}

TEST_F(TableViewFixture, choices_are_lists_and_columns_that_are_off_stay) {
    make_model(2, 2, 3);
    grid::Layer_Type layers;
    layers.load(desk.model()->project, desk.model()->files);
    ui::TableView view(desk, layers);
    show(view);
    EXPECT_FALSE(view.model()->index(0, 0).flags() & Qt::ItemIsEditable);
    EXPECT_EQ(view.model()->index(0, 1).data().toString(), "0: Confined");
    view.setCurrentIndex(view.model()->index(0, 1));
    QTest::keyClick(&view, Qt::Key_F2);
    auto* list = view.findChild<QComboBox*>();
    ASSERT_NE(list, nullptr);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_TRUE(view.finish_editing());
    EXPECT_EQ(layers.cell(1, "Type"), "1");

    set_clipboard("8\t1: Unconfined\t2.5\n8\t5\t3.5\n");
    view.setCurrentIndex(view.model()->index(0, 0));
    user.expect_message("Error", "There is no item \"5\" in the list of the column.");
    view.paste();
    EXPECT_EQ(layers.cell(1, "Layer") + layers.cell(1, "Thickness") + layers.cell(2, "Type"),
              "12.50");
    view.selectAll();
    view.copy();
    EXPECT_EQ(QApplication::clipboard()->text(),
              "1\t1: Unconfined\t2.5\n2\t0: Confined\t3.5\n3\t0: Confined\t1\n");
    layers.set("Geometry", "1");
    view.reload();
    EXPECT_FALSE(view.model()->index(0, 2).flags() & Qt::ItemIsEditable);
}

TEST_F(TableViewFixture, heads_show_units_in_few_lines) {
    EXPECT_EQ(table.model()->headerData(shift, Qt::Horizontal).toString(),
              "Temperature\nShift [K]");
    table.form_model()->set_unit("PeriodLength", "days");
    EXPECT_EQ(table.model()->headerData(length, Qt::Horizontal, Qt::EditRole).toString(),
              "Period Length [days]");
    EXPECT_EQ(ui::broken_into_lines("Thermal Conductivity [W/(m K)]"),
              QString("Thermal\nConductivity\n[W/(m") + QChar(0xa0) + "K)]");
}

TEST_F(TableViewFixture, the_last_cell_lets_Tab_leave_the_table) {
    go_to(99, 6);
    QWidget frame;
    QLineEdit behind(&frame);
    table.setParent(&frame);
    frame.setTabOrder(&table, &behind);
    show(frame);
    table.show();
    table.setFocus();
    press(Qt::Key_Tab);
    EXPECT_TRUE(behind.hasFocus());
    table.setFocus();
    go_to(0, 0);
    QTest::keyClick(&table, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(behind.hasFocus());
    table.setParent(nullptr);
}

// A worksheet's array, as large as a grid may be.
class LargeModel : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex& = {}) const override { return 2000; }
    int columnCount(const QModelIndex& = {}) const override { return 2000; }
    QVariant data(const QModelIndex&, int role) const override {
        ++calls;
        return role == Qt::DisplayRole ? QVariant(1.5) : QVariant();
    }
    mutable int calls = 0;
};

TEST_F(DeskFixture, a_table_asks_for_no_cell_but_those_that_it_shows) {
    LargeModel model;
    ui::TableView table(desk, model);
    table.resize(800, 600);
    EXPECT_EQ(model.calls, 0);
    table.show();
    table.grab();
    EXPECT_LT(model.calls, 40000); // about 250 cells, some roles each, painted twice at most
    EXPECT_GT(model.calls, 0);
}

TEST(tab_separated, cells_that_hold_separators_stand_in_quotation_marks) {
    const std::vector<QStringList> rows = {{"a\tb", "say \"so\"", ""}, {"two\nlines", "1"}};
    EXPECT_EQ(ui::tab_separated(rows), "\"a\tb\"\t\"say \"\"so\"\"\"\t\n\"two\nlines\"\t1\n");
    EXPECT_EQ(ui::parse_tab_separated(ui::tab_separated(rows)), rows);
    EXPECT_EQ(ui::parse_tab_separated("1\r\n\r2"), (std::vector<QStringList>{{"1"}, {""}, {"2"}}));
    EXPECT_EQ(ui::parse_tab_separated("\"open"), (std::vector<QStringList>{{"open"}}));
    EXPECT_TRUE(ui::parse_tab_separated("").empty());
}

} // namespace
