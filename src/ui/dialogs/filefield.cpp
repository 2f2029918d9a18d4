#include "ui/dialogs/filefield.h"

#include "ui/plaindialog.h"
#include "ui/text.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

namespace ui {

namespace {

constexpr int shown_letters = 40;

} // namespace

FileField::FileField(base::Interaction& user, std::function<FileQuestion()> question,
                     const char* object_name, QWidget* parent)
    : QWidget(parent), user_(user), question_(std::move(question)), line_(new QLineEdit) {
    line_->setObjectName(to_qt(object_name));
    line_->setMinimumWidth(fontMetrics().averageCharWidth() * shown_letters);
    QPushButton* const button = plain_button("cmdBrowse", tr("&Browse..."));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(line_, 1);
    row->addWidget(button);
    setFocusProxy(line_);
    connect(button, &QPushButton::clicked, this, &FileField::browse);
}

std::filesystem::path FileField::file() const {
    return from_qt(line_->text().trimmed());
}

void FileField::set_file(const std::filesystem::path& file) {
    line_->setText(to_qt(file));
}

int FileField::filter() const {
    return line_->text() == chosen_ ? filter_ : 0;
}

void FileField::browse() {
    const FileQuestion question = question_();
    const auto chosen =
        user_.choose_filtered_file(question.kind, question.title, question.filter, file().string());
    if (chosen) {
        set_file(chosen->file);
        chosen_ = line_->text();
        filter_ = chosen->filter;
        line_->setFocus();
    }
}

} // namespace ui
