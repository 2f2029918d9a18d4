#include "deskfixture.h"

#include "grid/gridform.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QKeyEvent>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

namespace support {

namespace {

ui::Folders folders_in(const TempFolder& folder) {
    return {folder.path() / "program", folder.path() / "settings"};
}

QString name_of(std::string_view name) {
    return QString::fromUtf8(name.data(), qsizetype(name.size()));
}

} // namespace

DeskFixture::DeskFixture() : desk(user, folders_in(folder)), window(desk) {
    window.resize(1000, 800);
    window.show();
}

DeskFixture::~DeskFixture() = default;

void DeskFixture::make_model(int NX, int NY, int NZ) {
    ASSERT_TRUE(desk.create(model_path()));
    if (NX == 0) {
        return;
    }
    change([&](app::Workspace& model) {
        grid::Grid_Number form;
        form.load(model.project, model.files);
        form.set("txtLayers", std::to_string(NZ));
        form.set("txtColumns", std::to_string(NX));
        form.set("txtColumnSize", "10");
        form.set("txtRows", std::to_string(NY));
        form.set("txtRowSize", "10");
        form.save(model.project, model.files);
    });
}

void DeskFixture::change(const std::function<void(app::Workspace&)>& work) {
    ASSERT_TRUE(desk.change("test()", "test", [&](app::Workspace& model) {
        work(model);
        return true;
    }));
}

void DeskFixture::in_dialog(std::string_view command, std::string_view dialog,
                            const std::function<void(QDialog&)>& in_dialog) {
    QAction* action = window.findChild<QAction*>(name_of(command));
    ASSERT_NE(action, nullptr) << command;
    ASSERT_TRUE(action->isEnabled()) << command;
    this->in_dialog([action] { action->trigger(); }, dialog, in_dialog);
}

void DeskFixture::in_dialog(const std::function<void()>& open, std::string_view dialog,
                            const std::function<void(QDialog&)>& in_dialog) {
    bool came = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal) {
            return;
        }
        look.stop();
        came = true;
        QDialog* found = qobject_cast<QDialog*>(modal);
        if (!found || found->objectName() != name_of(dialog)) {
            ADD_FAILURE() << "expected the dialog " << dialog << ", there came "
                          << modal->objectName().toStdString() << ": "
                          << modal->windowTitle().toStdString();
            modal->close();
            return;
        }
        found->activateWindow(); // the focus moves only in the window that is in front
        QApplication::processEvents();
        try {
            in_dialog(*found);
        } catch (const std::exception& failure) {
            ADD_FAILURE() << dialog << ": " << failure.what();
        }
        if (QApplication::activeModalWidget() == found) {
            ADD_FAILURE() << dialog << " is still open";
            found->reject();
        }
    });
    look.start(0);
    open();
    EXPECT_TRUE(came) << "no dialog " << dialog;
}

void type_into(QWidget& field, const std::string& text) {
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    for (const QChar letter : QString::fromStdString(text)) {
        if (letter.unicode() < 0x80) {
            QTest::keyClick(&field, letter.toLatin1());
        } else { // QTest knows the keys of ASCII alone
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
            QApplication::sendEvent(&field, &press);
        }
    }
}

void click(QWidget& button) {
    const bool box = qobject_cast<QCheckBox*>(&button) || qobject_cast<QRadioButton*>(&button);
    const int middle = button.height() / 2;
    const QPoint mark(middle, middle); // behind a short text a click has no effect
    QTest::mouseClick(&button, Qt::LeftButton, {}, box ? mark : button.rect().center());
}

} // namespace support
