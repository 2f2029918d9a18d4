#include "input/compact.h"

#include "base/numbertext.h"
#include "base/textfile.h"
#include "input/keywordstream.h"

#include <algorithm>

namespace input {

void Runs::add(float value, std::int64_t count) {
    if (count == 0) {
        return;
    }
    if (count_ > 0 && value != value_) {
        finish();
    }
    value_ = value;
    count_ += count;
}

namespace {

constexpr std::size_t block = 64;

bool all_equal(std::span<const float, block> values, float first) {
    int different = 0; // no way out of the loop, so that several cells are compared at once
    for (const float value : values) {
        different |= value != first ? 1 : 0;
    }
    return different == 0;
}

// Cells at the beginning that equal the first one. Long runs are taken in blocks.
std::size_t run_length(std::span<const float> values) {
    const float first = values.front();
    std::size_t count = 1;
    if (values.size() > count && values[count] == first) {
        while (values.size() - count >= block &&
               all_equal(values.subspan(count).first<block>(), first)) {
            count += block;
        }
    }
    while (count < values.size() && values[count] == first) {
        ++count;
    }
    return count;
}

} // namespace

void Runs::add(std::span<const float> values) {
    while (!values.empty()) {
        const std::size_t count = run_length(values);
        add(values.front(), static_cast<std::int64_t>(count));
        values = values.subspan(count);
    }
}

void Runs::finish() {
    if (count_ > 0) {
        print_(value_, count_);
    }
    count_ = 0;
}

void TextRuns::add(std::string_view text, std::int64_t count) {
    const std::string_view bare = base::trimmed(text);
    if (count == 0) {
        return;
    }
    if (count_ > 0 && bare != text_) {
        finish();
    }
    text_ = bare;
    count_ += count;
}

void TextRuns::finish() {
    if (count_ > 0) {
        stream_->put(base::run_item(text_, count_));
    }
    count_ = 0;
}

Runs real_runs(KeywordStream& stream) {
    return Runs([&stream](float value, std::int64_t count) { stream.put_run(value, count); });
}

Runs zone_runs(KeywordStream& stream) {
    return Runs([&stream](float value, std::int64_t count) {
        stream.put(base::Format_Print_zone(value, count));
    });
}

std::string completed(std::string text, std::string_view ending) {
    if (text.find('.') == std::string::npos) {
        text += ending;
    }
    return text;
}

} // namespace input
