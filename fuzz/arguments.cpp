// Command lines of `td` on a small model.
#include "checks.h"
#include "scratchfolder.h"
#include "targets.h"

#include "td/command.h"
#include "td/help.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace fuzz {

namespace {

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

constexpr std::size_t most_words = 24;
constexpr char command_end = '\x1E';

// What makes the model, a command a line.
constexpr const char* model_commands =
    "new m.td1\n"
    "grid set m.td1 --columns 3 --rows 2 --layers 2 --finish\n"
    "array write m.td1 1401 --define\n"
    "array write m.td1 1403 --define\n"
    "array write m.td1 5 --define\n"
    "array write m.td1 11 --define\n"
    "array copy-period m.td1 1401 1 4\n"
    "type set m.td1 --flow 1 --transport 1\n"
    "coupling set m.td1\n"
    "info-results set m.td1\n"
    "solver set m.td1 bicgstab\n"
    "rock set m.td1 --zones 3 --yes\n"
    "tracer set m.td1 --tracer 1 --active 1\n"
    "dispersion set m.td1 --diffusion 0.5\n"
    "outer-iteration set m.td1 --active 1\n"
    "boxmodel set m.td1 --active 1 --zones 1,2\n"
    "periods set m.td1 --unit 5\n"
    "periods save m.td1 m.tpr\n"
    "points set m.td1 1 --name B1 --active 1 --x 1 --y 1 --layer 1\n"
    "points export m.td1 m.bor\n"
    "observations add m.td1 B1 --time 3\n"
    "observations export m.td1 m.obs\n"
    "reinjection set m.td1 --well 1 --species 1 --value 1";

Words split(std::string_view text, char separator) {
    Words words;
    while (!text.empty()) {
        words.emplace_back(text.substr(0, text.find(separator)));
        text.remove_prefix(std::min(text.size(), words.back().size() + 1));
    }
    return words;
}

int td(const Words& words) {
    std::istringstream in("1 2 3 1 2 3\n");
    std::ostringstream out, err;
    return td::run_program(words, in, out, err);
}

// Makes the folder the current one, and the user's own, for as long as the object lives.
class Visit {
public:
    explicit Visit(const fs::path& folder) : home_(fs::current_path()) {
        fs::current_path(folder);
        ::setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
        ::setenv("XDG_DATA_HOME", folder.c_str(), 1);
    }
    ~Visit() {
        std::error_code ignored;
        fs::current_path(home_, ignored);
    }
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

private:
    fs::path home_;
};

ScratchFolder::Files made_model() {
    const ScratchFolder folder;
    const Visit visit(folder.path());
    for (const std::string& line : split(model_commands, '\n')) {
        require(td(split(line, ' ')) == td::done, "the model cannot be made");
    }
    return folder.files();
}

// No word may lead out of the folder.
bool stays_inside(const Words& words) {
    return words.size() <= most_words && std::ranges::none_of(words, [](const std::string& word) {
               return word.find_first_of("/\\") != std::string::npos ||
                      word.find("..") != std::string::npos;
           });
}

// Where a command has a program folder, it is the model's.
void keep_program_folder_inside(Words& words) {
    td::for_each_command([&](const td::Command& command) {
        const Words name = td::command_words(command);
        const bool has_folder = std::ranges::any_of(command.options, [](const td::OptionSpec& o) {
            return std::string_view(o.name) == td::install_option.name;
        });
        const auto behind = static_cast<std::ptrdiff_t>(name.size());
        if (has_folder && name.size() <= words.size() &&
            std::equal(name.begin(), name.end(), words.begin())) {
            words.insert(words.begin() + behind, {td::install_option.name, "."});
        }
    });
}

void run_on_fresh_model(Words words) {
    static const ScratchFolder::Files model = made_model();
    static const ScratchFolder folder;
    if (!stays_inside(words)) {
        return;
    }
    keep_program_folder_inside(words);
    folder.restore(model);
    const Visit visit(folder.path());
    const int status = td(words);
    require(status >= td::done && status <= td::run_time_failure, "no exit status of td");
    require(!fs::exists(".m.tervex"), "the hidden folder is left behind");
    require(status == td::done || folder.files() == model, "a failed command changed a file");
}

} // namespace

void arguments(std::string_view input) {
    for (const std::string& line : split(input, command_end)) {
        run_on_fresh_model(split(line, '\0'));
    }
}

} // namespace fuzz
