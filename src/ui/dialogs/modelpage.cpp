#include "ui/dialogs/modelpage.h"

#include "app/modelinformation.h"
#include "app/workspace.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/dialogs/checkmodel.h"
#include "ui/mainwindow.h"
#include "ui/text.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <optional>
#include <string>
#include <vector>

namespace ui {

namespace {

using Sections = std::vector<app::InformationSection>;

// Names of files have no blanks to be broken at: a line may break behind each folder.
QString escaped(const std::string& text) {
    return to_qt(text).toHtmlEscaped().replace("/", "/<wbr>");
}

QString html_of(const Sections& sections) {
    QString html;
    for (const app::InformationSection& section : sections) {
        html += "<h3>" + escaped(section.title) + "</h3><table width=\"100%\" cellspacing=\"2\">";
        for (const auto& row : section.rows) {
            html += QString("<tr><td width=\"30%\">%1</td><td>%2</td></tr>")
                        .arg(escaped(row.caption), escaped(row.value));
        }
        html += "</table>";
    }
    return html;
}

// For spreadsheets and mails: caption, TAB, value.
QString text_of(const Sections& sections) {
    QString text;
    for (const app::InformationSection& section : sections) {
        text += to_qt(section.title) + "\n";
        for (const auto& row : section.rows) {
            text += to_qt(row.caption) + "\t" + to_qt(row.value) + "\n";
        }
        text += "\n";
    }
    return text;
}

class ModelInformation final : public QDialog {
public:
    ModelInformation(QWidget* parent, const Sections& sections, const std::string& title)
        : QDialog(parent), title_(new QLineEdit(to_qt(title), this)) {
        setObjectName("ModelInformation");
        setWindowTitle("Model Information");
        auto* column = new QVBoxLayout(this);
        add_title(*column);
        auto* page = new QTextBrowser(this);
        page->setObjectName("txtPage");
        page->setAccessibleName("Model Information");
        page->setOpenLinks(false);
        page->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        page->setHtml(html_of(sections));
        column->addWidget(page, 1);
        auto* buttons = new QHBoxLayout;
        column->addLayout(buttons);
        const auto add = [&](const char* name, const char* caption) {
            auto* button = new QPushButton(caption, this);
            button->setObjectName(name);
            button->setAutoDefault(false);
            buttons->addWidget(button);
            return button;
        };
        connect(add("cmdCopy", "Co&py All"), &QPushButton::clicked, this,
                [text = text_of(sections)] { QApplication::clipboard()->setText(text); });
        connect(add("cmdCheck", "Check &model..."), &QPushButton::clicked, this,
                [this] { done(check); });
        buttons->addStretch();
        QPushButton* close = add("cmdClose", "&Close");
        close->setDefault(true);
        connect(close, &QPushButton::clicked, this, &QDialog::accept);
        resize(fontMetrics().averageCharWidth() * 90, fontMetrics().lineSpacing() * 34);
        page->setFocus();
    }

    static constexpr int check = 2; // result of the button, besides Accepted and Rejected

    // Nothing when it was not changed.
    std::optional<std::string> typed_title() const {
        return title_->isModified() ? std::optional(from_qt(title_->text())) : std::nullopt;
    }

private:
    void add_title(QVBoxLayout& column) {
        constexpr int longest = 132;
        title_->setObjectName("txtTitle");
        title_->setMaxLength(longest);
        title_->setToolTip("Stands in the first line of the input file.");
        title_->setCursorPosition(0);
        auto* label = new QLabel("&Title:");
        label->setBuddy(title_);
        auto* row = new QHBoxLayout;
        row->addWidget(label);
        row->addWidget(title_, 1);
        column.addLayout(row);
    }

    QLineEdit* title_;
};

void keep_title(Desk& desk, const std::string& title) {
    desk.change("set_title(title)", "Title", [&](app::Workspace& model) {
        model.project.set_title(title);
        model.project.flags.mark_edited();
        return true;
    });
}

} // namespace

void model_page(CommandContext& context) {
    Desk& desk = context.desk;
    Sections sections;
    desk.attempt("file_model_information()", [&] {
        app::Loaded model = app::load_model(desk.model()->Model_Path(), core::Access::read);
        if (model.workspace) {
            sections = app::model_information(*model.workspace, desk.user());
        }
    });
    ModelInformation page(&context.window, sections, desk.model()->project.title());
    const int result = page.exec();
    if (const auto title = page.typed_title(); title && result != QDialog::Rejected) {
        keep_title(desk, *title);
    }
    if (result == ModelInformation::check) {
        check_model(context);
    }
}

} // namespace ui
