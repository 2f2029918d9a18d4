// What can go wrong outside the program's own control, and how a refused command says so.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace base {

// The environment failed: a file or folder could not be read, written or understood.
class FileFailure : public std::runtime_error {
public:
    // `what` names the fault in words (with line or byte offset where there is one); `file` is the
    // file that it concerns.
    FileFailure(const std::string& what, std::filesystem::path file)
        : std::runtime_error(what), file_(std::move(file)) {}

    const std::filesystem::path& file() const { return file_; }

private:
    std::filesystem::path file_;
};

// A number left its range where no user could have typed it: a fault inside the program or a file
// that contradicts itself.
class RangeFailure : public std::runtime_error {
public:
    explicit RangeFailure(const std::string& what) : std::runtime_error(what) {}
};

enum class Icon { information, question, warning, critical };

// The title of every box that has no title of its own.
inline constexpr const char* desk_title = "Tervex Desk";

// Why a command will not start. Whoever returns one has changed nothing.
struct Refusal {
    std::string title = desk_title;
    std::string text;
    Icon icon = Icon::warning;
    std::string field = {}; // of a form, by its control name; empty when it concerns none
};

} // namespace base
