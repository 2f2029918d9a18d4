// The list of the four models used last, newest first, in the user's own settings.
#pragma once

#include "app/settings.h"

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

namespace app {

class RecentFiles {
public:
    static constexpr int count = 4;

    // Reads section "Recent Used Files" of the file "BD5.0" in `user_folder`. A model that is gone
    // is dropped, and its number stays free until newer models push it out.
    explicit RecentFiles(const std::filesystem::path& user_folder);

    // Full path of item 1 to 4; empty: the item is not shown.
    const std::string& path(int number) const { return paths_.at(std::size_t(number - 1)); }

    // Makes the model item 1. One that is in the list only moves to the top; otherwise the last one
    // falls off.
    void add(const std::filesystem::path& model);
    // The items below move up.
    void remove(int number);
    // Writes all four items, an empty text for each one that is not shown.
    void save();

private:
    SettingsFile file_;
    std::array<std::string, count> paths_;
};

// Adds an opened model to the list in `user_folder` and saves it; nothing when that is empty. The
// list is a convenience: a folder that cannot be written keeps no model from opening.
void remember_model(const std::filesystem::path& model, const std::filesystem::path& user_folder);

// "&1 /models/a.td1"; a path of 40 characters and more shows its first 18 and its last 19.
std::string recent_caption(int number, std::string_view path);

} // namespace app
