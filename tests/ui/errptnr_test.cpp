// The dialog of a failure.
#include "deskfixture.h"

#include "report/errorreport.h"
#include "ui/dialogs/errptnr.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QUrl>

namespace {

namespace fs = std::filesystem;
using support::DeskFixture;

class ErrPtnr : public DeskFixture {
protected:
    ErrPtnr() {
        log.set_folders({folder.path() / "reports"});
        fs::create_directories(folder.path() / "reports");
        log.calls().CallStack("[Grid] first()");
        log.calls().CallStack("[Typ] cmdOK_Click()");
    }

    base::Reaction show(const std::function<void(QDialog&)>& in_report) {
        base::Reaction reaction{};
        in_dialog(
            [&] {
                reaction =
                    ui::show_error_report(&window, failure, log, 5, user,
                                          {[&](const QString& text, QWidget*) { printed = text; },
                                           [&](const QUrl& url) { opened = url; }});
            },
            "ErrPtnr", in_report);
        return reaction;
    }
    static QPushButton& button(QDialog& dialog, const char* name) {
        return widget<QPushButton>(dialog, name);
    }
    std::string reports() { return folder.read("reports/tervexdesk.EPT"); }

    const base::Failure failure{"cannot be written: Is a directory", "/model/m.typ",
                                "[Typ] cmdOK_Click()"};
    report::FailureLog log{
        {"Tervex Desk", "tervexdesk", {1, 2, 3}, "help@example.org", "https://example.org/td"},
        [] { return std::chrono::system_clock::now(); }};
    QString printed;
    QUrl opened;
};

TEST_F(ErrPtnr, each_button_answers_and_escape_leaves_the_procedure) {
    struct Choice {
        const char* button;
        const char* caption;
        base::Reaction reaction;
    };
    for (const Choice& choice :
         {Choice{"cmdContinue(0)", "&Retry", base::Reaction::retry},
          Choice{"cmdContinue(1)", "Resume &Next", base::Reaction::next},
          Choice{"cmdContinue(2)", "Leave &Procedure", base::Reaction::leave},
          Choice{"cmdContinue(3)", "&End TD", base::Reaction::end}}) {
        EXPECT_EQ(show([&](QDialog& dialog) {
                      EXPECT_EQ(button(dialog, choice.button).text(), choice.caption);
                      support::click(button(dialog, choice.button));
                  }),
                  choice.reaction);
    }
    EXPECT_EQ(show([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }),
              base::Reaction::leave);
    EXPECT_EQ(show([](QDialog& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); }),
              base::Reaction::retry);
    EXPECT_EQ(user.beeps(), 6);
}

TEST_F(ErrPtnr, it_shows_what_failed_where_and_the_calls) {
    show([&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Tervex Desk  V1.2.3 - Error Report");
        EXPECT_EQ(widget<QLabel>(dialog, "lblNumber").text(), "5");
        EXPECT_EQ(widget<QLabel>(dialog, "lblModule").text(), "Typ");
        EXPECT_EQ(widget<QLabel>(dialog, "lblProcedure").text(), "cmdOK_Click");
        EXPECT_EQ(widget<QPlainTextEdit>(dialog, "txtError").toPlainText(),
                  "cannot be written: Is a directory (/model/m.typ) (5)");
        EXPECT_TRUE(widget<QPlainTextEdit>(dialog, "txtComment")
                        .toPlainText()
                        .startsWith("Tervex Desk - Application error! \n"));
        auto& calls = widget<QListWidget>(dialog, "lstCallStack");
        EXPECT_EQ(calls.count(), 2);
        EXPECT_TRUE(calls.currentItem()->text().endsWith("[Typ] cmdOK_Click()"));
        dialog.reject();
    });
    EXPECT_NE(reports().find("Error-No.:\t5\r\n"), std::string::npos);
}

TEST_F(ErrPtnr, the_report_is_saved_printed_and_mailed_with_the_comment) {
    const std::string file = (folder.path() / "reports/tervexdesk.ERR").string();
    const std::string written = "The error protocol has been written in file '" + file + "' !";
    show([&](QDialog& dialog) {
        widget<QPlainTextEdit>(dialog, "txtComment").setPlainText("what I did");
        user.expect_message("Tervex Desk", written);
        support::click(button(dialog, "cmdProtocol(1)"));
        user.expect_question("Tervex Desk", "File exist '" + file + "' overwrite ?",
                             base::Answer::no);
        support::click(button(dialog, "cmdProtocol(1)"));
        support::click(button(dialog, "cmdProtocol(3)"));
        user.expect_message("Tervex Desk", report::mail_text());
        support::click(button(dialog, "cmdProtocol(2)"));
        EXPECT_EQ(opened.toString(), "mailto:help@example.org");
        support::click(button(dialog, "cmdProtocol(0)"));
        EXPECT_EQ(opened.toString(), "https://example.org/td");
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    EXPECT_NE(folder.read("reports/tervexdesk.ERR").find("\r\nwhat I did\r\n"), std::string::npos);
    EXPECT_TRUE(printed.contains("what I did"));
    EXPECT_TRUE(QApplication::clipboard()->text().contains("what I did"));
}

TEST_F(ErrPtnr, without_addresses_web_and_mail_are_grey) {
    report::FailureLog plain({"Tervex Desk", "tervexdesk", {1, 2, 3}},
                             [] { return std::chrono::system_clock::now(); });
    in_dialog([&] { ui::show_error_report(&window, failure, plain, 5, user); }, "ErrPtnr",
              [](QDialog& dialog) {
                  EXPECT_FALSE(button(dialog, "cmdProtocol(0)").isEnabled());
                  EXPECT_FALSE(button(dialog, "cmdProtocol(2)").isEnabled());
                  support::click(button(dialog, "cmdProtocol(1)")); // nowhere to save to
                  dialog.reject();
              });
}

TEST_F(ErrPtnr, a_failure_while_it_is_open_only_grows_the_file) {
    show([&](QDialog& dialog) {
        const std::size_t before = reports().size();
        EXPECT_EQ(ui::show_error_report(&window, failure, log, 6, user), base::Reaction::leave);
        EXPECT_GT(reports().size(), before);
        dialog.reject();
    });
    EXPECT_EQ(user.beeps(), 1);
}

} // namespace
