#include "results/streamreader.h"

#include "results/streamstate.h"

#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace results {

namespace {

// As base::leading_single makes a single of a number.
template <class T>
T as_cell(double value) {
    constexpr double largest = std::numeric_limits<T>::max();
    return static_cast<T>(std::clamp(value, -largest, largest));
}

// Keeps out "inf" and "nan", which only std::from_chars takes for numbers.
bool begins_number(const char* at, const char* end) {
    at += at < end && *at == '-' ? 1 : 0;
    return at < end && (*at == '.' || (*at >= '0' && *at <= '9'));
}

bool is_digit(const char* at, const char* end) {
    return at < end && *at >= '0' && *at <= '9';
}

template <class Number>
const char* take_digits(const char* at, const char* end, Number& number) {
    for (; is_digit(at, end); ++at) {
        number = number * 10 + static_cast<Number>(*at - '0');
    }
    return at;
}

// Digits and power of ten that a double holds exactly give the nearest double by one operation.
constexpr std::ptrdiff_t longest_mantissa = 16; // with its point
constexpr std::uint64_t largest_mantissa = std::uint64_t{1} << 53U;
constexpr double powers_of_10[] = {1E0,  1E1,  1E2,  1E3,  1E4,  1E5,  1E6,  1E7,
                                   1E8,  1E9,  1E10, 1E11, 1E12, 1E13, 1E14, 1E15,
                                   1E16, 1E17, 1E18, 1E19, 1E20, 1E21, 1E22};
constexpr int largest_power = 22;

// Behind the exponent; nullptr when it has no digits or too many.
const char* take_exponent(const char* at, const char* end, int& exponent) {
    const bool negative = at < end && *at == '-';
    at += at < end && (*at == '-' || *at == '+') ? 1 : 0;
    const char* const stop = take_digits(at, at + std::min<std::ptrdiff_t>(end - at, 3), exponent);
    exponent = negative ? -exponent : exponent;
    return stop == at || is_digit(stop, end) ? nullptr : stop;
}

// Behind the number, which is the one that std::from_chars reads; nullptr when it takes more than
// one operation.
const char* short_number(const char* at, const char* end, double& value) {
    const bool negative = *at == '-';
    at += negative ? 1 : 0;
    std::uint64_t mantissa = 0;
    int power = 0;
    const char* const first = at;
    at = take_digits(at, end, mantissa);
    if (at < end && *at == '.') {
        const char* const point = at + 1;
        at = take_digits(point, end, mantissa);
        power = static_cast<int>(point - at);
    }
    if (at - first > longest_mantissa || mantissa > largest_mantissa || at[-1] == '-' ||
        (at - first == 1 && at[-1] == '.')) {
        return nullptr;
    }
    if (at < end && (*at == 'E' || *at == 'e')) {
        int exponent = 0;
        at = take_exponent(at + 1, end, exponent);
        power += exponent;
    }
    if (at == nullptr || power < -largest_power || power > largest_power) {
        return nullptr;
    }
    const auto whole = static_cast<double>(mantissa);
    value = power < 0 ? whole / powers_of_10[-power] : whole * powers_of_10[power];
    value = negative ? -value : value;
    return at;
}

// As std::from_chars; nullptr for what is no number or out of the range of a double.
const char* take_number(const char* at, const char* end, double& value) {
    if (const char* const stop = short_number(at, end, value)) {
        return stop;
    }
    const auto [stop, error] = std::from_chars(at, end, value);
    return error == std::errc() ? stop : nullptr;
}

// Tokens that are nothing but a plain number, closed by a separator, as long as they lie whole in
// `bytes`. Anything else ends it and is left to the reader of items.
template <class T>
struct PlainNumbers {
    std::string_view bytes;
    bool drops_behind_cr;

    std::size_t passed = 0; // bytes
    std::size_t read = 0;   // values

    void into(std::span<T> values) {
        const char* const end = bytes.data() + bytes.size();
        const char* at = bytes.data();
        while (read < values.size()) {
            const char* const next = number_at(at, end, values[read]);
            if (next == nullptr) {
                break;
            }
            at = next;
            ++read;
        }
        passed = static_cast<std::size_t>(at - bytes.data());
    }

private:
    // Behind the number and its separator; nullptr when there is no such number.
    const char* number_at(const char* at, const char* end, T& cell) const {
        while (at < end && is_separator(*at)) {
            ++at;
        }
        double value = 0;
        if (!begins_number(at, end)) {
            return nullptr;
        }
        const char* const stop = take_number(at, end, value);
        if (stop == nullptr || stop == end || !is_separator(*stop)) {
            return nullptr;
        }
        const char* const behind = *stop == '\r' ? behind_cr(stop + 1, end) : stop + 1;
        if (behind != nullptr) {
            cell = as_cell<T>(value);
        }
        return behind;
    }

    const char* behind_cr(const char* at, const char* end) const {
        if (at == end) {
            return nullptr;
        }
        return at + (drops_behind_cr || *at == '\n' ? 1 : 0);
    }
};

} // namespace

BlockReader::BlockReader(StreamReader& stream, RepeatCount repeat, std::string what,
                         bool drops_behind_cr)
    : stream_(&stream), repeat_(repeat), what_(std::move(what)), drops_behind_cr_(drops_behind_cr) {
}

void BlockReader::read(std::span<float> values) {
    fill(values);
}
void BlockReader::read(std::span<double> values) {
    fill(values);
}

template <class T>
std::size_t BlockReader::write_pending(std::span<T> values) {
    const auto count = static_cast<std::size_t>(
        std::min<std::uint64_t>(static_cast<std::uint64_t>(pending_), values.size()));
    std::ranges::fill(values.first(count), as_cell<T>(pending_value_));
    pending_ -= static_cast<std::int64_t>(count);
    return count;
}

template <class T>
std::size_t BlockReader::read_plain(std::span<T> values) {
    StreamReader::State& state = *stream_->state_;
    PlainNumbers<T> numbers{state.bytes.bytes(state.position), drops_behind_cr_};
    numbers.into(values);
    state.keys.note_passed(state.position, state.position + numbers.passed);
    state.position += numbers.passed;
    return numbers.read;
}

template <class T>
void BlockReader::fill(std::span<T> values) {
    while (!values.empty()) {
        const std::size_t count = pending_ > 0 ? write_pending(values) : read_plain(values);
        values_read_ += count;
        values = values.subspan(count);
        if (!values.empty() && pending_ == 0 && count == 0) {
            take_item();
        }
    }
}

void BlockReader::skip(std::uint64_t count) {
    while (count > 0) {
        if (pending_ == 0) {
            take_item();
        }
        const std::uint64_t passed = std::min(count, static_cast<std::uint64_t>(pending_));
        pending_ -= static_cast<std::int64_t>(passed);
        values_read_ += passed;
        count -= passed;
    }
}

void BlockReader::take_item() {
    const std::optional<StreamToken> token = stream_->state_->next_token(drops_behind_cr_);
    if (!token) {
        stream_->state_->fail_at_end(fmt::format("value {} of {}", values_read_ + 1, what_));
    }
    const std::size_t asterisk = token->text.find('*');
    const bool run = asterisk != std::string_view::npos;
    pending_ =
        run ? std::max<std::int64_t>(count_of(token->text.substr(0, asterisk), token->begin), 1)
            : 1;
    pending_value_ = base::leading_number(token->text.substr(run ? asterisk + 1 : 0));
}

std::int64_t BlockReader::count_of(std::string_view text, std::uint64_t byte) const {
    const auto fail = [&](std::string_view expected) {
        stream_->state_->bytes.fail(fmt::format(
            "byte {}: the repeat count of value {} of {} is \"{}\", where {} was "
            "expected",
            byte, values_read_ + 1, what_, base::to_utf8(text.substr(0, 40)), expected));
    };
    if (repeat_ == RepeatCount::strict_32 && !base::whole_number(text)) {
        fail("a number");
    }
    const double highest = repeat_ == RepeatCount::rounded_16
                               ? std::numeric_limits<std::int16_t>::max()
                               : std::numeric_limits<std::int32_t>::max();
    const double count = std::nearbyint(base::leading_number(text));
    if (count > highest) {
        fail(fmt::format("at most {}", highest));
    }
    return count < 1 ? 1 : static_cast<std::int64_t>(count);
}

} // namespace results
