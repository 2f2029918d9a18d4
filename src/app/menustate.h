// Ticks, enabled and visible items and captions of the menu, computed from the model alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace core {
class Project;
}

namespace app {

class RecentFiles;

struct MenuItemState {
    int depth = 0;
    std::string name;
    std::string caption;
    bool ticked = false; // the item has been defined
    bool enabled = true; // the item's own state: a disabled menu does not disable its items here
    bool visible = true;
};

// The whole tree in the order of menu_table(). With the editor open, its two menus stand in the
// place of the model's. Without a recent list the items of recent models are hidden.
std::vector<MenuItemState> Menu_Refresh(const core::Project& project, bool editor_open,
                                        const RecentFiles* recent = nullptr);

// True for a command that can be given while the editor is open; all others wait until it is left.
bool works_in_editor(std::string_view command);

// The tree while no model is open: File and Help only, and of File what needs no model.
std::vector<MenuItemState> Menu_without_model(const RecentFiles* recent = nullptr);

} // namespace app
