#include "editordialogfixture.h"

#include "base/paths.h"
#include "base/textfile.h"
#include "plot/plotsource.h"
#include "ui/colourcells.h"
#include "ui/colours.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

namespace {

using support::click;
using support::EditorDialogFixture;

constexpr int temperature = 1402, wells = 11;

class Environment : public EditorDialogFixture {
protected:
    // Temperatures 0, 5 and 10 in one row.
    void open_slope() {
        open_worksheet(temperature, 3, 1);
        worksheet->set_array(1, {0, 5, 10});
    }
    bool options(const std::function<void(QDialog&, QTableView&)>& in_options) {
        bool changed = false;
        in_dialog(
            [&] {
                changed = ui::environment_options(desk, *model, worksheet.get(), view, &window);
            },
            "Environment_options",
            [&](QDialog& dialog) {
                widget<QTabWidget>(dialog, "Environment_Tabs").setCurrentIndex(2);
                in_options(dialog, widget<QTableView>(dialog, "TDBGrid2"));
            });
        return changed;
    }
    // Clicks the head of a column and fills the dialog that comes.
    void head(QTableView& table, int column, const char* name,
              const std::function<void(QDialog&)>& in_column) {
        in_dialog(
            [&] {
                QHeaderView& heads = *table.horizontalHeader();
                table.scrollTo(table.model()->index(0, column - 1));
                const QPoint place(heads.sectionViewportPosition(column - 1) + 10,
                                   heads.height() / 2);
                QTest::mouseClick(heads.viewport(), Qt::LeftButton, {}, place);
            },
            name, in_column);
    }
    int key(const char* section, const char* name) const {
        return desk.model()->project.integer(section, name);
    }
};

TEST_F(Environment, levels_are_made_labelled_and_coloured_by_the_heads_of_the_table) {
    open_slope();
    user.expect_message("Contour Levels", "Minimum > Maximum");
    user.expect_message("Contour Levels", "Value must be > 0");
    user.expect_message("Contour Labels", "Valid range is 1 to 6");
    user.expect_message("Contour Labels", "Value must be > 0");
    user.expect_message("Label Height", "Please enter a valid value");
    user.expect_message("Label Height", "Value must be > 0");
    QColor next = Qt::blue;
    desk.choosers().colour = [&](QWidget*, const QColor&) {
        return std::exchange(next, QColor(Qt::red));
    };
    EXPECT_TRUE(options([&](QDialog& dialog, QTableView& table) {
        EXPECT_EQ(table.model()->rowCount(), 11) << "the levels of the values";
        head(table, 1, "ContourLevels", [&](QDialog& levels) {
            EXPECT_EQ(levels.windowTitle(), "Contour Levels");
            EXPECT_EQ(text_of(levels, "txtMaximum"), "10");
            type(levels, "txtMinimum", "11");
            press(levels, "cmdOK");
            EXPECT_EQ(levels.focusWidget()->objectName(), "txtMinimum");
            type(levels, "txtMinimum", "0");
            type(levels, "txtInterval", "0");
            press(levels, "cmdOK");
            EXPECT_EQ(levels.focusWidget()->objectName(), "txtInterval");
            type(levels, "txtInterval", "2");
            press(levels, "cmdOK");
        });
        EXPECT_EQ(table.model()->rowCount(), 6);
        EXPECT_EQ(cell_text(table, 1, 6), "10");
        head(table, 4, "ContourLabels", [&](QDialog& labels) {
            type(labels, "txtFirst", "7");
            press(labels, "cmdOK");
            type(labels, "txtFirst", "2");
            type(labels, "txtFrequency", "0");
            press(labels, "cmdOK");
            type(labels, "txtFrequency", "3");
            press(labels, "cmdOK");
        });
        EXPECT_EQ(cell_text(table, 4, 1) + cell_text(table, 4, 2) + cell_text(table, 4, 5), "011");
        head(table, 5, "LabelSize", [&](QDialog& size) {
            EXPECT_EQ(size.windowTitle(), "Label Height");
            type(size, "txtValue", "x");
            press(size, "cmdOK");
            type(size, "txtValue", "0");
            press(size, "cmdOK");
            type(size, "txtValue", "2.5");
            press(size, "cmdOK");
        });
        EXPECT_EQ(cell_text(table, 5, 6), "2.5");
        head(table, 2, "ColorSpecturm", [&](QDialog& colours) {
            press(colours, "cmdMinColor");
            press(colours, "cmdMaxColor");
            press(colours, "cmdOK");
        });
        EXPECT_EQ(table.model()->index(0, 1).data(ui::colour_role).toInt(), 0xFF0000);
        EXPECT_EQ(table.model()->index(5, 1).data(ui::colour_role).toInt(), 0x0000FF);
        press(dialog, "cmdOK");
    }));
    const auto levels =
        plot::load_levels({desk.model()->project, {}, {}, {}, {}, {}, {}, {}}, desk.model()->files)
            .levels;
    ASSERT_EQ(levels.size(), 6U);
    EXPECT_EQ(levels[1].level, 2);
    EXPECT_TRUE(levels[1].label);
    EXPECT_EQ(levels[5].line, 255);
    EXPECT_EQ(key("COLOR", "MaxContour"), 255);
}

TEST_F(Environment, OK_keeps_elements_colours_sheet_and_contours_Cancel_nothing) {
    open_worksheet(wells, 3, 1);
    desk.choosers().colour = [](QWidget*, const QColor&) { return QColor(1, 2, 3); };
    user.expect_message("Coordinate System", "Minimum > Maximum");
    const auto change = [&](QDialog& dialog) {
        for (const char* const check : {"Visible_ZONES", "Contour_Visible"}) {
            widget<QCheckBox>(dialog, check).setChecked(true);
        }
        press(dialog, "Color_MESH");
        widget<QComboBox>(dialog, "contour_parameter").setCurrentIndex(1);
        widget<QLineEdit>(dialog, "txtAngle").setText("30");
        widget<QLineEdit>(dialog, "txtX2").setText("75");
    };
    EXPECT_FALSE(options([&](QDialog& dialog, QTableView&) {
        change(dialog);
        press(dialog, "cmdCancel");
    }));
    EXPECT_EQ(key("GRID_APPEARANCE", "ZONES"), 0);
    EXPECT_TRUE(options([&](QDialog& dialog, QTableView&) {
        change(dialog);
        widget<QLineEdit>(dialog, "txtX2").setText("0");
        press(dialog, "cmdOK");
        EXPECT_EQ(widget<QTabWidget>(dialog, "Environment_Tabs").currentIndex(), 1);
        widget<QLineEdit>(dialog, "txtX2").setText("75");
        press(dialog, "cmdOK");
    }));
    leave(base::Answer::no);
    EXPECT_EQ(key("GRID_APPEARANCE", "ZONES"), -1);
    EXPECT_EQ(key("GRID_APPEARANCE", "CONTOURS"), -1);
    EXPECT_EQ(key("COLOR", "MESH"), 0x030201);
    EXPECT_EQ(key("CONTOURS", "DataSource"), 1);
    EXPECT_EQ(desk.model()->project.single("GRIDPOSITION", "ANGLE"), 30);
    EXPECT_FLOAT_EQ(desk.model()->project.single("GRIDPOSITION", "RAD"), 0.52359878F);
    EXPECT_EQ(desk.model()->project.single("DIMENSION", "SHEET_X2"), 75);
}

TEST_F(Environment, levels_go_to_files_and_defaults_come_back) {
    open_slope();
    const auto file = folder.path() / "kept.ctr", other = folder.path() / "other.ctr";
    base::replace_file(other, "no");
    user.expect_file("Save File", file);
    user.expect_file("Open File", other);
    user.expect_message("Open File", other.string() + " is not a contour file!");
    user.expect_file("Open File", file);
    options([&](QDialog& dialog, QTableView& table) {
        type_cell(table, 1, 2, "1.5");
        press(dialog, "cmdSaveLevels");
        press(dialog, "cmdRestore");
        EXPECT_EQ(cell_text(table, 1, 2), "1");
        press(dialog, "cmdLoadLevels");
        EXPECT_EQ(cell_text(table, 1, 2), "1");
        press(dialog, "cmdLoadLevels");
        EXPECT_EQ(cell_text(table, 1, 2), "1.5");
        press(dialog, "cmdCancel");
    });
}

TEST_F(Environment, the_form_of_labels_is_chosen) {
    open_slope();
    user.expect_message("Label Format", "Valid range is 0 to 9");
    options([&](QDialog& dialog, QTableView&) {
        in_dialog([&] { press(dialog, "cmdLabelFormat"); }, "labelFormat",
                  [&](QDialog& form) {
                      EXPECT_EQ(form.windowTitle(), "Label Format");
                      type(form, "txtDecimal", "10");
                      press(form, "cmdOK");
                      EXPECT_EQ(form.focusWidget()->objectName(), "txtDecimal");
                      type(form, "txtDecimal", "1");
                      type(form, "txtSuffix", "a suffix of more than twenty characters");
                      widget<QRadioButton>(form, "optExponential").click();
                      press(form, "cmdOK");
                  });
        press(dialog, "cmdOK");
    });
    const plot::LabelFormat format(desk.model()->project);
    EXPECT_EQ(plot::label_text(format, 12345), "1.2E+04a suffix of more tha");
}

} // namespace
