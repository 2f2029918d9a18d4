#include "base/binaryio.h"

#include "base/failure.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>
#include <type_traits>

namespace base {
namespace {

template <typename Unsigned>
void append_bytes(std::string& data, Unsigned bits) {
    for (std::size_t i = 0; i < sizeof bits; ++i)
        data += static_cast<char>(bits >> (8 * i)); // the lowest eight bits
}

template <typename Unsigned>
Unsigned bits_of(const char* bytes) {
    Unsigned bits = 0;
    for (std::size_t i = 0; i < sizeof bits; ++i)
        bits =
            static_cast<Unsigned>(bits | Unsigned{static_cast<unsigned char>(bytes[i])} << (8 * i));
    return bits;
}

} // namespace

void ByteWriter::int16(std::int16_t value) {
    append_bytes(data_, std::bit_cast<std::uint16_t>(value));
}

void ByteWriter::int32(std::int32_t value) {
    append_bytes(data_, std::bit_cast<std::uint32_t>(value));
}

void ByteWriter::single(float value) {
    append_bytes(data_, std::bit_cast<std::uint32_t>(value));
}

void ByteWriter::bytes(std::string_view bytes) {
    data_ += bytes;
}

void ByteWriter::fixed_text(std::string_view utf8, std::size_t width) {
    std::string ansi = to_ansi(utf8);
    ansi.resize(width, ' ');
    data_ += ansi;
}

void ByteWriter::zeros(std::size_t count) {
    data_.append(count, '\0');
}

ByteReader::ByteReader(std::string_view data, std::filesystem::path file)
    : data_(data), file_(std::move(file)) {}

std::int16_t ByteReader::int16(std::string_view what) {
    return std::bit_cast<std::int16_t>(bits_of<std::uint16_t>(bytes(2, what).data()));
}

std::int32_t ByteReader::int32(std::string_view what) {
    return std::bit_cast<std::int32_t>(bits_of<std::uint32_t>(bytes(4, what).data()));
}

float ByteReader::single(std::string_view what) {
    return std::bit_cast<float>(bits_of<std::uint32_t>(bytes(4, what).data()));
}

std::string_view ByteReader::bytes(std::size_t count, std::string_view what) {
    if (count > remaining())
        throw FileFailure(fmt::format("ends at byte {}, where {} was expected", data_.size(), what),
                          file_);
    const std::string_view bytes = data_.substr(at_, count);
    at_ += count;
    return bytes;
}

std::string ByteReader::fixed_text(std::size_t width, std::string_view what) {
    return to_utf8(bytes(width, what));
}

void ByteReader::skip(std::size_t count, std::string_view what) {
    bytes(count, what);
}

void singles_to_bytes(std::span<const float> values, std::span<char> bytes) {
    assert(bytes.size() == values.size_bytes());
    if (values.empty())
        return;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(bytes.data(), values.data(), values.size_bytes());
        return;
    }
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(std::bit_cast<std::uint32_t>(values[i / 4]) >> (8 * (i % 4)));
}

void bytes_to_singles(std::span<const char> bytes, std::span<float> values) {
    assert(bytes.size() == values.size_bytes());
    if (values.empty())
        return;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(values.data(), bytes.data(), bytes.size());
        return;
    }
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = std::bit_cast<float>(bits_of<std::uint32_t>(bytes.data() + 4 * i));
}

std::int16_t int16_at(std::string_view bytes, std::size_t offset) {
    assert(bytes.size() >= 2 && offset <= bytes.size() - 2);
    return std::bit_cast<std::int16_t>(bits_of<std::uint16_t>(bytes.data() + offset));
}

} // namespace base
