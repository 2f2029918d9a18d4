// "Check model": everything that the model lacks for its input file, each with the way to mend it.
#pragma once

#include "app/menupath.h"
#include "input/completeness.h"

#include <QDialog>

#include <string>
#include <string_view>
#include <vector>

class QLabel;
class QLayout;
class QPushButton;
class QTableWidget;

namespace ui {

struct CommandContext;
class Desk;
class MainWindow;

class CheckModel final : public QDialog {
    Q_OBJECT

public:
    explicit CheckModel(CommandContext& context);

    // The command that needs the main window, so that the dialog has closed; empty when there is
    // none.
    const std::string& leaves_for() const { return leaves_for_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Mend {
        std::vector<app::MenuTarget> targets;
        const char* obstacle; // empty when there are targets
    };

    QLayout* make_state();
    QTableWidget* make_list();
    QLayout* make_buttons();
    void renew();
    void show_list(bool on);
    void show_gaps(const std::vector<input::Gap>& gaps);
    void add_gap(const input::Gap& gap);
    Mend way_to_mend(const input::Gap& gap) const;
    QWidget* opening(const std::vector<app::MenuTarget>& targets, QWidget* parent);
    void open_current();
    void run(const std::string& command);
    void leave_for(std::string_view command);

    Desk& desk_;
    MainWindow& window_;
    std::string leaves_for_;
    QLabel* icon_ = nullptr;
    QLabel* state_ = nullptr;
    QTableWidget* list_ = nullptr;
    QPushButton* create_ = nullptr;
};

// The command. Comes back when an editor that was opened from it has been left.
void check_model(CommandContext& context);

} // namespace ui
