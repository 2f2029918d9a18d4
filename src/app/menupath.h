// Paths of the menu as texts name them ("|Grid|Mesh Size.") and the commands that they lead to.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace core {
class Project;
}

namespace app {

// Name and caption (without mnemonic and dots) of the command that the path leads to; of all its
// commands when it leads to a submenu; nothing when it leads nowhere. Blanks, case, mnemonics and
// dots do not count, nor does the older wording of some texts.
struct MenuTarget {
    std::string name;
    std::string caption;
};
std::vector<MenuTarget> commands_at(std::string_view menu_path);

// The path as the menu of this model words it: "Heat > Thermal Boundaries" for "|Heat|Heat
// Boundaries."; a path that leads nowhere as it is.
std::string shown_path(std::string_view menu_path, const core::Project& project);

// Whether the command can be chosen in the menu of this model: it is visible and enabled, and so
// are the menus that it stands in.
bool can_be_chosen(std::string_view command, const core::Project& project);

// "&Info / Results..." as it is read: "Info / Results".
std::string plain_caption(std::string_view caption);

} // namespace app
