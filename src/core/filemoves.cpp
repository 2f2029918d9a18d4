#include "core/filemoves.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "core/movelist.h"
#include "core/undofolder.h"

#include <fmt/format.h>

#include <cerrno>
#include <charconv>
#include <optional>
#include <set>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace core {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view aside_of_a_name = "name.";

void flush_folder(const fs::path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

bool is_link(const fs::path& file) {
    std::error_code ignored;
    return fs::is_symlink(file, ignored);
}

// A link has no bytes of its own.
void flush_file(const fs::path& file, const fs::path& shown) {
    if (!is_link(file)) {
        Descriptor(file, O_RDONLY, shown).flush();
    }
}

fs::path copy_beside(const fs::path& target) {
    return target.parent_path() / fmt::format(".{}.tervex-new", target.filename().string());
}

// Puts `from` in the place of `target`. Across file systems by a copy beside the target, so that
// the last step is a rename here, too.
void replace(const fs::path& from, const fs::path& target) {
    if (::rename(from.c_str(), target.c_str()) == 0) {
        return;
    }
    if (errno != EXDEV) {
        throw_errno("written", target);
    }
    const fs::path beside = copy_beside(target);
    try {
        copy_as_it_is(from, beside, target);
        flush_file(beside, target);
        if (::rename(beside.c_str(), target.c_str()) != 0) {
            throw_errno("written", target);
        }
    } catch (...) {
        ::unlink(beside.c_str());
        throw;
    }
    ::unlink(from.c_str());
}

// Names in the list of moves stand one a line; control characters and "%" as %XX.
std::string escaped(const fs::path& file) {
    std::string text;
    for (const char c : file.string()) {
        const auto byte = static_cast<unsigned char>(c);
        text += byte < 0x20 || c == '%' ? fmt::format("%{:02X}", byte) : std::string(1, c);
    }
    return text;
}

std::string unescaped(std::string_view text) {
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned value = 0;
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(text.data() + i + 1, text.data() + i + 3, value, 16).ec ==
                std::errc()) {
            name += static_cast<char>(value);
            i += 2;
        } else {
            name += text[i];
        }
    }
    return name;
}

constexpr std::string_view list_end = "end";

void write_list(const fs::path& hidden, const std::vector<FileMove>& moves) {
    std::string text;
    for (const FileMove& move : moves) {
        // No name has a path: the model's folder may be moved before the next command.
        text += escaped(move.aside.filename()) + '\n' + escaped(move.target.filename()) + '\n' +
                escaped(move.old.filename()) + '\n';
    }
    text += list_end;
    const fs::path draft = hidden / "draft";
    {
        Descriptor out(draft, O_WRONLY | O_CREAT | O_TRUNC, draft);
        out.write(text);
        out.flush();
    }
    if (::rename(draft.c_str(), (hidden / "journal").c_str()) != 0) {
        throw_errno("written", hidden / "journal");
    }
    // The first move waits for the journal and for the name of the folder that holds it.
    Descriptor(hidden, O_RDONLY | O_DIRECTORY, hidden).flush();
    flush_folder(hidden.parent_path());
}

std::optional<std::vector<FileMove>> read_list(const fs::path& hidden, const char* name) {
    if (!is_there(hidden / name)) {
        return std::nullopt;
    }
    const std::string text = base::read_bytes(hidden / name);
    std::vector<std::string_view> lines = base::split_lines(text);
    if (lines.empty() || lines.back() != list_end || lines.size() % 3 != 1) {
        return std::nullopt;
    }
    // Whatever a list says, only files of the model are moved.
    const auto inside = [](const fs::path& folder, std::string_view line) {
        const fs::path file = fs::path(unescaped(line)).filename();
        return file.empty() || file == "." || file == ".." ? fs::path() : folder / file;
    };
    std::vector<FileMove> moves;
    for (std::size_t i = 0; i + 1 < lines.size(); i += 3) {
        moves.push_back({inside(hidden, lines[i]), inside(hidden.parent_path(), lines[i + 1]),
                         inside(hidden, lines[i + 2])});
        if (moves.back().target.empty()) {
            return std::nullopt;
        }
    }
    return moves;
}

bool replaces_name(const FileMove& move) {
    return move.aside.filename().string().starts_with(aside_of_a_name);
}

// New content goes to the file behind a link; a removal takes the link itself.
fs::path place_of(const FileMove& move) {
    return move.aside.empty() || replaces_name(move) ? move.target : behind_links(move.target);
}

void remove_if_there(const fs::path& file) {
    if (::unlink(file.c_str()) != 0 && errno != ENOENT) {
        throw_errno("removed", file);
    }
}

void finish(const FileMove& move) {
    if (move.aside.empty()) {
        remove_if_there(move.target);
    } else if (is_there(move.aside)) {
        replace(move.aside, place_of(move));
    }
}

void take_back(const FileMove& move) {
    const fs::path place = place_of(move);
    if (!move.old.empty()) {
        if (is_there(move.old)) {
            replace(move.old, place);
        }
    } else if (!move.aside.empty()) {
        remove_if_there(place);
    }
    if (const fs::path beside = copy_beside(place); is_there(beside)) {
        remove_if_there(beside);
    }
}

void flush_targets(const std::vector<FileMove>& moves) {
    std::set<fs::path> folders;
    for (const FileMove& move : moves) {
        folders.insert(place_of(move).parent_path());
    }
    for (const fs::path& folder : folders) {
        flush_folder(folder);
    }
}

bool is_ours(std::string_view name) {
    return name.starts_with("new.") || name.starts_with(aside_of_a_name) ||
           name.starts_with("old.") || name == "draft" || name == "journal" || name == "undo";
}

void drop_lists(const fs::path& hidden) {
    remove_if_there(hidden / "journal");
    remove_if_there(hidden / "undo");
}

// The lists go first: without one, a crash here leaves files that the next command drops. A list
// that stays needs its files: the next command goes through it once more.
void clear(const fs::path& hidden) noexcept {
    try {
        drop_lists(hidden);
    } catch (const base::FileFailure&) {
        return;
    }
    drop_files_aside(hidden);
}

// Keeps a second name of the old content, and its mode and owner for the new one.
void keep_old(const fs::path& hidden, FileMove& move, int number) {
    const fs::path place = place_of(move);
    struct stat state {};
    if (::lstat(place.c_str(), &state) != 0) {
        return;
    }
    move.old = hidden / fmt::format("old.{}", number);
    ::unlink(move.old.c_str());
    if (::link(place.c_str(), move.old.c_str()) != 0) {
        copy_as_it_is(place, move.old, move.target);
    }
    if (!move.aside.empty() && !replaces_name(move)) {
        if (::chown(move.aside.c_str(), state.st_uid, state.st_gid) != 0) {
            // Only the superuser may give files away: a new file of one's own is as good.
        }
        give_mode(move.aside, state.st_mode, move.target);
    }
}

void prepare(const fs::path& hidden, std::vector<FileMove>& moves) {
    int number = 1;
    for (FileMove& move : moves) {
        if (!move.aside.empty()) {
            flush_file(move.aside, move.target);
        }
        keep_old(hidden, move, number++);
    }
    write_list(hidden, moves);
}

void take_all_back(const fs::path& hidden, const std::vector<FileMove>& moves) {
    if (::rename((hidden / "journal").c_str(), (hidden / "undo").c_str()) != 0) {
        throw_errno("written", hidden / "undo");
    }
    for (const FileMove& move : moves) {
        take_back(move);
    }
    flush_targets(moves);
}

} // namespace

bool has_move_list(const fs::path& hidden) {
    return is_there(hidden / "journal") || is_there(hidden / "undo");
}

void settle_move_list(const fs::path& hidden) {
    if (const auto undo = read_list(hidden, "undo")) {
        for (const FileMove& move : *undo) {
            take_back(move);
        }
        flush_targets(*undo);
    } else if (const auto journal = read_list(hidden, "journal")) {
        for (const FileMove& move : *journal) {
            finish(move);
        }
        flush_targets(*journal);
    }
    drop_lists(hidden);
}

void drop_files_aside(const fs::path& hidden) noexcept {
    std::error_code ignored;
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(hidden, ignored)) {
        files.push_back(entry.path());
    }
    for (const fs::path& file : files) {
        if (const std::string name = file.filename().string(); is_ours(name)) {
            ::unlink(file.c_str());
        } else if (is_undo_folder(name)) {
            drop_dead_undo_folder(file);
        }
    }
}

void move_all(const fs::path& hidden, std::vector<FileMove> moves,
              const std::function<void()>& last) {
    if (has_move_list(hidden)) {
        settle_move_list(hidden); // of an earlier set of this command
    }
    try {
        prepare(hidden, moves);
    } catch (...) {
        clear(hidden);
        throw;
    }
    try {
        for (const FileMove& move : moves) {
            finish(move);
        }
        last();
    } catch (...) {
        take_all_back(hidden, moves);
        clear(hidden);
        throw;
    }
    flush_targets(moves);
    clear(hidden);
}

} // namespace core
