// "Check model" and "Model Information".
#include "completemodel.h"

#include "input/inputfile.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

namespace {

using support::CompleteModelFixture;

class Check : public CompleteModelFixture {
protected:
    void in_check(const std::function<void(QDialog&)>& check) {
        in_dialog([this] { window.run_command("check_model"); }, "CheckModel", check);
    }
    static QTableWidget& list(QDialog& dialog) { return widget<QTableWidget>(dialog, "lstGaps"); }
    static std::vector<std::string> numbers(QDialog& dialog) {
        std::vector<std::string> numbers;
        for (int row = 0; row < list(dialog).rowCount(); ++row) {
            numbers.push_back(list(dialog).item(row, 0)->text().toStdString());
        }
        return numbers;
    }
    static std::string state(QDialog& dialog) {
        return widget<QLabel>(dialog, "lblState").text().toStdString();
    }
    static bool is_complete(QDialog& dialog) {
        return state(dialog) == "The model is complete. Its input file can be created." &&
               widget<QPushButton>(dialog, "cmdCreate").isEnabled() && list(dialog).isHidden();
    }
};

TEST_F(Check, every_gap_is_listed_with_its_text_and_menu) {
    make_model(3, 2);
    in_check([&](QDialog& dialog) {
        EXPECT_EQ(numbers(dialog), (std::vector<std::string>{"6", "8", "9", "10", "11"}));
        EXPECT_EQ(list(dialog).item(0, 1)->text(),
                  "Define the Property Zones first in: |Grid|Property Zones.");
        EXPECT_EQ(list(dialog).item(0, 2)->text(), "Grid > Property Zones");
        EXPECT_EQ(state(dialog), "The model is not complete. Missing or wrong: 5. "
                                 "Each entry can be mended where its menu leads to.");
        EXPECT_FALSE(widget<QPushButton>(dialog, "cmdCreate").isEnabled());
        dialog.reject();
    });
}

// Each gap opens a window of this program, or says why it does not.
TEST_F(Check, what_cannot_be_mended_says_so) {
    make_complete_model();
    change([](app::Workspace& model) { model.project.flags.set(9, 7, 1); });
    in_check([&](QDialog& dialog) {
        EXPECT_EQ(numbers(dialog), (std::vector<std::string>{"14", "32", "33"}));
        EXPECT_NE(list(dialog).cellWidget(0, 3)->findChild<QPushButton*>(), nullptr);
        const int beeps = user.beeps();
        list(dialog).selectRow(2);
        QTest::keyClick(&list(dialog), Qt::Key_Return);
        EXPECT_EQ(user.beeps(), beeps + 1);
        EXPECT_EQ(list(dialog).item(2, 3)->text(), "no window for it");
        dialog.reject();
    });
}

TEST_F(Check, the_list_is_renewed_by_F5_and_a_complete_model_can_be_created) {
    make_complete_model();
    change([](app::Workspace& model) { model.project.flags.set(9, 1, 0); });
    user.expect_question("Create TERVEX Input File", input::run_question, base::Answer::no);
    in_check([&](QDialog& dialog) {
        EXPECT_EQ(numbers(dialog), std::vector<std::string>{"9"});
        change([](app::Workspace& model) { model.project.flags.mark_defined(9, 1); });
        QTest::keyClick(&dialog, Qt::Key_F5);
        EXPECT_TRUE(is_complete(dialog));
        support::click(widget<QPushButton>(dialog, "cmdCreate"));
    });
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "m.nml"));
}

TEST_F(Check, an_array_that_cannot_be_read_is_told) {
    make_complete_model();
    folder.write("m.ibd", "short");
    user.expect_failure("tables of periods were expected", base::Reaction::leave);
    in_check([&](QDialog& dialog) {
        EXPECT_EQ(state(dialog), "The model could not be checked.");
        EXPECT_FALSE(widget<QPushButton>(dialog, "cmdCreate").isEnabled());
        dialog.reject();
    });
}

TEST_F(Check, it_needs_a_model_and_a_closed_editor) {
    user.expect_message("Message", "Create or Open a TD-model first.");
    window.run_command("check_model");
    make_model(3, 2);
    desk.set_editor_open(true);
    user.expect_message("Check model", "Leave the editor first.");
    window.run_command("check_model");
    desk.set_editor_open(false);
}

TEST_F(Check, the_model_page_tells_size_periods_and_files_and_leads_to_the_check) {
    make_complete_model();
    QString page;
    in_dialog("file_model_information", "ModelInformation", [&](QDialog& dialog) {
        page = widget<QTextBrowser>(dialog, "txtPage").toPlainText();
        support::click(widget<QPushButton>(dialog, "cmdCopy"));
        support::type_into(widget<QLineEdit>(dialog, "txtTitle"), "Nothing");
        dialog.reject();
    });
    EXPECT_FALSE(desk.model()->project.title().ends_with("Nothing"));
    EXPECT_TRUE(page.contains("horizontal"));
    const QString copied = QApplication::clipboard()->text();
    for (const char* line :
         {"Columns\t3, 10 m wide, together 30 m\n", "Rows\t2, 10 m high, together 20 m\n",
          "Cells\t6\n", "Flow\tsimulated\n", "Heat\toff\n", "Active periods\t1\n",
          "Simulation time\t10 seconds\n", "Wells\t0\n", "Type\tSettings, Coupling, "}) {
        EXPECT_TRUE(copied.contains(line)) << line << copied.toStdString();
    }
    EXPECT_TRUE(copied.contains("m.td1\t"));

    in_dialog("file_model_information", "ModelInformation", [&](QDialog& dialog) {
        QTimer::singleShot(0, [&] { // behind the end of this dialog comes the other one
            auto* check = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(check, nullptr);
            EXPECT_EQ(check->objectName(), "CheckModel");
            check->reject();
        });
        support::click(widget<QPushButton>(dialog, "cmdCheck"));
    });
}

TEST_F(Check, a_part_of_the_page_that_cannot_be_read_is_told_and_left_out) {
    make_complete_model();
    folder.write("m.trn", "1");
    user.expect_failure("ends", base::Reaction::next);
    in_dialog("file_model_information", "ModelInformation", [&](QDialog& dialog) {
        const QString page = widget<QTextBrowser>(dialog, "txtPage").toPlainText();
        EXPECT_FALSE(page.contains("Active periods"));
        EXPECT_TRUE(page.contains("Wells"));
        dialog.reject();
    });
}

} // namespace
