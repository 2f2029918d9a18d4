// The grammar of the keyword stream that the simulator reads: key lines and the forms of value
// lines.
//
// A block is one key line, "# " and the keyword, and its value lines up to the next key line. Lines
// end in CR LF and may be of any length: an array stands on one line.
#pragma once

#include "base/failure.h"
#include "core/filemoves.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace input {

class KeywordStream {
public:
    // Begins `file` anew; failures name it `shown`. FileFailure when it cannot be opened.
    KeywordStream(const std::filesystem::path& file, std::filesystem::path shown);

    void key(std::string_view keyword);
    // The key line of one block of a family such as CONC: 11 blanks before a number of one digit,
    // 10 before one of two.
    void key(std::string_view keyword, int number);

    // "value"
    void text_line(std::string_view utf8);
    // " 7 "
    void integer_line(std::int64_t value);
    // "       30 "
    void tabbed_integer_line(std::int64_t value);
    // " .5 "
    void real_line(double value);

    // A piece of a value line, as it stands; items bring the blank behind them along.
    void put(std::string_view ascii);
    // The value of an array as an item of a run: "12*0.25 ".
    void put_run(float value, std::int64_t count);
    // An integer and one blank: "7 ".
    void put_integer(std::int64_t value);
    void end_line();
    // Ends the line unless it is ended already.
    void close_line();

    // Bytes written so far, and the way back to the beginning of an earlier line: what follows is
    // dropped.
    std::uint64_t position() const { return flushed_ + buffer_.size(); }
    void cut_back(std::uint64_t position);

    // A disk that is full shows only now and then, so that a block is never cut off by it: writing
    // goes on silently and these throw the first FileFailure.
    void require_written() const;
    void finish();

private:
    void flush();
    void unless_failed(const std::function<void()>& step);

    core::Descriptor out_;
    std::string buffer_;
    std::uint64_t flushed_ = 0;
    bool line_open_ = false;
    std::optional<base::FileFailure> failure_;
};

} // namespace input
