#include "report/callstack.h"

#include "base/textfile.h"

#include <fmt/format.h>

#include <array>
#include <ctime>

namespace report {

namespace {

std::tm local(Time time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm parts{};
    ::localtime_r(&seconds, &parts);
    return parts;
}

std::string key_of(std::string_view signature) {
    const Procedure procedure = procedure_of(signature);
    return procedure.module + ']' + procedure.name;
}

} // namespace

std::string date_text(Time time) {
    const std::tm parts = local(time);
    return fmt::format("{:04}-{:02}-{:02}", parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday);
}

std::string time_text(Time time) {
    const std::tm parts = local(time);
    return fmt::format("{:02}:{:02}:{:02}", parts.tm_hour, parts.tm_min, parts.tm_sec);
}

std::string value_text(const ParameterValue& value) {
    constexpr std::array names = {"[ARRAY]", "[NULL]", "[EMPTY]", "[NOTHING]"};
    if (const auto* kind = std::get_if<ValueKind>(&value)) {
        return names[static_cast<std::size_t>(*kind)];
    }
    if (const auto* object = std::get_if<ObjectValue>(&value)) {
        return fmt::format("[OBJECT:{}]", object->type);
    }
    return std::get<std::string>(value);
}

Procedure procedure_of(std::string_view signature) {
    Procedure procedure;
    const std::size_t close = signature.find(']');
    if (signature.starts_with('[') && close != std::string_view::npos) {
        procedure.module = signature.substr(1, close - 1);
        signature.remove_prefix(close + 1);
    }
    const std::string head =
        fmt::format(" {}", base::trimmed(signature.substr(0, signature.find('('))));
    std::size_t begin = 1;
    for (const std::string_view kind : {" Sub ", " Function "}) {
        if (const std::size_t at = head.find(kind); at != std::string::npos) {
            begin = at + kind.size();
        }
    }
    procedure.name = head.substr(begin);
    return procedure;
}

void CallHistory::CallStack(std::string_view signature) {
    add(fmt::format("{} {}", time_text(now_()), signature));
    ++steps_[key_of(signature)];
}

void CallHistory::CallStackParam(std::string_view name, const ParameterValue& value) {
    add(fmt::format("\t{}:{}", name, value_text(value)));
}

int CallHistory::step_of(std::string_view signature) const {
    const auto found = steps_.find(key_of(signature));
    return found == steps_.end() ? 0 : found->second;
}

void CallHistory::add(std::string line) {
    lines_.push_back(std::move(line));
    if (lines_.size() > kept_lines) {
        lines_.pop_front();
    }
}

} // namespace report
