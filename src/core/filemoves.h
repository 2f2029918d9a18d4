// Moving a set of files over their old versions so that a crash leaves all old or all new.
//
// The hidden folder of a model holds, while a command writes: "new.<n>" (files to come), "name.<n>"
// (the same, to replace a link itself and not the file behind it, with the mode that they have),
// "old.<n>" (hard links to what they replace) and the list of moves, first as "journal" (finish it)
// and, once a move has failed, as "undo" (take it back). Nothing of it outlives the command. The
// folders "undo.*" belong to programs that keep a model open (undofolder.h).
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace core {

// A POSIX file descriptor; failures name `shown`.
class Descriptor {
public:
    Descriptor(const std::filesystem::path& file, int flags, std::filesystem::path shown);
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept
        : shown_(std::move(other.shown_)), descriptor_(std::exchange(other.descriptor_, -1)) {}
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return descriptor_; }
    const std::filesystem::path& shown() const { return shown_; }
    void write(std::string_view bytes);
    void flush(); // to the disk

private:
    std::filesystem::path shown_;
    int descriptor_;
};

// "cannot be WHAT: <reason of errno>".
[[noreturn]] void throw_errno(std::string_view what, const std::filesystem::path& file);

// Content of `from` into the file `to` (created or emptied); failures of writing name `shown`.
void copy_bytes(const std::filesystem::path& from, const std::filesystem::path& to,
                const std::filesystem::path& shown);

// Gives the file the mode, if it has another one.
void give_mode(const std::filesystem::path& file, std::uint32_t mode,
               const std::filesystem::path& shown);

// Makes `to` what `from` is: a link stays a link, a file keeps its mode.
void copy_as_it_is(const std::filesystem::path& from, const std::filesystem::path& to,
                   const std::filesystem::path& shown);

// The file that a move replaces: the one behind a link, also behind one that points nowhere yet.
std::filesystem::path behind_links(std::filesystem::path file);
// A name that cannot be looked up counts as taken.
bool is_there(const std::filesystem::path& file);

struct FileMove {
    std::filesystem::path aside;  // empty: `target` is removed
    std::filesystem::path target; // beside the hidden folder; a link stays a link
    std::filesystem::path old;    // link to the old content; empty when there was none
};

// Flushes the files aside, writes the journal, moves them and runs `last`. After a FileFailure,
// also one of `last`, every target is as before; where the disk does not even let the moves be
// taken back, the list of them stays for the next command. Either way nothing is left to the
// caller.
void move_all(const std::filesystem::path& hidden, std::vector<FileMove> moves,
              const std::function<void()>& last);

// Makes the hidden folder and takes its advisory lock, waiting for another program's command. The
// descriptor holds the lock. FileFailure when the folder cannot be written or stays locked.
int lock_folder(const std::filesystem::path& hidden);
// Drops what was kept aside and releases the lock; removes the folder when nothing is left in it.
void unlock_folder(const std::filesystem::path& hidden, int lock) noexcept;

// Removes the folder when nothing is left in it and no command holds it.
void remove_hidden_folder(const std::filesystem::path& hidden) noexcept;

// Finishes or drops what a command that was cut off left in the locked folder. After a FileFailure
// the lock is released.
void settle_locked(const std::filesystem::path& hidden, int lock);
// The same for a reader: takes the lock for it, and leaves all as it is where it may not write.
void finish_pending(const std::filesystem::path& hidden);

} // namespace core
