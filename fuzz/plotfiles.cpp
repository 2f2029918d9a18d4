// Contour levels and the stroke font.
#include "checks.h"
#include "targets.h"

#include "core/project.h"
#include "plot/bitmap.h"
#include "plot/contourfill.h"
#include "plot/contourlabels.h"
#include "plot/contourlevels.h"
#include "plot/dxf.h"
#include "plot/hpgl.h"
#include "plot/strokefont.h"

#include <array>
#include <vector>

namespace fuzz {

namespace {

// A layer that has a node on every level, and holes.
struct Layer {
    std::vector<float> values;
    std::array<double, 8> centres{0.5, 1, 2, 3.5, 4, 5, 8, 9};

    explicit Layer(const plot::ContourLevels& levels) : values(64) {
        for (std::size_t n = 0; n < values.size(); ++n) {
            values[n] = static_cast<float>(n * 37 % 11) - 4;
            if (!levels.empty() && n % 3 == 0) {
                values[n] = levels[n % levels.size()].level;
            }
        }
    }
    plot::ContourLayer view() const { return {8, 8, values, centres, centres}; }
};

void contour(const plot::ContourLevels& levels) {
    const Layer layer(levels);
    const auto holes = plot::find_holes(layer.values, {-3, 1E30F, {}});
    plot::Isoline2 isolines(layer.view(), holes);
    const core::Project project;
    for (const plot::Contour_Level& level : levels) {
        plot::label_text(plot::LabelFormat(project), level.level);
        for (const plot::ContourLine& line : isolines.trace(level.level)) {
            const auto labels =
                plot::place_labels(line.points, level.label_spacing, level.label_height);
            require(plot::line_around(line.points, labels).size() == labels.size() + 1,
                    "a label does not part its line in two");
        }
    }
}

void draw_all(plot::PlotDevice& device, const plot::StrokeFont& font) {
    for (const char* const text : {"0123456789.,:-+", "ABC abc Größe", "\xC2\x80"}) {
        plot::Plot_Text(device, font, text, {1, 9}, font.width(text, 1) > 5 ? 0.5 : 1, 33);
    }
}

} // namespace

void ctr(std::string_view bytes) {
    const auto levels = plot::levels_from_bytes(bytes);
    if (!levels || levels->size() > 200) {
        return;
    }
    require_stable(
        bytes, [](std::string_view b) { return plot::levels_bytes(*plot::levels_from_bytes(b)); });
    contour(*levels);
}

void font(std::string_view bytes) {
    const auto read = plot::StrokeFont::read(bytes, "font");
    const plot::Sheet sheet{0, 10, 10, 10, 1};
    plot::DxfFile dxf(sheet);
    plot::HpglFile hpgl(sheet);
    plot::BitmapFile bitmap(sheet);
    for (plot::PlotFile* const file :
         std::initializer_list<plot::PlotFile*>{&dxf, &hpgl, &bitmap}) {
        draw_all(*file, read);
        require(!file->Plot_Close().empty(), "a plot without bytes");
    }
}

} // namespace fuzz
