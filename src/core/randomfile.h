// A binary file of the model read and written at byte offsets, for forms that are too large to be
// held whole.
#pragma once

#include "core/filemoves.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

namespace core {

class RandomFile {
public:
    enum class Mode { read, update };

    // Opens the bytes at `place`; failures name `shown`. FileFailure when they cannot be opened or
    // are no ordinary file.
    RandomFile(const std::filesystem::path& place, Mode mode, std::filesystem::path shown);
    // Opens `place` for reading.
    explicit RandomFile(const std::filesystem::path& place)
        : RandomFile(place, Mode::read, place) {}

    const std::filesystem::path& shown() const { return file_.shown(); }
    std::uint64_t size() const { return size_; }

    // Bytes behind the end of the file read as zero.
    void read(std::uint64_t offset, std::span<char> bytes) const;
    void read_singles(std::uint64_t offset, std::span<float> values) const;

    void write(std::uint64_t offset, std::string_view bytes);
    void write_singles(std::uint64_t offset, std::span<const float> values);
    // Makes a shorter file `size` bytes long, with zero bytes. FileFailure when the disk has no
    // room for it.
    void extend(std::uint64_t size);

private:
    void require_free_space(std::uint64_t growth) const;

    Descriptor file_;
    std::uint64_t size_ = 0;
};

} // namespace core
