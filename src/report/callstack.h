// The history of calls that a report of a failure shows: procedures with the values of their
// parameters, newest last. It is not unwound when a procedure returns.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>

namespace report {

using Time = std::chrono::system_clock::time_point;
using Clock = std::function<Time()>;

// Local date "yyyy-mm-dd" and time of the day "hh:mm:ss".
std::string date_text(Time time);
std::string time_text(Time time);

// Values of parameters that are shown by their kind; all others come as their text.
enum class ValueKind { array, null, empty, nothing };
struct ObjectValue {
    std::string type;
};
using ParameterValue = std::variant<std::string, ValueKind, ObjectValue>;
std::string value_text(const ParameterValue& value);

// "[Module] Private Sub Procedure(arguments)" in its parts; the module may be missing.
struct Procedure {
    std::string module, name;
};
Procedure procedure_of(std::string_view signature);

class CallHistory {
public:
    static constexpr std::size_t kept_lines = 1000;

    explicit CallHistory(Clock now) : now_(std::move(now)) {}

    // Adds the line "hh:mm:ss " + signature. The oldest lines are dropped.
    void CallStack(std::string_view signature);
    // Adds the line TAB + name + ":" + value to the call before.
    void CallStackParam(std::string_view name, const ParameterValue& value);

    const std::deque<std::string>& Call_Stack() const { return lines_; }
    // How often the procedure of `signature` was called: the number of the step in which it is.
    int step_of(std::string_view signature) const;

private:
    void add(std::string line);

    Clock now_;
    std::deque<std::string> lines_;
    std::map<std::string, int> steps_; // by procedure
};

} // namespace report
