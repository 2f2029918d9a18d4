// The compact notation n*value: equal neighbours of a walk become one item.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace input {

class KeywordStream;

// Gathers runs of equal singles and hands each out as it ends. Values are compared as they are, not
// by their texts: two values that only look alike are two runs.
class Runs {
public:
    using Print = std::function<void(float value, std::int64_t count)>;

    explicit Runs(Print print) : print_(std::move(print)) {}

    void add(float value, std::int64_t count = 1);
    void add(std::span<const float> values);
    // Hands out the last run; the next value begins a new one.
    void finish();

private:
    Print print_;
    float value_ = 0;
    std::int64_t count_ = 0;
};

// Gathers runs of equal texts and puts each into the stream as it ends; blanks round a text count
// for nothing.
class TextRuns {
public:
    explicit TextRuns(KeywordStream& stream) : stream_(&stream) {}

    void add(std::string_view text, std::int64_t count = 1);
    // Puts the last run; the next text begins a new one.
    void finish();

private:
    KeywordStream* stream_;
    std::string text_;
    std::int64_t count_ = 0;
};

// Runs that put their items into `stream`: reals with their point, or zone numbers without one.
Runs real_runs(KeywordStream& stream);
Runs zone_runs(KeywordStream& stream);

// `text` with `ending` behind it when it has no point: "5" and "." give "5.", "1E+15" and ".0" give
// "1E+15.0".
std::string completed(std::string text, std::string_view ending);

} // namespace input
