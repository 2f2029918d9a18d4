#include "core/filemoves.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "core/undofolder.h"

#include <fmt/format.h>

#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstring>
#include <optional>
#include <set>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace core {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t block_size = std::size_t{1} << 16;
constexpr int lock_attempts = 3000;  // of 20 ms
constexpr int removal_attempts = 10; // a command that holds it longer removes it itself
constexpr std::string_view aside_of_a_name = "name.";
constexpr mode_t new_file_mode = 0666;
constexpr mode_t mode_bits = 07777;

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

bool has_list(const fs::path& hidden) {
    return is_there(hidden / "journal") || is_there(hidden / "undo");
}

void drop_lists(const fs::path& hidden) {
    remove_if_there(hidden / "journal");
    remove_if_there(hidden / "undo");
}

void drop_files(const fs::path& hidden) noexcept {
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

// The lists go first: without one, a crash here leaves files that the next command drops. A list
// that stays needs its files: the next command goes through it once more.
void clear(const fs::path& hidden) noexcept {
    try {
        drop_lists(hidden);
    } catch (const base::FileFailure&) {
        return;
    }
    drop_files(hidden);
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

// Goes through a list that was left, to its end or back.
void settle_list(const fs::path& hidden) {
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

// A descriptor of the folder when this process could lock it, -1 when another one holds it or has
// just removed it. FileFailure when it can never be locked. A link is no hidden folder: what it
// leads to belongs to somebody else.
int try_lock(const fs::path& hidden) {
    const int descriptor = ::open(hidden.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        if (errno == ENOTDIR || errno == ELOOP) {
            throw base::FileFailure("is in the way of the files that a command keeps aside",
                                    hidden);
        }
        if (errno != ENOENT) {
            throw_errno("opened", hidden);
        }
        return -1;
    }
    struct stat opened {
    }, named{};
    const bool ours = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 &&
                      ::fstat(descriptor, &opened) == 0 && ::lstat(hidden.c_str(), &named) == 0 &&
                      opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
    if (!ours) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

// The same for a folder that was just made if need be: it must be writable, as its parent must.
int try_lock_made(const fs::path& hidden) {
    int lock = -1;
    try {
        lock = try_lock(hidden);
        for (const fs::path& folder : {hidden, hidden.parent_path()}) {
            if (lock >= 0 && ::access(folder.c_str(), W_OK | X_OK) != 0) {
                throw_errno("written", hidden.parent_path());
            }
        }
    } catch (const base::FileFailure&) {
        ::rmdir(hidden.c_str()); // unless somebody's files are in it
        if (lock >= 0) {
            ::close(lock);
        }
        throw;
    }
    return lock;
}

} // namespace

void throw_errno(std::string_view what, const fs::path& file) {
    const int reason = errno;
    throw base::FileFailure(fmt::format("cannot be {}: {}", what, std::strerror(reason)), file);
}

Descriptor::Descriptor(const fs::path& file, int flags, fs::path shown)
    : shown_(std::move(shown)),
      descriptor_(::open(file.c_str(), flags | O_CLOEXEC, new_file_mode)) {
    if (descriptor_ < 0) {
        throw_errno((flags & O_ACCMODE) == O_RDONLY ? "read" : "written", shown_);
    }
}

Descriptor::~Descriptor() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void Descriptor::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            throw_errno("written", shown_);
        }
        bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
}

void Descriptor::flush() {
    if (::fsync(descriptor_) != 0 && errno != EINVAL) {
        throw_errno("written", shown_);
    }
}

void copy_bytes(const fs::path& from, const fs::path& to, const fs::path& shown) {
    if (std::error_code ignored; fs::is_other(from, ignored)) {
        throw base::FileFailure("is no ordinary file", from); // a pipe would never end
    }
    Descriptor in(from, O_RDONLY, from);
    Descriptor out(to, O_WRONLY | O_CREAT | O_TRUNC, shown);
    std::string block(block_size, '\0');
    for (;;) {
        const ssize_t count = ::read(in.get(), block.data(), block.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            throw_errno("read", from);
        }
        if (count == 0) {
            return;
        }
        out.write(std::string_view(block).substr(0, static_cast<std::size_t>(count)));
    }
}

void give_mode(const fs::path& file, std::uint32_t mode, const fs::path& shown) {
    struct stat state {};
    const bool has_mode =
        ::stat(file.c_str(), &state) == 0 && ((state.st_mode ^ mode) & mode_bits) == 0;
    if (!has_mode && ::chmod(file.c_str(), mode & mode_bits) != 0) {
        throw_errno("written", shown);
    }
}

void copy_as_it_is(const fs::path& from, const fs::path& to, const fs::path& shown) {
    struct stat state {};
    if (::lstat(from.c_str(), &state) != 0) {
        throw_errno("read", from);
    }
    if (!S_ISLNK(state.st_mode)) {
        copy_bytes(from, to, shown);
        return give_mode(to, state.st_mode, shown);
    }
    std::error_code failed;
    const fs::path target = fs::read_symlink(from, failed);
    ::unlink(to.c_str());
    if (::symlink(target.c_str(), to.c_str()) != 0) {
        throw_errno("written", shown);
    }
}

fs::path behind_links(fs::path file) {
    std::error_code ignored;
    for (int depth = 0; depth < 40 && fs::is_symlink(file, ignored); ++depth) {
        const fs::path target = fs::read_symlink(file, ignored);
        file = (target.is_absolute() ? target : file.parent_path() / target).lexically_normal();
    }
    return file;
}

bool is_there(const fs::path& file) {
    std::error_code ignored;
    return fs::symlink_status(file, ignored).type() != fs::file_type::not_found;
}

void move_all(const fs::path& hidden, std::vector<FileMove> moves,
              const std::function<void()>& last) {
    if (has_list(hidden)) {
        settle_list(hidden); // of an earlier set of this command
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

int lock_folder(const fs::path& hidden) {
    for (int attempt = 0; attempt < lock_attempts; ++attempt) {
        if (::mkdir(hidden.c_str(), 0777) != 0 && errno != EEXIST) {
            throw_errno("written", hidden.parent_path());
        }
        if (const int lock = try_lock_made(hidden); lock >= 0) {
            return lock;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    throw base::FileFailure("is in use by another program", hidden.parent_path());
}

void unlock_folder(const fs::path& hidden, int lock) noexcept {
    // A list of moves that could not be taken back is left to the next command.
    if (!has_list(hidden)) {
        drop_files(hidden);
    }
    ::rmdir(hidden.c_str());
    ::close(lock);
}

void remove_hidden_folder(const fs::path& hidden) noexcept {
    for (int attempt = 0; attempt < removal_attempts && is_there(hidden); ++attempt) {
        try {
            if (const int lock = try_lock(hidden); lock >= 0) {
                return unlock_folder(hidden, lock);
            }
        } catch (const base::FileFailure&) {
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

void settle_locked(const fs::path& hidden, int lock) {
    try {
        if (has_list(hidden)) {
            settle_list(hidden);
        }
        drop_files(hidden);
    } catch (...) {
        unlock_folder(hidden, lock);
        throw;
    }
}

void finish_pending(const fs::path& hidden) {
    if (::access(hidden.c_str(), W_OK | X_OK) != 0 ||
        ::access(hidden.parent_path().c_str(), W_OK | X_OK) != 0) {
        return;
    }
    for (int attempt = 0; attempt < lock_attempts; ++attempt) {
        if (!is_there(hidden)) {
            return;
        }
        if (const int lock = try_lock(hidden); lock >= 0) {
            settle_locked(hidden, lock);
            unlock_folder(hidden, lock);
            return;
        }
        if (!has_list(hidden)) {
            return; // a command of another program is at work but moves no files: all is as before
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

} // namespace core
