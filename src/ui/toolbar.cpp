#include "ui/toolbar.h"

#include "ui/icons.h"
#include "ui/text.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QLabel>
#include <QSpinBox>

#include <initializer_list>

namespace ui {

namespace {

enum : unsigned {
    in_no_model = 1u << unsigned(ToolStage::no_model),
    in_no_grid = 1u << unsigned(ToolStage::no_grid),
    in_model = 1u << unsigned(ToolStage::model),
    in_worksheet = 1u << unsigned(ToolStage::worksheet),
    in_digitizer = 1u << unsigned(ToolStage::digitizer),
    in_mesh = 1u << unsigned(ToolStage::mesh),

    without_editor = in_no_model | in_no_grid | in_model,
    in_cells = in_worksheet | in_digitizer,
    in_editor = in_cells | in_mesh,
    with_grid = in_model | in_editor,
    with_model = in_no_grid | with_grid,
};

struct Tool {
    const char* key; // nullptr: a separator
    const char* tip;
    unsigned stages;   // where it has an effect
    const char* group; // of an exclusive pair; "" for a toggle, nullptr for a push
    const char* shortcut = nullptr;
};

constexpr Tool separator = {nullptr, nullptr, 0, nullptr};

constexpr Tool tools[] = {
    {"open_model", "Open model", without_editor, nullptr},
    {"leave_editor", "Leave editor", in_editor, nullptr},
    separator,
    {"set_value", "Set value", in_editor, nullptr},
    {"digitizer", "Digitizer", in_digitizer, ""},
    {"set_borehole", "Set borehole", in_editor, nullptr},
    separator,
    {"zoom_in", "Zoom in", with_grid, ""},
    {"zoom_out", "Zoom out", with_grid, nullptr},
    separator,
    {"cell_by_cell", "Cell by cell", in_cells, "method"},
    {"zone", "Zone", in_cells, "method"},
    separator,
    {"rotate_grid", "Rotate grid", in_mesh, "placing"},
    {"shift_grid", "Shift grid", in_mesh, "placing"},
    separator,
    {"model_grid", "Model grid", with_grid, "display"},
    {"full_extent", "Full extent", with_grid, "display"},
    separator,
    {"cell_copy", "Cell copy on/off", in_cells, ""},
    {"layer_copy", "Layer copy on/off", in_cells, ""},
    separator,
    {"undo", "Undo", with_model, nullptr, "Ctrl+Z"},
    {"redo", "Redo", with_model, nullptr, "Ctrl+Shift+Z"},
    separator,
    {"check", "Check", in_no_grid | in_model, nullptr},
};

QString object_name(const char* key) {
    return QString("tool_") + key;
}

} // namespace

ToolBar::ToolBar(QWidget* parent) : QToolBar("Toolbar", parent) {
    setObjectName("Toolbar");
    setMovable(false);
    setFloatable(false);
    // A toolbar that can be hidden by a right click is not found again.
    toggleViewAction()->setEnabled(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    add_actions();
    add_fields();
    set_stage(ToolStage::no_model);
}

void ToolBar::add_actions() {
    for (const Tool& tool : tools) {
        if (!tool.key) {
            addSeparator();
            continue;
        }
        QAction* action = addAction(tool_icon(tool.key), tool.tip);
        action->setObjectName(object_name(tool.key));
        action->setToolTip(tool.tip);
        if (tool.shortcut) {
            action->setShortcut(QKeySequence(tool.shortcut));
            action->setToolTip(QString("%1 (%2)").arg(tool.tip, tool.shortcut));
        }
        action->setCheckable(tool.group != nullptr);
        if (tool.group && *tool.group != '\0') {
            auto* group = findChild<QActionGroup*>(tool.group);
            if (!group) {
                group = new QActionGroup(this);
                group->setObjectName(tool.group);
                if (QString(tool.group) == "placing") {
                    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
                }
            }
            group->addAction(action);
        }
    }
    action("cell_by_cell")->setChecked(true);
    action("model_grid")->setChecked(true);
}

void ToolBar::add_fields() {
    auto* space = new QWidget(this);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(space);

    auto* period_label = new QLabel(tr("Period:"), this);
    period_label->setObjectName("Period_Label");
    period_ = new QComboBox(this);
    period_->setObjectName("Period_Box");
    period_->setAccessibleName("Period");
    period_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    period_label->setBuddy(period_);
    period_fields_[0] = addWidget(period_label);
    period_fields_[1] = addWidget(period_);

    layer_label_ = new QLabel(this);
    layer_label_->setObjectName("Layer_Label");
    layer_ = new QSpinBox(this);
    layer_->setObjectName("Layer_Spin");
    layer_->setRange(1, 1);
    layer_->setKeyboardTracking(false);
    layer_label_->setBuddy(layer_);
    const int gap = fontMetrics().averageCharWidth();
    for (QWidget* label :
         {static_cast<QWidget*>(period_label), static_cast<QWidget*>(layer_label_)}) {
        label->setContentsMargins(gap, 0, gap / 2, 0);
    }
    addWidget(layer_label_);
    addWidget(layer_);
    set_layer_label("Layer:");
    show_periods(false);
    layer_->setEnabled(false);
}

QAction* ToolBar::action(const char* key) const {
    return findChild<QAction*>(object_name(key));
}

void ToolBar::set_stage(ToolStage stage) {
    for (const Tool& tool : tools) {
        if (!tool.key) {
            continue;
        }
        QAction* action = this->action(tool.key);
        action->setEnabled((tool.stages & (1u << unsigned(stage))) != 0);
        const bool toggle = tool.group && *tool.group == '\0';
        if (toggle && !action->isEnabled()) {
            action->setChecked(false);
        }
    }
}

void ToolBar::show_step(const char* key, const std::optional<std::string>& step) {
    QAction* action = this->action(key);
    action->setEnabled(step.has_value());
    const QString tip = step ? QString("%1 %2").arg(action->text(), to_qt(*step)) : action->text();
    action->setToolTip(
        QString("%1 (%2)").arg(tip, action->shortcut().toString(QKeySequence::NativeText)));
}

void ToolBar::set_layer_label(const QString& text) {
    layer_label_->setText(text);
    layer_->setAccessibleName(text.chopped(text.endsWith(':') ? 1 : 0));
}

void ToolBar::show_periods(bool on) {
    for (QAction* field : period_fields_) {
        field->setVisible(on);
    }
}

} // namespace ui
