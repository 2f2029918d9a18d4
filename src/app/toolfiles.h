// <base>.upl and <base>.ppl: binary settings of the particle and display tool packages. A model
// carries them on; their content is the tools' own.
#pragma once

#include <string>

namespace core {
class ModelFiles;
}

namespace app {

// FileFailure when one of the two is there and cannot be read.
void check_tool_files(const core::ModelFiles& files);

// Makes the missing ones: an empty .ppl and the .upl of a new model.
void create_tool_files(core::ModelFiles& files);

// A record with a blank name and 0, 0.01, then the record of the defaults with its output name.
std::string default_upl();

} // namespace app
