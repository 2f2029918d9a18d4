#include "convert/histogram.h"

#include "base/failure.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using convert::Histogram;

const std::string head = "# I0\r\n2\r\n# J0\r\n2\r\n# K0\r\n1\r\n";

class HistogramTest : public testing::Test {
protected:
    Histogram count(const std::string& block, const char* name, std::vector<float> bounds = {}) {
        Histogram histogram{"m.nlo", *convert::histogram_parameter(name), 0, 0, 0, {}};
        for (const float bound : bounds) {
            histogram.classes.push_back({bound, 7});
        }
        counted = convert::count_classes(folder.write("m.nlo", head + block), histogram, user);
        return histogram;
    }

    support::TempFolder folder;
    support::ScriptedUser user;
    bool counted = false;
};

TEST_F(HistogramTest, a_value_is_in_the_first_class_whose_bound_is_at_or_above_it) {
    const Histogram histogram = count("# TEMP\r\n1 2 2*6\r\n", "Temperature", {1, 2.5, 2, 5.5});
    EXPECT_EQ(histogram.classes,
              (std::vector<convert::HistogramClass>{{1, 1}, {2.5, 1}, {2, 0}, {5.5, 0}}));
    EXPECT_EQ(histogram.mean, 3.75F);
    EXPECT_EQ(histogram.variance, 5.1875F);
    EXPECT_EQ(histogram.deviation, std::sqrt(5.1875F));
    EXPECT_EQ(user.statuses(), std::vector<std::string>{"Count Parameter Frequency"});
}

TEST_F(HistogramTest, only_velocities_are_converted) {
    EXPECT_EQ(count("# VY\r\n4*1E-3\r\n", "VY").mean, 86.4F);
    EXPECT_EQ(count("# PRES\r\n4*-3\r\n", "Pressure").mean, -3);
}

TEST_F(HistogramTest, a_missing_block_leaves_the_earlier_values) {
    user.expect_message("Tervex Desk", "Error in file format. Can't find choosen parameter # PHI");
    user.expect_message("Tervex Desk", "Error in output file structure: Can't find # PHI");
    const Histogram histogram = count("# TEMP\r\n4*1\r\n", "Head", {1});
    EXPECT_FALSE(counted);
    EXPECT_EQ(histogram.classes[0].frequency, 7);
    EXPECT_THROW(count("# TEMP\r\n4*3E38\r\n", "Temperature"), base::RangeFailure);
    EXPECT_THROW(count("# TEMP\r\n3*1\r\n", "Temperature"), base::FileFailure);
}

TEST_F(HistogramTest, the_file_is_written_and_read) {
    const Histogram histogram{"a, b.nlo", 8, 12.5F, .5F, .25F, {{1E-12F, 3}, {20.25F, 2'000'000}}};
    const std::string bytes = convert::Save_Histogram_Data(histogram);
    EXPECT_EQ(bytes, "a, b.nlo, 8\r\n2\r\n12.5, 0.5, 0.25\r\n1E-12, 3\r\n20.25, 2000000\r\n");
    EXPECT_EQ(convert::Load_Histogram_Data(bytes, "m.his"), histogram);
    EXPECT_EQ(convert::Load_Histogram_Data("a.nlo , 1 \n 1\n 2 ,.5, .25 \n 3 , 4 \n", "m.his").mean,
              2);
    for (const char* damaged :
         {"", "a.nlo, 9\r\n0\r\n1, 1, 1\r\n", "a.nlo, 1\r\n2\r\n1, 1, 1\r\n5, 5"}) {
        EXPECT_THROW(convert::Load_Histogram_Data(damaged, "m.his"), base::FileFailure) << damaged;
    }
}

} // namespace
