// A user who knows beforehand which boxes will come, in which order, and what to answer.
//
// A box that was not expected and an expected box that did not come fail the test. Texts are
// compared whole, line breaks included.
#pragma once

#include "base/interaction.h"

#include <deque>
#include <string>
#include <vector>

namespace support {

class ScriptedUser : public base::Interaction {
public:
    ScriptedUser() = default;
    ScriptedUser(const ScriptedUser&) = delete;
    ScriptedUser& operator=(const ScriptedUser&) = delete;
    ~ScriptedUser() override;

    void expect_message(std::string title, std::string text);
    void expect_question(std::string title, std::string text, base::Answer answer);
    // `what` is a part of the failure's text.
    void expect_failure(std::string what, base::Reaction reaction);
    // An empty path cancels the dialog.
    void expect_file(std::string title, std::filesystem::path path, int filter = 1);

    // What show_meter answers from now on.
    void set_stop(bool stop) { stop_ = stop; }

    const std::vector<std::string>& statuses() const { return statuses_; }
    const std::vector<int>& meter() const { return meter_; }
    int beeps() const { return beeps_; }
    bool is_busy() const { return busy_; }

    void message(base::Icon icon, std::string_view title, std::string_view text) override;
    base::Answer ask(std::string_view title, std::string_view text, base::Buttons buttons) override;
    std::optional<std::filesystem::path> choose_file(base::FileChoice kind, std::string_view title,
                                                     std::string_view filter,
                                                     std::string_view name) override;
    std::optional<FilteredFile> choose_filtered_file(base::FileChoice kind, std::string_view title,
                                                     std::string_view filter,
                                                     std::string_view name) override;
    void status(std::string_view text) override { statuses_.emplace_back(text); }
    bool show_meter(int percent) override;
    void busy(bool on) override { busy_ = on; }
    void beep() override { ++beeps_; }
    base::Reaction failure(const base::Failure& failure) override;

private:
    enum class Kind { message, question, failure, file };
    struct Step {
        Kind kind;
        std::string title;
        std::string text;
        base::Answer answer = base::Answer::cancel;
        base::Reaction reaction = base::Reaction::leave;
        std::filesystem::path path;
        int filter = 1;
    };

    static std::string described(Kind kind, std::string_view title, std::string_view text);
    // Takes the next step when it is the box that came; fails the test otherwise.
    std::optional<Step> take(Kind kind, std::string_view title, std::string_view text);

    std::deque<Step> steps_;
    std::vector<std::string> statuses_;
    std::vector<int> meter_;
    int beeps_ = 0;
    bool busy_ = false;
    bool stop_ = false;
};

} // namespace support
