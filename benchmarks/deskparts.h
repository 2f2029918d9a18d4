// What the benchmarks of the desktop program share.
#pragma once

#include "base/interaction.h"

#include <memory>

class QApplication;

namespace bench {

// Nobody in front of the program.
class Silent : public base::Interaction {
    void message(base::Icon, std::string_view, std::string_view) override {}
    base::Answer ask(std::string_view, std::string_view, base::Buttons) override {
        return base::Answer::cancel;
    }
    std::optional<std::filesystem::path> choose_file(base::FileChoice, std::string_view,
                                                     std::string_view, std::string_view) override {
        return std::nullopt;
    }
    void status(std::string_view) override {}
    bool show_meter(int) override { return false; }
    void busy(bool) override {}
    void beep() override {}
    base::Reaction failure(const base::Failure&) override { return base::Reaction::leave; }
};

// The toolkit without a screen, for the time of the run.
std::shared_ptr<QApplication> screenless_application();

} // namespace bench
