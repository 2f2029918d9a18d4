// Whether another program works on a model.
#pragma once

#include <chrono>
#include <filesystem>

namespace core {

// Waits until no other program writes the model of this project file. A command of another program
// lasts moments, its worksheet hours: whoever has a window that must not stand still calls this
// before taking write access, which waits far longer. FileFailure when the model is still in use
// after `patience`; it names the project file.
void wait_for_turn(const std::filesystem::path& project, std::chrono::milliseconds patience);

} // namespace core
