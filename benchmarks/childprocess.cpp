#include "childprocess.h"

#include <stdexcept>

#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

namespace {

[[noreturn]] void become(const std::string& program, std::vector<std::string>& arguments) {
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (std::string& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    ::dup2(nowhere, STDOUT_FILENO);
    ::execv(program.c_str(), words.data());
    ::_exit(127);
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1E6;
}

} // namespace

Usage run_child(const std::string& program, std::vector<std::string> arguments) {
    ::malloc_trim(0); // what this program holds counts as the child's until that has begun
    const pid_t child = ::fork();
    if (child == 0) {
        become(program, arguments);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child || status != 0) {
        throw std::runtime_error(program + " did not succeed");
    }
    return {seconds(usage.ru_utime) + seconds(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) * 1024};
}

} // namespace bench
