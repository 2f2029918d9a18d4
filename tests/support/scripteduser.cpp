#include "support/scripteduser.h"

#include <gtest/gtest.h>

#include <utility>

namespace support {

ScriptedUser::~ScriptedUser() {
    for (const Step& step : steps_)
        ADD_FAILURE() << "did not come: " << described(step.kind, step.title, step.text);
}

void ScriptedUser::expect_message(std::string title, std::string text) {
    steps_.push_back({Kind::message, std::move(title), std::move(text), {}, {}, {}});
}

void ScriptedUser::expect_question(std::string title, std::string text, base::Answer answer) {
    steps_.push_back({Kind::question, std::move(title), std::move(text), answer, {}, {}});
}

void ScriptedUser::expect_failure(std::string what, base::Reaction reaction) {
    steps_.push_back({Kind::failure, {}, std::move(what), {}, reaction, {}});
}

void ScriptedUser::expect_file(std::string title, std::filesystem::path path, int filter) {
    steps_.push_back({Kind::file, std::move(title), {}, {}, {}, std::move(path), filter});
}

void ScriptedUser::message(base::Icon, std::string_view title, std::string_view text) {
    take(Kind::message, title, text);
}

base::Answer ScriptedUser::ask(std::string_view title, std::string_view text, base::Buttons) {
    const auto step = take(Kind::question, title, text);
    return step ? step->answer : base::Answer::cancel;
}

std::optional<std::filesystem::path> ScriptedUser::choose_file(base::FileChoice kind,
                                                               std::string_view title,
                                                               std::string_view filter,
                                                               std::string_view name) {
    const auto chosen = choose_filtered_file(kind, title, filter, name);
    return chosen ? std::optional(chosen->file) : std::nullopt;
}

std::optional<base::Interaction::FilteredFile>
ScriptedUser::choose_filtered_file(base::FileChoice, std::string_view title, std::string_view,
                                   std::string_view) {
    const auto step = take(Kind::file, title, {});
    if (!step || step->path.empty())
        return std::nullopt;
    return FilteredFile{step->path, step->filter};
}

bool ScriptedUser::show_meter(int percent) {
    meter_.push_back(percent);
    return stop_;
}

base::Reaction ScriptedUser::failure(const base::Failure& failure) {
    const auto step = take(Kind::failure, {}, failure.what);
    return step ? step->reaction : base::Reaction::leave;
}

std::string ScriptedUser::described(Kind kind, std::string_view title, std::string_view text) {
    static constexpr const char* kinds[] = {"message", "question", "failure", "file dialog"};
    std::string result = kinds[static_cast<std::size_t>(kind)];
    return result.append(" [").append(title).append("] [").append(text).append("]");
}

std::optional<ScriptedUser::Step> ScriptedUser::take(Kind kind, std::string_view title,
                                                     std::string_view text) {
    const auto fits = [&](const Step& step) {
        if (step.kind != kind || step.title != title)
            return false;
        return kind == Kind::failure ? text.find(step.text) != std::string_view::npos
                                     : step.text == text;
    };
    if (steps_.empty() || !fits(steps_.front())) {
        ADD_FAILURE() << "came: " << described(kind, title, text) << "\nexpected: "
                      << (steps_.empty() ? "nothing"
                                         : described(steps_.front().kind, steps_.front().title,
                                                     steps_.front().text));
        return std::nullopt;
    }
    Step step = std::move(steps_.front());
    steps_.pop_front();
    return step;
}

} // namespace support
