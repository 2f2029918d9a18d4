#include "editordialogfixture.h"

#include "base/paths.h"
#include "base/textfile.h"
#include "grid/searchmodify.h"
#include "ui/colourcells.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QSpinBox>
#include <QTest>

#include <set>

namespace {

using support::click;
using support::EditorDialogFixture;
using support::type_into;

constexpr int wells = 11, temperature = 1402, property_zones = 1403;

class ArrayDialogs : public EditorDialogFixture {
protected:
    void browse(const std::function<void(QDialog&, QTableView&)>& in_matrix) {
        in_dialog([&] { ui::browse_array(*editor); }, "Matrix",
                  [&](QDialog& dialog) {
                      in_matrix(dialog, widget<QTableView>(dialog, "Matrix_Table"));
                  });
    }
    // Presses Load... and fills the dialog.
    void load(QDialog& matrix, const std::function<void(QDialog&)>& in_load) {
        in_dialog([&] { press(matrix, "cmdLoad"); }, "Matrix_Load", in_load);
    }
    std::filesystem::path text_file(const char* name, const std::string& text) {
        base::replace_file(folder.path() / name, text);
        return folder.path() / name;
    }
};

TEST_F(ArrayDialogs, typed_cells_reach_the_layer_with_OK_only) {
    open_worksheet(temperature);
    worksheet->move_to(2, 2);
    browse([&](QDialog& dialog, QTableView& table) {
        EXPECT_EQ(dialog.windowTitle(), "Browse Array");
        EXPECT_EQ(table.currentIndex(), table.model()->index(1, 1)) << "the current cell";
        EXPECT_EQ(table.currentIndex().data().toString(), "            10");
        type_cell(table, 2, 1, "0.1");
        EXPECT_EQ(table.currentIndex(), table.model()->index(1, 1)) << "Enter goes down";
        press(dialog, "cmdCancel");
    });
    EXPECT_EQ(worksheet->cell(1, 2, 1), 10);
    browse([&](QDialog& dialog, QTableView& table) {
        type_cell(table, 2, 1, "0.1");
        press(dialog, "cmdOK");
    });
    EXPECT_EQ(worksheet->array(1), (core::LayerValues{10, 0.1F, 10, 10, 10, 10}));
}

TEST_F(ArrayDialogs, blocks_are_pasted_and_a_refused_value_stays_out) {
    open_worksheet(property_zones);
    user.expect_message("Error", "Please enter a value between 1 and 15.");
    browse([&](QDialog& dialog, QTableView& table) {
        QApplication::clipboard()->setText("2\t3\n4\t16\n");
        table.setCurrentIndex(table.model()->index(0, 1));
        QTest::keySequence(&table, QKeySequence::Paste);
        press(dialog, "cmdOK");
    });
    EXPECT_EQ(worksheet->array(1), (core::LayerValues{1, 2, 3, 1, 4, 1}));
}

TEST_F(ArrayDialogs, each_array_of_the_session_has_its_table) {
    open_worksheet(wells);
    browse([&](QDialog& dialog, QTableView& table) {
        QComboBox& list = widget<QComboBox>(dialog, "Browse_Parameter");
        ASSERT_EQ(list.count(), 2);
        EXPECT_EQ(list.itemText(1), "Temperature");
        type_cell(table, 1, 1, "-0.5");
        list.setCurrentIndex(1);
        type_cell(table, 1, 1, "60");
        list.setCurrentIndex(0);
        EXPECT_EQ(cell_text(table, 1, 1), "-0.5");
        press(dialog, "cmdOK");
    });
    EXPECT_EQ(worksheet->cell(1, 1, 1), -0.5F);
    EXPECT_EQ(worksheet->cell(2, 1, 1), 60);
    EXPECT_TRUE(worksheet->undo());
    EXPECT_EQ(worksheet->cell(2, 1, 1), 0) << "both are one step";
}

TEST_F(ArrayDialogs, the_filter_decides_the_form_of_a_saved_array) {
    open_worksheet(temperature, 2, 1);
    const auto file = folder.path() / "array.txt";
    user.expect_file("Save Array As", file, 2);
    user.expect_file("Save Array As", file, 3);
    user.expect_question("Save Array As", "File exist '" + file.string() + "' overwrite ?",
                         base::Answer::yes);
    browse([&](QDialog& dialog, QTableView& table) {
        type_cell(table, 1, 1, "7");
        press(dialog, "cmdSave");
        EXPECT_EQ(base::read_bytes(file), " 2  1 \r\n             7            10\r\n");
        press(dialog, "cmdSave");
        EXPECT_EQ(base::split_lines(base::read_bytes(file)).size(), 2U);
        press(dialog, "cmdCancel");
    });
}

TEST_F(ArrayDialogs, a_file_is_loaded_from_a_cell_on) {
    open_worksheet(temperature);
    const auto file = text_file("a.dat", "2 2\n1 2\n3 4\n");
    user.expect_file("Load Matrix", file);
    user.expect_message("Load Matrix", "Valid range is 1 to 3");
    browse([&](QDialog& matrix, QTableView&) {
        load(matrix, [&](QDialog& dialog) {
            press(dialog, "cmdBrowse");
            EXPECT_EQ(text_of(dialog, "txtFile"), file.string());
            type(dialog, "txtColumn", "4");
            press(dialog, "cmdOK");
            EXPECT_EQ(dialog.focusWidget()->objectName(), "txtColumn");
            type(dialog, "txtColumn", "2");
            press(dialog, "cmdOK");
        });
        press(matrix, "cmdOK");
    });
    EXPECT_EQ(worksheet->array(1), (core::LayerValues{10, 1, 2, 10, 3, 4}));
}

TEST_F(ArrayDialogs, a_file_with_too_many_columns_leaves_the_table) {
    open_worksheet(temperature);
    const auto file = text_file("wide.dat", "501 1\n1\n");
    const auto missing = folder.path() / "no.dat";
    user.expect_message("Load Matrix",
                        file.string() + " contains invalid number of columns or rows.\nValid range "
                                        "of the number of rows/column is 1 to 500.");
    user.expect_message("Load Matrix", "The file " + missing.string() + " does not exist.");
    browse([&](QDialog& matrix, QTableView& table) {
        load(matrix, [&](QDialog& dialog) {
            for (const auto& name : {file, missing}) {
                type(dialog, "txtFile", name.c_str());
                press(dialog, "cmdOK");
            }
            press(dialog, "cmdCancel");
        });
        EXPECT_EQ(cell_text(table, 1, 1), "10");
        press(matrix, "cmdCancel");
    });
}

TEST_F(ArrayDialogs, four_million_cells_open_at_once) {
    open_worksheet(temperature, 2000, 2000);
    QElapsedTimer timer;
    timer.start();
    browse([&](QDialog& dialog, QTableView&) {
        QApplication::processEvents();
        // Twenty times what an idle machine takes.
        EXPECT_LT(timer.elapsed(), 1000);
        widget<QSpinBox>(dialog, "ColumnWidth").setValue(400);
        press(dialog, "cmdCancel");
    });
}

// Search and modify.

class SearchDialog : public ArrayDialogs {
protected:
    void search(const std::function<void(QDialog&, QTableView&)>& in_search) {
        in_dialog(
            [&] { marks = ui::search_and_modify(*editor); }, "TraceCellValue",
            [&](QDialog& dialog) { in_search(dialog, widget<QTableView>(dialog, "Trace_Table")); });
    }
    void activate(QTableView& table, int row) {
        table.setFocus();
        table.setCurrentIndex(table.model()->index(row - 1, 0));
        QTest::keyClick(&table, Qt::Key_Space);
    }
    // OK of the rules, then OK of the layers.
    void run(QDialog& dialog) {
        in_dialog([&] { press(dialog, "cmdOK"); }, "Trace_Level",
                  [&](QDialog& levels) { press(levels, "cmdOK"); });
    }

    ui::SearchMarks marks;
};

TEST_F(SearchDialog, typed_rules_change_the_layers_and_are_kept) {
    open_worksheet(temperature, 3, 2, 2);
    user.expect_message("Error", "Valid range is 1 to 2");
    desk.choosers().colour = [](QWidget*, const QColor&) { return QColor(255, 128, 0); };
    search([&](QDialog& dialog, QTableView& table) {
        EXPECT_EQ(dialog.windowTitle(), "Search And Modify");
        EXPECT_EQ(table.model()->rowCount(), 50);
        activate(table, 1);
        table.setCurrentIndex(table.model()->index(0, 1));
        QTest::keyClick(&table, Qt::Key_Space);
        type_cell(table, 3, 1, "5");
        type_cell(table, 4, 1, "10");
        type_cell(table, 5, 1, "3");
        table.model()->setData(table.model()->index(0, 5), "Add", Qt::EditRole);
        in_dialog([&] { press(dialog, "cmdOK"); }, "Trace_Level",
                  [&](QDialog& levels) {
                      EXPECT_EQ(levels.windowTitle(), "Search Level");
                      EXPECT_EQ(text_of(levels, "txtMaximum"), "2");
                      type(levels, "txtMaximum", "3");
                      press(levels, "cmdOK");
                      EXPECT_EQ(levels.focusWidget()->objectName(), "txtMaximum");
                      type(levels, "txtMaximum", "2");
                      press(levels, "cmdOK");
                  });
    });
    EXPECT_EQ(worksheet->cell(1, 1, 1), 13);
    worksheet->show_layer(2);
    EXPECT_EQ(worksheet->cell(1, 3, 2), 13);
    EXPECT_EQ(marks.matched, std::vector<std::uint8_t>(6, 1));
    EXPECT_EQ(marks.colours[0], qRgb(255, 128, 0));
    const std::string file = base::read_bytes(folder.path() / "m.trs");
    EXPECT_EQ(file.substr(0, file.find("\r\n", 30)), "BALDO4000_TRACEFILE\r\n-1 33023 5 10 3 2");
}

TEST_F(SearchDialog, rules_go_to_files_and_back) {
    open_worksheet(temperature);
    const auto other = text_file("other.trs", "BALDO\r\n"), kept = folder.path() / "kept.trs";
    user.expect_message("Error", "Out of range, valid range is -3.402823E38 to -1.401298E-45 for "
                                 "negative values and from 1.401298E-45 to 3.402823E38 for "
                                 "positive values.");
    user.expect_file("Save Trace File As", kept);
    user.expect_file("Load Trace File", other);
    user.expect_message("Load Trace File", other.string() + " is not a trace file!");
    user.expect_file("Load Trace File", kept);
    search([&](QDialog& dialog, QTableView& table) {
        std::set<int> colours;
        for (int row = 0; row < 50; ++row) {
            colours.insert(table.model()->index(row, 1).data(ui::colour_role).toInt());
        }
        EXPECT_EQ(colours.size(), 50U); // nobody has chosen any
        EXPECT_FALSE(colours.contains(0));
        type_cell(table, 3, 50, "1e39");
        EXPECT_EQ(cell_text(table, 3, 50), "0");
        type_cell(table, 3, 50, "1e38");
        press(dialog, "cmdSave");
        press(dialog, "cmdLoad");
        press(dialog, "cmdClear");
        EXPECT_EQ(cell_text(table, 3, 50), "0");
        press(dialog, "cmdLoad");
        EXPECT_EQ(cell_text(table, 3, 50), "1E+38");
        press(dialog, "cmdCancel");
    });
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "m.trs"));
}

} // namespace
