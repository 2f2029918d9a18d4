#include "base/process.h"

#include "base/failure.h"
#include "base/paths.h"

#include <fmt/format.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <thread>

namespace base {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds first_pause{1}, longest_pause{50};
constexpr int signal_base = 128;

[[noreturn]] void fail(const char* what, int error, const fs::path& file) {
    throw FileFailure(fmt::format("cannot be {}: {}", what, std::strerror(error)), file);
}

void check_folder(const fs::path& folder) {
    if (::access((folder / "").c_str(), X_OK) != 0) {
        fail("entered", errno, folder);
    }
}

class OutputFile {
public:
    OutputFile(const fs::path& file, bool append)
        : descriptor_(::open(file.c_str(),
                             O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | (append ? 0 : O_TRUNC),
                             0666)) {
        if (descriptor_ < 0) {
            fail("written", errno, file);
        }
    }
    ~OutputFile() { ::close(descriptor_); }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    int descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

class FileActions {
public:
    FileActions(const Launch& launch, int output) {
        ::posix_spawn_file_actions_init(&actions_);
        // Standard input comes last: where it was closed, the output file has its number.
        ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions_, output, STDERR_FILENO);
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        ::posix_spawn_file_actions_addchdir_np(&actions_, launch.folder.c_str());
    }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

// A session of its own, with the signals as a program expects them.
class Attributes {
public:
    Attributes() {
        ::posix_spawnattr_init(&attributes_);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF |
                                                     POSIX_SPAWN_SETSIGMASK);
        sigset_t signals;
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGPIPE, SIGCHLD}) {
            ::sigaddset(&signals, number);
        }
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
    }
    ~Attributes() { ::posix_spawnattr_destroy(&attributes_); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

} // namespace

void check_program(const fs::path& program) {
    if (::access(program.c_str(), X_OK) != 0) {
        fail("started", errno, program);
    }
    if (!is_file(program)) {
        fail("started", EISDIR, program);
    }
}

namespace {

// Whoever ignores the ends of its children is not told their exit status. A program can have
// inherited that.
void take_notice_of_ends() {
    struct sigaction action {};
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        ::signal(SIGCHLD, SIG_DFL);
    }
}

} // namespace

Process Process::start(const Launch& launch) {
    take_notice_of_ends();
    const fs::path program = absolute_path(launch.program); // the current folder changes before
    check_program(program);
    check_folder(launch.folder);
    if (std::error_code ignored; fs::is_fifo(launch.output, ignored)) {
        throw FileFailure("is no ordinary file", launch.output); // nobody may ever read from it
    }
    const OutputFile output(launch.output, launch.append);

    std::vector<std::string> words{program.string()};
    words.insert(words.end(), launch.arguments.begin(), launch.arguments.end());
    std::vector<char*> pointers;
    std::ranges::transform(words, std::back_inserter(pointers),
                           [](auto& word) { return word.data(); });
    pointers.push_back(nullptr);

    const FileActions actions(launch, output.descriptor());
    const Attributes attributes;
    pid_t id = 0;
    const int error = ::posix_spawn(&id, program.c_str(), actions.get(), attributes.get(),
                                    pointers.data(), ::environ);
    if (error != 0) {
        fail("started", error, program);
    }
    return Process(id);
}

std::optional<int> Process::exit_status() {
    int state = 0;
    if (!status_ && ::waitpid(id_, &state, WNOHANG) == id_) {
        status_ = WIFEXITED(state) ? WEXITSTATUS(state) : signal_base + WTERMSIG(state);
    }
    return status_;
}

void Process::send(Ending ending) const {
    static constexpr int signals[] = {SIGINT, SIGTERM, SIGKILL};
    ::kill(-id_, signals[static_cast<std::size_t>(ending)]); // the group of its session
}

bool Process::ends_within(milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (!exit_status()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(first_pause);
    }
    return true;
}

std::optional<int> Process::wait(const std::function<bool()>& stop, milliseconds patience) {
    for (milliseconds pause = first_pause; !exit_status();
         pause = std::min(pause * 2, longest_pause)) {
        if (!stop()) {
            std::this_thread::sleep_for(pause);
            continue;
        }
        for (const Ending ending : {Ending::interrupt, Ending::terminate, Ending::kill}) {
            send(ending);
            if (ends_within(patience)) {
                break;
            }
        }
        return std::nullopt;
    }
    return status_;
}

} // namespace base
