#include "minitervex/program.h"

#include <iostream>

int main(int argc, char** argv) {
    minitervex::catch_signals();
    return minitervex::run_program({argv + 1, argv + argc}, std::filesystem::current_path(),
                                   {std::cout, std::cerr}, minitervex::interrupted_by_signal);
}
