// Commands of `td` as data: name, arguments, options and what runs. Help, usage and parsing come
// from these tables.
#pragma once

#include "report/callstack.h"
#include "td/arguments.h"
#include "td/terminaluser.h"

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace app {
struct Workspace;
}
namespace base {
struct Refusal;
}
namespace core {
class Form;
enum class Access;
} // namespace core

namespace td {

enum ExitStatus : int { done = 0, refused = 1, wrong_usage = 2, run_time_failure = 3 };

// Thrown for arguments that the command cannot mean; ends with exit status 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// What a run takes from the process around it.
struct Surroundings {
    report::Clock now = std::chrono::system_clock::now;
    bool keeps_failures = false; // run-time failures are appended to td.EPT in the program folder
    std::filesystem::path program_folder = {}; // empty: that of the executable
};

struct Context {
    const Arguments& args;
    TerminalUser& user;
    std::istream& in;
    std::ostream& out;
    std::filesystem::path install; // the program folder
    const report::Clock& now;

    // One record on standard output: fields separated by one TAB.
    void record(std::initializer_list<std::string_view> fields) const;
    void record(const std::vector<std::string>& fields) const;
    // Shows a refusal and gives the exit status for it.
    int refuse(const base::Refusal& refusal) const;
};

// How the text of an option becomes that of a field.
enum class FieldValue {
    text,     // as typed
    zero_one, // "0" or "1"
    word,     // index of the word in `words`
    integer,  // a whole number from `low` to `high`
};

// An option that fills a field of a form.
struct FieldOption {
    const char* name;  // "--flow"
    const char* field; // "FluidFlowCheck"
    const char* help;
    FieldValue kind = FieldValue::text;
    const char* words = ""; // "simulated|prescribed"
    int low = 0, high = 0;
};

struct Command {
    const char* name; // "grid set"
    const char* help;
    std::span<const ArgumentSpec> arguments;
    std::span<const OptionSpec> options;
    bool asks; // takes --yes and --no
    int (*run)(Context&);
    std::span<const FieldOption> fields = {};
};
// All options of a command: its own, those of its form, and --yes and --no.
std::vector<OptionSpec> all_options(const Command& command);

// One table per group of commands.
std::span<const Command> project_commands();
std::span<const Command> array_commands();
std::span<const Command> grid_commands();
std::span<const Command> point_commands();
std::span<const Command> type_commands();
std::span<const Command> time_commands();
std::span<const Command> rock_commands();
std::span<const Command> input_commands();
std::span<const Command> result_commands();
std::span<const Command> viewer_commands();
std::span<const Command> monitor_commands();
std::span<const Command> run_commands();
std::span<const Command> zone_commands();
std::span<const Command> edit_commands();
std::span<const Command> plot_commands();
std::span<const Command> report_commands();
std::span<const Command> vtk_commands();
std::span<const Command> cache_commands();
std::span<const Command> import_commands();

// Options that several groups share.
inline constexpr ArgumentSpec model_argument{"MODEL", "project file of the model (.td1)"};
inline constexpr OptionSpec install_option{"--install", "DIR", "program folder"};

// Runs `work` on the model of the first argument. With write access the command's files are
// committed and the project file is written when `work` gives 0, otherwise nothing is changed.
int on_model(Context& context, core::Access access,
             const std::function<int(app::Workspace&)>& work);
// The same, when the project file is not to be written: `work` commits by itself.
int on_model_files(Context& context, core::Access access,
                   const std::function<int(app::Workspace&)>& work);

// Fills the fields from the options that were given; shows the notices that this raises.
void fill_form(Context& context, core::Form& form, std::span<const FieldOption> fields);
// check(), ask(), save(), notices: the OK of a dialog. Exit status.
int accept_form(Context& context, app::Workspace& workspace, core::Form& form);
// A whole dialog: loads `form`, fills it from the command's options, accepts it.
int run_form(Context& context, core::Form& form, std::span<const FieldOption> fields);
// The index of `text` in a list such as "simulated|prescribed"; UsageError when it is not there.
int index_of_word(std::string_view text, std::string_view words, std::string_view what);

// Runs one command line (without the program's name); what `main` does. Exit status.
int run_program(const std::vector<std::string>& words, std::istream& in, std::ostream& out,
                std::ostream& err, const Surroundings& surroundings = {});

} // namespace td
