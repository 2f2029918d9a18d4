#include "sim/typfile.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "core/modelfiles.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

namespace sim {

namespace {

struct LineInfo {
    const char* content;
    const char* initial;
};

constexpr std::array<LineInfo, TypFile::line_count> line_table = {{
    {"KEY", "-----"},
    {"KOPLNG", "----"},
    {"fractal exponent f1", "1.0"},
    {"fractal exponent f2", "2.0"},
    {"fractal exponent f3", "10.0"},
    {"IPUTDI and LINFO", "1234567890121"},
    {"OMF", "1.0"},
    {"OMT", "1.0"},
    {"OMS", "1.0"},
    {"APARF", "1.0"},
    {"APART", "1.0"},
    {"APARS", "1.0"},
    {"ERRF", "1.0E-18"},
    {"ERRT", "1.0E-18"},
    {"ERRS", "1.0E-10"},
    {"MXIT", "20000"},
    {"basal heat flow", "0.08"},
    {"HPF", "0.0"},
    {"COMPM", "1.0E-10"},
    {"RHOF", "998.0"},
}};

// The bytes up to the end of the last line that counts, so that a huge file is not decoded whole.
std::string_view counted_lines(std::string_view bytes) {
    std::size_t end = 0;
    for (int i = 0; i < TypFile::line_count; ++i) {
        const std::size_t line_end = bytes.find('\n', end);
        if (line_end == std::string_view::npos)
            return bytes;
        end = line_end + 1;
    }
    return bytes.substr(0, end);
}

} // namespace

TypFile::TypFile() {
    for (std::size_t i = 0; i < lines_.size(); ++i)
        lines_[i] = line_table[i].initial;
}

TypFile TypFile::read(std::string_view bytes, const std::filesystem::path& file) {
    const std::vector<std::string> lines = base::text_lines(counted_lines(bytes));
    if (lines.size() < line_table.size())
        throw base::FileFailure(
            fmt::format("ends behind line {}, where line {} of {} ({}) was expected", lines.size(),
                        lines.size() + 1, line_count, line_table[lines.size()].content),
            file);
    TypFile result;
    for (int number = 1; number <= line_count; ++number)
        result.set_line(number, lines[std::size_t(number - 1)]);
    return result;
}

TypFile TypFile::load(const core::ModelFiles& files) {
    const auto bytes = files.read_if(".typ");
    return bytes ? read(*bytes, files.name_of(".typ")) : TypFile();
}

void TypFile::save(core::ModelFiles& files) const {
    files.write(".typ", bytes());
}

void TypFile::set_line(int number, std::string_view text) {
    std::string line(text);
    std::replace(line.begin(), line.end(), '\r', ' ');
    std::replace(line.begin(), line.end(), '\n', ' ');
    lines_.at(std::size_t(number - 1)) = base::trimmed(line);
}

std::string TypFile::bytes() const {
    return base::to_text_file(std::vector<std::string>(lines_.begin(), lines_.end()));
}

std::string TypFile::KOPLNG() const {
    return base::first_characters(line(typ::KOPLNG), 4);
}

std::string TypFile::IPUTDI() const {
    return base::first_characters(line(typ::IPUTDI), 12);
}

std::string TypFile::LINFO() const {
    const std::string& text = line(typ::IPUTDI);
    const std::size_t count = base::character_count(text);
    return count == 0 ? "" : text.substr(base::first_characters(text, count - 1).size());
}

std::optional<std::string> piece_behind_hash(std::string_view line, int n) {
    std::size_t hash = line.find('#');
    for (int i = 1; i < n && hash != std::string_view::npos; ++i)
        hash = line.find('#', hash + 1);
    if (hash == std::string_view::npos || hash + 1 == line.size())
        return std::nullopt;
    std::string_view piece = line.substr(hash + 1);
    piece = piece.substr(0, piece.find('#'));
    piece.remove_prefix(base::first_characters(piece, 1).size());
    return std::string(base::trimmed(piece));
}

} // namespace sim
