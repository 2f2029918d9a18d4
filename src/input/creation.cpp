#include "input/creation.h"

#include "base/interaction.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "report/attempt.h"

#include <fmt/format.h>

namespace input {

namespace {

constexpr int meter_steps = 150; // one for each block

} // namespace

Creation::Creation(core::Project& model, core::ModelFiles& model_files, base::Interaction& asked)
    : project(model), files(model_files), user(asked), arrays(files, project), grid(arrays.grid()),
      stream(files.open_aside(".nml", true), files.name_of(".nml")) {}

bool Creation::attempt(std::string_view name, const std::function<void()>& step) {
    if (ended_) {
        return false;
    }
    const auto outcome = report::attempt(user, fmt::format("CreateTervexNml({})", name), step);
    if (outcome != report::Outcome::done) {
        result_ = {.InputError = true, .failed = true};
    }
    if (outcome == report::Outcome::left) {
        end();
    }
    return outcome == report::Outcome::done;
}

void Creation::block(std::string_view keyword, const std::function<void()>& values) {
    if (!ended_) {
        stream.key(keyword);
        values_of_block(keyword, values);
    }
}

void Creation::block(std::string_view keyword, std::string_view text) {
    block(keyword, [this, text] { stream.text_line(text); });
}

void Creation::block(std::string_view keyword, int number, const std::function<void()>& values) {
    if (!ended_) {
        stream.key(keyword, number);
        values_of_block(keyword, values);
    }
}

void Creation::values_of_block(std::string_view keyword, const std::function<void()>& values) {
    const std::uint64_t begin = stream.position();
    const bool written = attempt(keyword, [this, begin, &values] {
        stream.cut_back(begin);
        values();
    });
    if (!written) {
        stream.cut_back(begin);
    }
    stream.require_written();
    advance();
}

void Creation::advance() {
    ++blocks_;
    if (user.show_meter(blocks_ * 100 / meter_steps)) {
        end();
    }
}

void Creation::end_with(std::string_view title, std::string_view text) {
    user.message(base::Icon::warning, title, text);
    end();
}

void Creation::end() {
    result_.InputError = true;
    ended_ = true;
}

int Creation::TotalSpecies() const {
    return ChemicalSpecies() + (tracers ? tracers->ActiveTracers() : 0);
}

} // namespace input
