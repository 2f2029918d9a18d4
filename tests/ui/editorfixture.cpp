#include "editorfixture.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <cstring>

namespace support {

void EditorFixture::open(std::string_view command) {
    window.run_command(command);
    ASSERT_TRUE(editor().is_open()) << command;
}

void EditorFixture::leave(base::Answer answer, const std::string& caption) {
    user.expect_question(caption, "Save changes to " + caption + "?", answer);
    EXPECT_EQ(editor().leave(), answer != base::Answer::cancel);
}

QAction& EditorFixture::action(std::string_view name) {
    return widget<QAction>(window, name);
}

void EditorFixture::tool(const char* key) {
    QAction& tool = action(std::string("tool_") + key);
    ASSERT_TRUE(tool.isEnabled()) << key;
    tool.trigger();
}

void EditorFixture::press(QPoint pixel, Qt::KeyboardModifiers modifiers) {
    QTest::mousePress(view().viewport(), Qt::LeftButton, modifiers, pixel);
}

void EditorFixture::move_to(QPoint pixel) {
    QMouseEvent event(QEvent::MouseMove, pixel, view().viewport()->mapToGlobal(pixel), Qt::NoButton,
                      Qt::LeftButton, {});
    QApplication::sendEvent(view().viewport(), &event);
}

void EditorFixture::release(QPoint pixel) {
    QTest::mouseRelease(view().viewport(), Qt::LeftButton, {}, pixel);
}

void EditorFixture::click(QPoint pixel, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(view().viewport(), button, modifiers, pixel);
}

void EditorFixture::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&view(), key, modifiers);
}

void EditorFixture::type_values(const std::function<void()>& open,
                                const std::vector<std::string>& texts, const char* button,
                                const char* dialog) {
    in_dialog(open, dialog, [&](QDialog& shown) {
        for (std::size_t k = 0; k < texts.size(); ++k) {
            type_into(widget<QLineEdit>(shown, "Value_" + std::to_string(k + 1)), texts[k]);
        }
        widget<QPushButton>(shown, button).click();
    });
}

void EditorFixture::set_cell(int column, int row, const std::string& text) {
    type_values([&] { click(cell(column, row)); }, {text});
}

std::vector<float> EditorFixture::file_values(const char* extension, int layer) const {
    const std::string bytes = folder.read("m" + std::string(extension));
    const auto* model = desk.model();
    const auto cells = static_cast<std::size_t>(model->project.NX() * model->project.NY());
    std::vector<float> values(cells);
    const std::size_t first = 4000 + static_cast<std::size_t>(layer - 1) * cells * sizeof(float);
    if (bytes.size() < first + cells * sizeof(float)) {
        ADD_FAILURE() << extension << " is too short";
        return values;
    }
    std::memcpy(values.data(), bytes.data() + first, cells * sizeof(float));
    return values;
}

std::string EditorFixture::pane(int number) {
    return widget<QLabel>(window, "pane" + std::to_string(number)).text().toStdString();
}

std::map<std::string, std::string> EditorFixture::all_files() const {
    std::map<std::string, std::string> files;
    for (const std::string& name : folder.names()) {
        if (std::filesystem::is_regular_file(folder.path() / name)) {
            files[name] = folder.read(name);
        }
    }
    return files;
}

std::vector<std::string> EditorFixture::names_with(const std::string& part) const {
    std::vector<std::string> found;
    for (const std::string& name : folder.names()) {
        if (name.find(part) != std::string::npos) {
            found.push_back(name);
        }
    }
    return found;
}

} // namespace support
