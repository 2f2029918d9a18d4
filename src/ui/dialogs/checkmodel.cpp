#include "ui/dialogs/checkmodel.h"

#include "app/commands.h"
#include "app/workspace.h"
#include "base/busy.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/mainwindow.h"
#include "ui/text.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QStyle>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace ui {

namespace {

constexpr const char* create_command = "mnuTervexCreate";
enum Column { number_column, text_column, menu_column, open_column, column_count };

// The worksheet and the mesh editor are in the main window.
bool is_of_editor(std::string_view command) {
    return std::ranges::any_of(editor_commands(),
                               [&](const CommandRow& row) { return row.name == command; });
}

// The box's lines without the empty ones between them.
QString shown_text(std::string_view text) {
    return to_qt(text).replace("\n\n", "\n");
}

} // namespace

CheckModel::CheckModel(CommandContext& context)
    : QDialog(&context.window), desk_(context.desk), window_(context.window) {
    setObjectName("CheckModel");
    setWindowTitle("Check model");
    auto* column = new QVBoxLayout(this);
    column->addLayout(make_state());
    list_ = make_list();
    column->addWidget(list_, 1);
    column->addStretch();
    column->addLayout(make_buttons());
    renew();
}

QLayout* CheckModel::make_state() {
    auto* row = new QHBoxLayout;
    icon_ = new QLabel(this);
    state_ = new QLabel(this);
    state_->setObjectName("lblState");
    state_->setWordWrap(true);
    row->addWidget(icon_);
    row->addWidget(state_, 1);
    return row;
}

QTableWidget* CheckModel::make_list() {
    auto* list = new QTableWidget(0, column_count, this);
    list->setObjectName("lstGaps");
    list->setAccessibleName("Missing or wrong input data");
    list->setHorizontalHeaderLabels({"No.", "Missing or wrong", "Menu", "Mend"});
    list->verticalHeader()->hide();
    list->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setTabKeyNavigation(false);
    list->setWordWrap(true);
    list->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->horizontalHeader()->setSectionResizeMode(text_column, QHeaderView::Stretch);
    list->horizontalHeader()->setHighlightSections(false);
    list->installEventFilter(this);
    connect(list, &QTableWidget::cellDoubleClicked, this, &CheckModel::open_current);
    return list;
}

QLayout* CheckModel::make_buttons() {
    auto* row = new QHBoxLayout;
    const auto add = [&](const char* name, const char* caption) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        row->addWidget(button);
        return button;
    };
    connect(add("cmdRefresh", "&Refresh"), &QPushButton::clicked, this, &CheckModel::renew);
    row->addStretch();
    create_ = add("cmdCreate", "Create TERVEX &Inputfile");
    connect(create_, &QPushButton::clicked, this, [this] { leave_for(create_command); });
    connect(add("cmdClose", "&Close"), &QPushButton::clicked, this, &QDialog::reject);
    return row;
}

void CheckModel::renew() {
    std::optional<std::vector<input::Gap>> gaps;
    desk_.attempt("[Input] Control()", [&] {
        const base::Busy hourglass(desk_.user());
        core::ModelFiles files(desk_.model()->Model_Path(), core::Access::read);
        gaps = input::all_gaps(desk_.model()->project, files);
        std::ranges::move(input::gaps_of_writing(desk_.model()->project, files),
                          std::back_inserter(*gaps));
    });
    show_gaps(gaps.value_or(std::vector<input::Gap>()));
    if (!gaps) {
        state_->setText("The model could not be checked.");
    } else if (gaps->empty()) {
        state_->setText("The model is complete. Its input file can be created.");
    } else {
        state_->setText(QString("The model is not complete. Missing or wrong: %1. "
                                "Each entry can be mended where its menu leads to.")
                            .arg(gaps->size()));
    }
    const bool complete = gaps && gaps->empty();
    const int size = style()->pixelMetric(QStyle::PM_LargeIconSize);
    icon_->setPixmap(
        style()
            ->standardIcon(complete ? QStyle::SP_DialogApplyButton : QStyle::SP_MessageBoxWarning)
            .pixmap(size, size));
    create_->setEnabled(complete);
    create_->setDefault(complete);
    show_list(!complete);
    complete ? create_->setFocus() : list_->setFocus();
}

// A complete model needs no more room than its one line.
void CheckModel::show_list(bool on) {
    const bool has_size = testAttribute(Qt::WA_Resized);
    if (has_size && on != list_->isHidden()) {
        return;
    }
    list_->setVisible(on);
    const QFontMetrics metrics(font());
    layout()->activate();
    resize(metrics.averageCharWidth() * (on ? 130 : 85),
           on ? metrics.lineSpacing() * 26 : sizeHint().height());
}

void CheckModel::show_gaps(const std::vector<input::Gap>& gaps) {
    const int row = list_->currentRow();
    list_->setRowCount(0);
    for (const input::Gap& gap : gaps) {
        add_gap(gap);
    }
    list_->selectRow(std::clamp(row, 0, std::max(list_->rowCount() - 1, 0)));
}

void CheckModel::add_gap(const input::Gap& gap) {
    const int row = list_->rowCount();
    list_->insertRow(row);
    auto* number = new QTableWidgetItem(QString::number(gap.test));
    number->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    const std::string path = app::shown_path(gap.menu_path, desk_.model()->project);
    list_->setItem(row, number_column, number);
    list_->setItem(row, text_column, new QTableWidgetItem(shown_text(gap.message.text)));
    list_->setItem(row, menu_column, new QTableWidgetItem(to_qt(path)));
    const Mend mend = way_to_mend(gap);
    list_->setItem(row, open_column, new QTableWidgetItem(mend.obstacle));
    if (!mend.targets.empty()) {
        // A button of its own height in a cell that may be higher.
        auto* cell = new QWidget(list_);
        auto* layout = new QHBoxLayout(cell);
        const int margin = cell->fontMetrics().height() / 4;
        layout->setContentsMargins(margin, margin, margin, margin);
        layout->addWidget(opening(mend.targets, cell));
        list_->setCellWidget(row, open_column, cell);
    }
}

CheckModel::Mend CheckModel::way_to_mend(const input::Gap& gap) const {
    Mend mend{app::commands_at(gap.menu_path), "not in the menu"};
    const auto drop = [&](const char* reason, auto fits) {
        if (!mend.targets.empty()) {
            std::erase_if(mend.targets, [&](const auto& target) { return !fits(target); });
            mend.obstacle = mend.targets.empty() ? reason : "";
        }
    };
    drop("no window for it", [](const auto& target) { return find_command(target.name); });
    drop("grey in the menu", [this](const auto& target) {
        return app::can_be_chosen(target.name, desk_.model()->project);
    });
    return mend;
}

QWidget* CheckModel::opening(const std::vector<app::MenuTarget>& targets, QWidget* parent) {
    auto* button = new QPushButton("Open...", parent);
    button->setAutoDefault(false);
    button->setObjectName(to_qt("open_" + targets.front().name));
    button->setAccessibleName("Open " + to_qt(targets.front().caption));
    if (targets.size() == 1) {
        connect(button, &QPushButton::clicked, this,
                [this, name = targets.front().name] { run(name); });
        return button;
    }
    auto* menu = new QMenu(button);
    for (const app::MenuTarget& target : targets) {
        QAction* action = menu->addAction(to_qt(target.caption) + "...");
        action->setObjectName(to_qt(target.name));
        connect(action, &QAction::triggered, this, [this, name = target.name] { run(name); });
    }
    button->setMenu(menu);
    return button;
}

void CheckModel::open_current() {
    if (auto* button =
            qobject_cast<QPushButton*>(list_->cellWidget(list_->currentRow(), open_column))) {
        button->click();
    } else {
        desk_.user().beep();
    }
}

void CheckModel::run(const std::string& command) {
    if (is_of_editor(command)) {
        return leave_for(command);
    }
    window_.run_command(command);
    if (desk_.editor_open()) {
        return reject();
    }
    // Not at once: the button that was pressed goes with the old list.
    QTimer::singleShot(0, this, &CheckModel::renew);
}

void CheckModel::leave_for(std::string_view command) {
    leaves_for_ = command;
    accept();
}

bool CheckModel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            open_current();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void CheckModel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F5) {
        renew();
    } else {
        QDialog::keyPressEvent(event);
    }
}

namespace {

// What was missing first may be there when the editor has been left.
void come_back(Desk& desk, MainWindow& window) {
    const auto changed = [&desk, &window] {
        if (desk.editor_open()) {
            return come_back(desk, window);
        }
        QTimer::singleShot(0, &window, [&desk, &window] {
            if (window.isVisible() && desk.model() && !desk.editor_open()) {
                CommandContext context{desk, window};
                check_model(context);
            }
        });
    };
    QObject::connect(&desk, &Desk::editor_changed, &window, changed, Qt::SingleShotConnection);
}

} // namespace

void check_model(CommandContext& context) {
    Desk& desk = context.desk;
    if (const auto refusal = app::command_guard(create_command, desk.model())) {
        return base::show(desk.user(), *refusal);
    }
    if (desk.editor_open()) {
        return base::show(desk.user(), {"Check model", "Leave the editor first."});
    }
    for (;;) {
        CheckModel dialog(context);
        dialog.exec();
        const std::string command = dialog.leaves_for();
        if (!command.empty()) {
            context.window.run_command(command);
        }
        if (desk.editor_open()) {
            return come_back(desk, context.window);
        }
        if (command.empty() || command == create_command) {
            return;
        }
    }
}

} // namespace ui
