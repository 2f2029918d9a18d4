#include "app/recentfiles.h"

#include "base/failure.h"
#include "base/paths.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>

namespace app {

namespace fs = std::filesystem;

namespace {

constexpr const char* section = "Recent Used Files";

std::string key_of(int number) {
    return fmt::format("File#{}", number);
}

} // namespace

RecentFiles::RecentFiles(const fs::path& user_folder) : file_(user_folder, "BD5.0") {
    for (int number = 1; number <= count; ++number) {
        std::string path = file_.get(section, key_of(number)).value_or("");
        std::error_code ignored;
        if (!path.empty() && fs::is_regular_file(path, ignored)) {
            paths_.at(std::size_t(number - 1)) = std::move(path);
        }
    }
}

void RecentFiles::add(const fs::path& model) {
    const std::string path = base::absolute_path(model).string();
    auto place = std::find(paths_.begin(), paths_.end(), path);
    if (place == paths_.end()) {
        place = paths_.end() - 1;
        *place = path;
    }
    std::rotate(paths_.begin(), place, place + 1);
}

void RecentFiles::remove(int number) {
    const auto place = paths_.begin() + (number - 1);
    place->clear();
    std::rotate(place, place + 1, paths_.end());
}

void RecentFiles::save() {
    for (int number = 1; number <= count; ++number) {
        file_.set(section, key_of(number), path(number));
    }
    file_.save();
}

void remember_model(const fs::path& model, const fs::path& user_folder) {
    if (user_folder.empty()) {
        return;
    }
    try {
        RecentFiles recent(user_folder);
        recent.add(model);
        recent.save();
    } catch (const base::FileFailure&) {
    }
}

std::string recent_caption(int number, std::string_view path) {
    constexpr std::size_t shown_whole = 40, head = 18, tail = 19;
    const std::size_t length = base::character_count(path);
    if (length < shown_whole) {
        return fmt::format("&{} {}", number, path);
    }
    const std::size_t before_tail = base::first_characters(path, length - tail).size();
    return fmt::format("&{} {}...{}", number, base::first_characters(path, head),
                       path.substr(before_tail));
}

} // namespace app
