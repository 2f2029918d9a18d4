// Undo and redo of whole commands on an open model.
//
// A program that keeps a model open makes one history when the opening is done. Each command is a
// step: between begin() and end() every commit of the attached files belongs to it. The files that
// the step replaced are kept in the hidden folder of the model until the history ends; undo() and
// redo() exchange them with those of the folder in one commit. What the program holds of the model
// in memory has to be read again behind either. One thread at a time.
#pragma once

#include "base/failure.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace core {
class ModelFiles;
class UndoSteps;
} // namespace core

namespace app {

class UndoHistory {
public:
    // `project` is the project file. Touches nothing before the first step changes a file.
    explicit UndoHistory(const std::filesystem::path& project);
    ~UndoHistory(); // what was kept is gone
    UndoHistory(const UndoHistory&) = delete;
    UndoHistory& operator=(const UndoHistory&) = delete;

    // begin() and end() as one object.
    class Step {
    public:
        Step(UndoHistory& history, std::string name);
        ~Step();
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        UndoHistory& history_;
    };
    [[nodiscard]] Step step(std::string name) { return {*this, std::move(name)}; }

    // A step may hold others: the outermost gives its name (the caption of the command) and its
    // extent, such as a session of the worksheet from its opening to its end. A step that has
    // changed no byte is none. One that has drops what could be redone.
    void begin(std::string name);
    void end();
    // Commits of `files` belong to the open step from now on, also of later ones. RangeFailure for
    // the files of another model.
    void attach(core::ModelFiles& files);

    // The step that undo() or redo() would go over; nothing while a step is open. The names of all
    // vanish where the old files could not be kept, for a command never fails for that.
    std::optional<std::string> undo_name() const;
    std::optional<std::string> redo_name() const;

    // Takes the last step back (does it again). Refused when there is none, or when another program
    // has changed a file of the step; FileFailure when the files cannot be exchanged. Either leaves
    // the folder as it was. A program that holds the model with write access gives these files,
    // with nothing uncommitted.
    std::optional<base::Refusal> undo();
    std::optional<base::Refusal> redo();
    std::optional<base::Refusal> undo(core::ModelFiles& files);
    std::optional<base::Refusal> redo(core::ModelFiles& files);

private:
    std::filesystem::path project_;
    std::shared_ptr<core::UndoSteps> steps_;
};

} // namespace app
