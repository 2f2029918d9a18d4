#include "editordialogfixture.h"

#include "base/paths.h"
#include "base/textfile.h"

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QPrinter>

namespace {

using support::EditorDialogFixture;

class PlotDialog : public EditorDialogFixture {
protected:
    void save_plot(const std::function<void(QDialog&, QComboBox&)>& in_plot) {
        in_dialog([&] { ui::save_plot_as(desk, *desk.model(), worksheet.get(), view, &window); },
                  "Save_Worksheet_Plot",
                  [&](QDialog& dialog) {
                      EXPECT_EQ(dialog.windowTitle(), "Save Plot As");
                      in_plot(dialog, widget<QComboBox>(dialog, "Format_List"));
                  });
    }
    std::string bytes(const char* name) const { return base::read_bytes(folder.path() / name); }
};

TEST_F(PlotDialog, the_format_changes_the_extension_and_the_extension_the_format) {
    make_model(3, 2);
    const auto file = (folder.path() / "m.dxf").string();
    save_plot([&](QDialog& dialog, QComboBox& formats) {
        EXPECT_EQ(text_of(dialog, "txtFile"), file);
        formats.setCurrentText("HPGL");
        EXPECT_EQ(text_of(dialog, "txtFile"), (folder.path() / "m.pgl").string());
        type(dialog, "txtFile", "x.SVG");
        EXPECT_EQ(formats.currentText(), "Scalable Vector Graphics (SVG)");
        formats.setCurrentText("Windows bitmap (BMP)");
        EXPECT_EQ(text_of(dialog, "txtFile"), "x.bmp");
        press(dialog, "cmdCancel");
    });
}

TEST_F(PlotDialog, every_format_is_written_whole) {
    open_worksheet(1402);
    const char* const signs[][3] = {{"m.dxf", "  0\r\nSECTION\r\n", "ENDSEC\r\n  0\r\nEOF\r\n"},
                                    {"m.pgl", "IN;VS10.0;SP1;\r\n", "PU;SP0;"},
                                    {"m.bmp", "BM", ""},
                                    {"m.png", "\x89PNG", ""},
                                    {"m.svg", "<?xml", "</svg>\n"},
                                    {"m.pdf", "%PDF", "%%EOF\n"}};
    int format = 0;
    for (const auto& [name, head, tail] : signs) {
        save_plot([&](QDialog& dialog, QComboBox& formats) {
            formats.setCurrentIndex(format);
            press(dialog, "cmdOK");
        });
        EXPECT_TRUE(bytes(name).starts_with(head)) << name;
        EXPECT_TRUE(bytes(name).ends_with(tail)) << name;
        ++format;
    }
    save_plot([&](QDialog& dialog, QComboBox&) {
        EXPECT_TRUE(text_of(dialog, "txtFile").ends_with("m.pdf")) << "the last one is offered";
        press(dialog, "cmdCancel");
    });
}

TEST_F(PlotDialog, cells_have_the_colours_that_the_worksheet_shows) {
    open_worksheet(5);
    const float fixed_head = -1, inactive = 0;
    worksheet->set_cell(2, 1, {&fixed_head, 1});
    worksheet->set_cell(3, 2, {&inactive, 1});
    const core::Project& project = model->project;
    auto picture =
        std::make_shared<ui::WorksheetPicture>(ui::mesh_picture(project, worksheet->grid()));
    ui::colour_cells(*picture, project, {5, 1, worksheet->array(1), {}});
    view.set_picture(picture);
    save_plot([&](QDialog& dialog, QComboBox& formats) {
        formats.setCurrentText("HPGL");
        press(dialog, "cmdOK");
    });
    EXPECT_EQ(bytes("m.pgl").substr(16, 79),
              "FT 1;IP 0,0,10000,6667;\r\n"
              "SP2;PU3333,6667;RA6667,3333;SP8;PU6667,3333;RA10000,0;");
}

TEST_F(PlotDialog, bands_without_colours_have_those_of_a_scale) {
    open_worksheet(10);
    const float head = 5;
    worksheet->set_cell(2, 1, {&head, 1});
    EXPECT_TRUE(desk.change("test()", "test", [](app::Workspace& changed) {
        for (const char* key : {"CONTOURS", "Fill CONTOURS"}) {
            changed.project.set_integer("GRID_APPEARANCE", key, -1);
        }
        return true;
    }));
    save_plot([&](QDialog& dialog, QComboBox& formats) {
        formats.setCurrentText("HPGL");
        press(dialog, "cmdOK");
    });
    EXPECT_NE(bytes("m.pgl").find("SP2;"), std::string::npos) << "the bluish low end";
    EXPECT_NE(bytes("m.pgl").find("SP7;"), std::string::npos) << "the yellow high end";
}

TEST_F(PlotDialog, a_file_is_overwritten_behind_a_question_and_a_failure_is_shown) {
    make_model(3, 2);
    const auto file = folder.path() / "m.dxf", taken = folder.path() / "folder.dxf";
    base::replace_file(file, "old");
    std::filesystem::create_directory(taken);
    const std::string question = "File exist '" + file.string() + "' overwrite ?";
    user.expect_message("Save Plot As", "Please enter the name of a file.");
    user.expect_question("Save Plot As", question, base::Answer::no);
    user.expect_failure("", base::Reaction::leave);
    user.expect_file("Save Plot As", file);
    user.expect_question("Save Plot As", question, base::Answer::yes);
    save_plot([&](QDialog& dialog, QComboBox&) {
        type(dialog, "txtFile", "");
        press(dialog, "cmdOK");
        type(dialog, "txtFile", "m.dxf");
        press(dialog, "cmdOK");
        EXPECT_EQ(bytes("m.dxf"), "old");
        type(dialog, "txtFile", taken.c_str());
        press(dialog, "cmdOK");
        press(dialog, "cmdBrowse");
        press(dialog, "cmdOK");
    });
    EXPECT_NE(bytes("m.dxf"), "old");
}

TEST_F(PlotDialog, the_picture_goes_to_the_clipboard_and_to_paper) {
    make_model(3, 2);
    ui::copy_picture(view);
    EXPECT_FALSE(QApplication::clipboard()->image().isNull());
    const auto paper = folder.path() / "paper.pdf";
    desk.choosers().printer = [&](QWidget*, QPrinter& printer) {
        printer.setOutputFileName(QString::fromStdString(paper.string()));
        return true;
    };
    ui::print_plot(desk, *desk.model(), nullptr, view, &window);
    EXPECT_TRUE(bytes("paper.pdf").starts_with("%PDF"));
    desk.choosers().printer = [](QWidget*, QPrinter&) { return false; };
    ui::print_plot(desk, *desk.model(), nullptr, view, &window);
}

} // namespace
