// Text as strokes: the vector font SCREEN.FON.
//
// The file is text. Each character has a line "code width n", its Windows-1252 code, its width and
// the number of its points, and n lines "x y pen": pen 1 draws a line to the point, 0 only goes
// there. x and y are 0 to 9 in a box whose y counts upward; letters stand on 2, capitals reach up
// to 9.
#pragma once

#include "plot/plotdevice.h"

#include <array>
#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

namespace plot {

class StrokeFont {
public:
    static constexpr const char* file_name = "SCREEN.FON";
    static constexpr int baseline = 2, capital_height = 7; // in units of the box

    struct Stroke {
        int x, y;
        bool draw;
    };
    struct Glyph {
        int width = 0;
        std::vector<Stroke> strokes;
    };

    // FileFailure names the line that is not of the form.
    static StrokeFont read(std::string_view bytes, const std::filesystem::path& file);
    // The font of the first folder that has one (any case); an empty font when none has.
    static StrokeFont load(std::span<const std::filesystem::path> folders);

    // Without characters: no text is drawn.
    bool empty() const { return empty_; }
    // By Windows-1252 code; one without width for a character that the font lacks.
    const Glyph& glyph(unsigned char code) const { return glyphs_[code]; }
    // Length of a text whose capitals are `height` high, in the unit of `height`.
    double width(std::string_view utf8, double height) const;

private:
    std::array<Glyph, 256> glyphs_;
    bool empty_ = true;
};

// Draws a text from its lower left corner `at` on the sheet, its capitals `height` high, along a
// direction in degrees, counter-clockwise.
void Plot_Text(PlotDevice& device, const StrokeFont& font, std::string_view utf8, Point at,
               double height, double angle);

} // namespace plot
