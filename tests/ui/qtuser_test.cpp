#include "deskfixture.h"
#include "ui/qtuser.h"
#include "ui/statuspanes.h"
#include "ui/toolbar.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// The program's own user in front of a window; boxes are looked at while they are open.
class QtUserTest : public testing::Test {
protected:
    QtUserTest() : desk(user, {}), window(desk) {
        user.set_window(&window);
        window.show();
    }

    // Runs `show`; `look` gets the box that it opens and ends it.
    void in_box(const std::function<void()>& show, const std::function<void(QMessageBox&)>& look) {
        QTimer timer;
        bool came = false;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                timer.stop();
                came = true;
                look(*box);
            }
        });
        timer.start(0);
        show();
        EXPECT_TRUE(came);
    }

    base::Answer answer(base::Buttons buttons, Qt::Key key) {
        base::Answer given{};
        in_box([&] { given = user.ask("Title", "Text", buttons); },
               [&](QMessageBox& box) { QTest::keyClick(&box, key); });
        return given;
    }

    ui::QtUser user;
    ui::Desk desk;
    ui::MainWindow window;
};

TEST_F(QtUserTest, enter_gives_the_first_answer_but_for_risky_questions) {
    EXPECT_EQ(answer(base::Buttons::yes_no, Qt::Key_Return), base::Answer::yes);
    EXPECT_EQ(answer(base::Buttons::yes_no_cancel, Qt::Key_Return), base::Answer::yes);
    EXPECT_EQ(answer(base::Buttons::ok_cancel, Qt::Key_Return), base::Answer::ok);
    EXPECT_EQ(answer(base::Buttons::yes_no_risky, Qt::Key_Return), base::Answer::no);
}

TEST_F(QtUserTest, escape_is_cancel_and_no_where_there_is_none) {
    EXPECT_EQ(answer(base::Buttons::yes_no, Qt::Key_Escape), base::Answer::no);
    EXPECT_EQ(answer(base::Buttons::yes_no_risky, Qt::Key_Escape), base::Answer::no);
    EXPECT_EQ(answer(base::Buttons::yes_no_cancel, Qt::Key_Escape), base::Answer::cancel);
    EXPECT_EQ(answer(base::Buttons::ok_cancel, Qt::Key_Escape), base::Answer::cancel);
}

TEST_F(QtUserTest, a_box_has_title_text_and_icon) {
    in_box([&] { user.message(base::Icon::critical, "Message", "a <b>file</b>"); },
           [&](QMessageBox& box) {
               EXPECT_EQ(box.windowTitle(), "Message");
               EXPECT_EQ(box.text(), "a <b>file</b>");
               EXPECT_EQ(box.textFormat(), Qt::PlainText);
               EXPECT_EQ(box.icon(), QMessageBox::Critical);
               box.accept();
           });
}

TEST_F(QtUserTest, filters_become_those_of_the_toolkit) {
    const QStringList filters =
        ui::qt_filters("TD models (*.td1)|*.td1|BD models (*.bd5)|*.bd5|All files|*.*");
    EXPECT_EQ(filters, (QStringList{"TD models (*.td1)", "BD models (*.bd5)", "All files (*.*)"}));
    EXPECT_EQ(ui::suffix_of(filters[0]), "td1");
    EXPECT_EQ(ui::suffix_of(filters[2]), "");
}

TEST_F(QtUserTest, a_name_without_ending_gets_that_of_the_filter) {
    support::TempFolder folder;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            timer.stop();
            EXPECT_EQ(dialog->windowTitle(), "New Model");
            dialog->selectFile(QString::fromStdString((folder.path() / "new").string()));
            static_cast<QDialog*>(dialog)
                ->findChild<QDialogButtonBox*>()
                ->button(QDialogButtonBox::Save)
                ->click();
        }
    });
    timer.start(0);
    const auto path =
        user.choose_file(base::FileChoice::save, "New Model", "TD models (*.td1)|*.td1", "");
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, folder.path() / "new.td1");
}

TEST_F(QtUserTest, escape_stops_a_long_operation_and_the_mouse_is_dead) {
    auto& meter = *window.findChild<QProgressBar*>("pane6");
    EXPECT_FALSE(meter.isVisible());
    QSignalSpy opened(window.tools().action("open_model"), &QAction::triggered);
    QWidget* button = window.tools().widgetForAction(window.tools().action("open_model"));
    const auto post = [&](QEvent::Type type) {
        QCoreApplication::postEvent(
            button, new QMouseEvent(type, {3, 3}, button->mapToGlobal(QPointF(3, 3)),
                                    Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    };
    user.status("Working");
    post(QEvent::MouseButtonPress);
    post(QEvent::MouseButtonRelease);
    QTest::qSleep(30);
    EXPECT_FALSE(user.show_meter(40));
    EXPECT_TRUE(meter.isVisible());
    EXPECT_EQ(meter.value(), 40);
    EXPECT_EQ(window.findChild<QLabel*>("pane4")->text(), "Working");
    QCoreApplication::postEvent(&window,
                                new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a"));
    QTest::qSleep(30);
    EXPECT_FALSE(user.show_meter(50));
    QCoreApplication::postEvent(&window,
                                new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
    QTest::qSleep(30);
    EXPECT_TRUE(user.show_meter(60));
    EXPECT_EQ(opened.count(), 0);

    QTest::qWait(60); // the operation is over
    EXPECT_FALSE(meter.isVisible());
    EXPECT_EQ(window.findChild<QLabel*>("pane4")->text(), "");
    EXPECT_FALSE(user.show_meter(10)); // the next one begins anew
}

TEST_F(QtUserTest, the_hourglass_is_counted) {
    user.busy(true);
    user.busy(true);
    user.busy(false);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    user.busy(false);
    user.busy(false);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

} // namespace
