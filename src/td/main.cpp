#include "td/command.h"
#include "td/terminaluser.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    td::catch_interrupts();
    const char* const reports = std::getenv("TD_REPORTS");
    const bool keeps_failures = reports == nullptr || std::string_view(reports) != "off";
    return td::run_program({argv + 1, argv + argc}, std::cin, std::cout, std::cerr,
                           {.keeps_failures = keeps_failures});
}
