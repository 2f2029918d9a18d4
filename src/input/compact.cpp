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

void Runs::add(std::span<const float> values) {
    auto at = values.begin();
    while (at != values.end()) {
        const auto end = std::find_if(at + 1, values.end(),
                                      [first = *at](float value) { return value != first; });
        add(*at, end - at);
        at = end;
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
