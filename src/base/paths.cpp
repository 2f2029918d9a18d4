#include "base/paths.h"

#include "base/failure.h"
#include "base/textfile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <thread>
#include <utility>

namespace base {
namespace fs = std::filesystem;
namespace {

constexpr const char* program_folder = "tervexdesk";
constexpr int write_attempts = 500; // of 20 ms

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    // Closes now; some file systems report a failed write only here.
    bool close() { return ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_;
};

[[noreturn]] void fail_writing(const fs::path& file, int error) {
    throw FileFailure(fmt::format("cannot be written: {}", std::strerror(error)), file);
}

bool write_all(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return false;
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

// The file at the end of a chain of links; it need not be there.
fs::path link_target(fs::path file) {
    constexpr int longest_chain = 40;
    std::error_code none;
    for (int i = 0; i < longest_chain && fs::is_symlink(fs::symlink_status(file, none)); ++i) {
        const fs::path target = fs::read_symlink(file, none);
        file = target.is_absolute() ? target : file.parent_path() / target;
    }
    return file;
}

bool has_name(int descriptor, const fs::path& name) {
    struct stat open {
    }, named{};
    return ::fstat(descriptor, &open) == 0 && ::lstat(name.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// False while another program holds the lock. Some file systems know no locks.
bool lock(int descriptor) {
    return ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

// Removes the file beside of a program that was cut off; the lock tells it from one that is being
// written. A link or a folder in its place is not opened.
void remove_abandoned(const fs::path& beside) {
    const Descriptor found(::open(beside.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (found.number() < 0 ? errno == ELOOP || errno == EACCES
                           : lock(found.number()) && has_name(found.number(), beside))
        ::unlink(beside.c_str());
}

// Creates the file beside, locked as long as it is open; the umask counts as for any new file.
// Programs that write the same file take turns.
int create_beside(const fs::path& beside) {
    for (int attempt = 0; attempt < write_attempts; ++attempt) {
        const int descriptor =
            ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor < 0 && errno != EEXIST)
            return -1;
        if (descriptor >= 0 && lock(descriptor) && has_name(descriptor, beside))
            return descriptor;
        if (descriptor >= 0)
            ::close(descriptor);
        remove_abandoned(beside);
        std::this_thread::sleep_for(std::chrono::milliseconds(attempt == 0 ? 0 : 20));
    }
    errno = EBUSY;
    return -1;
}

// A pipe or a device takes the bytes as they come.
void write_in_place(const fs::path& file, std::string_view bytes) {
    Descriptor out(::open(file.c_str(), O_WRONLY | O_CLOEXEC));
    if (out.number() < 0 || !write_all(out.number(), bytes) || !out.close())
        fail_writing(file, errno);
}

void write_beside(const fs::path& file, std::string_view bytes, std::optional<mode_t> mode) {
    constexpr std::size_t longest = 200; // leaves room in a name of 255 bytes
    const fs::path beside =
        file.parent_path() / fmt::format(".{}.td-new", file.filename().string().substr(0, longest));
    Descriptor out(create_beside(beside));
    if (out.number() < 0)
        fail_writing(file, errno);
    const bool written = write_all(out.number(), bytes) &&
                         (!mode || ::fchmod(out.number(), *mode & 07777U) == 0) &&
                         ::fsync(out.number()) == 0 && ::rename(beside.c_str(), file.c_str()) == 0;
    if (!written) {
        const int error = errno;
        ::unlink(beside.c_str());
        fail_writing(file, error);
    }
}

fs::path user_folder(const char* variable, const char* below_home) {
    const char* const given = std::getenv(variable);
    if (given != nullptr && fs::path(given).is_absolute())
        return fs::path(given) / program_folder;
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0') {
        const passwd* const user = ::getpwuid(::getuid());
        home = user != nullptr ? user->pw_dir : "/";
    }
    return fs::path(home) / below_home / program_folder;
}

} // namespace

bool is_file(const fs::path& path) {
    std::error_code none;
    const fs::file_status status = fs::status(path, none);
    return fs::exists(status) && !fs::is_directory(status);
}

std::optional<fs::path> find_ignoring_case(const fs::path& folder, std::string_view name) {
    if (name.empty())
        return std::nullopt;
    if (const fs::path exact = folder / name; is_file(exact))
        return exact;
    std::string found;
    std::error_code none;
    for (fs::directory_iterator at(folder, none), end; at != end; at.increment(none)) {
        std::string candidate = at->path().filename().string();
        if (same_ignoring_case(candidate, name) && (found.empty() || candidate < found) &&
            is_file(at->path()))
            found = std::move(candidate);
    }
    if (found.empty())
        return std::nullopt;
    return folder / found;
}

fs::path absolute_path(const fs::path& file) {
    std::error_code failed;
    const fs::path absolute = fs::absolute(file, failed);
    if (failed)
        throw FileFailure(fmt::format("cannot be found: {}", failed.message()), file);
    return absolute.lexically_normal();
}

std::string file_name(const fs::path& file) {
    const std::string path = file.string();
    return path.substr(path.find_last_of("/\\") + 1); // npos + 1 is 0
}

bool safe_file_name(std::string_view name) {
    constexpr std::size_t longest = 200;
    const auto allowed = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x20 && byte != 0x7F && c != '/' && c != '\\';
    };
    return !name.empty() && name.size() <= longest && name != "." && name != ".." &&
           std::all_of(name.begin(), name.end(), allowed);
}

fs::path executable_folder() {
    std::error_code none;
    const fs::path program = fs::read_symlink("/proc/self/exe", none);
    return program.empty() ? fs::current_path() : program.parent_path();
}

fs::path user_settings_folder() {
    return user_folder("XDG_CONFIG_HOME", ".config");
}
fs::path user_data_folder() {
    return user_folder("XDG_DATA_HOME", ".local/share");
}

void replace_file(const fs::path& file, std::string_view bytes) {
    const fs::path target = link_target(file);
    std::error_code failed;
    if (target.has_parent_path())
        fs::create_directories(target.parent_path(), failed);
    struct stat state {};
    const bool exists = ::stat(file.c_str(), &state) == 0;
    if (failed)
        fail_writing(file, failed.value());
    if (exists && S_ISDIR(state.st_mode))
        fail_writing(file, EISDIR);
    if (exists && !S_ISREG(state.st_mode))
        return write_in_place(file, bytes);
    if (exists && ::access(target.c_str(), W_OK) != 0)
        fail_writing(file, errno);
    write_beside(target, bytes, exists ? std::optional(state.st_mode) : std::nullopt);
}

} // namespace base
