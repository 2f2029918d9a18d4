#include "plot/dxf.h"

#include "base/numbertext.h"
#include "plot/colourtable.h"

#include <algorithm>
#include <utility>

namespace plot {

DxfFile::DxfFile(const Sheet& sheet) : sheet_(sheet) {
    Plot_Pen(0);
    for (const char* const head : {"  0", "SECTION", "  2", "ENTITIES"}) {
        line(head);
    }
}

void DxfFile::line(std::string_view text) {
    text_.append(text).append("\r\n");
}

void DxfFile::number(std::string_view code, double value) {
    line(code);
    line(base::printed(to_single(value)));
}

void DxfFile::begin(std::string_view entity) {
    for (const std::string_view head :
         {std::string_view("  0"), entity, std::string_view("  8"), std::string_view("0"),
          std::string_view(" 62"), std::string_view(colour_)}) {
        line(head);
    }
}

void DxfFile::point(int index, Point point) {
    static constexpr const char* x_codes[] = {" 10", " 11", " 12", " 13"};
    static constexpr const char* y_codes[] = {" 20", " 21", " 22", " 23"};
    const Point plotted = sheet_.plotted(point);
    number(x_codes[index], plotted.x);
    number(y_codes[index], plotted.y);
}

void DxfFile::Plot_Pen(std::int32_t colour) {
    colour_ = base::printed(DXF_colour(colour));
}

void DxfFile::Plot_Line(Point from, Point to) {
    begin("LINE");
    point(0, from);
    point(1, to);
}

void DxfFile::Plot_Vertex(Point next) {
    begin("VERTEX");
    point(0, next);
}

void DxfFile::Plot_Circle(Point centre, double radius) {
    begin("CIRCLE");
    point(0, centre);
    number(" 40", radius / sheet_.Plot_Unit);
}

void DxfFile::Plot_Solid(const Corners& corners) {
    static constexpr const char* z_codes[] = {" 30", " 31", " 32", " 33"};
    begin("SOLID");
    for (int n = 0; n < 4; ++n) {
        point(n, corners[static_cast<std::size_t>(n)]);
        line(z_codes[n]);
        line("0");
    }
}

// A fan of quads; the last one may be a triangle, which has its last corner twice.
void DxfFile::Plot_Polygon(std::span<const Point> corners) {
    for (std::size_t n = 1; n + 1 < corners.size(); n += 2) {
        const Point last = corners[std::min(n + 2, corners.size() - 1)];
        Plot_Solid({corners[0], corners[n], last, corners[n + 1]});
    }
}

std::string DxfFile::Plot_Close() {
    for (const char* const tail : {"  0", "ENDSEC", "  0", "EOF"}) {
        line(tail);
    }
    return std::move(text_);
}

} // namespace plot
