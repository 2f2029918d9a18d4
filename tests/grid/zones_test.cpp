// Zones: the point test, the transfer, the digitizer and the exchange form.
#include "testmodel.h"

#include "base/textfile.h"
#include "grid/griddefinition.h"
#include "grid/zones.h"

#include <cmath>
#include <random>

namespace {

using Nodes = std::vector<grid::ZoneNode>;

core::Zone zone_of(const Nodes& nodes, float value = 1) {
    core::Zone zone;
    zone.value = value;
    for (const grid::ZoneNode& node : nodes) {
        const auto index = static_cast<std::size_t>(++zone.nodes);
        zone.x[index] = node.x;
        zone.y[index] = node.y;
    }
    core::Close_Zone(zone);
    return zone;
}

core::Zone rectangle(float x1, float y1, float x2, float y2, float value = 1) {
    return zone_of({{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}}, value);
}

// The point test as it is defined: every edge against the whole segment, for one point.
int ccw(double px, double py, double qx, double qy, double rx, double ry) {
    const double dx1 = qx - px, dy1 = qy - py, dx2 = rx - px, dy2 = ry - py;
    if (dx1 * dy2 > dy1 * dx2)
        return 1;
    if (dx1 * dy2 < dy1 * dx2)
        return -1;
    if (dx1 * dx2 < 0 || dy1 * dy2 < 0)
        return -1;
    return dx1 * dx1 + dy1 * dy1 < dx2 * dx2 + dy2 * dy2 ? 1 : 0;
}

bool by_definition(double x, double y, const core::Zone& zone) {
    if (x < zone.param[12] || y < zone.param[13] || x > zone.param[14] || y > zone.param[15]) {
        return false;
    }
    const auto last = static_cast<std::size_t>(zone.nodes);
    int nudges = 0;
    for (std::size_t k = 1; k <= last; ++k) {
        if (zone.y[k] == y) {
            if (++nudges > 20)
                return false;
            y += std::pow(10.0, std::floor(std::log10(std::abs(y)) - 6));
            k = 0;
        }
    }
    int crossings = 0;
    for (std::size_t k = 1; k <= last; ++k) {
        const double ax = zone.x[k], ay = zone.y[k], bx = zone.x[k + 1], by = zone.y[k + 1];
        crossings += ccw(x, y, 1E15, y, ax, ay) * ccw(x, y, 1E15, y, bx, by) <= 0 &&
                     ccw(ax, ay, bx, by, x, y) * ccw(ax, ay, bx, by, 1E15, y) <= 0;
    }
    return crossings % 2 == 1;
}

TEST(Zone_Contains, does_what_the_definition_says_for_any_polygon) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> place(-3, 12), count(1, 40);
    for (int round = 0; round < 400; ++round) {
        Nodes nodes(static_cast<std::size_t>(count(random)));
        for (grid::ZoneNode& node : nodes) {
            node = {static_cast<float>(place(random)) / 2, static_cast<float>(place(random)) / 2};
        }
        const core::Zone zone = zone_of(nodes);
        for (double y = -1.75; y < 7; y += 0.25) {
            for (double x = -1.75; y != 0 && x < 7; x += 0.25) {
                ASSERT_EQ(grid::Zone_Contains(x, y, zone), by_definition(x, y, zone))
                    << "round " << round << ": " << x << ", " << y;
            }
        }
    }
}

TEST(Zone_Contains, counts_a_point_on_an_edge_as_a_crossing_of_it) {
    const core::Zone square = rectangle(1, 1, 3, 3);
    EXPECT_TRUE(grid::Zone_Contains(2, 2, square));
    EXPECT_FALSE(grid::Zone_Contains(1, 2, square)) << "crosses the left and the right edge";
    EXPECT_TRUE(grid::Zone_Contains(3, 2, square)) << "crosses the right edge";
    EXPECT_TRUE(grid::Zone_Contains(2, 1, square)) << "moved down, into the zone";
    EXPECT_FALSE(grid::Zone_Contains(2, 3, square)) << "moved down, out of the zone";
    EXPECT_FALSE(grid::Zone_Contains(3.001, 2, square));
}

TEST(Zone_Contains, fails_at_0_when_a_node_lies_there_too) {
    const core::Zone at_edge = rectangle(0, 0, 2, 2);
    EXPECT_THROW(grid::Zone_Contains(1, 0, at_edge), base::RangeFailure);
    EXPECT_FALSE(grid::Zone_Contains(3, 0, at_edge)) << "outside the box, before the test";
    EXPECT_FALSE(grid::Zone_Contains(1, -0.1, at_edge));
    EXPECT_TRUE(grid::Zone_Contains(1, 0, rectangle(0, -1, 2, 2)));
}

TEST(Zone_Contains, gives_up_when_more_than_20_moves_leave_the_point_on_nodes) {
    Nodes comb;
    double y = 5;
    for (int node = 0; node < 21; ++node) { // each where the ray goes next
        comb.push_back({node % 2 == 0 ? 0.0F : 1.0F, static_cast<float>(y)});
        y = comb.back().y + 1E-6;
    }
    comb.push_back({10, 4});
    comb.push_back({10, 6});
    const core::Zone zone = zone_of(comb);
    EXPECT_EQ(grid::Zone_Contains(9, 5, zone), by_definition(9, 5, zone));
}

TEST(Find_Zone, gives_the_lowest_number) {
    const std::vector zones = {rectangle(0, 0, 2, 2), rectangle(1, 1, 4, 4)};
    EXPECT_EQ(grid::Find_Zone(1.5, 1.5, zones), 1);
    EXPECT_EQ(grid::Find_Zone(3, 3, zones), 2);
    EXPECT_EQ(grid::Find_Zone(9, 9, zones), 0);
}

TEST(transfer_zone, gives_the_cells_with_their_centre_inside_the_values_of_all_arrays) {
    grid::GridFile mesh{4, 3, 1, {1, 1, 2, 1}, {1, 2, 1}};
    core::Zone zone = rectangle(0.5F, 1, 3.5F, 3, 7);
    grid::set_zone_value(zone, 1, 8);
    EXPECT_EQ(grid::zone_value(zone, 0), 7);
    EXPECT_EQ(grid::zone_value(zone, 1), 8);
    std::vector<core::LayerValues> values(2, core::LayerValues(12, 1));
    // The centre of column 1 lies on the left edge, which counts as a second crossing.
    EXPECT_EQ(grid::transfer_zone(zone, grid::Build_Cell_Coordinates(mesh), values), 2U);
    EXPECT_EQ(values[0], (core::LayerValues{1, 1, 1, 1, 1, 7, 7, 1, 1, 1, 1, 1}));
    EXPECT_EQ(values[1], (core::LayerValues{1, 1, 1, 1, 1, 8, 8, 1, 1, 1, 1, 1}));
    EXPECT_THROW(grid::set_zone_value(zone, 13, 0), base::RangeFailure)
        << "the slots behind the 12 values are the box";
}

TEST(transfer_zone, agrees_with_the_point_test_in_every_cell) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> place(-2, 22), size(0.1F, 1);
    grid::GridFile mesh{40, 40, 1, {}, {}};
    for (int i = 0; i < 40; ++i) {
        mesh.Column_Width.push_back(size(random));
        mesh.Row_Height.push_back(size(random));
    }
    const grid::CellCoordinates cells = grid::Build_Cell_Coordinates(mesh);
    for (int round = 0; round < 20; ++round) {
        Nodes nodes(12);
        for (grid::ZoneNode& node : nodes) {
            node = {place(random), place(random)};
        }
        const core::Zone zone = zone_of(nodes, 5);
        std::vector<core::LayerValues> values(1, core::LayerValues(1600, 0));
        core::LayerValues expected;
        for (const double y : cells.y_centres) {
            for (const double x : cells.x_centres) {
                expected.push_back(
                    by_definition(static_cast<float>(x), static_cast<float>(y), zone) ? 5.0F : 0);
            }
        }
        grid::transfer_zone(zone, cells, values);
        ASSERT_EQ(values[0], expected);
    }
}

class Digitizer : public testing::Test {
protected:
    using Effect = grid::ZoneDigitizer::Effect;

    Effect click(double x, double y, double pixel = 0) {
        const auto step = digitizer.click(x, y, pixel);
        box = title_and_text(step.refusal);
        return step.effect;
    }
    void add(const core::Zone& zone) { digitizer.zones.push_back(zone); }

    grid::ZoneDigitizer digitizer;
    std::string box;
};

TEST_F(Digitizer, closes_a_zone_by_a_click_near_its_first_node) {
    EXPECT_EQ(click(0, 0, 0.1), Effect::started);
    EXPECT_EQ(click(4, 0, 0.1), Effect::added);
    EXPECT_EQ(click(0.3, 0, 0.1), Effect::none) << "two nodes are no zone";
    EXPECT_EQ(click(4, 0, 0.1), Effect::none) << "there is a node already";
    EXPECT_EQ(click(4, 4, 0.1), Effect::added);
    EXPECT_EQ(click(0.5, 0, 0.1), Effect::added) << "5 pixels away is too far";
    EXPECT_EQ(click(0.3, 0.39, 0.1), Effect::closed);
    ASSERT_EQ(digitizer.Zone_Count(), 1);
    EXPECT_EQ(digitizer.zones[0].nodes, 4);
    EXPECT_EQ(digitizer.Zone_Current, 1);
    EXPECT_FALSE(digitizer.Zone_Open);
    EXPECT_EQ(digitizer.zones[0].param[14], 4) << "closing computes the box";
    click(1, 1);
    digitizer.abort();
    EXPECT_EQ(click(9, 9), Effect::started) << "a new zone, not the dropped one";
}

TEST_F(Digitizer, takes_the_nodes_of_other_zones) {
    add(rectangle(10, 10, 20, 20));
    EXPECT_EQ(click(10.4, 9.8, 0.1), Effect::started);
    EXPECT_EQ(digitizer.Zone_Open->x[1], 10);
    EXPECT_EQ(digitizer.Zone_Open->y[1], 10);
    EXPECT_EQ(click(20.5, 20, 0.1), Effect::added);
    EXPECT_EQ(digitizer.Zone_Open->x[2], 20.5F) << "5 pixels away is too far";
}

TEST_F(Digitizer, refuses_zone_21_and_node_41) {
    for (int node = 0; node < 40; ++node) {
        click(node, node * node + 1);
    }
    EXPECT_EQ(click(50, 50), Effect::none);
    EXPECT_EQ(box, "Zones: Too many nodes!\nThe maximum number of nodes is 40.\n\n"
                   "Close the zone or Press the right mouse button to abort.");
    EXPECT_EQ(digitizer.Zone_Open->nodes, 40);
    EXPECT_EQ(click(0, 1), Effect::closed) << "a full zone can still be closed";

    digitizer.zones.resize(20);
    EXPECT_EQ(click(1, 1), Effect::none);
    EXPECT_EQ(box, "Zones: Too many zones!\nThe maximum number of zones is 20.");
    EXPECT_FALSE(digitizer.Zone_Open);
}

TEST_F(Digitizer, removes_a_zone_and_moves_later_ones_up) {
    add(rectangle(0, 1, 1, 2));
    add(rectangle(5, 5, 6, 6));
    digitizer.select(5.5, 5.5);
    EXPECT_EQ(digitizer.Zone_Current, 2);
    digitizer.remove(1);
    EXPECT_EQ(digitizer.Zone_Count(), 1);
    EXPECT_EQ(digitizer.zones[0].x[1], 5);
    EXPECT_EQ(digitizer.Zone_Current, 0);
    EXPECT_THROW(digitizer.remove(2), base::RangeFailure);
}

TEST(nodes_fault, tells_what_clicks_at_these_places_would_not_close) {
    const auto fault = [](const Nodes& nodes) {
        const char* const text = grid::nodes_fault(nodes);
        return std::string(text == nullptr ? "none" : text);
    };
    EXPECT_EQ(fault({{0, 0}, {1, 0}, {0, 1}}), "none");
    EXPECT_EQ(fault({{0, 0}, {1, 0}, {0, 1}, {0, 0}}), "none") << "closed by hand";
    EXPECT_EQ(fault({{0, 0}, {1, 0}, {1, 0}, {0, 0}}), "a zone has fewer than 3 nodes");
    EXPECT_EQ(fault({{0, 0}, {1, 0}, {0, 1}, {0, 0}, {2, 2}}),
              "a zone is closed before its last node");
}

TEST(zones_text, has_a_line_for_the_values_and_one_for_each_node) {
    core::Zone zone = zone_of({{0, 0}, {2.5F, 0}, {0, 1}}, 1E-12F);
    grid::set_zone_value(zone, 1, -3);
    EXPECT_EQ(grid::zones_text(std::vector{zone}),
              "BALDO4000_ASCII_ZONEFILE\r\n"
              " 1 \r\n"
              " 3  1E-12 -3  0  0  0  0  0  0  0  0  0  0  0  0  0  2.5  1 \r\n"
              " 0  0 \r\n"
              " 2.5  0 \r\n"
              " 0  1 \r\n");
}

TEST(zones_text, is_read_back_as_it_was_written) {
    const std::vector zones = {rectangle(0, 0, 4, 2.5F, 12), zone_of({{1, 5}, {3, 9}, {2, 7}})};
    const std::string text = grid::zones_text(zones);
    const auto read = grid::zones_from_text(text, "m.zon");
    EXPECT_EQ(title_and_text(read.refusal), "accepted");
    ASSERT_EQ(read.zones.size(), 2U);
    EXPECT_EQ(grid::zones_text(read.zones), text);
    EXPECT_EQ(read.zones[0].x[0], 0) << "closed: index 0 repeats the last node";
}

TEST(zones_from_text, takes_numbers_in_any_layout_and_computes_the_box) {
    const std::string values = "7,1 2 3 4 5 6 7 8 9 10 11 12 99 99 99 99\n";
    const auto read = grid::zones_from_text("BALDO4000_ASCII_ZONEFILE\n2\n2 " + values +
                                                "1,1 2,2\n3\n" + values + "5 6,4\t2\n\n1 1",
                                            "m.zon");
    ASSERT_EQ(read.zones.size(), 1U) << "two nodes are no zone";
    EXPECT_EQ(read.zones[0].value, 7);
    EXPECT_EQ(read.zones[0].param[11], 12);
    EXPECT_EQ(read.zones[0].param[12], 1);
    EXPECT_EQ(read.zones[0].param[15], 6);
    EXPECT_EQ(read.zones[0].x[1], 1) << "the lowest node comes first";
}

TEST(zones_from_text, refuses_other_files_and_too_many_zones_and_nodes) {
    const auto box = [](const std::string& text) {
        return title_and_text(grid::zones_from_text(text, "a/m.zon").refusal);
    };
    EXPECT_EQ(box(""), "Load Zones: a/m.zon is not a zone file!");
    EXPECT_EQ(box("BALDO5000_ZONEFILE\n1\n"), "Load Zones: a/m.zon is not a zone file!");
    EXPECT_EQ(box("BALDO4000_ASCII_ZONEFILE\n21\n"),
              "Zones: Too many zones!\nThe maximum number of zones is 20.");
    EXPECT_EQ(box("BALDO4000_ASCII_ZONEFILE\n1\n41\n"),
              "Zones: Too many nodes!\nThe maximum number of nodes is 40.\n\n"
              "Close the zone or Press the right mouse button to abort.");
    EXPECT_THROW(box("BALDO4000_ASCII_ZONEFILE\n1\n4 1\n"), base::FileFailure);
}

} // namespace
