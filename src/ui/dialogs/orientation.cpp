#include "ui/dialogs/orientation.h"

#include "ui/commandtables.h"
#include "ui/mainwindow.h"

#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>

#include <array>

namespace ui {

namespace {

constexpr const char* choices[][2] = {{"optHorizontal", "Horizontal (map view)"},
                                      {"optVertical", "Vertical (cross section)"},
                                      {"optCylindrical", "Cylindrical Symmetry"}};

class Orientation : public QDialog {
public:
    explicit Orientation(MainWindow& window) : QDialog(&window), window_(window) {
        setObjectName("Orientation");
        setWindowTitle("Orientation");
        auto* column = new QVBoxLayout(this);
        auto* frame = new QGroupBox("The grid of the file is a model of this kind:", this);
        auto* rows = new QVBoxLayout(frame);
        std::size_t number = 0;
        for (const auto& [name, caption] : choices) {
            auto* option = new QRadioButton(caption, frame);
            option->setObjectName(name);
            rows->addWidget(option);
            options_.at(number++) = option;
        }
        options_[0]->setChecked(true);
        column->addWidget(frame);
        column->addStretch();
        add_buttons(*column);
    }

    int chosen() const { return options_[1]->isChecked() ? 1 : options_[2]->isChecked() ? 2 : 0; }

private:
    void add_buttons(QVBoxLayout& column) {
        auto* row = new QHBoxLayout;
        row->addStretch();
        const auto add = [&](const char* name, const char* caption) {
            auto* button = new QPushButton(caption, this);
            button->setObjectName(name);
            row->addWidget(button);
            return button;
        };
        QPushButton* ok = add("cmdOK", "OK");
        ok->setDefault(true);
        connect(ok, &QPushButton::clicked, this, &QDialog::accept);
        connect(add("cmdCancel", "Cancel"), &QPushButton::clicked, this, &QDialog::reject);
        QPushButton* help = add("cmdHelp", "Help");
        help->setShortcut(QKeySequence("F1"));
        help->setAutoDefault(false);
        connect(help, &QPushButton::clicked, this, [this] { window_.show_help("import.md"); });
        column.addLayout(row);
    }

    MainWindow& window_;
    std::array<QRadioButton*, 3> options_{};
};

} // namespace

std::optional<int> choose_orientation(CommandContext& context) {
    Orientation dialog(context.window);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.chosen()) : std::nullopt;
}

} // namespace ui
