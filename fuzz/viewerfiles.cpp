// Files of the Result Viewer.
#include "checks.h"
#include "targets.h"

#include "base/numbertext.h"
#include "results/viewersettings.h"

#include <sstream>

namespace fuzz {

namespace {

results::ViewerSettings loaded(std::string_view bytes) {
    std::ostringstream boxes;
    td::TerminalUser user(boxes, td::StandingAnswer::none);
    return results::ViewerSettings::LoadINI(bytes, user);
}

// Every field that was read can be set again, but for an angle with more than digits.
void set_again(const results::ViewerSettings& settings) {
    results::ViewerSettings copy;
    const auto table = results::viewer_setting_table();
    for (std::size_t n = 0; n < table.size(); ++n) {
        require(copy.set(table[n].name, settings.value(n)) ||
                    table[n].kind == results::SettingKind::angle,
                "a field that was read cannot be set");
    }
}

} // namespace

void viewersettings(std::string_view bytes) {
    require_stable(bytes, [](std::string_view b) { return loaded(b).SaveINI(); });
    results::ViewerSettings settings = loaded(bytes);
    set_again(settings);
    const std::string x = settings.value("XAngle");
    settings.turn(static_cast<std::int64_t>(bytes.size()) + 1);
    require(settings.value("XSpin") == "1" ? base::leading_number(settings.value("XAngle")) < 360
                                           : settings.value("XAngle") == x,
            "an axis turns wrongly");
    settings.parameter_code();
}

} // namespace fuzz
