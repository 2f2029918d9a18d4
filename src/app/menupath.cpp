#include "app/menupath.h"

#include "app/commands.h"
#include "app/menustate.h"
#include "base/textfile.h"

#include <algorithm>
#include <array>
#include <span>

namespace app {

namespace {

// What texts call the items of a folded path otherwise than the menu does.
struct Wording {
    std::string_view text, menu;
};
constexpr Wording wordings[] = {
    {"|time|periods", "|time|stressperiods"},
    {"|flow|initialpermeabiltiy/porosity", "|flow|initialpermeability/porosity"},
    {"|heat|heatboundaries", "|heat|thermalboundaries"},
    {"|transport|fluid/rockproperties", "|transport|dispersion/diffusion"},
    {"|reactions|reactionsproperties", "|reaction|reactionsproperties"},
};

std::string folded(std::string_view text) {
    std::string result = base::lower(text);
    std::erase_if(result, [](char c) { return c == ' ' || c == '&' || c == '.'; });
    return result;
}

std::string folded_path(std::string_view path) {
    std::string result = folded(path);
    const auto* const other = std::ranges::find(wordings, result, &Wording::text);
    return other == std::end(wordings) ? result : std::string(other->menu);
}

// Walks the table; `visit` gets each entry with the folded captions that lead to it.
template <typename Visit>
void walk(Visit visit) {
    std::array<std::string, 3> captions;
    for (const MenuEntry& entry : menu_table()) {
        const auto depth = static_cast<std::size_t>(entry.depth);
        captions[depth] = folded(entry.caption);
        std::string path;
        for (std::size_t i = 0; i <= depth; ++i) {
            path += "|" + captions[i];
        }
        visit(entry, path);
    }
}

bool is_command(MenuKind kind) {
    return kind == MenuKind::command || kind == MenuKind::model_command ||
           kind == MenuKind::settings_command;
}

} // namespace

std::string plain_caption(std::string_view caption) {
    std::string text(base::trimmed(caption, " ."));
    std::erase(text, '&');
    return text;
}

std::vector<MenuTarget> commands_at(std::string_view menu_path) {
    const std::string wanted = folded_path(menu_path);
    std::vector<MenuTarget> targets;
    walk([&](const MenuEntry& entry, const std::string& path) {
        const bool inside = path == wanted || path.starts_with(wanted + "|");
        if (inside && is_command(entry.kind)) {
            targets.push_back({entry.name, plain_caption(entry.caption)});
        }
    });
    return targets;
}

std::string shown_path(std::string_view menu_path, const core::Project& project) {
    const std::string wanted = folded_path(menu_path);
    const std::vector<MenuItemState> items = Menu_Refresh(project, false); // in the table's order
    std::array<std::string, 3> captions;
    std::size_t at = 0;
    std::string shown;
    walk([&](const MenuEntry& entry, const std::string& path) {
        const auto depth = static_cast<std::size_t>(entry.depth);
        captions[depth] = plain_caption(items.at(at++).caption);
        for (std::size_t i = 0; path == wanted && i <= depth; ++i) {
            shown += (i == 0 ? "" : " > ") + captions[i];
        }
    });
    return shown.empty() ? std::string(menu_path) : shown;
}

bool can_be_chosen(std::string_view command, const core::Project& project) {
    std::array<bool, 3> open{};
    for (const MenuItemState& item : Menu_Refresh(project, false)) {
        const auto depth = static_cast<std::size_t>(item.depth);
        open[depth] = item.visible && item.enabled && (depth == 0 || open[depth - 1]);
        if (item.name == command) {
            return open[depth];
        }
    }
    return false;
}

} // namespace app
