#include "convert/plotrewrite.h"

#include "convert/convertdata.h"
#include "support/scripteduser.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

using convert::PlotOperation;
using convert::PlotRewrite;

class PlotFile : public testing::Test {
protected:
    // The rewritten file.
    std::string rewritten(const std::string& bytes, const PlotRewrite& rewrite) {
        user.expect_message("Rewrite *.tal to *.plt", "Rewrite has finished!");
        EXPECT_FALSE(convert::rewrite_plot(folder.write("m.tal", bytes), target, rewrite, user));
        return folder.read("m.plt");
    }

    support::TempFolder folder;
    std::filesystem::path target = folder.path() / "m.plt";
    support::ScriptedUser user;
};

TEST_F(PlotFile, names_zones_and_as_many_values_as_there_are_are_kept) {
    PlotRewrite rewrite;
    rewrite.Head = true;
    rewrite.new_names[2] = "Größe";
    EXPECT_EQ(
        rewritten("TITLE = \"a b\"\nVARIABLES = \"X\", nothing,\n \"pH\"\n"
                  "ZONE T=\"1\"\n 1.0 2.5E-10\n3\n\nZONE T=\"2\"\nDATAPACKING=POINT\n-4,5 6\n",
                  rewrite),
        "TITLE = \"a b\"\r\nVARIABLES = \"X\",\"Gr\xF6\xDF"
        "e\"\r\nZONE T=\"1\"\r\n"
        " 1  2.5E-10 \r\n 3 \r\n\r\nZONE T=\"2\"\r\nDATAPACKING=POINT\r\n-4  5  6 \r\n");
}

TEST_F(PlotFile, temperature_and_porosity_stand_at_their_places) {
    std::vector<std::string> names(14, "n");
    names = convert::Edit_Parameter(names, {});
    EXPECT_EQ(names[10], "n");
    EXPECT_EQ(names[11], "Temperature");
    EXPECT_EQ(names[12], "Porosity");
    EXPECT_EQ(names[13], "n");
    PlotRewrite rewrite;
    rewrite.new_names[15] = "CMIN1";
    EXPECT_THROW(convert::Edit_Parameter(names, rewrite), base::RangeFailure);
}

TEST_F(PlotFile, values_are_calculated_by_column) {
    PlotRewrite rewrite;
    rewrite.Elements = true;
    rewrite.steps = {{1, {PlotOperation::multiply, 2}}, {2, {PlotOperation::subtract, 1}}};
    rewrite.molar_weights = {{3, 100}};
    const std::string head = "TITLE\nVARIABLES=\"a\"\"b\"\"c\"\"ph\"\n";
    EXPECT_EQ(rewritten(head + "ZONE\n1.5 1 2600 .0001\n", rewrite),
              "TITLE\r\nVARIABLES = \"a\",\"b\",\"c\",\"ph\"\r\nZONE\r\n 3  0  10  7 \r\n");
    const std::string before = folder.read("m.plt");
    EXPECT_THROW(rewritten(head + "ZONE\n1 1 1 0\n", rewrite), base::FileFailure);
    rewrite.steps[1] = {PlotOperation::divide, 0};
    EXPECT_THROW(rewritten(head + "ZONE\n1\n", rewrite), base::RangeFailure);
    EXPECT_THROW(rewritten(head, rewrite), base::FileFailure);
    EXPECT_EQ(folder.read("m.plt"), before);
    for (int n = 0; n < 3; ++n) { // of those that failed
        user.message(base::Icon::information, "Rewrite *.tal to *.plt", "Rewrite has finished!");
    }
}

TEST_F(PlotFile, nothing_to_do_is_refused) {
    EXPECT_EQ(convert::rewrite_plot("m.tal", target, {}, user)->text,
              "Nothing checked, nothing to be changed!");
    EXPECT_EQ(convert::rewrite_plot("", target, {}, user)->text, "Browse for a *.tal file first!");
}

TEST_F(PlotFile, a_viewer_data_file_becomes_a_table) {
    const auto source =
        folder.write("p.dat", "IRGRID 2  2 \r\n 1  2 \r\n 3  4 \r\n .5 -6 \r\n 7  8 \r\n");
    user.expect_message("Done", "Array successfully saved in ASCII format.");
    EXPECT_TRUE(convert::Write_ASCII(source, folder.path() / "a.dat", user));
    EXPECT_EQ(folder.read("a.dat"), " 2  2 \r\n .5 -6 \r\n 7  8 \r\n");
    user.expect_question("Overwrite file?",
                         "The Filename already exist. Do you want to overwrite the file?",
                         base::Answer::no);
    EXPECT_FALSE(convert::Write_ASCII(source, folder.path() / "a.dat", user));
    user.expect_message("Wrong Format", "The Dat File is of wrong format (probably not saved from "
                                        "the Result Viewer).");
    EXPECT_FALSE(convert::Write_ASCII(folder.path() / "a.dat", folder.path() / "b.dat", user));
    for (const char* damaged :
         {"IRGRID", "IRGRID 2 -1\r\n", "IRGRID 2000000000 2000000000\r\n1 2"}) {
        EXPECT_THROW(
            convert::Write_ASCII(folder.write("d.dat", damaged), folder.path() / "b.dat", user),
            base::FileFailure);
    }
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"a.dat", "d.dat", "p.dat"}));
}

} // namespace
