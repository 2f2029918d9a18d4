#include "childprocess.h"

#include <array>
#include <cstdio>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

Usage run_child(const std::string& program, std::vector<std::string> arguments) {
    std::vector<char*> words{const_cast<char*>(TD_USAGE_PROGRAM),
                             const_cast<char*>(program.c_str())};
    for (std::string& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    pid_t child = 0;
    const int failed = ::posix_spawn(&child, words[0], &actions, nullptr, words.data(), ::environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    std::FILE* const told = ::fdopen(ends[0], "r");
    Usage usage;
    const int numbers = std::fscanf(told, "%lf %lf", &usage.cpu_seconds, &usage.peak_bytes);
    std::fclose(told);
    if (failed != 0 || ::waitpid(child, nullptr, 0) != child || numbers != 2) {
        throw std::runtime_error(program + " did not succeed");
    }
    return usage;
}

} // namespace bench
