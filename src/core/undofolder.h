// Where a program that keeps a model open keeps the files that its commands have replaced: the
// folder "undo.<process>.<n>" in the hidden folder of the model. Its owner holds an advisory lock
// on it; a folder without one was left by a crash, and the next command on the model removes it.
#pragma once

#include <filesystem>
#include <string_view>

namespace core {

class UndoFolder {
public:
    // `hidden` is the hidden folder of the model. Touches nothing.
    explicit UndoFolder(std::filesystem::path hidden) : hidden_(std::move(hidden)) {}
    ~UndoFolder(); // with all files, and the hidden folder when nothing else is in it
    UndoFolder(const UndoFolder&) = delete;
    UndoFolder& operator=(const UndoFolder&) = delete;

    const std::filesystem::path& hidden() const { return hidden_; }

    // A second name of what lies at `place` (of the link itself when it is one), or a copy where
    // the file system has no hard links. The caller holds the lock on the model. FileFailure.
    std::filesystem::path keep(const std::filesystem::path& place);
    void drop(const std::filesystem::path& kept) noexcept;
    void clear() noexcept;

private:
    void make();

    std::filesystem::path hidden_, folder_; // empty until something is kept
    int lock_ = -1;
    int next_number_ = 1;
};

bool is_undo_folder(std::string_view name);
// Removes the folder unless a living program holds it. The caller holds the lock on the model.
void drop_dead_undo_folder(const std::filesystem::path& folder) noexcept;

} // namespace core
