#include "ui/dialogs/errptnr.h"

#include "report/errorreport.h"
#include "ui/text.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace ui {

namespace {

constexpr const char* dialog_name = "ErrPtnr";

class ErrPtnr final : public QDialog {
public:
    ErrPtnr(QWidget* parent, const report::Fault& fault, report::FailureLog& log,
            base::Interaction& user, const ReportWays& ways)
        : QDialog(parent), fault_(fault), log_(log), user_(user), ways_(ways) {
        setObjectName(dialog_name);
        setWindowTitle(to_qt(report::report_title(log.program())));
        auto* columns = new QHBoxLayout(this);
        auto* left = new QVBoxLayout;
        left->addWidget(description());
        add_comment(*left);
        add_call_stack(*left);
        columns->addLayout(left, 1);
        auto* right = new QVBoxLayout;
        right->addWidget(reactions());
        right->addStretch();
        right->addWidget(ways_box());
        columns->addLayout(right);
    }

    base::Reaction reaction() const { return reaction_; }

private:
    QGroupBox* description() {
        auto* box = new QGroupBox("Error Description:", this);
        box->setObjectName("fraError");
        auto* form = new QFormLayout(box);
        const auto add = [&](const char* caption, const char* name, const std::string& value) {
            auto* label = new QLabel(to_qt(value), box);
            label->setObjectName(name);
            label->setTextFormat(Qt::PlainText);
            label->setWordWrap(true);
            label->setTextInteractionFlags(Qt::TextSelectableByMouse);
            form->addRow(caption, label);
        };
        add("Error-No.:", "lblNumber", std::to_string(fault_.number));
        add("Module:", "lblModule", fault_.module);
        add("Procedure:", "lblProcedure", fault_.procedure);
        add("Line-No.:", "lblLine", std::to_string(fault_.line));
        auto* text = text_field("txtError", 4);
        text->setFixedHeight(text->minimumHeight());
        text->setPlainText(to_qt(fault_.text + " (" + std::to_string(fault_.number) + ")"));
        text->setReadOnly(true);
        text->setAccessibleName("Error Description");
        form->addRow(text);
        return box;
    }

    // Names of files have no blanks to be broken at.
    QPlainTextEdit* text_field(const char* name, int lines) {
        auto* field = new QPlainTextEdit(this);
        field->setObjectName(name);
        field->setTabChangesFocus(true);
        field->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        const int margins = 2 * (field->frameWidth() + int(field->document()->documentMargin()));
        field->setMinimumHeight(lines * field->fontMetrics().lineSpacing() + margins);
        field->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        return field;
    }

    void add_comment(QVBoxLayout& column) {
        comment_ = text_field("txtComment", 7);
        comment_->setPlainText(to_qt(report::advice(log_.program())));
        auto* label = new QLabel("&Comment:", this);
        label->setBuddy(comment_);
        column.addWidget(label);
        column.addWidget(comment_, 1);
    }

    void add_call_stack(QVBoxLayout& column) {
        auto* list = new QListWidget(this);
        list->setObjectName("lstCallStack");
        list->setTabKeyNavigation(false);
        for (const std::string& line : log_.calls().Call_Stack()) {
            list->addItem(to_qt(line));
        }
        list->setMinimumWidth(list->fontMetrics().averageCharWidth() * 70);
        list->scrollToBottom();
        list->setCurrentRow(list->count() - 1);
        auto* label = new QLabel("C&allStack:", this);
        label->setBuddy(list);
        column.addWidget(label);
        column.addWidget(list, 2);
    }

    QGroupBox* reactions() {
        struct Choice {
            const char* caption;
            base::Reaction reaction;
        };
        static constexpr Choice choices[] = {{"&Retry", base::Reaction::retry},
                                             {"Resume &Next", base::Reaction::next},
                                             {"Leave &Procedure", base::Reaction::leave},
                                             {"&End TD", base::Reaction::end}};
        auto* box = new QGroupBox("How to go on with the program...", this);
        auto* column = new QVBoxLayout(box);
        for (const Choice& choice : choices) {
            QPushButton* button = add_button(*column, "cmdContinue", choice.caption);
            button->setAutoDefault(true);
            connect(button, &QPushButton::clicked, this, [this, reaction = choice.reaction] {
                reaction_ = reaction;
                accept();
            });
        }
        auto* retry = qobject_cast<QPushButton*>(column->itemAt(0)->widget());
        retry->setDefault(true);
        retry->setFocus();
        return box;
    }

    QGroupBox* ways_box() {
        auto* box = new QGroupBox("Error Report ...", this);
        auto* column = new QVBoxLayout(box);
        const report::ProgInfo& program = log_.program();
        QPushButton* www = add_button(*column, "cmdProtocol", "&WWW");
        www->setEnabled(!program.web_page.empty());
        connect(www, &QPushButton::clicked, this,
                [this] { ways_.open(QUrl(to_qt(log_.program().web_page))); });
        connect(add_button(*column, "cmdProtocol", "&Save"), &QPushButton::clicked, this,
                [this] { log_.save(fault_, comment(), user_); });
        QPushButton* mail = add_button(*column, "cmdProtocol", "&E-Mail");
        mail->setEnabled(!program.support_address.empty());
        connect(mail, &QPushButton::clicked, this, [this] { send(); });
        connect(add_button(*column, "cmdProtocol", "&Print"), &QPushButton::clicked, this,
                [this] { ways_.print(to_qt(report_text()), this); });
        return box;
    }

    // The buttons of a frame have one name and count from 0.
    QPushButton* add_button(QVBoxLayout& column, const char* name, const char* caption) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QString("%1(%2)").arg(name).arg(column.count()));
        button->setAutoDefault(false);
        column.addWidget(button);
        return button;
    }

    void send() {
        user_.message(base::Icon::information, base::desk_title, report::mail_text());
        QApplication::clipboard()->setText(to_qt(report_text()));
        ways_.open(QUrl(to_qt(report::mail_address(log_.program()))));
    }

    std::string comment() const { return from_qt(comment_->toPlainText()); }
    std::string report_text() const { return log_.text(fault_, comment()); }

    const report::Fault& fault_;
    report::FailureLog& log_;
    base::Interaction& user_;
    const ReportWays& ways_;
    QPlainTextEdit* comment_ = nullptr;
    base::Reaction reaction_ = base::Reaction::leave;
};

bool is_open() {
    return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* window) {
        return window->isVisible() && window->objectName() == dialog_name;
    });
}

void print_text(const QString& text, QWidget* parent) {
    QPrinter printer;
    if (QPrintDialog dialog(&printer, parent); dialog.exec() == QDialog::Accepted) {
        QTextDocument(text).print(&printer);
    }
}

} // namespace

ReportWays system_ways() {
    return {print_text, [](const QUrl& address) { QDesktopServices::openUrl(address); }};
}

base::Reaction show_error_report(QWidget* parent, const base::Failure& failure,
                                 report::FailureLog& log, int number, base::Interaction& user,
                                 const ReportWays& ways) {
    log.append(failure, number);
    if (is_open()) {
        return base::Reaction::leave;
    }
    user.beep();
    const report::Fault fault = log.fault(failure, number);
    QWidget* above = QApplication::activeModalWidget();
    ErrPtnr dialog(above ? above : parent, fault, log, user, ways);
    dialog.exec();
    return dialog.reaction();
}

} // namespace ui
