// The completeness check: what a model must hold before its input file can be written.
#pragma once

#include "base/failure.h"

#include <optional>
#include <string>
#include <vector>

namespace core {
class ArrayStore;
class ModelFiles;
class Project;
} // namespace core

namespace input {

// A failed test: its number in the fixed order, and its box.
struct Gap {
    int test = 0;
    base::Refusal message;
    // Menu path that repairs it, such as "|Grid|Mesh Size."
    std::string menu_path;
};

// The first failed test; nothing for a complete model. Changes no file.
std::optional<Gap> Control(const core::Project& project, core::ModelFiles& files);

// Goes on behind failed tests and gives every gap in order.
std::vector<Gap> all_gaps(const core::Project& project, core::ModelFiles& files);
// What the check does not ask for and the writing of the input file then stops at: for a list that
// sends nobody there with such a model. Numbers behind those of the tests.
std::vector<Gap> gaps_of_writing(const core::Project& project, core::ModelFiles& files);

} // namespace input
