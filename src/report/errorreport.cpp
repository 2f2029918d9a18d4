#include "report/errorreport.h"

#include "base/interaction.h"
#include "base/paths.h"
#include "base/textfile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <exception>
#include <system_error>

namespace report {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view indent = "          ";

// Collects lines ended by CR LF.
class Text {
public:
    void line(std::string_view text) { bytes_.append(text).append("\r\n"); }
    void rule() { line(std::string(70, '-')); }
    void lines(std::string_view text) {
        for (const std::string_view one : base::split_lines(text)) {
            line(one);
        }
    }
    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

void add_fault(Text& text, const Fault& fault) {
    text.line(fmt::format("{}Error-No.:\t{}", indent, fault.number));
    text.line(fmt::format("{}Module:\t{}", indent, fault.module));
    text.line(fmt::format("{}Procedure:\t{}", indent, fault.procedure));
    text.line(fmt::format("{}Line-No.:\t{}", indent, fault.line));
    text.lines(fmt::format("{}{} ({})", indent, fault.text, fault.number));
}

// Appends in one write, so that entries of two programs do not mix. A pipe in the file's place does
// not stop the program.
bool append_to(const fs::path& file, std::string_view bytes) {
    const int out = ::open(file.c_str(),
                           O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (out < 0) {
        return false;
    }
    const ssize_t count = ::write(out, bytes.data(), bytes.size());
    ::close(out);
    return count == static_cast<ssize_t>(bytes.size());
}

} // namespace

std::array<int, 3> version_numbers(std::string_view version) {
    std::array<int, 3> numbers{};
    const char* at = version.data();
    const char* const end = at + version.size();
    for (int& number : numbers) {
        const auto read = std::from_chars(at, end, number);
        if (read.ec != std::errc() || read.ptr == end || *read.ptr != '.') {
            break;
        }
        at = read.ptr + 1;
    }
    return numbers;
}

SystemInfo system_information() {
    utsname names{};
    ::uname(&names);
    return {names.sysname, version_numbers(names.release)};
}

Fault fault_of(const base::Failure& failure, int number, const CallHistory& calls,
               std::string_view otherwise) {
    const std::string_view signature = failure.signature.empty() ? otherwise : failure.signature;
    const Procedure procedure = procedure_of(signature);
    const std::string text = failure.file.empty()
                                 ? failure.what
                                 : fmt::format("{} ({})", failure.what, failure.file.string());
    return {number, text, procedure.module, procedure.name, calls.step_of(signature)};
}

std::string report_title(const ProgInfo& program) {
    return fmt::format("{}  V{} - Error Report", program.title, fmt::join(program.version, "."));
}

std::string advice(const ProgInfo& program) {
    const std::string contact =
        program.support_address.empty() ? "" : fmt::format(" ({})", program.support_address);
    return fmt::format("Tervex Desk - Application error! \n"
                       "Go on with 'Retry', then 'Resume Next', or finally 'Leave Procedure'. \n"
                       "Hopefully you do not need to 'End TD'. \n"
                       "Please send this report to the support contact{}.",
                       contact);
}

std::string report_text(const ProgInfo& program, const Fault& fault, std::string_view comment,
                        const SystemInfo& system, Time time, const CallHistory& calls) {
    Text text;
    text.rule();
    text.line(fmt::format("{}E R R O R P R O T O K O L L from ErrorPartner", indent));
    text.rule();
    text.line(base::upper(program.title));
    add_fault(text, fault);
    text.line(fmt::format("Datum/Uhrzeit:\t{} / {}", date_text(time), time_text(time)));
    text.rule();
    text.lines(comment);
    text.rule();
    text.line("SYSTEMINFO:");
    text.line(fmt::format("Plattform:\t{}", system.platform));
    text.line(fmt::format("Version:\t{}.{}", system.version[0], system.version[1]));
    text.line(fmt::format("Build:\t{}", system.version[2]));
    text.rule();
    for (const std::string& line : calls.Call_Stack()) {
        text.line(line);
    }
    return text.bytes();
}

Saved save_report(const fs::path& file, std::string_view text, base::Interaction& user) {
    if (base::is_file(file) &&
        user.ask(base::desk_title, fmt::format("File exist '{}' overwrite ?", file.string()),
                 base::Buttons::yes_no_risky) != base::Answer::yes) {
        return Saved::declined;
    }
    try {
        base::replace_file(file, base::to_ansi(text));
    } catch (const base::FileFailure&) {
        return Saved::failed; // a report on the report would have no end
    }
    user.message(base::Icon::information, base::desk_title,
                 fmt::format("The error protocol has been written in file '{}' !", file.string()));
    return Saved::done;
}

std::string mail_text() {
    return "Your standard e-mail program will be called now. The error description as well as\n"
           "the error protocol have been copied to the 'Clip Board', for your comfort.\n"
           "Please paste the contents of the clip board into your e-mail, by\n"
           "pressing [Ctrl] and [Ins] at the same time. Alternatively you can\n"
           "insert the contents into the mail, using the 'Paste' command in the menu 'Edit'.\n"
           "Please type down 'Tervex Desk Error' as subject of the e-mail.";
}

std::string mail_address(const ProgInfo& program) {
    return "mailto:" + program.support_address;
}

void FailureLog::enter(std::string_view signature) {
    entered_ = signature;
    calls_.CallStack(signature);
}

void FailureLog::append(const base::Failure& failure, int number) const noexcept {
    try {
        write(failure, number);
    } catch (const std::exception&) { // out of memory, for instance: the failure itself was shown
    }
}

void FailureLog::write(const base::Failure& failure, int number) const {
    if (folders_.empty()) {
        return;
    }
    const std::string bytes = base::to_ansi(text(fault(failure, number), ""));
    for (const fs::path& folder : folders_) {
        std::error_code none;
        if (folder == folders_.back()) {
            fs::create_directories(folder, none);
        }
        if (append_to(folder / (program_.name + ".EPT"), bytes)) {
            return;
        }
    }
}

Fault FailureLog::fault(const base::Failure& failure, int number) const {
    return fault_of(failure, number, calls_, entered_);
}

std::string FailureLog::text(const Fault& fault, std::string_view comment) const {
    return report_text(program_, fault, comment, system_information(), now_(), calls_);
}

Saved FailureLog::save(const Fault& fault, std::string_view comment,
                       base::Interaction& user) const {
    for (const fs::path& folder : folders_) {
        if (folder == folders_.back() || ::access(folder.c_str(), W_OK) == 0) {
            return save_report(folder / (program_.name + ".ERR"), text(fault, comment), user);
        }
    }
    return Saved::failed;
}

std::string opened_line(Time time) {
    return fmt::format("Model opened: {} {}", date_text(time), time_text(time));
}

std::vector<std::string> case_error(std::string_view module, std::string_view function,
                                    std::string_view variable) {
    return {fmt::format("module: {}", module), fmt::format("function: {}", function), "case error",
            fmt::format("case variable: {}", variable)};
}

} // namespace report
