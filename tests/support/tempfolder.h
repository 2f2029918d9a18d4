// A folder of its own for a test, gone when the test is over.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace support {

class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    // Writes a file (missing folders on the way are made) and gives its full path.
    std::filesystem::path write(std::string_view name, std::string_view bytes) const;

    // All bytes of a file; the test fails when there is none.
    std::string read(std::string_view name) const;

    // Names of the files and folders directly inside, sorted by bytes, hidden ones too.
    std::vector<std::string> names() const;

private:
    std::filesystem::path path_;
};

} // namespace support
