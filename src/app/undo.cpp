#include "app/undo.h"

#include "base/paths.h"
#include "core/modelfiles.h"
#include "core/undosteps.h"

#include <fmt/format.h>

#include <utility>

namespace app {

namespace {

using core::Direction;

base::Refusal refusal(Direction direction, std::string text) {
    return {direction == Direction::undo ? "Undo" : "Redo", std::move(text)};
}

std::optional<base::Refusal> refusal_of(Direction direction, const core::UndoSteps& steps) {
    const char* verb = direction == Direction::undo ? "undone" : "redone";
    const auto name = steps.name(direction);
    if (!name) {
        return refusal(direction, fmt::format("There is nothing to be {}.", verb));
    }
    if (const auto file = steps.changed_elsewhere(direction)) {
        return refusal(direction,
                       fmt::format("\"{}\" cannot be {}: {} was changed by another program.", *name,
                                   verb, base::file_name(*file)));
    }
    return std::nullopt;
}

std::optional<base::Refusal> go_over(Direction direction, core::UndoSteps& steps,
                                     core::ModelFiles& files) {
    auto refusal = refusal_of(direction, steps);
    if (!refusal) {
        steps.exchange(direction, files);
    }
    return refusal;
}

// The files may be another program's until the model is locked, so that they are looked at again.
std::optional<base::Refusal> go_over(Direction direction, core::UndoSteps& steps,
                                     const std::filesystem::path& project) {
    if (auto refusal = refusal_of(direction, steps)) {
        return refusal;
    }
    core::ModelFiles files(project, core::Access::write);
    return go_over(direction, steps, files);
}

} // namespace

UndoHistory::UndoHistory(const std::filesystem::path& project)
    : project_(base::absolute_path(project)),
      steps_(std::make_shared<core::UndoSteps>(core::hidden_folder_of(project_))) {}

UndoHistory::~UndoHistory() = default;

UndoHistory::Step::Step(UndoHistory& history, std::string name) : history_(history) {
    history_.begin(std::move(name));
}

UndoHistory::Step::~Step() {
    history_.end();
}

void UndoHistory::begin(std::string name) {
    steps_->begin(std::move(name));
}

void UndoHistory::end() {
    steps_->end();
}

void UndoHistory::attach(core::ModelFiles& files) {
    if (files.project() != project_) {
        throw base::RangeFailure("files of another model are no part of the step");
    }
    files.keep_steps(steps_);
}

std::optional<std::string> UndoHistory::undo_name() const {
    return steps_->name(Direction::undo);
}

std::optional<std::string> UndoHistory::redo_name() const {
    return steps_->name(Direction::redo);
}

std::optional<base::Refusal> UndoHistory::undo() {
    return go_over(Direction::undo, *steps_, project_);
}

std::optional<base::Refusal> UndoHistory::redo() {
    return go_over(Direction::redo, *steps_, project_);
}

std::optional<base::Refusal> UndoHistory::undo(core::ModelFiles& files) {
    return go_over(Direction::undo, *steps_, files);
}

std::optional<base::Refusal> UndoHistory::redo(core::ModelFiles& files) {
    return go_over(Direction::redo, *steps_, files);
}

} // namespace app
