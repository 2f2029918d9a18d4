// The toolbar: one action a key, layer and period at its right end. What the actions do is
// connected by those who own it; the toolbar only shows which of them have an effect now.
#pragma once

#include <QToolBar>

#include <optional>
#include <string>

class QAction;
class QComboBox;
class QLabel;
class QSpinBox;

namespace ui {

// What is open, as far as the tools care.
enum class ToolStage { no_model, no_grid, model, worksheet, digitizer, mesh };

class ToolBar : public QToolBar {
    Q_OBJECT

public:
    explicit ToolBar(QWidget* parent = nullptr);

    // `key` without its prefix: "open_model". Its object name is "tool_open_model". nullptr for a
    // key that there is not.
    QAction* action(const char* key) const;

    // Greys the actions that have no effect, releases their toggles.
    void set_stage(ToolStage stage);

    // Key "undo" or "redo": what it would go over, nothing when there is no such step.
    void show_step(const char* key, const std::optional<std::string>& step);

    QSpinBox& layer_spin() const { return *layer_; }   // Layer_Spin
    QComboBox& period_box() const { return *period_; } // Period_Box
    // "Layer:" or "Cross Section:"
    void set_layer_label(const QString& text);
    // Periods are shown in transient models only.
    void show_periods(bool on);

private:
    void add_actions();
    void add_fields();

    QLabel* layer_label_ = nullptr;
    QSpinBox* layer_ = nullptr;
    QComboBox* period_ = nullptr;
    QAction* period_fields_[2] = {};
};

} // namespace ui
