// Commands that are a whole session of the worksheet: opened on an item, left with Yes.
#pragma once

#include "grid/worksheet.h"
#include "td/command.h"

#include <functional>
#include <optional>

namespace td {

// Shows the user everything, but answers the question about other elevations itself when it has an
// answer.
class TakeOverUser : public base::Interaction {
public:
    TakeOverUser(base::Interaction& user, std::optional<base::Answer> answer)
        : user_(user), answer_(answer) {}

    void message(base::Icon icon, std::string_view title, std::string_view text) override;
    base::Answer ask(std::string_view title, std::string_view text, base::Buttons buttons) override;
    std::optional<std::filesystem::path> choose_file(base::FileChoice kind, std::string_view title,
                                                     std::string_view filter,
                                                     std::string_view name) override;
    void status(std::string_view text) override;
    bool show_meter(int percent) override;
    void busy(bool on) override;
    void beep() override;
    base::Reaction failure(const base::Failure& failure) override;
    void called(std::string_view signature) override { user_.called(signature); }

private:
    base::Interaction& user_;
    std::optional<base::Answer> answer_;
};

// Options of such commands.
inline constexpr OptionSpec param_option{"--param", "N", "parameter number of the edited item",
                                         false, true};
inline constexpr OptionSpec session_period_option{"--period", "P", "period, 1 to 1000 (default 1)"};
inline constexpr OptionSpec session_layer_option{"--layer", "L", "layer (default 1)"};
inline constexpr OptionSpec session_array_option{"--array", "K",
                                                 "which of the item's arrays (default 1)"};

// The item of --param; UsageError for a number that no menu command edits.
grid::EditRequest request_of(const Context& context, const app::Workspace& workspace);

// Opens the worksheet on the item of --param, shows --period and --layer, runs `work` and leaves
// with Yes when it gives 0, with No otherwise and after a failure. The question whether other
// elevations are to be taken over counts as answered with No. Needs a mesh.
int on_worksheet(Context& context, const std::function<int(grid::Worksheet&)>& work);

// The same for a command that only reads: no session is opened, nothing is created.
int on_item(Context& context,
            const std::function<int(app::Workspace&, const grid::EditRequest&)>& work);

} // namespace td
