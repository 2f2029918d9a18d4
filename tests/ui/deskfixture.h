// The desktop program in a temporary folder, in front of a user who knows what to answer.
#pragma once

#include "support/scripteduser.h"
#include "support/tempfolder.h"
#include "ui/desk.h"
#include "ui/mainwindow.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

class QDialog;

namespace support {

class DeskFixture : public testing::Test {
protected:
    DeskFixture();
    ~DeskFixture() override;

    // A new model m.td1 in the folder, open. With numbers: with a mesh of that size, cells of 10 m.
    void make_model(int NX = 0, int NY = 0, int NZ = 1);
    // Changes the model as a command would.
    void change(const std::function<void(app::Workspace&)>& work);
    std::filesystem::path model_path() const { return folder.path() / "m.td1"; }

    // Triggers the menu item; `in_dialog` gets the dialog of that object name that it opens, and
    // has to end it. The test fails when another window comes, or none.
    void in_dialog(std::string_view command, std::string_view dialog,
                   const std::function<void(QDialog&)>& in_dialog);
    // The same for whatever opens a dialog.
    void in_dialog(const std::function<void()>& open, std::string_view dialog,
                   const std::function<void(QDialog&)>& in_dialog);

    // A widget of a dialog or window by its object name; the test fails when it has none.
    template <typename Widget>
    static Widget& widget(QObject& window, std::string_view name) {
        Widget* found = window.findChild<Widget*>(QString::fromStdString(std::string(name)));
        if (!found) {
            throw std::runtime_error("no widget named " + std::string(name));
        }
        return *found;
    }

    // Declared in the order in which they are needed.
    TempFolder folder;
    ScriptedUser user;
    ui::Desk desk;
    ui::MainWindow window;
};

// Types into a line edit or a spin box as a person does: what was there is replaced.
void type_into(QWidget& field, const std::string& text);
// Presses a push button or ticks a box by a click.
void click(QWidget& button);

} // namespace support
