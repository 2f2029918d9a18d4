// The end of a text file that another program is writing.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace base {

class TextTail {
public:
    // Not more than this is read at a time: of a file that has grown by more, its last bytes.
    static constexpr std::uintmax_t most = 64 * 1024;

    explicit TextTail(std::filesystem::path file) : file_(std::move(file)) {}

    struct News {
        std::string text;       // UTF-8; lines end in LF, the last one may be incomplete
        bool skipped = false;   // something before the text was left out
        bool restarted = false; // the file has become shorter: it was begun anew
    };
    // What has come since the last call; bytes that are no UTF-8 count as Windows-1252. A file that
    // is not there or cannot be read has no news. Control characters are left out.
    News news();

private:
    std::string read(std::uintmax_t from, std::uintmax_t to) const;
    std::string decoded(std::string bytes);

    std::filesystem::path file_;
    std::uintmax_t position_ = 0;
    std::string incomplete_; // bytes of a character whose end is still to come
    bool after_return_ = false;
};

} // namespace base
