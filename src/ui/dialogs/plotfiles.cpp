#include "ui/dialogs/plotfiles.h"

#include "app/workspace.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "grid/worksheet.h"
#include "plot/colourtable.h"
#include "ui/desk.h"
#include "ui/dialogs/shownlayer.h"
#include "ui/editorpictures.h"
#include "ui/worksheetview.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <algorithm>

namespace ui {

namespace {

constexpr int longer_side = 2000; // pixels
constexpr int svg_side = 1000;    // units
constexpr const char* appearance = "GRID_APPEARANCE";

std::string bytes_of(const QBuffer& buffer) {
    return buffer.data().toStdString();
}

QSizeF size_of(const WorksheetView& view, double longer) {
    const double aspect = view.aspect();
    return aspect > 1 ? QSizeF(longer, longer / aspect) : QSizeF(longer * aspect, longer);
}

std::string png(const WorksheetView& view) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    view.image(longer_side).save(&buffer, "PNG");
    return bytes_of(buffer);
}

std::string svg(const WorksheetView& view) {
    QBuffer buffer;
    const QSizeF size = size_of(view, svg_side);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size.toSize());
    generator.setViewBox(QRectF(QPointF(), size));
    generator.setTitle("Tervex Desk");
    QPainter painter(&generator);
    view.paint_to(painter, QRectF(QPointF(), size));
    painter.end();
    return bytes_of(buffer);
}

std::string pdf(const WorksheetView& view) {
    constexpr double longer_mm = 257; // of A4 within its margins
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setCreator("Tervex Desk");
    writer.setPageSize(QPageSize(size_of(view, longer_mm), QPageSize::Millimeter));
    writer.setPageMargins({});
    QPainter painter(&writer);
    view.paint_to(painter, QRectF(QPointF(), QSizeF(writer.width(), writer.height())));
    painter.end();
    return bytes_of(buffer);
}

using plot::Plot_Format;

constexpr PictureFormat formats[] = {
    {"DXF", ".dxf", "AutoCAD DXF (*.dxf)|*.dxf", Plot_Format::DXF},
    {"HPGL", ".pgl", "HPGL (*.pgl)|*.pgl", Plot_Format::HPGL},
    {"Windows bitmap (BMP)", ".bmp", "Windows Bitmap (*.bmp)|*.bmp", Plot_Format::BMP},
    {"Portable Network Graphics (PNG)", ".png", "PNG picture (*.png)|*.png", {}, png},
    {"Scalable Vector Graphics (SVG)", ".svg", "SVG drawing (*.svg)|*.svg", {}, svg},
    {"Portable Document Format (PDF)", ".pdf", "PDF document (*.pdf)|*.pdf", {}, pdf},
};

// The elements that are switched on.
plot::PlotShow shown_elements(const core::Project& project, bool with_layer) {
    const auto on = [&](const char* key) { return project.integer(appearance, key) != 0; };
    const bool contours = with_layer && on("CONTOURS");
    return {.mesh = on("MESH"),
            .inactive = on("INACTIVE_CELL"),
            .zones = with_layer && on("ZONES"),
            .contours = contours && on("Contour_lines"),
            .fill = contours && on("Fill CONTOURS"),
            .bores = on("BORES")};
}

// Cells and digitized points as the view shows them. A view of another grid, that of the mesh
// editor, leaves the inactive cells to the project.
void add_cells(plot::PlotData& data, plot::PlotShow& show, const WorksheetPicture* picture) {
    const std::size_t cells = data.cells.x_centres.size() * data.cells.y_centres.size();
    if (!picture || picture->cell_classes.size() != cells) {
        return;
    }
    show.inactive = false;
    data.cell_colours.assign(cells, plot::PlotData::ground);
    for (std::size_t n = 0; n < cells; ++n) {
        const std::uint8_t number = picture->cell_classes[n];
        const QRgb colour = number == 0 ? 0 : picture->colour_table.at(number - 1U);
        if (colour != 0) {
            data.cell_colours[n] = plot::colour_of({qRed(colour), qGreen(colour), qBlue(colour)});
        }
    }
    for (const WorksheetPicture::Mark& mark : picture->digitized) {
        data.digitized.push_back({mark.local.x, mark.local.y});
    }
}

// Contour levels as they are drawn; without a file of levels, those of the values.
void add_levels(plot::PlotData& data, const plot::PlotShow& show, const core::ModelFiles& files) {
    if (show.contours || show.fill) {
        data.levels = plot::load_levels(data, files).levels;
        give_colours(data.levels);
    }
}

plot::StrokeFont font_of(const Desk& desk) {
    const std::filesystem::path& program = desk.folders().program;
    const std::filesystem::path folders[] = {program, program / "../share/tervexdesk"};
    return plot::StrokeFont::load(folders);
}

std::string plot_bytes(Desk& desk, const app::Workspace& model, grid::Worksheet* worksheet,
                       const WorksheetView& view, Plot_Format format) {
    plot::PlotData data = shown_layer(model, worksheet);
    plot::PlotShow show = shown_elements(model.project, worksheet != nullptr);
    show.zones = show.zones || (worksheet && worksheet->Editor_State == grid::EditorState::zone);
    add_cells(data, show, view.picture());
    add_levels(data, show, model.files);
    data.bores = grid::Read_Monitoring_Points(model.files);
    data.font = font_of(desk);
    const auto display =
        view.display() == grid::DisplayMode::world ? plot::Display::world : plot::Display::local;
    const plot::PlotFrame frame(model.project, data.cells, display);
    plot::Sheet sheet = frame.sheet();
    sheet.Plot_Unit = plot::default_Plot_Unit(format, sheet);
    const auto drawing = plot::Plot_Open(format, sheet);
    plot::draw_worksheet(*drawing, frame, data, show, desk.user());
    return drawing->Plot_Close();
}

} // namespace

std::span<const PictureFormat> picture_formats() {
    return formats;
}

const PictureFormat* format_of_file(const std::filesystem::path& file) {
    const std::string extension = base::lower(file.extension().string());
    const auto* const found = std::ranges::find_if(
        formats, [&](const PictureFormat& format) { return extension == format.extension; });
    return found != std::end(formats) ? found : nullptr;
}

void write_picture(Desk& desk, const app::Workspace& model, grid::Worksheet* worksheet,
                   const WorksheetView& view, const PictureFormat& format,
                   const std::filesystem::path& file) {
    base::replace_file(file, format.plot ? plot_bytes(desk, model, worksheet, view, *format.plot)
                                         : format.draw(view));
}

} // namespace ui
