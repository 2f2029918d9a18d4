#include "ui/emptysheet.h"

#include "app/recentfiles.h"
#include "ui/mainwindow.h"
#include "ui/text.h"

#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

EmptySheet::EmptySheet(MainWindow& window) : QWidget(&window), window_(window) {
    setObjectName("EmptySheet");
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Mid);

    auto* card = new QFrame(this);
    card->setFrameStyle(QFrame::StyledPanel);
    card->setAutoFillBackground(true);
    card->setBackgroundRole(QPalette::Window);
    column_ = new QVBoxLayout(card);
    const int gap = fontMetrics().height();
    column_->setContentsMargins(2 * gap, 2 * gap, 2 * gap, 2 * gap);

    auto* title = new QLabel("No model is open", card);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    title->setFont(large);
    column_->addWidget(title);
    auto* hint = new QLabel("Make a new model, open one, or drop a .td1 file here.", card);
    hint->setWordWrap(true);
    column_->addWidget(hint);
    column_->addSpacing(gap / 2);
    add_button("file_new_model", "&New Model...");
    add_button("file_open_model", "&Open Model...");

    auto* middle = new QGridLayout(this);
    middle->addWidget(card, 1, 1);
    for (const int side : {0, 2}) {
        middle->setRowStretch(side, 1);
        middle->setColumnStretch(side, 1);
    }
}

void EmptySheet::add_button(const char* command, const QString& text) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(QString("start_") + command);
    const std::string name = command;
    connect(button, &QPushButton::clicked, this, [this, name] { window_.run_command(name); });
    column_->addWidget(button);
}

void EmptySheet::show_recent(const app::RecentFiles& recent) {
    delete recent_;
    recent_ = new QWidget(this);
    auto* rows = new QVBoxLayout(recent_);
    rows->setContentsMargins(0, fontMetrics().height() / 2, 0, 0);
    auto* head = new QLabel("Recent models", recent_);
    rows->addWidget(head);
    for (int number = 1; number <= app::RecentFiles::count; ++number) {
        const QString path = to_qt(recent.path(number));
        if (path.isEmpty()) {
            continue;
        }
        auto* button = new QPushButton(recent_);
        // A file name may hold an "&"; it is no mnemonic.
        button->setText(QFileInfo(path).fileName().replace("&", "&&"));
        button->setToolTip(path);
        button->setAccessibleDescription(path);
        button->setObjectName(QString("start_RecentUsed(%1)").arg(number));
        const std::string name = "RecentUsed(" + std::to_string(number) + ")";
        connect(
            button, &QPushButton::clicked, this, [this, name] { window_.run_command(name); },
            Qt::QueuedConnection); // the list is built anew by the command
        rows->addWidget(button);
    }
    recent_->setVisible(rows->count() > 1);
    column_->addWidget(recent_);
}

} // namespace ui
