#include "grid/monitoring.h"

#include "base/binaryio.h"
#include "base/failure.h"
#include "grid/monitoringform.h"
#include "support/scripteduser.h"
#include "testmodel.h"

#include <cstring>
#include <random>

namespace grid {
namespace {

MonitoringList example() {
    MonitoringList list;
    list.bores[0] = {"GT 1", true, 100.5F, -20, 3, 4, 0.25F};
    list.bores[99] = {"Ü-Brg 12", false, 1, 2, -1, 0, 0};
    list.observations.push_back({"GT 1", 7, 1, 0.5F, 12.25F, 3, 4, 5, 6, 8});
    list.Observation_Option = 2;
    return list;
}

std::string single(float value) {
    base::ByteWriter writer;
    writer.single(value);
    return writer.data();
}

// The example in the older form: records without filler.
std::string older_form() {
    const std::string bytes = points_bytes(example());
    std::string older = "BALDO4000_OBS_FILE" + bytes.substr(18, 2);
    for (std::size_t slot = 0; slot < 100; ++slot)
        older += bytes.substr(20 + 28 * slot, 26);
    return older + bytes.substr(2820, 42);
}

TEST(PointsFile, packs_its_fields_with_the_filler_at_the_end_of_a_record) {
    using namespace std::string_literals;
    const std::string bytes = points_bytes(example());
    EXPECT_EQ(bytes.size(), 2820U + 44);
    EXPECT_EQ(bytes.substr(0, 20), "BALDO5000_OBS_FILE\2\0"s);
    EXPECT_EQ(bytes.substr(20, 28), "GT 1    \xFF\xFF"s + single(100.5F) + single(-20) +
                                        "\3\0\4\0"s + single(0.25F) + "\0\0"s);
    EXPECT_EQ(bytes.substr(48, 28), "        "s + std::string(20, '\0'));
    EXPECT_EQ(bytes.substr(20 + 99 * 28, 10), "\xDC-Brg 12\0\0"s);
    EXPECT_EQ(bytes.substr(2820), "GT 1    \7\0"s + single(1) + single(0.5F) + single(12.25F) +
                                      single(3) + single(4) + single(5) + single(6) + single(8) +
                                      "\0\0"s);
}

TEST(PointsFile, without_observations_has_2820_bytes) {
    EXPECT_EQ(points_bytes({}).size(), 2820U);
}

TEST(PointsFile, is_read_back_whole) {
    const std::string bytes = points_bytes(example());
    const ReadPoints read = read_points(bytes);
    EXPECT_FALSE(read.rewrite);
    EXPECT_EQ(read.list.bores[99].Name, "Ü-Brg 12");
    EXPECT_EQ(read.list.observations.at(0).Subsidence, 8);
    EXPECT_EQ(points_bytes(read.list), bytes);
}

TEST(PointsFile, of_the_older_form_has_no_filler_and_is_rewritten) {
    const ReadPoints read = read_points(older_form());
    EXPECT_TRUE(read.rewrite);
    EXPECT_EQ(points_bytes(read.list), points_bytes(example()));
}

TEST(PointsFile, clears_names_without_characters) {
    std::string bytes = points_bytes({});
    bytes.replace(20, 8, std::string(8, '\0'));
    bytes.replace(48, 8, std::string("AB\0\0\0\0\0\0", 8));
    const ReadPoints read = read_points(bytes);
    EXPECT_EQ(read.list.bores[0].Name, "");
    EXPECT_EQ(read.list.bores[1].Name, "AB");
    EXPECT_EQ(points_bytes(read.list).substr(20, 8), "        ");
}

TEST(PointsFile, that_is_foreign_or_cut_off_gives_an_empty_list_to_be_written) {
    EXPECT_TRUE(read_points("").rewrite);
    EXPECT_TRUE(read_points("PK\3\4" + std::string(5000, 'x')).rewrite);
    const std::string bytes = points_bytes(example());
    for (std::size_t length = 0; length < 2820; ++length) {
        const ReadPoints read = read_points(std::string_view(bytes).substr(0, length));
        EXPECT_TRUE(read.rewrite) << length;
        EXPECT_EQ(read.list.bores[0].Name, "") << length;
    }
    EXPECT_EQ(read_points(older_form().substr(0, 2619)).list.bores[0].Name, "");
}

TEST(PointsFile, drops_an_observation_that_is_cut_off_and_those_beyond_10000) {
    const std::string bytes = points_bytes(example());
    for (std::size_t length = 2820; length < bytes.size(); ++length) {
        const ReadPoints read = read_points(std::string_view(bytes).substr(0, length));
        EXPECT_FALSE(read.rewrite);
        EXPECT_TRUE(read.list.observations.empty()) << length;
    }
    const ReadPoints many = read_points(points_bytes({}) + std::string(44 * 10001, '\0'));
    EXPECT_EQ(many.list.observations.size(), 10000U);
}

TEST(ExchangeOfBores, is_in_columns_with_the_name_last) {
    const std::string text = bores_text(example());
    EXPECT_TRUE(text.starts_with("BALDO5000_BOR_FILE\r\n 100 \r\n"
                                 " -1         100.5           -20   3   4           .25   GT 1\r\n"
                                 "  0             0             0   0   0             0   \r\n"));
    EXPECT_TRUE(text.ends_with(
        "\r\n  0             1             2  -1   0             0   \xDC-Brg 12\r\n"));
}

TEST(ExchangeOfBores, reads_back_what_it_wrote) {
    std::mt19937 random(2);
    std::uniform_real_distribution<float> number(-1E6F, 1E6F);
    MonitoringList list = example();
    for (std::size_t slot = 0; slot < list.bores.size(); slot += 3)
        list.bores[slot] = {fmt::format("P{} x", slot),
                            true,
                            number(random),
                            number(random),
                            5,
                            -10,
                            number(random)};
    const std::string text = bores_text(list);
    MonitoringList read;
    ASSERT_TRUE(bores_from_text(text, read));
    EXPECT_EQ(bores_text(read), text);
    EXPECT_EQ(read.bores[0].Name, "P0 x");
}

TEST(ExchangeOfBores, reads_numbers_by_prefix_and_only_as_many_rows_as_counted) {
    MonitoringList list = example();
    ASSERT_TRUE(bores_from_text(" BALDO4000_BOR_FILE \n2\n-1 1.5m x 2 3 4   Long name here\n"
                                "0 1\n-1 9 9 9 9 9 third\n",
                                list));
    EXPECT_EQ(list.bores[0].X, 1.5F);
    EXPECT_EQ(list.bores[0].Y, 0);
    EXPECT_EQ(list.bores[0].Name, "Long nam");
    EXPECT_EQ(list.bores[1].X, 1);
    EXPECT_EQ(list.bores[2].Name, "");
    EXPECT_EQ(list.observations.size(), 1U);
    for (const char* count : {"99999999999", "-5", ""})
        EXPECT_TRUE(bores_from_text(fmt::format("BALDO5000_BOR_FILE\n{}\n1 1", count), list));
    EXPECT_TRUE(bores_from_text("BALDO5000_BOR_FILE", list));
}

TEST(ExchangeOfObservations, is_in_columns_with_the_name_last) {
    const std::string text = observations_text(example());
    EXPECT_EQ(text, "BALDO5000_OBS_FILE\r\n 1 \r\n"
                    "  7             1            .5         12.25             3             4"
                    "             5             6             8   GT 1\r\n");
    MonitoringList read;
    ASSERT_TRUE(observations_from_text(text, read));
    EXPECT_EQ(observations_text(read), text);
}

TEST(ExchangeFiles, of_another_kind_leave_the_list_as_it_was) {
    MonitoringList list = example();
    EXPECT_FALSE(bores_from_text(observations_text(list), list));
    EXPECT_FALSE(observations_from_text(bores_text(list), list));
    EXPECT_FALSE(observations_from_text("", list));
    EXPECT_EQ(points_bytes(list), points_bytes(example()));
}

class PointsOfMonitoring : public testing::Test {
protected:
    TestModel model;
    ObservationList form;
};

TEST_F(PointsOfMonitoring, cut_names_at_eight_characters) {
    form.load(model.project, model.files);
    form.bores().set_cell(100, "Name", " Überlänge 10");
    form.bores().set_cell(100, "Active", "1");
    form.bores().set_cell(100, "X", "12.5 m");
    form.set("Observation_Option", "1");
    form.save(model.project, model.files);
    EXPECT_EQ(model.project.flags(0, 1), 1);

    ObservationList later;
    later.load(model.project, model.files);
    EXPECT_EQ(later.bores().cell(100, "Name"), "Überläng");
    EXPECT_EQ(later.bores().cell(100, "X"), "12.5");
    EXPECT_EQ(later.get("Observation_Option"), "1");
    EXPECT_EQ(later.list().Observation_Option, 2);
}

TEST_F(PointsOfMonitoring, name_their_coordinates_by_the_orientation) {
    form.load(model.project, model.files);
    EXPECT_STREQ(form.bores().columns()[3].label, "Y - northing [m]");
    EXPECT_STREQ(form.bores().columns()[4].label, "Z (Layer-No.)");
    model.project.flags.set(1, 4, core::cylindrical);
    form.load(model.project, model.files);
    EXPECT_STREQ(form.bores().columns()[3].label, "Z - towards top [m]");
    EXPECT_STREQ(form.bores().columns()[4].label, "Y (Sect.-No.)");
}

TEST_F(PointsOfMonitoring, refuse_negative_observations_but_for_the_flag) {
    form.load(model.project, model.files);
    ASSERT_FALSE(form.add_observation());
    EXPECT_FALSE(form.observations().set_cell(1, "Flag", "-3"));
    for (const core::FieldInfo& column : form.observations().columns().subspan(2))
        EXPECT_EQ(title_and_text(form.observations().set_cell(1, column.name, "-.1")),
                  "Tervex Desk: Value must be >= 0");
    EXPECT_EQ(form.observations().cell(1, "Flag"), "-3");
    EXPECT_EQ(form.observations().cell(1, "Head"), "0");
    EXPECT_THROW(form.observations().set_cell(2, "Head", "1"), base::RangeFailure);
    EXPECT_THROW(form.observations().cell(1, "X"), base::RangeFailure);
}

TEST_F(PointsOfMonitoring, are_cleared_only_after_a_question) {
    Write_Monitoring_Points(example(), model.files);
    form.load(model.project, model.files);
    support::ScriptedUser user;
    user.expect_question("Tervex Desk", "This will clear the Table of Boreholes. Continue?",
                         base::Answer::no);
    user.expect_question("Tervex Desk", "This will clear the Table of Observations. Continue?",
                         base::Answer::yes);
    EXPECT_FALSE(form.clear_bores(user));
    EXPECT_TRUE(form.clear_observations(user));
    EXPECT_EQ(form.bores().cell(1, "Name"), "GT 1");
    EXPECT_EQ(form.observations().rows(), 0);
}

TEST_F(PointsOfMonitoring, are_exchanged_by_files_of_the_right_kind) {
    Write_Monitoring_Points(example(), model.files);
    form.load(model.project, model.files);
    const auto bores = model.folder.path() / "a.BOR", observations = model.folder.path() / "a.OBS";
    form.export_bores(bores);
    form.export_observations(observations);
    EXPECT_EQ(model.folder.read("a.BOR"), bores_text(example()));
    EXPECT_EQ(title_and_text(form.import_bores(observations)),
              "Load Bore File: The file " + observations.string() +
                  " does not contain the borehole data.");
    EXPECT_EQ(title_and_text(form.import_observations(bores)),
              "Load Observation File: The file " + bores.string() +
                  " does not contain the observation data.");
    EXPECT_EQ(form.bores().cell(1, "Name"), "GT 1");
    EXPECT_THROW(form.import_bores(model.folder.path() / "none.BOR"), base::FileFailure);

    ObservationList other;
    EXPECT_FALSE(other.import_bores(bores));
    EXPECT_FALSE(other.import_observations(observations));
    EXPECT_EQ(points_bytes(other.list()).substr(20), points_bytes(example()).substr(20));
}

} // namespace
} // namespace grid
