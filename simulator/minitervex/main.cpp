#include "minitervex/program.h"

#include <iostream>

int main(int argc, char** argv) {
    minitervex::catch_signals();
    std::error_code missing;
    const std::filesystem::path folder = std::filesystem::current_path(missing);
    if (missing) {
        std::cerr << "minitervex: the current folder cannot be found: " << missing.message()
                  << '\n';
        return minitervex::failed;
    }
    return minitervex::run_program({argv + 1, argv + argc}, folder, {std::cout, std::cerr},
                                   minitervex::interrupted_by_signal);
}
