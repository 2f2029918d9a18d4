// Preloaded into a program: a disk that fails, fills up or loses its power at a chosen call.
//
// Counts the calls that change files below a folder (or those that read them) and strikes at some
// of them. What it does comes from the environment:
//   TD_FAULT_ROOT   the folder; everything else is left alone
//   TD_FAULT_LOG    takes a line for each counted call: name, path below the root; "!" leads a line
//                   that was struck
//   TD_FAULT_READS  set: the calls that read are counted instead
//   TD_FAULT_APART  set: every folder is a file system of its own
//   TD_FAULT_NO_LOCKS  set: the file system knows no locks
//   TD_FAULT_PLAN   "CALL:ACTION" separated by commas, the first call is 1. Actions:
//     kill                  the process ends before the call
//     torn                  a write brings half of its bytes, then the process ends
//     short                 a write brings half of its bytes, the next one finds the disk full
//     ENOSPC EIO EACCES     the call fails once
//     ENOSPC+ EIO+ EACCES+  it and all calls after it fail; a full disk still removes files
// A flush to the disk is counted, but not waited for.

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <climits>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

enum class Kind { changes, needs_room, reads };

struct Fault {
    long call;
    std::string action;

    bool is(const char* name) const { return action == name; }
    bool sticky() const { return action.ends_with('+'); }
    int error() const {
        return action.starts_with("EIO") ? EIO : action.starts_with("EACCES") ? EACCES : ENOSPC;
    }
    bool strikes(long number, Kind kind) const {
        if (number <= call || !sticky()) {
            return number == call;
        }
        return error() != ENOSPC || kind == Kind::needs_room;
    }
};

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::vector<Fault> planned() {
    std::vector<Fault> faults;
    std::string rest = environment("TD_FAULT_PLAN");
    while (!rest.empty()) {
        const std::string fault = rest.substr(0, rest.find(','));
        rest.erase(0, fault.size() + 1);
        faults.push_back({std::atol(fault.c_str()), fault.substr(fault.find(':') + 1)});
    }
    return faults;
}

class Disk {
public:
    bool apart() const { return apart_; }
    bool concerns(const std::string& path) const {
        return !root_.empty() && path.starts_with(root_) &&
               (path.size() == root_.size() || path[root_.size()] == '/');
    }

    // Counts a call. The fault that strikes it, or none; does not come back from a kill.
    const Fault* strike(const char* name, const std::string& path, Kind kind) {
        if (!concerns(path) || reads_ != (kind == Kind::reads)) {
            return nullptr;
        }
        ++count_;
        const Fault* struck = nullptr;
        for (const Fault& fault : faults_) {
            struck = fault.strikes(count_, kind) ? &fault : struck;
        }
        log((struck != nullptr ? "!" : "") + std::string(name) + path.substr(root_.size()) + '\n');
        if (struck != nullptr && struck->is("kill")) {
            end();
        }
        return struck;
    }

    // The next write finds the disk full.
    void fill() { faults_.push_back({count_ + 1, "ENOSPC"}); }

    [[noreturn]] static void end() {
        ::kill(::getpid(), SIGKILL);
        for (;;) {
            ::pause();
        }
    }

private:
    void log(const std::string& line) const {
        if (log_ >= 0) {
            ::syscall(SYS_write, log_, line.data(), line.size());
        }
    }

    std::string root_ = environment("TD_FAULT_ROOT");
    bool reads_ = !environment("TD_FAULT_READS").empty();
    bool apart_ = !environment("TD_FAULT_APART").empty();
    std::vector<Fault> faults_ = planned();
    int log_ = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, environment("TD_FAULT_LOG").c_str(),
                                          O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
    long count_ = 0;
};

Disk& disk() {
    static Disk the_disk;
    return the_disk;
}

// The name of an open file.
std::string path_of(int descriptor) {
    const std::string link = descriptor == AT_FDCWD ? std::string("/proc/self/cwd")
                                                    : "/proc/self/fd/" + std::to_string(descriptor);
    char name[PATH_MAX];
    const ssize_t size = ::readlink(link.c_str(), name, sizeof name);
    return {name, static_cast<std::size_t>(size < 0 ? 0 : size)};
}

std::string path_of(int folder, const char* path) {
    return path[0] == '/' ? path : path_of(folder) + '/' + path;
}

// The call, unless a fault takes its place.
template <typename Call>
auto unless_struck(const char* name, const std::string& path, Kind kind, Call call)
    -> decltype(call()) {
    if (const Fault* fault = disk().strike(name, path, kind)) {
        errno = fault->error();
        return -1;
    }
    return call();
}

// A call that brings `size` bytes into a file; `call` takes how many of them.
template <typename Call>
ssize_t transfer(const char* name, int descriptor, std::size_t size, Call call) {
    const Fault* fault = disk().strike(name, path_of(descriptor), Kind::needs_room);
    if (fault == nullptr) {
        return call(size);
    }
    if (fault->is("torn")) {
        call(size / 2);
        Disk::end();
    }
    if (fault->is("short") && size > 1) {
        const ssize_t count = call(size / 2);
        disk().fill();
        return count;
    }
    errno = fault->error();
    return -1;
}

bool in_one_folder(const std::string& a, const std::string& b) {
    return a.substr(0, a.rfind('/')) == b.substr(0, b.rfind('/'));
}

// The same for two names that must be on one file system.
template <typename Call>
int between(const char* name, const std::string& from, const std::string& to, Call call) {
    const std::string& counted = disk().concerns(to) ? to : from;
    return unless_struck(name, counted, Kind::needs_room, [&] {
        if (disk().apart() && disk().concerns(counted) && !in_one_folder(from, to)) {
            errno = EXDEV;
            return -1;
        }
        return call();
    });
}

int open_at(int folder, const char* path, int flags, unsigned mode) {
    const bool writes = (flags & O_ACCMODE) != O_RDONLY || (flags & O_CREAT) != 0;
    return unless_struck(
        "open", path_of(folder, path), writes ? Kind::needs_room : Kind::reads,
        [&] { return static_cast<int>(::syscall(SYS_openat, folder, path, flags, mode)); });
}

unsigned mode_in(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, unsigned) : 0;
}

std::FILE* open_stream(const char* path, const char* mode) {
    const bool plus = std::strchr(mode, '+') != nullptr;
    const int kind = *mode == 'r' ? 0 : *mode == 'w' ? O_CREAT | O_TRUNC : O_CREAT | O_APPEND;
    const int access = plus ? O_RDWR : *mode == 'r' ? O_RDONLY : O_WRONLY;
    const int descriptor = open_at(AT_FDCWD, path, kind | access, 0666);
    return descriptor < 0 ? nullptr : ::fdopen(descriptor, mode);
}

int rename_at(int folder, const char* from, int other, const char* to, unsigned flags) {
    return between("rename", path_of(folder, from), path_of(other, to), [&] {
        return static_cast<int>(::syscall(SYS_renameat2, folder, from, other, to, flags));
    });
}

int link_at(int folder, const char* from, int other, const char* to, int flags) {
    return between("link", path_of(folder, from), path_of(other, to), [&] {
        return static_cast<int>(::syscall(SYS_linkat, folder, from, other, to, flags));
    });
}

int remove_at(const char* name, int folder, const char* path, int flags) {
    return unless_struck(name, path_of(folder, path), Kind::changes, [&] {
        return static_cast<int>(::syscall(SYS_unlinkat, folder, path, flags));
    });
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = mode_in(flags, arguments);
    va_end(arguments);
    return open_at(AT_FDCWD, path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = mode_in(flags, arguments);
    va_end(arguments);
    return open_at(AT_FDCWD, path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = mode_in(flags, arguments);
    va_end(arguments);
    return open_at(folder, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = mode_in(flags, arguments);
    va_end(arguments);
    return open_at(folder, path, flags, mode);
}

int creat(const char* path, mode_t mode) {
    return open_at(AT_FDCWD, path, O_CREAT | O_WRONLY | O_TRUNC, mode);
}
int creat64(const char* path, mode_t mode) {
    return open_at(AT_FDCWD, path, O_CREAT | O_WRONLY | O_TRUNC, mode);
}
std::FILE* fopen(const char* path, const char* mode) {
    return open_stream(path, mode);
}
std::FILE* fopen64(const char* path, const char* mode) {
    return open_stream(path, mode);
}

ssize_t write(int file, const void* bytes, std::size_t size) {
    return transfer("write", file, size,
                    [&](std::size_t count) { return ::syscall(SYS_write, file, bytes, count); });
}
ssize_t pwrite(int file, const void* bytes, std::size_t size, off_t at) {
    return transfer("pwrite", file, size, [&](std::size_t count) {
        return ::syscall(SYS_pwrite64, file, bytes, count, at);
    });
}
ssize_t pwrite64(int file, const void* bytes, std::size_t size, off64_t at) {
    return ::pwrite(file, bytes, size, at);
}
// The parts of a scattered write come one by one, as a disk may take them.
ssize_t writev(int file, const iovec* parts, int count) {
    ssize_t written = 0;
    for (int i = 0; i < count; ++i) {
        const ssize_t part = ::write(file, parts[i].iov_base, parts[i].iov_len);
        if (part < 0) {
            return written > 0 ? written : part;
        }
        written += part;
        if (static_cast<std::size_t>(part) < parts[i].iov_len) {
            break;
        }
    }
    return written;
}
ssize_t copy_file_range(int from, off64_t* at, int to, off64_t* to_at, std::size_t size,
                        unsigned flags) {
    return transfer("copy_file_range", to, size, [&](std::size_t count) {
        return ::syscall(SYS_copy_file_range, from, at, to, to_at, count, flags);
    });
}
ssize_t sendfile(int to, int from, off_t* at, std::size_t size) noexcept {
    return transfer("sendfile", to, size, [&](std::size_t count) {
        return ::syscall(SYS_sendfile, to, from, at, count);
    });
}
ssize_t sendfile64(int to, int from, off64_t* at, std::size_t size) noexcept {
    return ::sendfile(to, from, at, size);
}

int ftruncate(int file, off_t size) noexcept {
    return unless_struck("ftruncate", path_of(file), Kind::needs_room,
                         [&] { return static_cast<int>(::syscall(SYS_ftruncate, file, size)); });
}
int ftruncate64(int file, off64_t size) noexcept {
    return ::ftruncate(file, size);
}
int truncate(const char* path, off_t size) noexcept {
    return unless_struck("truncate", path_of(AT_FDCWD, path), Kind::needs_room,
                         [&] { return static_cast<int>(::syscall(SYS_truncate, path, size)); });
}
int truncate64(const char* path, off64_t size) noexcept {
    return ::truncate(path, size);
}

int rename(const char* from, const char* to) noexcept {
    return rename_at(AT_FDCWD, from, AT_FDCWD, to, 0);
}
int renameat(int folder, const char* from, int other, const char* to) noexcept {
    return rename_at(folder, from, other, to, 0);
}
int renameat2(int folder, const char* from, int other, const char* to, unsigned flags) noexcept {
    return rename_at(folder, from, other, to, flags);
}
int link(const char* from, const char* to) noexcept {
    return link_at(AT_FDCWD, from, AT_FDCWD, to, 0);
}
int linkat(int folder, const char* from, int other, const char* to, int flags) noexcept {
    return link_at(folder, from, other, to, flags);
}
int symlinkat(const char* target, int folder, const char* path) noexcept {
    return unless_struck("symlink", path_of(folder, path), Kind::needs_room, [&] {
        return static_cast<int>(::syscall(SYS_symlinkat, target, folder, path));
    });
}
int symlink(const char* target, const char* path) noexcept {
    return ::symlinkat(target, AT_FDCWD, path);
}

int unlink(const char* path) noexcept {
    return remove_at("unlink", AT_FDCWD, path, 0);
}
int unlinkat(int folder, const char* path, int flags) noexcept {
    return remove_at("unlink", folder, path, flags);
}
int rmdir(const char* path) noexcept {
    return remove_at("rmdir", AT_FDCWD, path, AT_REMOVEDIR);
}
int remove(const char* path) noexcept {
    struct stat state {};
    const bool is_folder = ::lstat(path, &state) == 0 && S_ISDIR(state.st_mode);
    return remove_at("remove", AT_FDCWD, path, is_folder ? AT_REMOVEDIR : 0);
}
int mkdirat(int folder, const char* path, mode_t mode) noexcept {
    return unless_struck("mkdir", path_of(folder, path), Kind::needs_room, [&] {
        return static_cast<int>(::syscall(SYS_mkdirat, folder, path, mode));
    });
}
int mkdir(const char* path, mode_t mode) noexcept {
    return ::mkdirat(AT_FDCWD, path, mode);
}

int chmod(const char* path, mode_t mode) noexcept {
    return unless_struck("chmod", path_of(AT_FDCWD, path), Kind::changes, [&] {
        return static_cast<int>(::syscall(SYS_fchmodat, AT_FDCWD, path, mode));
    });
}
int fchmod(int file, mode_t mode) noexcept {
    return unless_struck("fchmod", path_of(file), Kind::changes,
                         [&] { return static_cast<int>(::syscall(SYS_fchmod, file, mode)); });
}
int chown(const char* path, uid_t user, gid_t group) noexcept {
    return unless_struck("chown", path_of(AT_FDCWD, path), Kind::changes, [&] {
        return static_cast<int>(::syscall(SYS_fchownat, AT_FDCWD, path, user, group, 0));
    });
}

int fsync(int file) {
    return unless_struck("fsync", path_of(file), Kind::changes, [&] {
        return disk().concerns(path_of(file)) ? 0 : static_cast<int>(::syscall(SYS_fsync, file));
    });
}
int flock(int file, int operation) noexcept {
    if (!environment("TD_FAULT_NO_LOCKS").empty() && disk().concerns(path_of(file))) {
        errno = ENOLCK;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_flock, file, operation));
}
int fdatasync(int file) {
    return ::fsync(file);
}

ssize_t read(int file, void* bytes, std::size_t size) {
    return unless_struck("read", path_of(file), Kind::reads,
                         [&] { return ::syscall(SYS_read, file, bytes, size); });
}
ssize_t pread(int file, void* bytes, std::size_t size, off_t at) {
    return unless_struck("pread", path_of(file), Kind::reads,
                         [&] { return ::syscall(SYS_pread64, file, bytes, size, at); });
}
ssize_t pread64(int file, void* bytes, std::size_t size, off64_t at) {
    return ::pread(file, bytes, size, at);
}

} // extern "C"
