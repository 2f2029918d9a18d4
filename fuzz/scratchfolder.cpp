#include "scratchfolder.h"

#include "base/textfile.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace fuzz {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
    const fs::path memory = "/dev/shm";
    std::error_code ignored;
    const fs::path parent = fs::is_directory(memory, ignored) ? memory : fs::temp_directory_path();
    std::string name = (parent / "td-fuzz-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder: " + name);
    }
    path_ = name;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path ScratchFolder::write(std::string_view name, std::string_view bytes) const {
    const fs::path file = path_ / name;
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
        throw std::runtime_error("cannot write " + file.string());
    }
    return file;
}

ScratchFolder::Files ScratchFolder::files() const {
    Files files;
    for (const auto& entry : fs::directory_iterator(path_)) {
        if (entry.is_regular_file()) {
            files[entry.path().filename().string()] = base::read_bytes(entry.path());
        }
    }
    return files;
}

void ScratchFolder::restore(const Files& wanted) const {
    for (const auto& entry : fs::directory_iterator(path_)) {
        if (!entry.is_regular_file() || !wanted.contains(entry.path().filename().string())) {
            fs::remove_all(entry.path());
        }
    }
    const Files present = files();
    for (const auto& [name, bytes] : wanted) {
        if (const auto file = present.find(name); file == present.end() || file->second != bytes) {
            write(name, bytes);
        }
    }
}

} // namespace fuzz
