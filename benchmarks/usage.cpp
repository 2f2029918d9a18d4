// usage PROGRAM ARGUMENT...: runs the program with its output dropped and prints its seconds of CPU
// and its peak memory in bytes. What the parent of a program holds counts as the program's until
// that has begun, and this parent holds next to nothing.

#include <cstdio>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1E6;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        return 2;
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
        ::execv(argv[1], argv + 1);
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child || status != 0) {
        return 1;
    }
    std::printf("%.6f %ld\n", seconds(usage.ru_utime) + seconds(usage.ru_stime),
                usage.ru_maxrss * 1024);
    return 0;
}
