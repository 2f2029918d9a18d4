// Zones of the worksheet by mouse and keys.
#include "editorfixture.h"

#include "core/zonefile.h"
#include "grid/worksheettools.h"

#include <QAction>
#include <QDialog>
#include <QImage>
#include <QPushButton>
#include <QTest>

namespace {

using base::Answer;

class EditorZones : public support::EditorFixture {
protected:
    // Cells of 10 m, so that a pixel is a small part of one.
    void open_zones() {
        make_model(12, 9);
        open();
        view().show_legend(false); // has the colours of zones too
        tool("zone");
        ASSERT_EQ(sheet().Editor_State, grid::EditorState::zone);
    }
    void click_at(double x, double y) { click(at(x, y)); }
    // Draws a polygon; the last click is near the first node. The value dialog is cancelled.
    void draw(std::initializer_list<std::pair<double, double>> nodes) {
        for (const auto& [x, y] : nodes) {
            click_at(x, y);
        }
        const auto& [x, y] = *nodes.begin();
        in_dialog([&] { click(at(x, y) + QPoint(3, 0)); }, "Specify_One_Real",
                  [](QDialog& dialog) {
                      EXPECT_EQ(dialog.windowTitle(), "Zone Value");
                      dialog.reject();
                  });
    }
    bool has_colour(QColor colour) {
        const QImage image = view().viewport()->grab().toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == colour) {
                    return true;
                }
            }
        }
        return false;
    }
};

TEST_F(EditorZones, four_clicks_make_a_zone_whose_value_goes_to_its_cells) {
    open_zones();
    for (const auto& [x, y] : {std::pair(22., 41.), {61., 19.}, {78., 66.}}) {
        click_at(x, y);
    }
    EXPECT_TRUE(has_colour(Qt::red));
    type_values([&] { click(at(22, 41) + QPoint(2, 2)); }, {"33"}, "cmdTransfer");
    ASSERT_EQ(sheet().zones().size(), 1U);
    const core::Zone& zone = sheet().zones()[0];
    EXPECT_EQ(zone.nodes, 3);
    EXPECT_NEAR(zone.y[1], 19, 0.5); // begins with its topmost node
    EXPECT_EQ(zone.value, 33);
    EXPECT_EQ(sheet().cell(1, 6, 5), 33);
    EXPECT_EQ(sheet().cell(1, 1, 1), 10);
    leave(Answer::yes);
    const auto zones = core::ZoneFile(const_cast<core::ModelFiles&>(desk.model()->files), 1)
                           .read_zones(1, 1, 1502);
    ASSERT_EQ(zones.size(), 1U);
    EXPECT_EQ(zones[0].nodes, 3);
}

TEST_F(EditorZones, Cancel_at_the_dialog_keeps_the_zone_with_0) {
    open_zones();
    draw({{20, 20}, {60, 20}, {60, 60}, {20, 60}});
    ASSERT_EQ(sheet().zones().size(), 1U);
    EXPECT_EQ(sheet().zones()[0].value, 0);
    EXPECT_EQ(sheet().cell(1, 4, 4), 10);
    leave(Answer::no);
}

TEST_F(EditorZones, a_click_near_a_node_of_another_zone_is_that_node) {
    open_zones();
    draw({{20, 20}, {60, 20}, {60, 60}, {20, 60}});
    click(QPoint(2, 2) + at(100, 80));
    click(at(60, 20) + QPoint(3, 0));
    click(at(60, 60) + QPoint(8, 0));
    in_dialog([&] { click(at(100, 80)); }, "Specify_One_Real",
              [](QDialog& dialog) { dialog.reject(); });
    ASSERT_EQ(sheet().zones().size(), 2U);
    const core::Zone &first = sheet().zones()[0], &second = sheet().zones()[1];
    EXPECT_EQ(second.x[1], first.x[2]); // the topmost one
    EXPECT_EQ(second.y[1], first.y[2]);
    for (std::size_t n = 2; n <= 3; ++n) {
        EXPECT_NE(second.x[n], first.x[3]);
    }
    leave(Answer::no);
}

TEST_F(EditorZones, the_right_button_and_Escape_abort) {
    open_zones();
    for (int with_key = 0; with_key < 2; ++with_key) {
        click_at(20, 20);
        click_at(60, 20);
        EXPECT_TRUE(has_colour(Qt::red));
        if (with_key) {
            key(Qt::Key_Escape);
        } else {
            click(at(60, 60), Qt::RightButton);
        }
        EXPECT_FALSE(has_colour(Qt::red));
    }
    EXPECT_TRUE(sheet().zones().empty());
    leave(Answer::no);
}

TEST_F(EditorZones, the_21st_zone_and_the_41st_node_are_refused) {
    open_zones();
    core::Zone zone;
    zone.nodes = 3;
    zone.x = {0, 101, 102, 102};
    zone.y = {0, 1, 1, 2};
    core::Close_Zone(zone);
    sheet().set_zones(std::vector<core::Zone>(20, zone));
    tool("cell_by_cell");
    tool("zone"); // takes the zones over
    user.expect_message("Zones", "Too many zones!\nThe maximum number of zones is 20.");
    click_at(20, 20);
    sheet().set_zones({});
    tool("cell_by_cell");
    tool("zone");
    for (int node = 0; node < 40; ++node) {
        click_at(5 + 2.5 * node, node % 2 ? 70 : 10);
    }
    user.expect_message("Zones",
                        "Too many nodes!\nThe maximum number of nodes is 40.\n\nClose the zone or "
                        "Press the right mouse button to abort.");
    click_at(110, 40);
    in_dialog([&] { click_at(5, 10); }, "Specify_One_Real",
              [](QDialog& dialog) { dialog.reject(); });
    ASSERT_EQ(sheet().zones().size(), 1U);
    EXPECT_EQ(sheet().zones()[0].nodes, 40);
    leave(Answer::no);
}

TEST_F(EditorZones, an_item_without_zones_says_so) {
    make_model(6, 4);
    open("packages_wel1");
    EXPECT_FALSE(action("value_zones").isEnabled());
    user.expect_message("Tervex Desk", "Specification of zones is not allowed for Wells");
    tool("zone");
    EXPECT_EQ(user.beeps(), 1);
    EXPECT_EQ(sheet().Editor_State, grid::EditorState::cell_by_cell);
    EXPECT_TRUE(action("tool_cell_by_cell").isChecked());
    leave(Answer::no, "Wells");
}

TEST_F(EditorZones, a_click_selects_Enter_asks_and_Delete_removes) {
    open_zones();
    draw({{20, 20}, {60, 20}, {60, 60}, {20, 60}});
    key(Qt::Key_Escape);
    EXPECT_FALSE(has_colour(Qt::blue));
    click_at(40, 40);
    EXPECT_TRUE(has_colour(Qt::blue));
    EXPECT_EQ(sheet().zones().size(), 1U);
    type_values([&] { key(Qt::Key_Return); }, {"5"});
    EXPECT_EQ(sheet().zones()[0].value, 5);
    EXPECT_EQ(sheet().cell(1, 4, 4), 10);
    key(Qt::Key_Delete);
    EXPECT_TRUE(sheet().zones().empty());
    tool("undo");
    EXPECT_EQ(sheet().zones().size(), 1U);
    leave(Answer::no);
}

TEST_F(EditorZones, a_node_of_the_selected_zone_is_dragged) {
    open_zones();
    draw({{20, 20}, {60, 20}, {60, 60}, {20, 60}});
    press(at(20, 20));
    move_to(at(12, 8));
    release(at(10, 5));
    ASSERT_EQ(sheet().zones().size(), 1U);
    EXPECT_NEAR(sheet().zones()[0].x[1], 10, 0.5);
    EXPECT_NEAR(sheet().zones()[0].y[1], 5, 0.5);
    EXPECT_NEAR(sheet().zones()[0].param[13], 5, 0.5); // of the box
    leave(Answer::no);
}

TEST_F(EditorZones, a_node_on_its_way_is_let_go_by_Escape_the_right_button_and_Delete) {
    open_zones();
    draw({{20, 20}, {60, 20}, {60, 60}, {20, 60}});
    const auto drag_and = [&](const std::function<void()>& let_go) {
        click_at(40, 40);
        press(at(20, 20));
        move_to(at(12, 8));
        let_go();
        move_to(at(14, 6));
        release(at(10, 5));
    };
    drag_and([&] { key(Qt::Key_Escape); });
    drag_and([&] {
        QTest::mousePress(view().viewport(), Qt::RightButton, {}, at(12, 8));
        QTest::mouseRelease(view().viewport(), Qt::RightButton, {}, at(12, 8));
    });
    ASSERT_EQ(sheet().zones().size(), 1U);
    EXPECT_NEAR(sheet().zones()[0].x[1], 20, 0.5);
    EXPECT_NEAR(sheet().zones()[0].y[1], 20, 0.5);
    drag_and([&] { key(Qt::Key_Delete); });
    EXPECT_TRUE(sheet().zones().empty());
    leave(Answer::no);
}

TEST_F(EditorZones, an_open_zone_is_dropped_by_layers_modes_and_leaving) {
    open_zones();
    click_at(20, 20);
    const int beeps = user.beeps();
    tool("cell_by_cell");
    EXPECT_EQ(user.beeps(), beeps + 1);
    tool("zone");
    click_at(20, 20);
    leave(Answer::cancel);
    EXPECT_EQ(user.beeps(), beeps + 2);
    EXPECT_EQ(sheet().Editor_State, grid::EditorState::zone);
    EXPECT_FALSE(has_colour(Qt::red));
    leave(Answer::no);
}

} // namespace
