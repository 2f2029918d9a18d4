// The folder of one model as a command sees it, and the one door for writing into it.
//
// A command reads and writes through one ModelFiles. Written and removed files are kept aside, in
// the hidden folder ".<project name>.tervex" beside the project, until commit() moves them over the
// old ones together. A journal makes the set all old or all new after a crash: the next command on
// the model finishes or drops what it finds. Reading sees what has been written aside.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace core {

class UndoSteps;

enum class Access {
    read,  // needs no lock and no writable folder
    write, // holds an advisory lock on the model until the object ends
};

class ModelFiles {
public:
    // `project` is the project file (".td1" or ".bd5", four last characters). Finishes or drops
    // what a command that was cut off left behind. Write access waits for another program's command
    // and fails with FileFailure, before the first byte, where the folder cannot be written.
    ModelFiles(std::filesystem::path project, Access access);
    ~ModelFiles(); // drops what was not committed
    ModelFiles(ModelFiles&&) noexcept;
    ModelFiles& operator=(ModelFiles&&) noexcept;

    // The project file, and <base>: the same less its last four characters.
    const std::filesystem::path& project() const { return project_; }
    const std::string& base() const { return base_; }
    std::filesystem::path folder() const;
    // Name of the model: the file-name part of <base>.
    std::string base_name() const;

    // Companions are named by their extension (".typ"). On reading the exact lower-case name comes
    // first, then the name without regard to case; on writing an existing file keeps its name and a
    // new one gets the lower-case name.
    bool has(std::string_view extension) const;
    // Where the bytes of the companion are now (aside or in the folder); nothing when missing.
    std::optional<std::filesystem::path> find(std::string_view extension) const;
    // The companion's name in the folder, whether it is there or not. For messages.
    std::filesystem::path name_of(std::string_view extension) const;
    // FileFailure when the companion is missing or cannot be read.
    std::string read(std::string_view extension) const;
    std::optional<std::string> read_if(std::string_view extension) const;
    void write(std::string_view extension, std::string_view bytes);
    void remove(std::string_view extension);

    // The project file itself.
    std::string read_project() const;
    void write_project(std::string_view bytes);

    // Any file of the model's folder by its full name.
    bool has_file(const std::filesystem::path& file) const;
    std::optional<std::filesystem::path> find_file(const std::filesystem::path& file) const;
    std::string read_file(const std::filesystem::path& file) const;
    void write_file(const std::filesystem::path& file, std::string_view bytes);
    void copy_file(const std::filesystem::path& from, const std::filesystem::path& to);
    // `to` becomes what `from` is now, and `from` is removed, without copying bytes.
    void move_file(const std::filesystem::path& from, const std::filesystem::path& to);
    void remove_file(const std::filesystem::path& file);
    // `to` becomes what `from`, which lies outside the model's folder, is, with this mode; `from`
    // stays. `itself`: a link in the place of `to` is replaced, not the file behind it.
    void take_over(const std::filesystem::path& from, const std::filesystem::path& to, bool itself,
                   std::uint32_t mode);

    // A file aside that stands for the companion from now on, to be written in place: `fresh`
    // begins empty, otherwise with the present content (empty when there is none). The same path on
    // every call within one command.
    std::filesystem::path open_aside(std::string_view extension, bool fresh);
    std::filesystem::path open_file_aside(const std::filesystem::path& file, bool fresh);

    // From now on the file, which is in the folder, is written where it lies: for a worksheet
    // session, which keeps a copy of it in the folder and writes layer by layer. A file that has
    // another link or cannot be written is kept aside like all others. `copy` is that copy of what
    // the file is now; empty when the unit of work before this one has written the file.
    void write_in_place(const std::filesystem::path& file, const std::filesystem::path& copy = {});
    // Flushes the files that are written in place; from now on they are kept aside again.
    void end_in_place();

    // Makes everything written and removed so far the content of the folder, all or nothing. After
    // a FileFailure the folder is as before. `outside` writes what belongs to the set but lies in
    // another folder: it runs when everything else is in its place, and its failure counts as one
    // of the set.
    void commit(const std::function<void()>& outside = [] {});
    // Forgets everything written and removed since the last commit.
    void rollback();
    bool changed() const { return !changes_.empty(); }

    // From now on `steps`, for as long as they live, keep the old files of every commit. They
    // belong to the same model.
    void keep_steps(std::weak_ptr<UndoSteps> steps) { steps_ = std::move(steps); }

private:
    struct Change {
        std::filesystem::path aside; // empty: the file is to be removed
    };

    void open_hidden_folder();
    void close_hidden_folder() noexcept;
    void require_write_access() const;
    std::filesystem::path companion(std::string_view extension) const;
    std::filesystem::path new_aside_name(std::string_view kind = "new");
    void put_aside(const std::filesystem::path& name, const std::filesystem::path& aside);

    std::filesystem::path project_;
    std::string base_;
    std::filesystem::path hidden_;
    Access access_ = Access::read;
    int lock_ = -1;
    int next_number_ = 1;
    std::map<std::filesystem::path, Change> changes_;
    std::set<std::filesystem::path> in_place_;
    std::weak_ptr<UndoSteps> steps_;
};

// The hidden folder of the model with this project file.
std::filesystem::path hidden_folder_of(const std::filesystem::path& project);

} // namespace core
