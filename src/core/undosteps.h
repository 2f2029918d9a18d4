// The steps of an open model: which files each command has changed, and what they were before.
//
// Every file of a step has one other side in the undo folder: before the step is taken back its old
// content, afterwards the new one. Taking back and doing again are the same exchange. Contents are
// numbered, so that a step is only gone over where each of its files is what the step has left or
// found, and not what another program has made of it. The bytes kept are hard links of files that
// were replaced; nothing here ever fails a command.
#pragma once

#include "core/undofolder.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace core {

struct FileMove;
class ModelFiles;

struct UndoLimits {
    std::size_t steps = 100;
    std::uint64_t bytes = std::uint64_t{1} << 30;
};

enum class Direction { undo, redo };

class UndoSteps {
public:
    // `hidden` is the hidden folder of the model (hidden_folder_of).
    explicit UndoSteps(std::filesystem::path hidden, UndoLimits limits = {});

    const std::filesystem::path& hidden() const { return folder_.hidden(); }

    // What is kept between begin() and end() is one step; pairs inside another belong to it.
    void begin(std::string name);
    void end() noexcept;
    bool open() const { return depth_ > 0; }

    // ModelFiles tells: before the files of a commit are moved, when that has failed, and when a
    // file is going to be written where it lies, of which `copy` has the bytes.
    void keep(const std::vector<FileMove>& moves) noexcept;
    void forget() noexcept;
    void keep_in_place(const std::filesystem::path& file,
                       const std::filesystem::path& copy) noexcept;

    // Name of the step that exchange() would go over; nothing: there is none, or a step is open.
    std::optional<std::string> name(Direction direction) const;
    // A file of that step which another program has changed.
    std::optional<std::filesystem::path> changed_elsewhere(Direction direction) const;
    // Exchanges the files of that step with those kept in one commit of `files`, which have write
    // access. FileFailure: folder and steps are as before.
    void exchange(Direction direction, ModelFiles& files);

private:
    struct KeptFile {
        std::string name;           // in the model's folder
        bool itself = true;         // false: the bytes behind the link of this name
        std::filesystem::path kept; // the other side; empty: there is no file
        std::uint64_t bytes = 0;
        std::uint32_t mode = 0;    // of the other side
        int before = 0, after = 0; // numbers of the contents
    };
    struct Step {
        std::string name;
        std::vector<KeptFile> files;
    };
    // What a file looks like from outside: the name, and what is behind a link. While that stays
    // the same, the bytes need not be read.
    struct Stamp {
        struct Part {
            std::uint64_t mode = 0, device = 0, node = 0, size = 0;
            std::int64_t modified_s = 0, modified_ns = 0, changed_s = 0, changed_ns = 0;
            bool operator==(const Part&) const = default;
        } name, content;
        bool operator==(const Stamp&) const = default;
    };
    struct Known {
        Stamp stamp;
        std::uint64_t hash = 0;
        int content = 0;
    };

    std::filesystem::path path_of(const std::string& name) const;
    std::filesystem::path place_of(const KeptFile& file) const;
    Stamp stamp_of(const std::string& name) const;
    bool is_still(const Known& known, const std::string& name) const;
    int content_now(const std::string& name);
    void learn(const std::string& name, int content);
    const KeptFile* find_open(const std::string& name) const;
    KeptFile new_file(const std::filesystem::path& file);
    void keep_side(KeptFile& file, const std::filesystem::path& bytes);
    void keep_move(const FileMove& move);
    bool is_unchanged(const KeptFile& file) const;
    void close_step();
    void drop(const std::vector<KeptFile>& files) noexcept;
    bool over_limits() const;
    void hold_limits() noexcept;
    void lose() noexcept;
    const Step* next(Direction direction) const;
    std::vector<KeptFile> turn_over(const Step& step, ModelFiles& files);

    UndoFolder folder_;
    UndoLimits limits_;
    std::vector<Step> steps_;
    std::size_t done_ = 0; // those behind can be redone
    Step open_;
    int depth_ = 0;
    std::size_t settled_ = 0; // files of the open step that belong to commits that are over
    bool lost_ = false;       // the open step could not be kept
    std::map<std::string, Known> known_;
    int next_content_ = 1;
};

} // namespace core
