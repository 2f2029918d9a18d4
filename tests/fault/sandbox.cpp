#include "fault/sandbox.h"

#include <fmt/format.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

std::string bytes_of(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void write_bytes(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

// Kind, mode and content in one text: "f0644 bytes", "d0755 ", "l0777 target".
std::string described(const fs::directory_entry& entry) {
    const fs::file_status status = entry.symlink_status();
    const auto mode = static_cast<unsigned>(status.permissions());
    switch (status.type()) {
    case fs::file_type::directory:
        return fmt::format("d{:04o} ", mode);
    case fs::file_type::symlink:
        return fmt::format("l{:04o} {}", mode, fs::read_symlink(entry.path()).string());
    default:
        return fmt::format("f{:04o} {}", mode, bytes_of(entry.path()));
    }
}

constexpr std::size_t head_size = 6; // of a description

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> list;
    for (std::string& text : texts) {
        list.push_back(text.data());
    }
    list.push_back(nullptr);
    return list;
}

// Runs a program on three files for its streams. Its exit status, or minus the signal.
int spawn(std::vector<std::string> words, std::vector<std::string> environment,
          const fs::path& streams) {
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    const std::string in = streams / "in", out = streams / "out", err = streams / "err";
    constexpr int fresh = O_WRONLY | O_CREAT | O_TRUNC;
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, in.c_str(), O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), fresh, 0600);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), fresh, 0600);
    pid_t child = 0;
    const int failed = ::posix_spawn(&child, words.front().c_str(), &actions, nullptr,
                                     pointers(words).data(), pointers(environment).data());
    ::posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) {
        throw std::system_error(failed, std::generic_category(), words.front());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

std::vector<std::string> lines_of(const fs::path& file) {
    std::ifstream in(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace

Sandbox::Sandbox() : root_(folder_.path() / "root") {
    for (const char* name : {"model", "install", "user", "elsewhere"}) {
        fs::create_directories(root_ / name);
    }
    fs::create_directory(folder_.path() / "streams");
}

Outcome Sandbox::run(const std::string& line, const std::string& input, const std::string& plan,
                     Counted counted) const {
    return run_words(words_of(TD_PROGRAM, line), input, plan, counted);
}

Outcome Sandbox::run_program(const std::string& program, const std::string& arguments,
                             const std::string& plan) const {
    return run_words(words_of(program, arguments), "", plan, Counted::changes);
}

Outcome Sandbox::run_words(std::vector<std::string> words, const std::string& input,
                           const std::string& plan, Counted counted) const {
    // The streams of a run carry the thread's number: two programs may run at once.
    const fs::path streams = folder_.path() / fmt::format("streams/{}", ::gettid());
    fs::create_directory(streams);
    write_bytes(streams / "in", input);
    fs::remove(streams / "log");
    std::vector<std::string> variables = environment(plan, counted);
    variables.push_back("TD_FAULT_LOG=" + (streams / "log").string());
    Outcome run;
    run.status = spawn(std::move(words), std::move(variables), streams);
    run.out = bytes_of(streams / "out");
    run.err = bytes_of(streams / "err");
    run.calls = lines_of(streams / "log");
    return run;
}

std::vector<std::string> Sandbox::words_of(const std::string& program,
                                           const std::string& line) const {
    std::vector<std::string> words{program};
    std::istringstream in(line);
    for (std::string word; in >> word;) {
        std::string expanded;
        for (const char c : word) {
            expanded += c == '@'   ? (root_ / "model/").string()
                        : c == '%' ? (root_ / "").string()
                                   : std::string(1, c);
        }
        words.push_back(expanded);
    }
    return words;
}

std::vector<std::string> Sandbox::environment(const std::string& plan, Counted counted) const {
    std::vector<std::string> variables = {"LC_ALL=C",
                                          "TD_REPORTS=off",
                                          "LD_PRELOAD=" TD_FAULT_LIBRARY,
                                          "TD_FAULT_ROOT=" + root_.string(),
                                          "TD_FAULT_PLAN=" + plan,
                                          "XDG_CONFIG_HOME=" + (root_ / "user").string(),
                                          "XDG_DATA_HOME=" + (root_ / "user").string()};
    if (apart_) {
        variables.emplace_back("TD_FAULT_APART=1");
    }
    if (without_locks_) {
        variables.emplace_back("TD_FAULT_NO_LOCKS=1");
    }
    if (counted == Counted::reads) {
        variables.emplace_back("TD_FAULT_READS=1");
    }
    return variables;
}

void Sandbox::put(const Contents& contents) const {
    fs::remove_all(root_);
    fs::create_directory(root_);
    for (const auto& [name, what] : contents) { // a folder comes before what is in it
        const fs::path file = root_ / name;
        const std::string body = what.substr(head_size);
        if (what[0] == 'd') {
            fs::create_directory(file);
        } else if (what[0] == 'l') {
            fs::create_symlink(body, file);
            continue;
        } else {
            write_bytes(file, body);
        }
        fs::permissions(file, fs::perms(std::stoul(what.substr(1, 4), nullptr, 8)));
    }
}

Contents Sandbox::all() const {
    Contents contents;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root_)) {
        contents[entry.path().lexically_relative(root_).string()] = described(entry);
    }
    return contents;
}

Contents Sandbox::model() const {
    Contents contents = all();
    std::erase_if(contents, [](const auto& file) {
        return !file.first.starts_with("model/") && !file.first.starts_with("elsewhere/");
    });
    return contents;
}
