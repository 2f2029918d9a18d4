// Streams that become models.
#include "checks.h"
#include "scratchfolder.h"
#include "targets.h"

#include "app/importmodel.h"
#include "base/numbertext.h"
#include "results/field.h"
#include "td/terminaluser.h"

#include <chrono>
#include <sstream>

namespace fuzz {

namespace {

namespace fs = std::filesystem;

// A stream may ask for a large grid by a few runs, which is right and takes long.
bool is_small(const fs::path& file) {
    constexpr int most_cells = 20'000;
    std::int64_t cells = 1;
    for (const char* const key : {"# I0", "# J0", "# K0", "# IDIM", "# JDIM", "# KDIM"}) {
        results::StreamReader stream(file);
        while (stream.find_prefix(key)) {
            const auto line = stream.next_line();
            const int count = base::leading_int32(line.value_or(""));
            cells *= std::max(count, 1);
            if (cells > most_cells) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

void modelimport(std::string_view bytes) {
    const ScratchFolder folder;
    const fs::path file = folder.write("s.nlo", bytes);
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(1));
    if (!is_small(file)) {
        return;
    }
    folder.write("m.td1", "[VERSION]\r\nNUMBER=5000\r\n");
    folder.write("m.per", "stale");
    const auto before = folder.files();
    const unsigned choice = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.back());
    app::ImportAnswers answers;
    answers.choices.GridOrientation = static_cast<int>(choice % 3);
    answers.choices.individual_porosity = (choice & 4U) == 0;
    answers.choices.individual_permeability = (choice & 8U) == 0;
    answers.overwrite = true;
    std::ostringstream messages;
    td::TerminalUser user(messages, td::StandingAnswer::yes, true);
    bool imported = false;
    succeeds([&] {
        imported = app::file_import_model(file, folder.path() / "m.td1", answers, user)
                       .workspace.has_value();
    });
    require(imported || folder.files() == before, "a failed import changed the folder");
    require(!imported ||
                succeeds([&] { app::load_model(folder.path() / "m.td1", core::Access::read); }),
            "an imported model cannot be opened");
}

} // namespace fuzz
