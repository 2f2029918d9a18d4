#include "plot/plotpage.h"

#include "base/textfile.h"
#include "core/project.h"
#include "plot/bitmap.h"
#include "plot/drawcontours.h"
#include "plot/dxf.h"
#include "plot/hpgl.h"

#include <algorithm>

namespace plot {

namespace {

constexpr std::int32_t zone_colour = 0;

void draw_mesh(PlotDevice& device, const PlotFrame& frame, const PlotData& data) {
    const auto& [x, y, x_centres, y_centres] = data.cells;
    device.Plot_Pen(data.project.integer("COLOR", "MESH"));
    for (const double column : x) {
        device.Plot_Line(frame.from_grid({column, y.front()}), frame.from_grid({column, y.back()}));
    }
    for (const double row : y) {
        device.Plot_Line(frame.from_grid({x.front(), row}), frame.from_grid({x.back(), row}));
    }
}

// Cell n of the layer.
void draw_cell(PlotDevice& device, const PlotFrame& frame, const grid::CellCoordinates& cells,
               std::size_t n) {
    const auto& [x, y, x_centres, y_centres] = cells;
    const std::size_t i = n % x_centres.size(), j = n / x_centres.size();
    device.Plot_Solid({frame.from_grid({x[i], y[j]}), frame.from_grid({x[i + 1], y[j]}),
                       frame.from_grid({x[i], y[j + 1]}), frame.from_grid({x[i + 1], y[j + 1]})});
}

void draw_inactive(PlotDevice& device, const PlotFrame& frame, const PlotData& data) {
    device.Plot_Pen(data.project.integer("COLOR", "INACTIVE_CELL"));
    for (std::size_t n = 0; n < data.boundary.size(); ++n) {
        if (data.boundary[n] == 0) {
            draw_cell(device, frame, data.cells, n);
        }
    }
}

void draw_coloured_cells(PlotDevice& device, const PlotFrame& frame, const PlotData& data) {
    for (std::size_t n = 0; n < data.cell_colours.size(); ++n) {
        if (data.cell_colours[n] != PlotData::ground) {
            device.Plot_Pen(data.cell_colours[n]);
            draw_cell(device, frame, data.cells, n);
        }
    }
}

void draw_zones(PlotDevice& device, const PlotFrame& frame, const PlotData& data) {
    device.Plot_Pen(zone_colour);
    for (const core::Zone& zone : data.zones) {
        const auto node = [&](int n) {
            const auto at = static_cast<std::size_t>(n);
            return frame.from_grid({zone.x[at], zone.y[at]});
        };
        for (int n = 1; n <= zone.nodes; ++n) {
            device.Plot_Line(node(n), node(n + 1));
        }
    }
}

// As large as the sheet allows for many marks.
double text_height_of(const PlotFrame& frame) {
    return (frame.sheet().width + frame.sheet().height) / 100;
}

// Circles with the name at their right.
void draw_bores(PlotDevice& device, const PlotFrame& frame, const PlotData& data) {
    const double text_height = text_height_of(frame);
    const double radius = text_height / 2;
    device.Plot_Pen(data.project.integer("COLOR", "Bores"));
    for (const grid::Bore& bore : data.bores.bores) {
        if (bore.Active) {
            const Point centre = frame.from_world({bore.X, bore.Y});
            device.Plot_Circle(centre, radius);
            Plot_Text(device, data.font, bore.Name, {centre.x + 2 * radius, centre.y + radius},
                      text_height, 0);
        }
    }
}

void draw_digitized(PlotDevice& device, const PlotFrame& frame, const PlotData& data) {
    device.Plot_Pen(data.project.integer("COLOR", "DIGI_POINTS"));
    for (const Point& point : data.digitized) {
        device.Plot_Circle(frame.from_grid(point), text_height_of(frame) / 2);
    }
}

} // namespace

PlotFrame::PlotFrame(const core::Project& project, const grid::CellCoordinates& cells,
                     Display display)
    : position_(project), display_(display) {
    if (display == Display::local) {
        sheet_.width = cells.x_edges.back();
        sheet_.height = sheet_.Sheet_Height = cells.y_edges.back();
        return;
    }
    const auto edge = [&](const char* key) { return double{project.single("DIMENSION", key)}; };
    sheet_.left = edge("SHEET_X1");
    sheet_.width = edge("SHEET_X2") - sheet_.left;
    sheet_.Sheet_Height = edge("SHEET_Y2");
    sheet_.height = sheet_.Sheet_Height - edge("SHEET_Y1");
}

Point PlotFrame::from_grid(Point point) const {
    if (display_ == Display::local) {
        return point;
    }
    const auto [x, y] = position_.world(point.x, point.y);
    return {x, sheet_.Sheet_Height - y};
}

Point PlotFrame::from_world(Point point) const {
    if (display_ == Display::local) {
        const auto [x, y] = position_.local(point.x, point.y);
        return {x, y};
    }
    return {point.x, sheet_.Sheet_Height - point.y};
}

ContourLayer PlotData::layer() const {
    return {static_cast<int>(cells.x_centres.size()), static_cast<int>(cells.y_centres.size()),
            values, cells.x_centres, cells.y_centres};
}

HoleRule PlotData::hole_rule(bool ignore_inactive) const {
    HoleRule rule{project.single("OPTIONS", "HNOFLO"), project.single("OPTIONS", "HDRY"), {}};
    if (ignore_inactive) {
        rule.boundary = boundary;
    }
    return rule;
}

bool draw_worksheet(PlotDevice& device, const PlotFrame& frame, const PlotData& data,
                    const PlotShow& show, base::Interaction& user) {
    // What comes later lies over what came before, as on the screen.
    if (show.inactive) {
        draw_inactive(device, frame, data);
    }
    draw_coloured_cells(device, frame, data);
    if (show.fill && !fill_contours(device, frame, data, user)) {
        return false;
    }
    if (show.mesh) {
        draw_mesh(device, frame, data);
    }
    if (show.zones) {
        draw_zones(device, frame, data);
    }
    if (show.contours && !draw_contour_lines(device, frame, data, user)) {
        return false;
    }
    if (show.bores) {
        draw_bores(device, frame, data);
    }
    draw_digitized(device, frame, data);
    return true;
}

namespace {

struct FormatRow {
    Plot_Format format;
    const char* name;
    const char* extension;
};
constexpr FormatRow formats[] = {{Plot_Format::DXF, "dxf", ".dxf"},
                                 {Plot_Format::HPGL, "hpgl", ".pgl"},
                                 {Plot_Format::BMP, "bmp", ".bmp"}};

std::optional<Plot_Format> find_format(std::string_view text, const char* FormatRow::*column) {
    const auto found = std::ranges::find(formats, base::lower(text), column);
    return found != std::end(formats) ? std::optional(found->format) : std::nullopt;
}

} // namespace

std::optional<Plot_Format> format_named(std::string_view name) {
    return find_format(name, &FormatRow::name);
}

std::optional<Plot_Format> format_of_extension(std::string_view extension) {
    return find_format(extension, &FormatRow::extension);
}

double default_Plot_Unit(Plot_Format format, const Sheet& sheet) {
    constexpr double plotter_units = 10000;
    const double longer = std::max(sheet.width, sheet.height);
    return format == Plot_Format::HPGL && longer > 0 ? longer / plotter_units : 1;
}

std::unique_ptr<PlotFile> Plot_Open(Plot_Format format, const Sheet& sheet) {
    switch (format) {
    case Plot_Format::DXF:
        return std::make_unique<DxfFile>(sheet);
    case Plot_Format::HPGL:
        return std::make_unique<HpglFile>(sheet);
    case Plot_Format::BMP:
        break;
    }
    return std::make_unique<BitmapFile>(sheet);
}

} // namespace plot
