#include "input/keywordstream.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <utility>

namespace input {

namespace {

constexpr std::size_t flush_size = std::size_t{1} << 20;
constexpr std::size_t key_number_blanks = 12; // less the digits of the number

} // namespace

KeywordStream::KeywordStream(const std::filesystem::path& file, std::filesystem::path shown)
    : file_(file), shown_(std::move(shown)), out_(file, std::ios::binary | std::ios::trunc) {
    if (!out_) {
        throw base::FileFailure("cannot be written", shown_);
    }
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
    failed_ = failed_ || !out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
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
    std::error_code error;
    out_.flush();
    std::filesystem::resize_file(file_, position, error);
    failed_ = failed_ || error || !out_.seekp(static_cast<std::streamoff>(position));
}

void KeywordStream::require_written() const {
    if (failed_) {
        throw base::FileFailure("cannot be written", shown_);
    }
}

void KeywordStream::close() {
    flush();
    out_.close();
    failed_ = failed_ || !out_;
    require_written();
}

} // namespace input
