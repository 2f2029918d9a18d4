// Runs one target over the files of its corpus: fuzz_replay TARGET FOLDER. `fuzz_replay` alone
// prints the names of the targets.
#include "targets.h"

#include "base/textfile.h"

#include <exception>
#include <filesystem>
#include <iostream>

namespace {

// False, with a line on standard error, when a file is a finding.
bool replay(const char* target, const std::filesystem::path& file) {
    try {
        fuzz::run(target, base::read_bytes(file));
        return true;
    } catch (const std::exception& finding) {
        std::cerr << file.string() << ": " << finding.what() << '\n';
        return false;
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        for (const fuzz::Target& target : fuzz::targets()) {
            std::cout << target.name << '\n';
        }
        return argc == 1 ? 0 : 2;
    }
    int files = 0, findings = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[2])) {
        findings += replay(argv[1], entry.path()) ? 0 : 1;
        ++files;
    }
    std::cout << argv[1] << ": " << files << " inputs, " << findings << " findings\n";
    return files > 0 && findings == 0 ? 0 : 1;
}
