// A file beside a model that is too long to be made in memory.
#pragma once

#include "core/filemoves.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace core {
class ModelFiles;
}

namespace convert {

// Takes the next bytes of a file.
using Sink = std::function<void(std::string_view bytes)>;

// Gathers bytes aside and puts them in their place when the file is complete; a failure leaves the
// old file.
class OutputFile {
public:
    // `target` lies in the folder of `files`, which holds write access.
    OutputFile(core::ModelFiles& files, const std::filesystem::path& target);

    void add(std::string_view bytes);
    Sink sink() {
        return [this](std::string_view bytes) { add(bytes); };
    }
    // Commits `files`.
    void finish();

private:
    void write_buffer();

    core::ModelFiles* files_;
    std::optional<core::Descriptor> out_;
    std::string buffer_;
};

} // namespace convert
