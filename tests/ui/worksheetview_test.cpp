#include "ui/worksheetview.h"

#include "core/project.h"
#include "plot/contourlevels.h"
#include "ui/worksheetlegend.h"
#include "ui/worksheetpainter.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

#include <cmath>

namespace {

using Point = grid::GridPosition::Point;

grid::GridFile regular_grid(int NX, int NY, float size) {
    grid::GridFile grid;
    grid.NX = NX;
    grid.NY = NY;
    grid.NZ = 1;
    grid.Column_Width.assign(static_cast<std::size_t>(NX), size);
    grid.Row_Height.assign(static_cast<std::size_t>(NY), size);
    return grid;
}

class PressedCells : public ui::WorksheetInput {
public:
    void press(const ui::WorksheetPointer& pointer) override {
        last = pointer.cell.value_or(grid::CellIndex{0, 0});
    }
    void find(grid::CellIndex cell) override { found = cell; }
    bool key(QKeyEvent&) override {
        ++keys;
        return true;
    }
    grid::CellIndex last{0, 0}, found{0, 0};
    int keys = 0;
};

class View : public testing::Test {
protected:
    View() {
        view.setPalette(QPalette(Qt::black, Qt::lightGray, Qt::white, Qt::darkGray, Qt::gray,
                                 Qt::black, Qt::white, Qt::white, Qt::lightGray));
        view.resize(800, 600);
        view.set_input(&input);
        view.show();
    }

    // Every cell of column i and row j is of class i + j modulo 2.
    void show_board(int NX, int NY, double angle = 0, float size = 10) {
        project.set_single("GRIDPOSITION", "RAD", static_cast<float>(angle * M_PI / 180));
        project.set_single("GRIDPOSITION", "ANGLE", static_cast<float>(angle));
        project.set_single("GRIDPOSITION", "TOP", static_cast<float>(NY) * size);
        auto picture = std::make_shared<ui::WorksheetPicture>(
            ui::mesh_picture(project, regular_grid(NX, NY, size)));
        for (int j = 0; j < NY; ++j) {
            for (int i = 0; i < NX; ++i) {
                picture->cell_classes.push_back(static_cast<std::uint8_t>((i + j) % 2));
            }
        }
        picture->colour_table = {qRgb(255, 0, 0)};
        board = picture;
        view.set_picture(picture);
    }

    QColor colour_at(QPoint pixel) { return view.viewport()->grab().toImage().pixelColor(pixel); }

    // The colours of many cells of the board are those of their classes.
    void expect_board() {
        const QImage image = view.viewport()->grab().toImage();
        int looked_at = 0;
        for (int j = 1; j <= board->grid.NY; j += 1 + board->grid.NY / 30) {
            for (int i = 1; i <= board->grid.NX; i += 1 + board->grid.NX / 30) {
                const QPoint at = view.cell_centre(i, j);
                if (image.rect().contains(at) && view.pixel_size() < 4) {
                    EXPECT_EQ(image.pixelColor(at), (i + j) % 2 ? Qt::red : Qt::white)
                        << i << ", " << j;
                    ++looked_at;
                }
            }
        }
        EXPECT_GT(looked_at, 0);
    }

    core::Project project;
    ui::WorksheetView view;
    PressedCells input;
    std::shared_ptr<const ui::WorksheetPicture> board;
};

TEST_F(View, cells_lie_where_their_centres_do_at_every_angle_display_and_zoom) {
    for (const double angle : {0., 30., 90., -45.}) {
        for (const auto mode : {grid::DisplayMode::world, grid::DisplayMode::local}) {
            show_board(40, 30, angle);
            view.set_display(mode);
            view.show_all();
            expect_board();
            view.zoom({400, 300}, 3.7);
            expect_board();
        }
    }
}

TEST_F(View, a_click_finds_the_corner_cells_in_both_displays) {
    for (const double angle : {0., 30., 90., -45.}) {
        show_board(40, 30, angle);
        view.set_display(grid::DisplayMode::local);
        const QPoint in_local = view.cell_centre(1, 1);
        view.set_display(grid::DisplayMode::world);
        EXPECT_EQ(view.cell_centre(1, 1) != in_local, angle != 0);
        for (const auto mode : {grid::DisplayMode::world, grid::DisplayMode::local}) {
            view.set_display(mode);
            for (const auto& [column, row] : {std::pair(1, 1), {40, 1}, {1, 30}, {40, 30}}) {
                QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                                  view.cell_centre(column, row));
                EXPECT_EQ(input.last.column, column);
                EXPECT_EQ(input.last.row, row);
                EXPECT_TRUE(view.viewport()->rect().contains(view.cell_centre(column, row)));
            }
        }
    }
}

TEST_F(View, a_drag_zooms_and_zoom_out_shows_all) {
    show_board(40, 30);
    view.begin_zoom_rectangle();
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, view.cell_centre(10, 10));
    QTest::mouseMove(view.viewport(), view.cell_centre(14, 13));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, view.cell_centre(14, 13));
    EXPECT_GT(view.zoom_factor(), 5);
    EXPECT_TRUE(view.horizontalScrollBar()->isVisible());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.cell_centre(12, 11));
    EXPECT_EQ(input.last.column, 12);
    EXPECT_EQ(input.last.row, 11);
    view.show_all();
    EXPECT_FALSE(view.horizontalScrollBar()->isVisible());
    for (const auto& [column, row] : {std::pair(1, 1), {40, 1}, {1, 30}, {40, 30}}) {
        EXPECT_TRUE(view.viewport()->rect().contains(view.cell_centre(column, row)));
    }
}

TEST_F(View, scroll_bars_reach_all_of_the_whole_and_leave_no_trace) {
    show_board(20, 10);
    const QPointF corner = view.pixel_of({200, 100});
    const Point end = view.local_of(QPointF(view.width(), view.height()));
    view.zoom({10, 10}, 10);
    view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum());
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    const Point seen = view.local_of(QPointF(view.viewport()->width(), view.viewport()->height()));
    EXPECT_NEAR(seen.x, end.x, 2 * view.pixel_size());
    EXPECT_NEAR(seen.y, end.y, 2 * view.pixel_size());
    view.show_all();
    EXPECT_EQ(view.pixel_of({200, 100}), corner);
}

TEST_F(View, the_wheel_with_Ctrl_zooms_about_the_pointer_and_the_middle_button_pans) {
    show_board(40, 30);
    const QPoint at = view.cell_centre(30, 7);
    QWheelEvent wheel(at, view.mapToGlobal(at), {}, QPoint(0, 480), Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &wheel);
    EXPECT_GT(view.zoom_factor(), 2);
    EXPECT_LE((view.cell_centre(30, 7) - at).manhattanLength(), 2);
    QTest::mousePress(view.viewport(), Qt::MiddleButton, {}, at);
    QTest::mouseMove(view.viewport(), at + QPoint(-40, 25));
    QTest::mouseRelease(view.viewport(), Qt::MiddleButton, {}, at + QPoint(-40, 25));
    EXPECT_LE((view.cell_centre(30, 7) - at - QPoint(-40, 25)).manhattanLength(), 3);
}

TEST_F(View, mesh_lines_are_left_out_where_cells_are_under_four_pixels) {
    project.set_integer("COLOR", "MESH", 0x00FF00);
    const auto has_green = [&] {
        const QImage image = view.viewport()->grab().toImage();
        int green = 0;
        for (int x = 0; x < image.width(); ++x) {
            green += image.pixelColor(x, 300) == QColor(Qt::green) ? 1 : 0;
        }
        return green;
    };
    show_board(40, 30);
    EXPECT_GE(has_green(), 40);
    show_board(400, 300);
    EXPECT_LE(has_green(), 2); // the border
}

TEST_F(View, a_narrow_cell_between_wide_ones_is_seen) {
    grid::GridFile grid = regular_grid(3, 3, 100);
    grid.Column_Width[1] = 0.01F;
    project.set_integer("COLOR", "MESH", 0x00FF00);
    view.set_picture(std::make_shared<ui::WorksheetPicture>(ui::mesh_picture(project, grid)));
    const QPoint centre = view.cell_centre(2, 2);
    const QImage image = view.viewport()->grab().toImage();
    EXPECT_TRUE(image.pixelColor(centre) == Qt::green ||
                image.pixelColor(centre - QPoint(1, 0)) == Qt::green);
}

TEST_F(View, a_contour_line_has_its_colour_where_it_crosses) {
    show_board(40, 30);
    auto picture = std::make_shared<ui::WorksheetPicture>(*board);
    picture->cell_classes.assign(picture->cell_classes.size(), 0);
    auto contours = std::make_shared<ui::ContourPaths>();
    contours->Plot_Pen(0xFF0000); // blue
    contours->Plot_Line({105, 5}, {105, 155});
    contours->Plot_Line({105, 155}, {105, 295});
    contours->Plot_Pen(0x00FFFF); // yellow
    const plot::Point first[] = {{200, 100}, {210, 100}, {210, 110}, {200, 110}};
    const plot::Point next[] = {{210, 100}, {220, 100}, {220, 110}, {210, 110}};
    contours->Plot_Polygon(first);
    contours->Plot_Polygon(next);
    picture->contours = contours;
    view.set_picture(picture);
    for (const double zoom : {1., 2.}) {
        view.zoom({view.pixel_of({150, 150}).x(), view.pixel_of({150, 150}).y()}, zoom);
        const QPoint line = view.pixel_of({105, 153}).toPoint();
        const QImage image = view.viewport()->grab().toImage();
        EXPECT_TRUE(image.pixelColor(line) == Qt::blue ||
                    image.pixelColor(line - QPoint(1, 0)) == Qt::blue);
        EXPECT_EQ(colour_at(view.pixel_of({215, 105}).toPoint()), Qt::yellow);
    }
}

TEST_F(View, the_find_field_takes_column_and_row) {
    show_board(40, 30);
    view.find_cell();
    auto* field = view.findChild<QLineEdit*>("find_cell");
    QTest::keyClicks(field, "41,3");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(field->isVisible());
    field->setText("7,30");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_FALSE(field->isVisible());
    EXPECT_EQ(input.found.column, 7);
    EXPECT_EQ(input.found.row, 30);
    view.find_cell();
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(field->isVisible());
    EXPECT_EQ(input.keys, 0) << "the keys are those of the field alone";
}

TEST_F(View, marked_cells_keep_their_colour_until_the_next_picture) {
    show_board(40, 30);
    std::vector<std::uint8_t> marks(40 * 30, 0);
    marks[0] = 2;
    const QRgb colours[] = {qRgb(1, 2, 3), qRgb(0, 255, 255)};
    view.mark_cells(marks, colours);
    EXPECT_EQ(colour_at(view.cell_centre(1, 1)), QColor(Qt::cyan));
    view.set_picture(board);
    EXPECT_EQ(colour_at(view.cell_centre(1, 1)), QColor(Qt::white));
}

TEST_F(View, a_picture_for_paper_shows_all_whatever_the_zoom) {
    show_board(40, 30);
    const QImage whole = view.image(400);
    view.zoom({100, 100}, 10);
    EXPECT_EQ(view.image(400), whole);
    EXPECT_NEAR(double(whole.width()) / whole.height(), 40. / 30, 0.01);
}

TEST(scale_colour, ends_and_middle_of_the_scales) {
    EXPECT_EQ(ui::scale_colour(ui::CellColours::viridis, 0), qRgb(0x44, 0x01, 0x54));
    EXPECT_EQ(ui::scale_colour(ui::CellColours::viridis, 1), qRgb(0xFD, 0xE7, 0x25));
    EXPECT_EQ(ui::scale_colour(ui::CellColours::diverging, 0.5), qRgb(0xF2, 0xF2, 0xF2));
}

TEST_F(View, TheWholeGridLiesBesideTheLegendAndStaysWhereTheLegendCoversNothing) {
    const auto show_with_legend = [this](int NX, int NY, std::vector<ui::LegendRow> legend) {
        show_board(NX, NY);
        auto picture = std::make_shared<ui::WorksheetPicture>(*board);
        picture->legend = std::move(legend);
        view.set_picture(picture);
        return QRectF(ui::legend_box(view.viewport()->rect(), *picture, view.font()));
    };
    const auto right_edge = [this] { return view.pixel_of({10. * board->grid.NX, 0}).x(); };
    view.show_legend(true);
    const QRectF box = show_with_legend(40, 30, {{Qt::red, "Fixed head"}});
    EXPECT_LT(right_edge(), box.left());
    EXPECT_GT(right_edge(), box.left() - view.width() / 10.);
    // The next layer has nothing to explain; the grid does not jump.
    const double before = right_edge();
    auto next = std::make_shared<ui::WorksheetPicture>(*board);
    view.set_picture(next);
    EXPECT_EQ(right_edge(), before);
    view.show_legend(false);
    EXPECT_GT(right_edge(), box.left());

    view.show_legend(true);
    show_with_legend(10, 30, {{Qt::red, "Fixed head"}});
    EXPECT_NEAR(view.pixel_of({50, 0}).x(), view.viewport()->width() / 2., 1);
}

} // namespace
