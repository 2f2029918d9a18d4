// <base>.typ: the twenty lines of simulation settings that several dialogs share.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace core {
class ModelFiles;
}

namespace sim {

// Numbers of the lines by their content.
namespace typ {
inline constexpr int KEY = 1, KOPLNG = 2, f1 = 3, f2 = 4, f3 = 5, IPUTDI = 6, OMF = 7, OMT = 8,
                     OMS = 9, APARF = 10, APART = 11, APARS = 12, ERRF = 13, ERRT = 14, ERRS = 15,
                     MXIT = 16, basal_heat_flow = 17, HPF = 18, COMPM = 19, RHOF = 20;
}

class TypFile {
public:
    static constexpr int line_count = 20;

    // The lines of a new model.
    TypFile();

    // FileFailure when `bytes` hold fewer than 20 lines; further lines are dropped.
    static TypFile read(std::string_view bytes, const std::filesystem::path& file);
    // The model's lines; those of a new model when there is no file.
    static TypFile load(const core::ModelFiles& files);
    void save(core::ModelFiles& files) const;

    // Lines from 1 to 20, trimmed.
    const std::string& line(int number) const { return lines_.at(std::size_t(number - 1)); }
    // Line ends inside `text` become blanks, so that the file keeps its twenty lines.
    void set_line(int number, std::string_view text);
    std::string bytes() const;

    // The first four characters of line 2.
    std::string KOPLNG() const;
    // The first twelve characters and the last character of line 6.
    std::string IPUTDI() const;
    std::string LINFO() const;

private:
    std::array<std::string, line_count> lines_;
};

// The text behind the n-th "#" of a line (from 1) and the character that follows it, up to the next
// "#", trimmed. Nothing when there is no such "#" or the line ends at it.
std::optional<std::string> piece_behind_hash(std::string_view line, int n);

} // namespace sim
