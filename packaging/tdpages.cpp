// Writes the manual page and the completion script of td into a folder. Run by the build.

#include "base/failure.h"
#include "base/paths.h"
#include "td/pages.h"

#include <filesystem>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: tdpages FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    try {
        base::replace_file(folder / "td.1", td::man_page());
        base::replace_file(folder / "td.bash", td::bash_completion());
    } catch (const base::FileFailure& failure) {
        std::cerr << "error: " << failure.what() << " (" << failure.file().string() << ")\n";
        return 3;
    }
    return 0;
}
