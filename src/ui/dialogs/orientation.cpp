#include "ui/dialogs/orientation.h"

#include "ui/commandtables.h"
#include "ui/mainwindow.h"
#include "ui/plaindialog.h"

#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

#include <array>

namespace ui {

namespace {

constexpr const char* choices[][2] = {{"optHorizontal", "&Horizontal (map view)"},
                                      {"optVertical", "&Vertical (cross section)"},
                                      {"optCylindrical", "&Cylindrical Symmetry"}};

class Orientation : public PlainDialog {
public:
    explicit Orientation(CommandContext& context)
        : PlainDialog(context.desk, "Orientation", "Orientation", "import.md#A whole model",
                      &context.window) {
        auto* frame = new QGroupBox("The model of the file is:", this);
        auto* rows = new QVBoxLayout(frame);
        std::size_t number = 0;
        for (const auto& [name, caption] : choices) {
            auto* option = new QRadioButton(caption, frame);
            option->setObjectName(name);
            rows->addWidget(option);
            options_.at(number++) = option;
        }
        options_[0]->setChecked(true);
        body().addWidget(frame);
    }

    int chosen() const { return options_[1]->isChecked() ? 1 : options_[2]->isChecked() ? 2 : 0; }

protected:
    bool take() override { return true; }

private:
    std::array<QRadioButton*, 3> options_{};
};

} // namespace

std::optional<int> choose_orientation(CommandContext& context) {
    Orientation dialog(context);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.chosen()) : std::nullopt;
}

} // namespace ui
