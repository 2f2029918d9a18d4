#include "plot/strokefont.h"

#include "base/failure.h"
#include "base/paths.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <cmath>
#include <numbers>
#include <optional>

namespace plot {

namespace {

constexpr int box = 9, most_points = 1000;

// The whole numbers of a font file.
class FontReader {
public:
    FontReader(std::string_view bytes, const std::filesystem::path& file)
        : numbers_(bytes, file), file_(file) {}

    std::optional<int> code() {
        const auto number = numbers_.next_if();
        return number ? std::optional(checked(*number, 0, 255, "the code of a character"))
                      : std::nullopt;
    }
    int next(int highest, const char* what) {
        return checked(numbers_.next(what), 0, highest, what);
    }

private:
    int checked(double number, int low, int high, const char* what) const {
        if (!(number >= low && number <= high) || number != std::floor(number)) {
            throw base::FileFailure(
                fmt::format("line {}: {} has to be a whole number from {} to {}", numbers_.line(),
                            what, low, high),
                file_);
        }
        return static_cast<int>(number);
    }

    base::NumberReader numbers_;
    std::filesystem::path file_;
};

} // namespace

StrokeFont StrokeFont::read(std::string_view bytes, const std::filesystem::path& file) {
    StrokeFont font;
    FontReader reader(bytes, file);
    while (const auto code = reader.code()) {
        Glyph glyph;
        glyph.width = reader.next(2 * box, "the width of a character");
        const int count = reader.next(most_points, "the number of its points");
        for (int n = 0; n < count; ++n) {
            const int x = reader.next(box, "x");
            const int y = reader.next(box, "y");
            glyph.strokes.push_back({x, y, reader.next(1, "the pen") == 1});
        }
        font.glyphs_[static_cast<std::size_t>(*code)] = std::move(glyph);
        font.empty_ = false;
    }
    return font;
}

StrokeFont StrokeFont::load(std::span<const std::filesystem::path> folders) {
    for (const std::filesystem::path& folder : folders) {
        if (const auto file = base::find_ignoring_case(folder, file_name)) {
            return read(base::read_bytes(*file), *file);
        }
    }
    return {};
}

double StrokeFont::width(std::string_view utf8, double height) const {
    int units = 0;
    for (const char c : base::to_ansi(utf8)) {
        units += glyph(static_cast<unsigned char>(c)).width;
    }
    return units * height / capital_height;
}

void Plot_Text(PlotDevice& device, const StrokeFont& font, std::string_view utf8, Point at,
               double height, double angle) {
    const double unit = height / StrokeFont::capital_height,
                 radians = angle * std::numbers::pi / 180;
    const double c = unit * std::cos(radians), s = unit * std::sin(radians);
    int start = 0;
    for (const char letter : base::to_ansi(utf8)) {
        const StrokeFont::Glyph& glyph = font.glyph(static_cast<unsigned char>(letter));
        Point last = at;
        for (const StrokeFont::Stroke& stroke : glyph.strokes) {
            const double x = start + stroke.x, y = stroke.y - StrokeFont::baseline;
            const Point point{at.x + x * c - y * s, at.y - x * s - y * c};
            if (stroke.draw) {
                device.Plot_Line(last, point);
            }
            last = point;
        }
        start += glyph.width;
    }
}

} // namespace plot
