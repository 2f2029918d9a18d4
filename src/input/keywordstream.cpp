#include "input/keywordstream.h"

#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace input {

namespace {

constexpr std::size_t flush_size = std::size_t{1} << 20;
constexpr std::size_t key_number_blanks = 12; // less the digits of the number

} // namespace

KeywordStream::KeywordStream(const std::filesystem::path& file, std::filesystem::path shown)
    : out_(file, O_WRONLY | O_CREAT | O_TRUNC, std::move(shown)) {
    buffer_.reserve(flush_size + flush_size / 4);
}

void KeywordStream::key(std::string_view keyword) {
    put("# ");
    put(keyword);
    end_line();
}

void KeywordStream::key(std::string_view keyword, int number) {
    const std::string digits = fmt::format("{}", number);
    const std::size_t blanks = key_number_blanks - std::min(key_number_blanks, digits.size());
    key(fmt::format("{}{}{}", keyword, std::string(blanks, ' '), digits));
}

void KeywordStream::text_line(std::string_view utf8) {
    put(base::to_ansi(utf8));
    end_line();
}

void KeywordStream::integer_line(std::int64_t value) {
    put(base::printed(value));
    end_line();
}

void KeywordStream::tabbed_integer_line(std::int64_t value) {
    put("      ");
    integer_line(value);
}

void KeywordStream::real_line(double value) {
    put(base::printed(value));
    end_line();
}

void KeywordStream::put(std::string_view ascii) {
    buffer_ += ascii;
    if (!ascii.empty()) {
        line_open_ = ascii.back() != '\n';
    }
    if (buffer_.size() >= flush_size) {
        flush();
    }
}

void KeywordStream::put_run(float value, std::int64_t count) {
    base::append_Format_Print(buffer_, value, count);
    line_open_ = true;
    if (buffer_.size() >= flush_size) {
        flush();
    }
}

void KeywordStream::put_integer(std::int64_t value) {
    put(fmt::format("{} ", value));
}

void KeywordStream::end_line() {
    put("\r\n");
}

void KeywordStream::close_line() {
    if (line_open_) {
        end_line();
    }
}

void KeywordStream::flush() {
    unless_failed([this] { out_.write(buffer_); });
    flushed_ += buffer_.size();
    buffer_.clear();
}

void KeywordStream::cut_back(std::uint64_t position) {
    line_open_ = false;
    if (position >= flushed_) {
        buffer_.resize(static_cast<std::size_t>(position - flushed_));
        return;
    }
    buffer_.clear();
    flushed_ = position;
    unless_failed([this, end = static_cast<off_t>(position)] {
        if (::ftruncate(out_.get(), end) != 0 || ::lseek(out_.get(), end, SEEK_SET) < 0) {
            core::throw_errno("written", out_.shown());
        }
    });
}

void KeywordStream::unless_failed(const std::function<void()>& step) {
    try {
        if (!failure_) {
            step();
        }
    } catch (const base::FileFailure& failure) {
        failure_ = failure;
    }
}

void KeywordStream::require_written() const {
    if (failure_) {
        throw base::FileFailure(*failure_);
    }
}

void KeywordStream::finish() {
    flush();
    require_written();
}

} // namespace input
