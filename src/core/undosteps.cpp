#include "core/undosteps.h"

#include "base/failure.h"
#include "core/filemoves.h"
#include "core/modelfiles.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace core {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t block_size = std::size_t{1} << 16;

bool is_link(const fs::path& file) {
    std::error_code ignored;
    return fs::is_symlink(file, ignored);
}

std::string next_block(const Descriptor& in) {
    std::string block(block_size, '\0');
    ssize_t count = 0;
    do {
        count = ::read(in.get(), block.data(), block.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        throw_errno("read", in.shown());
    }
    block.resize(static_cast<std::size_t>(count));
    return block;
}

bool same_bytes(const fs::path& a, const fs::path& b) {
    const Descriptor first(a, O_RDONLY, a), second(b, O_RDONLY, b);
    for (;;) {
        const std::string block = next_block(first);
        if (block != next_block(second)) {
            return false;
        }
        if (block.empty()) {
            return true;
        }
    }
}

// Eight bytes at a time: a session's array may be large.
std::uint64_t hash_of(const fs::path& file) {
    const Descriptor in(file, O_RDONLY, file);
    std::uint64_t hash = 0x9E3779B97F4A7C15U;
    const auto mix = [&hash](std::uint64_t word) {
        hash = (hash ^ word) * 0xD6E8FEB86659FD93U;
        hash ^= hash >> 32;
    };
    for (;;) {
        std::string block = next_block(in);
        if (block.empty()) {
            return hash;
        }
        mix(block.size());
        block.resize((block.size() + 7) / 8 * 8, '\0');
        for (std::size_t i = 0; i < block.size(); i += 8) {
            std::uint64_t word = 0;
            std::memcpy(&word, block.data() + i, 8);
            mix(word);
        }
    }
}

} // namespace

UndoSteps::UndoSteps(fs::path hidden, UndoLimits limits)
    : folder_(std::move(hidden)), limits_(limits) {}

// Names, places, stamps.

fs::path UndoSteps::path_of(const std::string& name) const {
    return hidden().parent_path() / name;
}

fs::path UndoSteps::place_of(const KeptFile& file) const {
    return file.itself ? path_of(file.name) : behind_links(path_of(file.name));
}

UndoSteps::Stamp UndoSteps::stamp_of(const std::string& name) const {
    const fs::path file = path_of(name);
    struct stat state {};
    const auto part = [&state](int failed) {
        return failed != 0
                   ? Stamp::Part()
                   : Stamp::Part{state.st_mode,        state.st_dev,
                                 state.st_ino,         static_cast<std::uint64_t>(state.st_size),
                                 state.st_mtim.tv_sec, state.st_mtim.tv_nsec,
                                 state.st_ctim.tv_sec, state.st_ctim.tv_nsec};
    };
    Stamp stamp;
    stamp.name = part(::lstat(file.c_str(), &state));
    stamp.content = part(::stat(file.c_str(), &state));
    return stamp;
}

// Where only the stamp differs, another link was made or the same bytes were written again.
bool UndoSteps::is_still(const Known& known, const std::string& name) const {
    const Stamp now = stamp_of(name), &then = known.stamp;
    return now == then ||
           (now.name.mode == then.name.mode && now.content.mode == then.content.mode &&
            now.content.size == then.content.size && S_ISREG(now.content.mode) &&
            hash_of(path_of(name)) == known.hash);
}

// What nobody knows was made by another program, and differs from everything before.
int UndoSteps::content_now(const std::string& name) {
    const auto known = known_.find(name);
    return known != known_.end() && is_still(known->second, name) ? known->second.content
                                                                  : next_content_++;
}

void UndoSteps::learn(const std::string& name, int content) {
    const Stamp stamp = stamp_of(name);
    known_[name] = {stamp, S_ISREG(stamp.content.mode) ? hash_of(path_of(name)) : 0, content};
}

// Keeping.

void UndoSteps::begin(std::string name) {
    if (depth_++ == 0) {
        open_ = {std::move(name), {}};
        lost_ = false;
    }
}

void UndoSteps::end() noexcept {
    if (depth_ == 0 || --depth_ > 0) {
        return;
    }
    if (!std::exchange(lost_, false)) {
        try {
            close_step();
        } catch (...) {
            lose();
        }
    }
    open_ = {};
}

const UndoSteps::KeptFile* UndoSteps::find_open(const std::string& name) const {
    const auto file = std::ranges::find(open_.files, name, &KeptFile::name);
    return file == open_.files.end() ? nullptr : &*file;
}

UndoSteps::KeptFile UndoSteps::new_file(const fs::path& file) {
    KeptFile kept;
    kept.name = file.filename().string();
    kept.itself = !is_link(file);
    kept.before = content_now(kept.name);
    kept.after = next_content_++;
    return kept;
}

// Keeps what lies in the folder now; `bytes` is where the same bytes are, if not there.
void UndoSteps::keep_side(KeptFile& file, const fs::path& bytes) {
    struct stat state {};
    const fs::path place = place_of(file);
    if (::lstat(place.c_str(), &state) != 0) {
        if (!file.itself) {
            throw base::FileFailure("leads nowhere", path_of(file.name));
        }
        return;
    }
    file.kept = folder_.keep(bytes.empty() ? place : bytes);
    file.bytes = static_cast<std::uint64_t>(state.st_size);
    file.mode = state.st_mode;
}

void UndoSteps::keep_move(const FileMove& move) {
    if (const KeptFile* file = find_open(move.target.filename().string())) {
        if (!file->itself && move.aside.empty()) {
            throw base::FileFailure("was a link when its step began", move.target);
        }
        return;
    }
    KeptFile file = new_file(move.target);
    file.itself = file.itself || move.aside.empty();
    keep_side(file, {});
    open_.files.push_back(std::move(file));
}

void UndoSteps::keep(const std::vector<FileMove>& moves) noexcept {
    if (!open() || lost_) {
        return;
    }
    settled_ = open_.files.size();
    try {
        for (const FileMove& move : moves) {
            keep_move(move);
        }
        hold_limits();
    } catch (...) {
        lose();
    }
}

void UndoSteps::forget() noexcept {
    if (!open() || lost_) {
        return;
    }
    const auto first = open_.files.begin() + static_cast<std::ptrdiff_t>(settled_);
    const std::vector<KeptFile> files(std::make_move_iterator(first),
                                      std::make_move_iterator(open_.files.end()));
    open_.files.erase(first, open_.files.end());
    drop(files);
}

void UndoSteps::keep_in_place(const fs::path& file, const fs::path& copy) noexcept {
    if (!open() || lost_ || find_open(file.filename().string()) != nullptr) {
        return;
    }
    try {
        KeptFile kept = new_file(file);
        keep_side(kept, copy);
        open_.files.push_back(std::move(kept));
        hold_limits();
    } catch (...) {
        lose();
    }
}

bool UndoSteps::is_unchanged(const KeptFile& file) const {
    const fs::path place = place_of(file);
    struct stat now {
    }, kept{};
    const bool is_there_now = ::lstat(place.c_str(), &now) == 0;
    if (!is_there_now || file.kept.empty()) {
        return !is_there_now && file.kept.empty();
    }
    if (::lstat(file.kept.c_str(), &kept) != 0) {
        throw_errno("read", file.kept);
    }
    const bool same_file = now.st_dev == kept.st_dev && now.st_ino == kept.st_ino;
    return now.st_mode == file.mode &&
           (same_file ||
            (S_ISREG(now.st_mode) && now.st_size == kept.st_size && same_bytes(place, file.kept)));
}

void UndoSteps::close_step() {
    Step step{std::move(open_.name), {}};
    std::vector<KeptFile> unchanged;
    for (KeptFile& file : open_.files) {
        if (!file.itself && !is_link(path_of(file.name))) {
            throw base::FileFailure("was a link when its step began", path_of(file.name));
        }
        (is_unchanged(file) ? unchanged : step.files).push_back(std::move(file));
    }
    drop(unchanged);
    for (const KeptFile& file : unchanged) {
        learn(file.name, file.before);
    }
    for (const KeptFile& file : step.files) {
        learn(file.name, file.after);
    }
    open_.files.clear();
    if (step.files.empty()) {
        return;
    }
    for (; steps_.size() > done_; steps_.pop_back()) {
        drop(steps_.back().files);
    }
    steps_.push_back(std::move(step));
    done_ = steps_.size();
    hold_limits();
}

// Dropping.

void UndoSteps::drop(const std::vector<KeptFile>& files) noexcept {
    for (const KeptFile& file : files) {
        folder_.drop(file.kept);
    }
}

bool UndoSteps::over_limits() const {
    std::uint64_t bytes = 0;
    const auto add = [&bytes](const Step& step) {
        for (const KeptFile& file : step.files) {
            bytes += file.bytes;
        }
    };
    std::ranges::for_each(steps_, add);
    add(open_);
    return steps_.size() > limits_.steps || bytes > limits_.bytes;
}

void UndoSteps::hold_limits() noexcept {
    while (over_limits() && !steps_.empty()) {
        const auto farthest = done_ > 0 ? steps_.begin() : steps_.end() - 1;
        drop(farthest->files);
        steps_.erase(farthest);
        done_ -= done_ > 0;
    }
    if (over_limits()) {
        lose();
    }
}

void UndoSteps::lose() noexcept {
    folder_.clear();
    steps_.clear();
    done_ = 0;
    known_.clear();
    open_.files.clear();
    lost_ = open();
}

// Going back and forth.

const UndoSteps::Step* UndoSteps::next(Direction direction) const {
    if (open()) {
        return nullptr;
    }
    if (direction == Direction::undo) {
        return done_ > 0 ? &steps_[done_ - 1] : nullptr;
    }
    return done_ < steps_.size() ? &steps_[done_] : nullptr;
}

std::optional<std::string> UndoSteps::name(Direction direction) const {
    const Step* step = next(direction);
    return step != nullptr ? std::optional(step->name) : std::nullopt;
}

std::optional<fs::path> UndoSteps::changed_elsewhere(Direction direction) const {
    const Step* step = next(direction);
    if (step == nullptr) {
        return std::nullopt;
    }
    for (const KeptFile& file : step->files) {
        const auto known = known_.find(file.name);
        const int content = direction == Direction::undo ? file.after : file.before;
        if (known == known_.end() || known->second.content != content ||
            !is_still(known->second, file.name)) {
            return path_of(file.name);
        }
    }
    return std::nullopt;
}

// Hands the other sides to `files` and keeps what is in the folder instead.
std::vector<UndoSteps::KeptFile> UndoSteps::turn_over(const Step& step, ModelFiles& files) {
    std::vector<KeptFile> turned;
    try {
        for (const KeptFile& file : step.files) {
            if (file.kept.empty()) {
                files.remove_file(path_of(file.name));
            } else {
                files.take_over(file.kept, path_of(file.name), file.itself, file.mode);
            }
        }
        for (const KeptFile& file : step.files) {
            KeptFile& now = turned.emplace_back(file);
            now.kept.clear();
            now.bytes = 0;
            keep_side(now, {});
        }
        files.commit();
    } catch (...) {
        files.rollback();
        drop(turned);
        throw;
    }
    return turned;
}

void UndoSteps::exchange(Direction direction, ModelFiles& files) {
    const Step* found = next(direction);
    if (found == nullptr) {
        throw base::RangeFailure("there is no step of a command to go over");
    }
    const bool back = direction == Direction::undo;
    Step& step = steps_[back ? done_ - 1 : done_];
    std::vector<KeptFile> turned = turn_over(step, files);
    drop(step.files);
    step.files = std::move(turned);
    for (const KeptFile& file : step.files) {
        learn(file.name, back ? file.before : file.after);
    }
    back ? --done_ : ++done_;
    hold_limits();
}

} // namespace core
