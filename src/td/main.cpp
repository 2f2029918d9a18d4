#include "td/command.h"
#include "td/terminaluser.h"

#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    td::catch_interrupts();
    return td::run_program({argv + 1, argv + argc}, std::cin, std::cout, std::cerr);
}
