// A folder for one input, in memory where the system has such a place, gone with the object.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace fuzz {

class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path write(std::string_view name, std::string_view bytes) const;

    // Name and content of every file directly inside.
    using Files = std::map<std::string, std::string>;
    Files files() const;
    // Makes these files all that is inside; writes only those that differ.
    void restore(const Files& wanted) const;

private:
    std::filesystem::path path_;
};

} // namespace fuzz
