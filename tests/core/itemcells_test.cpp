#include "core/itemcells.h"

#include "core/arraystore.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/modelflags.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace {

using core::ModelFlags;

TEST(ItemCells, a_defined_array_marks_the_cell_of_its_menu_item) {
    ModelFlags flags;
    core::mark_item_defined(flags, 1405);
    EXPECT_TRUE(flags.is_defined(2, 7));
    core::mark_item_defined(flags, 299);
    EXPECT_TRUE(flags.is_defined(3, 2));
    const ModelFlags before = flags;
    core::mark_item_defined(flags, 12); // has no item of its own
    for (int a = 0; a < ModelFlags::size; ++a) {
        for (int b = 0; b < ModelFlags::size; ++b) {
            EXPECT_EQ(flags(a, b), before(a, b));
        }
    }
}

TEST(ItemCells, recharge_of_either_side_marks_both_cells) {
    ModelFlags flags;
    core::mark_item_defined(flags, 1432);
    EXPECT_TRUE(flags.is_defined(3, 14));
    EXPECT_TRUE(flags.is_defined(4, 14));
}

TEST(ItemCells, tracers_come_from_where_they_were_defined_last) {
    ModelFlags flags;
    core::mark_item_defined(flags, 1406);
    core::mark_item_defined(flags, 1442);
    EXPECT_FALSE(flags.is_defined(2, 13));
    EXPECT_TRUE(flags.is_defined(3, 13));
    core::mark_item_defined(flags, 1406);
    EXPECT_TRUE(flags.is_defined(2, 13));
    EXPECT_FALSE(flags.is_defined(3, 13));
}

TEST(ItemCells, a_flow_field_has_all_its_components) {
    const support::TempFolder folder;
    core::ModelFiles files(folder.path() / "m.td1", core::Access::write);
    core::ArrayStore store(files, 3, 2, 1);
    store.write_array(1409, 1, 1, core::LayerValues(6, 1e-6F));
    core::create_arrays_of_item(store, 1409);
    EXPECT_TRUE(store.exists(1408) && store.exists(1410));
    EXPECT_EQ(store.read_cell_value(1409, 1, 1, 2, 3, 0).value, 1e-6F);
    core::create_arrays_of_item(store, 1402);
    EXPECT_FALSE(store.exists(1402));
}

} // namespace
