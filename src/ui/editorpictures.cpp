#include "ui/editorpictures.h"

#include "app/workspace.h"
#include "base/paths.h"
#include "core/arraystore.h"
#include "grid/monitoring.h"
#include "plot/drawcontours.h"
#include "plot/plotsource.h"
#include "ui/colours.h"
#include "ui/text.h"

#include <algorithm>

namespace ui {

namespace {

constexpr int flow_boundary = 5;

// Flow boundaries of a layer in period 1; empty when the model has none, or not for this mesh.
core::LayerValues boundary_of(core::ModelFiles& files, const core::Project& project, int layer) {
    try {
        const core::ArrayStore store(files, project);
        if (!store.exists(flow_boundary)) {
            return {};
        }
        core::LayerValues values = store.layer_values(flow_boundary);
        store.read_array(flow_boundary, 1, std::min(layer, store.layers(flow_boundary)), values, 1);
        return values;
    } catch (const base::FileFailure&) {
        return {};
    }
}

std::vector<WorksheetPicture::Mark> points_of(const core::ModelFiles& files,
                                              const core::Project& project,
                                              const grid::GridPosition& position) {
    std::vector<WorksheetPicture::Mark> marks;
    if (!key_shown(project, "BORES")) {
        return marks;
    }
    const QColor colour = key_colour(project, "Bores");
    for (const grid::Bore& bore : grid::Read_Monitoring_Points(files).bores) {
        if (bore.Active) {
            marks.push_back(
                {position.local(double{bore.X}, double{bore.Y}), to_qt(bore.Name), colour});
        }
    }
    return marks;
}

plot::StrokeFont label_font() {
    const std::filesystem::path own = base::executable_folder();
    const std::filesystem::path folders[] = {own, own / "../share/tervexdesk"};
    return plot::StrokeFont::load(folders);
}

// The way back from the sheet of plots to the grid's own frame.
QTransform sheet_to_local(const plot::PlotFrame& frame) {
    constexpr double far = 1e4;
    const plot::Point origin = frame.from_grid({0, 0}), right = frame.from_grid({far, 0}),
                      down = frame.from_grid({0, far});
    const QTransform to_sheet((right.x - origin.x) / far, (right.y - origin.y) / far,
                              (down.x - origin.x) / far, (down.y - origin.y) / far, origin.x,
                              origin.y);
    return to_sheet.inverted();
}

} // namespace

void give_colours(plot::ContourLevels& levels) {
    if (levels.size() < 2 ||
        std::ranges::any_of(levels, [](const auto& level) { return level.fill; })) {
        return;
    }
    constexpr double darkest = 0.3; // lines and labels are black
    for (std::size_t n = 0; n < levels.size(); ++n) {
        const double part = static_cast<double>(n) / static_cast<double>(levels.size() - 1);
        const double place = darkest + (1 - darkest) * part;
        levels[n].fill = from_qt_colour(QColor(scale_colour(CellColours::viridis, place)));
    }
}

PicturePointer placed_picture(const app::Workspace& model) {
    const core::Project& project = model.project;
    try {
        const auto grid = grid::GridFile::load(model.files);
        if (!grid) {
            return nullptr;
        }
        auto picture = std::make_shared<WorksheetPicture>(mesh_picture(project, *grid));
        picture->points = points_of(model.files, project, *picture->position);
        if (grid->NX == project.NX() && grid->NY == project.NY()) {
            core::ModelFiles files(model.Model_Path(), core::Access::read);
            LayerData layer;
            const core::LayerValues boundary = boundary_of(files, project, 1);
            layer.boundary = boundary;
            colour_cells(*picture, project, layer);
        }
        return picture;
    } catch (const base::FileFailure&) {
        return nullptr;
    }
}

PicturePointer mesh_editor_picture(const grid::MeshEditor& mesh, const core::Project& placed) {
    auto picture = std::make_shared<WorksheetPicture>(mesh_picture(placed, mesh.grid()));
    picture->mesh_shown = true;
    picture->zones_shown = false;
    picture->column_factors = mesh.division().columns;
    picture->row_factors = mesh.division().rows;
    return picture;
}

SessionPictures::SessionPictures(const grid::Worksheet& worksheet, app::Workspace& model)
    : worksheet_(worksheet), model_(model), font_(label_font()) {}

void SessionPictures::load_boundary() {
    const int layer = worksheet_.Current_Layer();
    if (boundary_layer_ != layer) {
        boundary_ = boundary_of(model_.files, model_.project, layer);
        boundary_layer_ = layer;
    }
}

LayerData SessionPictures::layer_data() {
    const grid::EditRequest& request = worksheet_.request();
    LayerData layer;
    layer.number = request.Current_Parameter();
    layer.default_value = request.default_value(1);
    layer.values = worksheet_.array(1);
    layer.boundary = boundary_;
    return layer;
}

PicturePointer SessionPictures::make(CellColours colours, grid::DisplayMode display,
                                     bool zones_shown, base::Interaction& user) {
    load_boundary();
    const core::Project& project = model_.project;
    auto picture = std::make_shared<WorksheetPicture>(mesh_picture(project, worksheet_.grid()));
    picture->colours = colours;
    picture->scale_title = to_qt(worksheet_.request().window_caption);
    colour_cells(*picture, project, layer_data());
    picture->zones = worksheet_.zones();
    picture->zones_shown = picture->zones_shown || zones_shown;
    add_points(*picture);
    picture->contours = contours(display, user);
    picture_ = picture;
    return picture;
}

PicturePointer SessionPictures::with_cell(grid::CellIndex cell) {
    const bool shown = picture_ && !picture_->contours &&
                       recolour_cell(*picture_, model_.project, layer_data(), cell);
    values_changed();
    return shown ? picture_ : nullptr;
}

void SessionPictures::add_points(WorksheetPicture& picture) const {
    const core::Project& project = model_.project;
    picture.points = points_of(model_.files, project, *picture.position);
    if (key_shown(project, "DIGI_POINTS")) {
        const QColor colour = key_colour(project, "DIGI_POINTS");
        for (const grid::DigitizedPoint& point : worksheet_.points()) {
            picture.digitized.push_back({{double{point.x}, double{point.y}}, {}, colour});
        }
    }
}

std::shared_ptr<const ContourPaths> SessionPictures::contours(grid::DisplayMode display,
                                                              base::Interaction& user) {
    const core::Project& project = model_.project;
    if (!key_shown(project, "CONTOURS")) {
        return contours_ = nullptr;
    }
    const bool same = contours_ && contours_display_ == display &&
                      contours_layer_ == worksheet_.Current_Layer() &&
                      contours_period_ == worksheet_.Current_Period();
    if (same) {
        return contours_;
    }
    const int array =
        std::clamp(project.integer("CONTOURS", "DataSource") + 1, 1, worksheet_.Array_Count());
    plot::PlotData data{project, worksheet_.cells(), worksheet_.array(array), boundary_, {}, {}, {},
                        font_};
    data.levels = plot::load_levels(data, model_.files).levels;
    give_colours(data.levels);
    auto paths = std::make_shared<ContourPaths>();
    if (key_shown(project, "Fill CONTOURS")) {
        const plot::PlotFrame frame(project, data.cells, plot::Display::local);
        plot::fill_contours(*paths, frame, data, user);
    }
    if (key_shown(project, "Contour_lines")) {
        const plot::PlotFrame frame(project, data.cells,
                                    display == grid::DisplayMode::world ? plot::Display::world
                                                                        : plot::Display::local);
        paths->set_sheet(sheet_to_local(frame));
        plot::draw_contour_lines(*paths, frame, data, user);
    }
    contours_display_ = display;
    contours_layer_ = worksheet_.Current_Layer();
    contours_period_ = worksheet_.Current_Period();
    return contours_ = paths;
}

} // namespace ui
