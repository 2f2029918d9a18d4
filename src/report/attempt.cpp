#include "report/attempt.h"

#include "base/interaction.h"

#include <fmt/format.h>

#include <new>
#include <optional>

namespace report {

namespace {

std::optional<base::Failure> failure_of(std::string_view signature,
                                        const std::function<void()>& step) {
    try {
        step();
    } catch (const base::FileFailure& failure) {
        return base::Failure{failure.what(), failure.file(), std::string(signature)};
    } catch (const base::RangeFailure& failure) {
        return base::Failure{
            fmt::format("{} in {}", failure.what(), signature), {}, std::string(signature)};
    } catch (const std::bad_alloc&) {
        return base::Failure{
            fmt::format("out of memory in {}", signature), {}, std::string(signature)};
    }
    return std::nullopt;
}

} // namespace

Outcome attempt(base::Interaction& user, std::string_view signature,
                const std::function<void()>& step) {
    user.called(signature);
    while (const auto failure = failure_of(signature, step)) {
        switch (user.failure(*failure)) {
        case base::Reaction::retry:
            break;
        case base::Reaction::next:
            return Outcome::skipped;
        case base::Reaction::leave:
            return Outcome::left;
        case base::Reaction::end:
            throw ProgramEnd();
        }
    }
    return Outcome::done;
}

} // namespace report
