#include "ui/application.h"

int main(int argc, char** argv) {
    return ui::run_program(argc, argv);
}
