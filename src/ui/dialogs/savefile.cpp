#include "ui/dialogs/savefile.h"

#include "base/paths.h"

#include <fmt/format.h>

namespace ui {

bool may_write(base::Interaction& user, std::string_view title, const std::filesystem::path& file) {
    return !base::is_file(file) ||
           user.ask(title, fmt::format("File exist '{}' overwrite ?", file.string()),
                    base::Buttons::yes_no_risky) == base::Answer::yes;
}

std::optional<base::Interaction::FilteredFile> choose_to_write(base::Interaction& user,
                                                               std::string_view title,
                                                               std::string_view filter) {
    auto chosen = user.choose_filtered_file(base::FileChoice::save, title, filter, "");
    return chosen && may_write(user, title, chosen->file) ? chosen : std::nullopt;
}

} // namespace ui
