// Little-endian byte layouts, written and read field by field, never as a struct in memory.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace base {

class ByteWriter {
public:
    void int16(std::int16_t value);
    void int32(std::int32_t value);
    void single(float value);
    void bytes(std::string_view bytes);
    // ANSI text of exactly `width` bytes: cut, or filled with blanks.
    void fixed_text(std::string_view utf8, std::size_t width);
    void zeros(std::size_t count);
    const std::string& data() const { return data_; }

private:
    std::string data_;
};

class ByteReader {
public:
    // `file` is named in failures.
    ByteReader(std::string_view data, std::filesystem::path file);

    // Each fails with FileFailure "ends at byte N, where WHAT was expected" beyond the end.
    std::int16_t int16(std::string_view what);
    std::int32_t int32(std::string_view what);
    float single(std::string_view what);
    std::string_view bytes(std::size_t count, std::string_view what);
    // `width` bytes of ANSI text as UTF-8, not trimmed.
    std::string fixed_text(std::size_t width, std::string_view what);
    void skip(std::size_t count, std::string_view what);
    std::size_t position() const { return at_; }
    std::size_t remaining() const { return data_.size() - at_; }

private:
    std::string_view data_;
    std::filesystem::path file_;
    std::size_t at_ = 0;
};

// Singles as they lie in a file; in place where the machine is little-endian.
void singles_to_bytes(std::span<const float> values, std::span<char> bytes);
void bytes_to_singles(std::span<const char> bytes, std::span<float> values);
std::int16_t int16_at(std::string_view bytes, std::size_t offset);

} // namespace base
