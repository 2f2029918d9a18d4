#include "core/zonefile.h"

#include "arraymodel.h"

#include <cmath>
#include <random>

namespace {

using core::Zone;
using core::ZoneFile;
using Zones = std::vector<Zone>;

constexpr int layers = 2, porosity = 6, porosity_zones = 106;
constexpr std::size_t head = 2018, block = 7820, slot = 390;

Zone zone_of(const std::vector<std::pair<float, float>>& nodes, float value = 1) {
    Zone zone;
    zone.value = value;
    for (const auto& [x, y] : nodes) {
        ++zone.nodes;
        zone.x[std::size_t(zone.nodes)] = x;
        zone.y[std::size_t(zone.nodes)] = y;
    }
    return zone;
}

std::vector<float> first_values(const std::array<float, 43>& from, int count) {
    return {from.begin(), from.begin() + count};
}

class ZoneFileTest : public ArrayModel {
protected:
    // A file with `zones` in layer 1 of period 1.
    std::string file_with(const Zones& zones) {
        file.write_zones(1, 1, porosity_zones, zones);
        std::string bytes = stored("m.poz");
        files.rollback();
        return bytes;
    }
    std::size_t zones_read() const { return file.read_zones(1, 1, porosity_zones).size(); }

    ZoneFile file{files, layers};
};

TEST(CloseZone, starts_at_the_lowest_then_leftmost_node_and_keeps_the_direction) {
    Zone zone = zone_of({{5, 2}, {4, 1}, {1, 3}, {2, 1}});
    core::Close_Zone(zone);
    EXPECT_EQ(first_values(zone.x, 6), (std::vector<float>{1, 2, 5, 4, 1, 2}));
    EXPECT_EQ(first_values(zone.y, 6), (std::vector<float>{3, 1, 2, 1, 3, 1}));
    EXPECT_EQ((std::vector<float>{zone.param.begin() + 12, zone.param.end()}),
              (std::vector<float>{1, 1, 5, 3}));
}

TEST(CloseZone, takes_40_nodes_and_none) {
    Zone zone = zone_of(std::vector<std::pair<float, float>>(40, {1, 1}));
    zone.y[40] = 0;
    core::Close_Zone(zone);
    EXPECT_EQ(zone.y[1], 0);
    EXPECT_EQ(zone.y[41], 0);
    Zone empty;
    core::Close_Zone(empty);
    EXPECT_EQ(empty.nodes, 0);
}

TEST_F(ZoneFileTest, a_new_file_has_full_empty_blocks_for_period_1) {
    file.create_zone_file(porosity_zones);
    std::string expected = "BALDO5000_ZONEFILE" + std::string(2000 + layers * block, '\0');
    set_int16(expected, 18, 1);
    EXPECT_EQ(stored("m.poz"), expected);
    EXPECT_TRUE(file.has_period(1, porosity_zones));
    EXPECT_EQ(zones_read(), 0u);
}

TEST_F(ZoneFileTest, the_bytes_of_a_block) {
    Zone zone = zone_of({{1, 2}, {3, 4}, {5, 6}}, 0.5F);
    zone.param[0] = 7;
    zone.param[15] = 9;
    file.create_zone_file(porosity_zones);
    file.write_zones(1, 2, porosity_zones, {Zone(), zone});
    std::vector<float> param(16);
    param[0] = 7;
    param[15] = 9;
    const std::string slot_text =
        std::string("\3\0", 2) + singles({0.5F}) + singles(param) + singles({1, 2, 3, 4, 5, 6});
    std::string expected = singles({2, 0, 0, 0, 0}) + std::string(slot, '\0') + slot_text;
    expected.resize(block, '\0');
    EXPECT_EQ(stored("m.poz").substr(head, block), std::string(block, '\0'));
    EXPECT_EQ(stored("m.poz").substr(head + block), expected);
}

TEST_F(ZoneFileTest, the_next_record_is_the_largest_one_plus_one) {
    file.create_zone_file(porosity_zones);
    file.write_zones(3, 1, porosity_zones, {zone_of({{3, 3}})});
    file.write_zones(2, 1, porosity_zones, {zone_of({{2, 2}}), zone_of({{2, 2}})});
    file.write_zones(3, 2, porosity_zones, {});
    const std::string bytes = stored("m.poz");
    EXPECT_EQ(base::int16_at(bytes, 18 + 2), 3);
    EXPECT_EQ(base::int16_at(bytes, 18 + 4), 2);
    EXPECT_EQ(bytes.size(), head + 3 * layers * block);
    EXPECT_EQ(file.read_zones(2, 1, porosity_zones).size(), 2u);
    EXPECT_EQ(file.read_zones(3, 1, porosity_zones).size(), 1u);
    EXPECT_FALSE(file.has_period(4, porosity_zones));
}

TEST_F(ZoneFileTest, twenty_zones_of_forty_nodes_are_read_back) {
    std::mt19937 random(815);
    Zones zones(core::max_zones);
    for (Zone& zone : zones) {
        zone.nodes = Zone::max_nodes;
        for (std::size_t node = 1; node <= 40; ++node) {
            zone.x[node] = static_cast<float>(random() % 1000) / 4;
            zone.y[node] = static_cast<float>(random() % 1000) / 4;
        }
        zone.param[3] = zone.value = static_cast<float>(random() % 100);
        core::Close_Zone(zone);
    }
    file.write_zones(1, 2, porosity_zones, zones);
    const Zones read = file.read_zones(1, 2, porosity_zones);
    ASSERT_EQ(read.size(), zones.size());
    for (std::size_t i = 0; i < zones.size(); ++i) {
        EXPECT_EQ(read[i].x, zones[i].x);
        EXPECT_EQ(read[i].y, zones[i].y);
        EXPECT_EQ(read[i].param, zones[i].param);
        EXPECT_EQ(read[i].value, zones[i].value);
    }
    zones.emplace_back();
    EXPECT_THROW(file.write_zones(1, 1, porosity_zones, zones), base::RangeFailure);
    zones.assign(1, Zone());
    zones[0].nodes = 41;
    EXPECT_THROW(file.write_zones(1, 1, porosity_zones, zones), base::RangeFailure);
}

TEST_F(ZoneFileTest, number_0_is_the_scratch_file_and_a_primary_number_its_zones) {
    file.write_zones(1, 1, ZoneFile::scratch, {Zone()});
    file.write_zones(1, 1, porosity, {Zone(), Zone()});
    EXPECT_EQ(file.read_zones(1, 1, 0).size(), 1u);
    EXPECT_EQ(zones_read(), 2u);
    EXPECT_EQ(stored("m.{Z}").size(), head + layers * block);
    EXPECT_EQ(stored("m.por"), "missing");
    EXPECT_THROW(file.write_zones(1, 1, 1402, {}), base::RangeFailure);
    EXPECT_THROW(file.read_zones(1, 1, 113), base::RangeFailure);
    EXPECT_THROW(file.read_zones(1, 3, porosity), base::RangeFailure);
    EXPECT_THROW(file.read_zones(1001, 1, porosity), base::RangeFailure);
}

TEST_F(ZoneFileTest, a_file_with_a_foreign_mark_is_empty_and_begins_anew_when_saved) {
    folder.write("m.poz", "BALDO6000_ZONEFILE" + std::string(9000, '\1'));
    EXPECT_EQ(zones_read(), 0u);
    EXPECT_FALSE(file.has_period(1, porosity_zones));
    EXPECT_FALSE(file.Upgrade_Zone_File(porosity_zones));
    file.write_zones(1, 1, porosity_zones, {Zone()});
    EXPECT_EQ(zones_read(), 1u);
    EXPECT_EQ(stored("m.poz").size(), head + layers * block);
}

TEST_F(ZoneFileTest, an_older_file_is_read_as_it_is_and_gets_the_present_mark) {
    const std::string present = file_with({zone_of({{1, 1}, {2, 2}, {1, 2}})});
    folder.write("m.poz", "BALDO4000_ZONEFILE" + present.substr(18));
    EXPECT_EQ(zones_read(), 1u);
    EXPECT_TRUE(file.Upgrade_Zone_File(porosity_zones));
    EXPECT_EQ(stored("m.poz"), present);
    EXPECT_FALSE(file.Upgrade_Zone_File(porosity_zones));
    EXPECT_FALSE(file.Upgrade_Zone_File(1502));
}

TEST_F(ZoneFileTest, what_lies_behind_the_end_of_the_file_is_zero) {
    const std::string whole = file_with({zone_of({{1, 1}, {2, 2}, {1, 2}}), zone_of({{4, 4}})});
    for (std::size_t length = 0; length < head + 20 + 2 * slot; length += 13) {
        folder.write("m.poz", whole.substr(0, length));
        EXPECT_EQ(zones_read(), length < head + 4 ? 0u : 2u) << length;
    }
    folder.write("m.poz", whole.substr(0, head + 20 + slot));
    EXPECT_EQ(file.read_zones(1, 1, porosity_zones)[0].nodes, 3);
    EXPECT_EQ(file.read_zones(1, 1, porosity_zones)[1].nodes, 0);
}

TEST_F(ZoneFileTest, impossible_counts_are_failures_with_their_place) {
    const std::string whole = file_with({zone_of({{1, 1}})});
    const auto failure_of = [&](std::size_t offset, const std::string& bytes) {
        folder.write("m.poz", std::string(whole).replace(offset, bytes.size(), bytes));
        return file_failure([&] { zones_read(); });
    };
    for (const auto& [count, text] : {std::pair(-1.0F, "-1"),
                                      {20.5F, "20.5"},
                                      {21.0F, "21"},
                                      {1E30F, "1E+30"},
                                      {std::nanf(""), "no number"}}) {
        EXPECT_EQ(failure_of(head, singles({count})),
                  std::string("byte 2018: the number of zones is ") + text +
                      ", where 0 to 20 was expected (m.poz)");
    }
    EXPECT_EQ(failure_of(head + 20, std::string("\x29\0", 2)),
              "byte 2038: the number of nodes is 41, where 0 to 40 was expected (m.poz)");
    EXPECT_EQ(failure_of(head + 20, "\xFF\xFF"),
              "byte 2038: the number of nodes is -1, where 0 to 40 was expected (m.poz)");
    EXPECT_EQ(failure_of(18, "\xFE\xFF"),
              "byte 18: the record number of period 1 is -2, where 0 or "
              "more was expected (m.poz)");
    EXPECT_EQ(failure_of(18, "\xFF\x7F"), "nothing");
    EXPECT_THROW(file.write_zones(2, 1, porosity_zones, {}), base::FileFailure);
    EXPECT_THROW(file.write_zones(1, 1, porosity_zones, {}), base::FileFailure);
}

} // namespace
