#include "ui/modelopening.h"

#include "app/workspace.h"
#include "base/paths.h"
#include "core/modelfiles.h"
#include "grid/worksheetfiles.h"
#include "ui/desk.h"

#include <optional>

namespace ui {

namespace {

constexpr const char* question =
    "The worksheet of this model was open when the program ended.\n\n"
    "Yes keeps what was entered there, No goes back to what was there before. "
    "Cancel opens the model as it lies in the folder and asks again the next time.";

std::optional<grid::Recovery> cut_off_recovery(const std::filesystem::path& path,
                                               base::Interaction& user) {
    if (app::name_refusal(path) || !base::is_file(path)) {
        return std::nullopt; // the opening tells it
    }
    const core::ModelFiles files(path, core::Access::read);
    if (!grid::has_cut_off_session(files)) {
        return std::nullopt;
    }
    if (!grid::cut_off_session_differs(files)) {
        return grid::Recovery::restore;
    }
    switch (user.ask("Open model", question, base::Buttons::yes_no_cancel)) {
    case base::Answer::yes:
        return grid::Recovery::recover;
    case base::Answer::no:
        return grid::Recovery::restore;
    default:
        return std::nullopt;
    }
}

} // namespace

bool open_with_recovery(Desk& desk, const std::filesystem::path& path) {
    std::optional<grid::Recovery> recovery;
    const auto outcome = desk.attempt("Open_Model(FileName)",
                                      [&] { recovery = cut_off_recovery(path, desk.user()); });
    return outcome != report::Outcome::left && desk.open(path, recovery);
}

} // namespace ui
