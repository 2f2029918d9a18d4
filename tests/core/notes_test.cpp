#include "core/notes.h"

#include "base/failure.h"
#include "core/modelfiles.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

using core::Get_IZV_Data;
using core::Save_IZV_Data;

class Notes : public testing::Test {
protected:
    support::TempFolder folder;
    core::ModelFiles files{folder.path() / "basin.td1", core::Access::write};
};

TEST_F(Notes, a_missing_note_is_empty) {
    EXPECT_EQ(Get_IZV_Data(files, "BOX", "active"), "");
    folder.write("basin.izv", "[BOX]\nDens_A=1\n");
    EXPECT_EQ(Get_IZV_Data(files, "BOX", "active"), "");
    EXPECT_EQ(Get_IZV_Data(files, "KINETIC", "Dens_A"), "");
}

TEST_F(Notes, are_saved_in_place_and_the_file_is_made_when_it_is_missing) {
    Save_IZV_Data(files, "koppx", "Density", "\t998.0");
    Save_IZV_Data(files, "KOPPX", "density", "\t1000.0");
    Save_IZV_Data(files, "PICARD", "Active", "1");
    EXPECT_EQ(Get_IZV_Data(files, "koppx", "Density"), "1000.0");
    files.commit();
    EXPECT_EQ(folder.read("basin.izv"), "[koppx]\r\nDensity=\t1000.0\r\n[PICARD]\r\nActive=1\r\n");
}

TEST_F(Notes, are_read_up_to_300_characters) {
    folder.write("Basin.IZV", "[A]\nk=" + std::string(299, 'x') + "\xFC\xFC\n");
    EXPECT_EQ(Get_IZV_Data(files, "a", "K"), std::string(299, 'x') + "ü");
}

TEST_F(Notes, names_that_the_file_cannot_hold_are_refused) {
    const auto fails = [&](const char* section, const char* key) {
        EXPECT_THROW(Save_IZV_Data(files, section, key, "1"), base::FileFailure)
            << section << '/' << key;
    };
    fails("", "k");
    fails("a]b", "k");
    fails("a\nb", "k");
    fails("A", " ");
    fails("A", "k=1");
    fails("A", ";k");
    fails("A", " [k");
    fails("A", "k\n[B]");
    EXPECT_FALSE(files.changed());
}

} // namespace
