#include "benches.h"
#include "deskparts.h"

#include "core/project.h"
#include "plot/drawcontours.h"
#include "ui/worksheetpainter.h"

#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

namespace bench {

namespace {

float hill(int i, int j) {
    return static_cast<float>(std::sin(i * 0.013) * std::cos(j * 0.017) +
                              0.3 * std::sin((i + j) * 0.031));
}

// A layer whose cells have different colours, turned by an angle.
ui::WorksheetPicture layer(int side, double angle) {
    core::Project project;
    project.set_single("GRIDPOSITION", "RAD", static_cast<float>(angle));
    grid::GridFile grid;
    grid.NX = grid.NY = side;
    grid.NZ = 1;
    for (int n = 0; n < side; ++n) {
        grid.Column_Width.push_back(static_cast<float>(5 + n % 3));
        grid.Row_Height.push_back(static_cast<float>(4 + n % 5));
    }
    ui::WorksheetPicture picture = ui::mesh_picture(project, grid);
    picture.colours = ui::CellColours::viridis;
    std::vector<float> values;
    for (int j = 0; j < side; ++j) {
        for (int i = 0; i < side; ++i) {
            values.push_back(hill(i, j));
        }
    }
    ui::LayerData data;
    data.values = values;
    colour_cells(picture, project, data);
    return picture;
}

// 20 levels of the hills, lines with labels and bands.
std::shared_ptr<const ui::ContourPaths> contours(const ui::WorksheetPicture& picture) {
    const core::Project project;
    plot::PlotData data{project, picture.cells, {}, {}, {}, {}, {}, {}};
    for (int j = 0; j < picture.grid.NY; ++j) {
        for (int i = 0; i < picture.grid.NX; ++i) {
            data.values.push_back(hill(i, j));
        }
    }
    for (int n = 0; n < 20; ++n) {
        plot::Contour_Level level;
        level.level = -1.2F + 0.12F * static_cast<float>(n);
        level.fill = n * 0x0A0A0A;
        data.levels.push_back(level);
    }
    const plot::PlotFrame frame(project, data.cells, plot::Display::local);
    auto paths = std::make_shared<ui::ContourPaths>();
    Silent user;
    plot::fill_contours(*paths, frame, data, user);
    plot::draw_contour_lines(*paths, frame, data, user);
    return paths;
}

// Shows the picture at this zoom, as the view does after each change.
void paint(benchmark::State& state, const ui::WorksheetPicture& picture, QSize size, double zoom) {
    grid::WorksheetDisplay display(grid::DisplayMode::world, picture.grid, *picture.position,
                                   size.width(), size.height());
    display.zoom({0.4 * size.width(), 0.4 * size.height()}, zoom);
    const ui::WorksheetPainter painter(picture, ui::local_to_pixel(display),
                                       ui::WorksheetInks(QPalette()));
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(painter.image(size, 1, QFont()));
    }
}

} // namespace

void add_painting() {
    const auto add = [&](const char* title, int side, double angle, QSize size, double zoom,
                         bool with_contours) {
        benchmark::RegisterBenchmark(title, [=](benchmark::State& state) {
            ui::WorksheetPicture picture = layer(side, angle);
            if (with_contours) {
                picture.contours = contours(picture);
            }
            paint(state, picture, size, zoom);
        });
    };
    const QSize usual(1000, 800), large(1600, 1280);
    add("paint whole", 2000, 0, usual, 1, false);
    add("paint zoomed", 2000, 0, usual, 5, false);
    add("paint cells", 2000, 0, usual, 50, false);
    add("paint turned", 2000, 0.6, usual, 1, false);
    add("paint turned zoomed", 2000, 0.6, usual, 7, false);
    add("paint large", 2000, 0.6, large, 1, false);
    add("paint contours", 500, 0, usual, 1, true);
    add("paint contours zoomed", 500, 0.6, usual, 3, true);
}

} // namespace bench
