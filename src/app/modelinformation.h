// What a model holds, for its owner to read: its definition, size, processes, periods and files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace base {
class Interaction;
}

namespace app {

struct Workspace;

struct InformationSection {
    struct Row {
        std::string caption; // empty: the row belongs to the one before
        std::string value;   // with its unit
    };
    std::string title;
    std::vector<Row> rows;
};

// The sections in the order of the menu. A part whose files cannot be read is told to `user` as a
// failure and left out.
std::vector<InformationSection> model_information(Workspace& model, base::Interaction& user);

// "12 bytes", "3.4 KB", "1.0 MB"
std::string size_text(std::uintmax_t bytes);

} // namespace app
