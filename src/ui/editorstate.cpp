// Toolbar, menus and panes follow what the editor does.
#include "grid/worksheetfiles.h"
#include "sim/periods.h"
#include "ui/desk.h"
#include "ui/editor.h"
#include "ui/mainwindow.h"
#include "ui/meshsession.h"
#include "ui/statuspanes.h"
#include "ui/text.h"
#include "ui/toolbar.h"
#include "ui/viewmenu.h"
#include "ui/worksheetsession.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

namespace ui {

namespace {

// Of the toolbar; undo and redo are connected where those of commands are.
constexpr const char* tool_keys[] = {"leave_editor", "set_value",  "digitizer",    "set_borehole",
                                     "zoom_in",      "zoom_out",   "cell_by_cell", "zone",
                                     "rotate_grid",  "shift_grid", "model_grid",   "full_extent",
                                     "cell_copy",    "layer_copy"};

// Items that only make sense with cells.
constexpr const char* cell_items[] = {"value_matrix_browse", "value_matrix_reset", "value_trace",
                                      "options_input_method"};

std::vector<int> active_periods(const app::Workspace& model) {
    std::vector<int> periods;
    try {
        const auto table = sim::PeriodTable::load(model.files);
        for (int n = 1; n <= sim::PeriodTable::row_count; ++n) {
            if (table.rows[static_cast<std::size_t>(n - 1)].active) {
                periods.push_back(n);
            }
        }
    } catch (const base::FileFailure&) {
        // The command that needs the table tells why.
    }
    return periods;
}

} // namespace

std::vector<int> Editor::periods() const {
    std::vector<int> active =
        model_->project.transient() ? active_periods(*model_) : std::vector<int>();
    return active.size() > 1 ? active : std::vector{1};
}

void Editor::connect_tools() {
    for (const char* const key : tool_keys) {
        if (QAction* const action = window_.tools().action(key)) {
            connect(action, &QAction::triggered, this,
                    [this, command = std::string("tool_") + key] { run(command); });
        }
    }
    connect(&window_.tools().layer_spin(), &QSpinBox::valueChanged, this, [this](int layer) {
        if (session_ && !syncing_) {
            session_->show_layer(layer);
            sync();
        }
    });
    connect(&window_.tools().period_box(), &QComboBox::activated, this, [this](int index) {
        if (session_ && !syncing_) {
            session_->show_period(window_.tools().period_box().itemData(index).toInt());
            sync();
        }
    });
}

// Behind the tools, before layer and period: what the menu of the right button has.
void Editor::add_view_button() {
    ToolBar& tools = window_.tools();
    auto* const button = new QToolButton(&tools);
    button->setObjectName("tool_view");
    button->setText("View");
    button->setToolTip("Legend, colours, pictures");
    button->setPopupMode(QToolButton::InstantPopup);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    auto* const menu = new QMenu(button);
    button->setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        if (window_.view().picture()) {
            fill_view_menu(*menu, window_, session_.get());
        }
    });
    const auto actions = tools.actions();
    const auto check = actions.indexOf(tools.action("check"));
    tools.insertWidget(actions.value(check + 1), button);
}

void Editor::sync() {
    if (syncing_) {
        return;
    }
    syncing_ = true;
    sync_tools();
    sync_menus();
    sync_layers();
    window_.panes().set_caption(session_ ? session_->caption() : QString());
    if (session_) {
        window_.tools().show_step("undo", session_->undo_name());
        window_.tools().show_step("redo", session_->redo_name());
    }
    syncing_ = false;
}

void Editor::sync_tools() {
    ToolBar& tools = window_.tools();
    const WorksheetView& view = window_.view();
    const bool world = view.display() == grid::DisplayMode::world;
    tools.action(world ? "full_extent" : "model_grid")->setChecked(true);
    tools.action("zoom_in")->setChecked(view.zooms_by_rectangle());
    const grid::EditorState state = session_ ? session_->state() : grid::EditorState::none;
    const bool cells = state == grid::EditorState::cell_by_cell;
    tools.action(state == grid::EditorState::zone ? "zone" : "cell_by_cell")->setChecked(true);
    const grid::Worksheet* const worksheet = this->worksheet();
    tools.action("cell_copy")->setChecked(worksheet && worksheet->Cell_Copy);
    tools.action("layer_copy")->setChecked(worksheet && worksheet->Layer_Copy);
    if (worksheet) {
        tools.action("cell_copy")->setEnabled(cells);
        tools.action("layer_copy")->setEnabled(cells && worksheet->layers() > 1);
    }
    const auto* const in_cells = dynamic_cast<const WorksheetSession*>(session_.get());
    tools.action("digitizer")->setChecked(in_cells && in_cells->digitizing());
    const auto* const in_mesh = dynamic_cast<const MeshSession*>(session_.get());
    const auto tool = in_mesh ? in_mesh->tool() : MeshSession::Tool::none;
    tools.action("rotate_grid")->setChecked(tool == MeshSession::Tool::rotate);
    tools.action("shift_grid")->setChecked(tool == MeshSession::Tool::shift);
}

void Editor::sync_menus() {
    const bool world = window_.view().display() == grid::DisplayMode::world;
    window_.set_tick("options_display_mode_global", world);
    window_.set_tick("options_display_mode_local", !world);
    if (!session_) {
        return;
    }
    const auto enable = [&](const char* name, bool on) {
        if (QAction* const action = window_.command(name)) {
            action->setEnabled(on);
        }
    };
    const grid::Worksheet* const worksheet = this->worksheet();
    for (const char* const name : cell_items) {
        enable(name, worksheet != nullptr);
    }
    enable("value_zones", worksheet && worksheet->request().Zones_Allowed);
    enable("value_points",
           worksheet && worksheet->request().Current_Parameter() == grid::digitizer);
    const bool zones = session_->state() == grid::EditorState::zone;
    window_.set_tick("options_input_method_zones", zones);
    window_.set_tick("options_input_method_CBC", worksheet && !zones);
}

void Editor::sync_layers() {
    ToolBar& tools = window_.tools();
    QSpinBox& spin = tools.layer_spin();
    const QSignalBlocker quiet(spin);
    const int layers = session_ ? session_->layers() : 1;
    spin.setRange(1, layers);
    spin.setValue(session_ ? session_->layer() : 1);
    spin.setEnabled(layers > 1);
    if (desk_.model()) {
        const int orientation = desk_.model()->project.flags.GridOrientation();
        tools.set_layer_label(grid::orientation_words(orientation).singular);
    }
    const std::vector<int> offered = worksheet() ? periods() : std::vector<int>();
    tools.show_periods(offered.size() > 1);
    QComboBox& box = tools.period_box();
    const QSignalBlocker still(box);
    box.clear();
    for (const int period : offered) {
        box.addItem(QString::number(period), period);
    }
    box.setCurrentIndex(session_ ? box.findData(session_->period()) : -1);
}

void Editor::tick() {
    if (session_ && session_->is_idle()) {
        session_->refresh_pointer();
    }
}

} // namespace ui
