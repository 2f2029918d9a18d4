#include "core/modelfiles.h"

#include "base/failure.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/filemoves.h"
#include "core/undosteps.h"

#include <fmt/format.h>

#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace core {

namespace fs = std::filesystem;

namespace {

// All bytes of the file `name`, which are now at `place`. A pipe or a device in the place of a
// model file would never end.
std::string bytes_at(const fs::path& place, const fs::path& name) {
    std::error_code ignored;
    if (fs::is_other(place, ignored)) {
        throw base::FileFailure("is no ordinary file", name);
    }
    return base::read_bytes(place);
}

void write_all(const fs::path& aside, const fs::path& file, std::string_view bytes) {
    Descriptor out(aside, O_WRONLY | O_CREAT | O_TRUNC, file);
    out.write(bytes);
}

std::string base_of(const fs::path& project) {
    const std::string full = project.string();
    return full.substr(0, full.size() - std::min<std::size_t>(4, full.size()));
}

} // namespace

fs::path hidden_folder_of(const fs::path& project) {
    const fs::path base = base_of(base::absolute_path(project));
    return base.parent_path() / fmt::format(".{}.tervex", base.filename().string());
}

ModelFiles::ModelFiles(fs::path project, Access access)
    : project_(base::absolute_path(project)), base_(base_of(project_)),
      hidden_(hidden_folder_of(project_)), access_(access) {
    if (access_ == Access::write) {
        open_hidden_folder();
    } else if (std::error_code ignored; fs::is_directory(fs::symlink_status(hidden_, ignored))) {
        finish_pending(hidden_);
    }
}

ModelFiles::~ModelFiles() {
    close_hidden_folder();
}

ModelFiles::ModelFiles(ModelFiles&& other) noexcept
    : project_(std::move(other.project_)), base_(std::move(other.base_)),
      hidden_(std::move(other.hidden_)), access_(other.access_),
      lock_(std::exchange(other.lock_, -1)), next_number_(other.next_number_),
      changes_(std::move(other.changes_)), in_place_(std::move(other.in_place_)),
      steps_(std::move(other.steps_)) {}

ModelFiles& ModelFiles::operator=(ModelFiles&& other) noexcept {
    if (this != &other) {
        close_hidden_folder();
        project_ = std::move(other.project_);
        base_ = std::move(other.base_);
        hidden_ = std::move(other.hidden_);
        access_ = other.access_;
        lock_ = std::exchange(other.lock_, -1);
        next_number_ = other.next_number_;
        changes_ = std::move(other.changes_);
        in_place_ = std::move(other.in_place_);
        steps_ = std::move(other.steps_);
    }
    return *this;
}

void ModelFiles::open_hidden_folder() {
    if (std::error_code ignored; !fs::is_directory(folder(), ignored)) {
        throw base::FileFailure("the folder does not exist", folder());
    }
    const int lock = lock_folder(hidden_);
    settle_locked(hidden_, lock);
    lock_ = lock;
}

void ModelFiles::close_hidden_folder() noexcept {
    if (lock_ < 0) {
        return;
    }
    std::error_code ignored;
    for (const auto& [file, change] : changes_) {
        fs::remove(change.aside, ignored);
    }
    changes_.clear();
    unlock_folder(hidden_, std::exchange(lock_, -1));
}

fs::path ModelFiles::folder() const {
    return project_.parent_path();
}

std::string ModelFiles::base_name() const {
    return fs::path(base_).filename().string();
}

void ModelFiles::require_write_access() const {
    if (access_ != Access::write) {
        throw base::RangeFailure("a file of the model is written without write access");
    }
}

fs::path ModelFiles::companion(std::string_view extension) const {
    const fs::path exact = base_ + base::lower(extension);
    if (changes_.contains(exact) || base::is_file(exact)) {
        return exact;
    }
    for (const auto& [file, change] : changes_) {
        if (!change.aside.empty() && base::same_ignoring_case(file.string(), exact.string())) {
            return file;
        }
    }
    return base::find_ignoring_case(folder(), exact.filename().string()).value_or(exact);
}

bool ModelFiles::has(std::string_view extension) const {
    return find(extension).has_value();
}

std::optional<fs::path> ModelFiles::find(std::string_view extension) const {
    // One look at the folder finds most companions of most commands.
    if (fs::path exact = base_ + base::lower(extension); changes_.empty() && base::is_file(exact)) {
        return exact;
    }
    return find_file(companion(extension));
}

fs::path ModelFiles::name_of(std::string_view extension) const {
    return companion(extension);
}

std::string ModelFiles::read(std::string_view extension) const {
    return read_file(companion(extension));
}

std::string ModelFiles::read_file(const fs::path& file) const {
    const auto place = find_file(file);
    if (!place) {
        throw base::FileFailure("does not exist", file);
    }
    return bytes_at(*place, file);
}

std::optional<std::string> ModelFiles::read_if(std::string_view extension) const {
    const fs::path name = companion(extension);
    const auto place = find_file(name);
    return place ? std::optional(bytes_at(*place, name)) : std::nullopt;
}

void ModelFiles::write(std::string_view extension, std::string_view bytes) {
    write_file(companion(extension), bytes);
}

void ModelFiles::remove(std::string_view extension) {
    remove_file(companion(extension));
}

std::string ModelFiles::read_project() const {
    return read_file(project_);
}

void ModelFiles::write_project(std::string_view bytes) {
    write_file(project_, bytes);
}

bool ModelFiles::has_file(const fs::path& file) const {
    return find_file(file).has_value();
}

std::optional<fs::path> ModelFiles::find_file(const fs::path& file) const {
    const fs::path name = base::absolute_path(file);
    if (const auto change = changes_.find(name); change != changes_.end()) {
        return change->second.aside.empty() ? std::nullopt : std::optional(change->second.aside);
    }
    std::error_code ignored;
    return fs::exists(name, ignored) ? std::optional(name) : std::nullopt;
}

void ModelFiles::write_file(const fs::path& file, std::string_view bytes) {
    write_all(open_file_aside(file, true), file, bytes);
}

void ModelFiles::copy_file(const fs::path& from, const fs::path& to) {
    const fs::path source = find_file(from).value_or(from);
    copy_bytes(source, open_file_aside(to, true), to);
}

void ModelFiles::move_file(const fs::path& from, const fs::path& to) {
    require_write_access();
    const auto place = find_file(from);
    if (!place) {
        throw base::FileFailure("does not exist", from);
    }
    // A second name of the bytes: the first one goes when the change is committed.
    const fs::path name = base::absolute_path(to), aside = new_aside_name();
    if (::link(place->c_str(), aside.c_str()) != 0) {
        copy_bytes(*place, aside, name);
    }
    put_aside(name, aside);
    remove_file(from);
}

void ModelFiles::take_over(const fs::path& from, const fs::path& to, bool itself,
                           std::uint32_t mode) {
    require_write_access();
    const fs::path name = base::absolute_path(to), aside = new_aside_name(itself ? "name" : "new");
    struct stat state {};
    const bool found = ::lstat(from.c_str(), &state) == 0;
    // Another name of the same bytes would get the mode as well, and keep sessions from writing in
    // place.
    if (!found || state.st_nlink > 1 || ::link(from.c_str(), aside.c_str()) != 0) {
        copy_as_it_is(from, aside, name);
    }
    put_aside(name, aside);
    if (!S_ISLNK(state.st_mode)) {
        give_mode(aside, mode, name);
    }
}

void ModelFiles::put_aside(const fs::path& name, const fs::path& aside) {
    if (const auto change = changes_.find(name); change != changes_.end()) {
        std::error_code ignored;
        fs::remove(change->second.aside, ignored);
    }
    changes_[name] = Change{aside};
}

void ModelFiles::remove_file(const fs::path& file) {
    require_write_access();
    const fs::path name = base::absolute_path(file);
    if (const auto change = changes_.find(name); change != changes_.end()) {
        std::error_code ignored;
        fs::remove(change->second.aside, ignored);
        changes_.erase(change);
    }
    std::error_code ignored;
    if (fs::exists(fs::symlink_status(name, ignored))) {
        changes_[name] = Change{};
    }
}

fs::path ModelFiles::open_aside(std::string_view extension, bool fresh) {
    return open_file_aside(companion(extension), fresh);
}

fs::path ModelFiles::open_file_aside(const fs::path& file, bool fresh) {
    require_write_access();
    const fs::path name = base::absolute_path(file);
    const auto old = find_file(name);
    const auto change = changes_.find(name);
    if (change == changes_.end() && old && in_place_.contains(name)) {
        if (fresh) {
            write_all(*old, name, {});
        }
        return *old;
    }
    const bool is_aside = change != changes_.end() && !change->second.aside.empty();
    if (is_aside && !fresh) {
        return change->second.aside;
    }
    const fs::path aside = is_aside ? change->second.aside : new_aside_name();
    if (old && !fresh) {
        copy_bytes(*old, aside, name);
    } else {
        write_all(aside, name, {});
    }
    changes_[name] = Change{aside}; // only now: a copy that failed must not be moved over the file
    return aside;
}

void ModelFiles::write_in_place(const fs::path& file, const fs::path& copy) {
    require_write_access();
    const fs::path name = base::absolute_path(file);
    std::error_code failed;
    if (fs::hard_link_count(name, failed) == 1 && !failed && ::access(name.c_str(), W_OK) == 0) {
        const bool is_first = in_place_.insert(name).second;
        if (const auto steps = steps_.lock(); steps && is_first && !copy.empty()) {
            steps->keep_in_place(name, copy);
        }
    }
}

void ModelFiles::end_in_place() {
    for (const fs::path& file : std::exchange(in_place_, {})) {
        if (!changes_.contains(file) && base::is_file(file)) {
            Descriptor(file, O_RDONLY, file).flush();
        }
    }
}

fs::path ModelFiles::new_aside_name(std::string_view kind) {
    return hidden_ / fmt::format("{}.{}", kind, next_number_++);
}

void ModelFiles::rollback() {
    std::error_code ignored;
    for (const auto& [file, change] : changes_) {
        fs::remove(change.aside, ignored);
    }
    changes_.clear();
}

void ModelFiles::commit(const std::function<void()>& outside) {
    if (changes_.empty()) {
        return outside();
    }
    require_write_access();
    std::vector<FileMove> moves;
    for (const auto& [file, change] : changes_) {
        moves.push_back({change.aside, file, {}});
    }
    changes_.clear(); // from here on the files aside are move_all's
    const auto steps = steps_.lock();
    if (!steps) {
        return move_all(hidden_, std::move(moves), outside);
    }
    steps->keep(moves);
    try {
        move_all(hidden_, std::move(moves), outside);
    } catch (...) {
        steps->forget();
        throw;
    }
}

} // namespace core
