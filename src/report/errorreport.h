// The report of a failure: its text, the file that the user saves (.ERR), and the file to which
// every failure is appended (.EPT), so that reports survive a crash.
#pragma once

#include "report/callstack.h"

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace base {
struct Failure;
class Interaction;
} // namespace base

namespace report {

struct ProgInfo {
    std::string title;                // "Tervex Desk"
    std::string name;                 // of the program's file, without its ending: "td"
    std::array<int, 3> version{};     // major, minor, revision
    std::string support_address = {}; // may be empty
    std::string web_page = {};        // likewise
};

struct SystemInfo {
    std::string platform;         // "Linux"
    std::array<int, 3> version{}; // of its kernel: major, minor, build
};
SystemInfo system_information();
// The three numbers of a version such as "6.1.0-18-amd64"; missing ones are 0.
std::array<int, 3> version_numbers(std::string_view version);

// A failure as the report shows it.
struct Fault {
    int number = 0;
    std::string text, module, procedure;
    int line = 0; // number of the step
};
// `otherwise` is the signature for a failure that names none.
Fault fault_of(const base::Failure& failure, int number, const CallHistory& calls,
               std::string_view otherwise);

// "Tervex Desk  V1.2.3 - Error Report".
std::string report_title(const ProgInfo& program);
// What the field for the user's comment shows first; lines separated by LF.
std::string advice(const ProgInfo& program);

// The whole report, UTF-8, lines ended by CR LF. Line breaks inside `comment` and the fault's text
// begin new lines.
std::string report_text(const ProgInfo& program, const Fault& fault, std::string_view comment,
                        const SystemInfo& system, Time time, const CallHistory& calls);

enum class Saved { done, declined, failed };
// Writes a report in Windows-1252, asks before a file is replaced, and tells that it is written. A
// failure of the writing is not reported in its turn.
Saved save_report(const std::filesystem::path& file, std::string_view text,
                  base::Interaction& user);

// What the user is told before the e-mail program opens, and the address that it is given.
std::string mail_text();
std::string mail_address(const ProgInfo& program);

// Keeps the history of one process and appends its failures to NAME.EPT.
class FailureLog {
public:
    FailureLog(ProgInfo program, Clock now)
        : program_(std::move(program)), now_(now), calls_(std::move(now)) {}

    // The folders to write to, the first that takes the file; without any nothing is written. The
    // last one is made when it is missing.
    void set_folders(std::vector<std::filesystem::path> folders) { folders_ = std::move(folders); }
    // Begins the procedure to which failures belong that name none.
    void enter(std::string_view signature);

    CallHistory& calls() { return calls_; }
    const ProgInfo& program() const { return program_; }
    // Never fails: what cannot be written is lost.
    void append(const base::Failure& failure, int number) const noexcept;

    Fault fault(const base::Failure& failure, int number) const;
    // The whole report as of now.
    std::string text(const Fault& fault, std::string_view comment) const;
    // Writes the report NAME.ERR into the first folder that can be written; see save_report().
    Saved save(const Fault& fault, std::string_view comment, base::Interaction& user) const;

private:
    void write(const base::Failure& failure, int number) const;

    ProgInfo program_;
    Clock now_;
    CallHistory calls_;
    std::string entered_;
    std::vector<std::filesystem::path> folders_;
};

// Line of `error.log`, which the desktop program writes anew whenever a model is opened.
std::string opened_line(Time time);

// The lines that a writer shows under "Application Error" when it meets a case that it does not
// know.
std::vector<std::string> case_error(std::string_view module, std::string_view function,
                                    std::string_view variable);

} // namespace report
