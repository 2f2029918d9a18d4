// Starting other programs.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace base {

// What is started and how. No shell looks at it: arguments arrive as they are.
struct Launch {
    std::filesystem::path program;
    std::vector<std::string> arguments; // behind the program's name
    std::filesystem::path folder;       // its current folder
    std::filesystem::path output;       // of its standard output and standard error
    bool append = false;                // behind what the output file holds
};

// FileFailure when there is no such program or it may not be executed.
void check_program(const std::filesystem::path& program);

// A program in a session of its own: it outlives this program and does not see the interrupts of
// this program's terminal. The end of the object leaves it running.
class Process {
public:
    // FileFailure names the program when it cannot be executed, the folder when it cannot become
    // its current one, the output file when it cannot be written.
    static Process start(const Launch& launch);

    int id() const { return id_; }
    // Nothing while the program runs, then its exit status; that of one that was ended by a signal
    // is 128 and the signal's number.
    std::optional<int> exit_status();
    // How a program is asked to end, from the friendliest way on. It goes to the program and those
    // that it has started, and returns at once.
    enum class Ending { interrupt, terminate, kill };
    void send(Ending ending) const;

    // The exit status at the program's end. `stop` is asked again and again; once it says true, the
    // program and those that it has started are interrupted, told to terminate when they are still
    // there after `patience`, and killed after as long again. Nothing when it was stopped so.
    std::optional<int> wait(const std::function<bool()>& stop,
                            std::chrono::milliseconds patience = std::chrono::seconds(10));

private:
    explicit Process(int id) : id_(id) {}
    bool ends_within(std::chrono::milliseconds time);

    int id_;
    std::optional<int> status_;
};

} // namespace base
