// The one way from the library to the person in front of it: boxes, questions, progress.
#pragma once

#include "base/failure.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace base {

// yes_no_risky: Yes destroys what is there, so that Enter alone means No. All others offer their
// first answer.
enum class Buttons { ok_cancel, yes_no, yes_no_risky, yes_no_cancel };
enum class Answer { ok, yes, no, cancel };
enum class FileChoice { open, save, folder };

// What to do after a failure: repeat the step, go on behind it, leave the command, end the program.
enum class Reaction { retry, next, leave, end };

// A failure as it is shown: what happened and to which file (empty when there is none), and the
// procedure in which it happened as `Interaction::called` was told of it (empty when unknown).
struct Failure {
    std::string what;
    std::filesystem::path file;
    std::string signature = {};
};

class Interaction {
public:
    virtual ~Interaction() = default;

    virtual void message(Icon icon, std::string_view title, std::string_view text) = 0;

    // Asks before anything is changed. A question that nobody answers counts as `cancel`.
    virtual Answer ask(std::string_view title, std::string_view text, Buttons buttons) = 0;

    // `filter` has the form "TD models (*.td1)|*.td1"; `name` is the proposal. Empty: cancelled.
    virtual std::optional<std::filesystem::path> choose_file(FileChoice kind,
                                                             std::string_view title,
                                                             std::string_view filter,
                                                             std::string_view name) = 0;

    // The same where the chosen filter decides how the file is written; filters count from 1.
    struct FilteredFile {
        std::filesystem::path file;
        int filter = 1;
    };
    virtual std::optional<FilteredFile> choose_filtered_file(FileChoice kind,
                                                             std::string_view title,
                                                             std::string_view filter,
                                                             std::string_view name) {
        auto file = choose_file(kind, title, filter, name);
        return file ? std::optional(FilteredFile{*std::move(file)}) : std::nullopt;
    }

    virtual void status(std::string_view text) = 0;

    // Progress of a long operation, 0 to 100 percent; above 100 counts as 100. True: the user wants
    // to stop. Never throws; the caller decides what stays.
    virtual bool show_meter(int percent) = 0;

    virtual void busy(bool on) = 0;
    virtual void beep() = 0;
    virtual Reaction failure(const Failure& failure) = 0;

    // A step that may fail begins. `signature` has the form "[Module] Procedure(arguments)", the
    // module may be missing. Kept for the report of a failure.
    virtual void called(std::string_view) {}
};

inline void show(Interaction& user, const Refusal& refusal) {
    user.message(refusal.icon, refusal.title, refusal.text);
}

} // namespace base
