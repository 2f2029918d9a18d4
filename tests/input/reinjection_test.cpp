#include "input/reinjection.h"

#include "base/failure.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "input/wells.h"
#include "sim/transport.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace input {
namespace {

struct InjectionModel {
    support::TempFolder folder;
    core::Project project;
    core::ModelFiles files{folder.path() / "m.td1", core::Access::write};
    WellTable wells;

    explicit InjectionModel(int tracers) {
        activate(tracers);
        wells.master = {{-0.5F, 10, 1, 1, 1}, {0.25F, 10, 2, 1, 1}};
        wells.periods = {{{-0.5F, 10, 1, 1, 1}}, wells.master}; // the second well comes later
    }
    void activate(int tracers) {
        sim::TracerTable table;
        for (int i = 0; i < tracers; ++i)
            table.rows[std::size_t(i)].active = true;
        table.save(files);
    }
};

TEST(SCON_Table, HasARowForEachWell) {
    const InjectionModel model(2);
    SCON_Table form(model.wells);
    form.load(model.project, model.files);
    EXPECT_FALSE(form.check());
    EXPECT_FALSE(form.load_notice());
    std::string heads;
    for (const core::FieldInfo& column : form.columns())
        heads += std::string(column.label) + "|";
    EXPECT_EQ(heads, "Well|Rate [m³/s] 1st Period|Tracer 1|Tracer 2|");
    EXPECT_EQ(form.rows(), 2);
    EXPECT_EQ(form.cell(1, "Rate"), "-0.5");
    EXPECT_EQ(form.cell(2, "Rate"), "0");
    EXPECT_EQ(form.cell(2, "Well"), "2");
    EXPECT_THROW(form.cell(3, "Well"), base::RangeFailure);
    EXPECT_THROW(form.set_cell(1, "Tracer3", "1"), base::RangeFailure);
}

TEST(SCON_Table, StoresAndLoadsConcentrations) {
    InjectionModel model(2);
    SCON_Table form(model.wells);
    form.load(model.project, model.files);
    form.set_cell(2, "Tracer2", "12.5");
    form.set_cell(2, "Rate", "7"); // for show
    form.save(model.project, model.files);
    EXPECT_EQ(model.files.read(".sco").size(), 4U + 2 * 3 * 4);
    EXPECT_TRUE(model.project.flags.is_defined(10, 7));
    EXPECT_EQ(model.project.flags(0, 1), 1);
    SCON_Table again(model.wells);
    again.load(model.project, model.files);
    EXPECT_EQ(again.cell(2, "Tracer2"), "12.5");
    EXPECT_EQ(again.cell(2, "Tracer1"), "0");
    EXPECT_EQ(again.cell(2, "Rate"), "0");
}

TEST(SCON_Table, NeedsASpecies) {
    const InjectionModel model(0);
    SCON_Table form(model.wells);
    form.load(model.project, model.files);
    ASSERT_TRUE(form.check());
    EXPECT_EQ(form.check()->title, "Tervex Desk");
    EXPECT_EQ(form.check()->text, "There is no active Tracer!\nYou can't edit any value.");
}

TEST(SCON_Table, AnotherNumberOfSpeciesBeginsAnew) {
    InjectionModel model(1);
    SCON_Table form(model.wells);
    form.load(model.project, model.files);
    form.set_cell(1, "Tracer1", "3");
    form.save(model.project, model.files);
    model.activate(2);
    form.load(model.project, model.files);
    ASSERT_TRUE(form.load_notice());
    EXPECT_EQ(form.load_notice()->text, "Species list has changed since last opening!\n"
                                        "You have to define new values.");
    EXPECT_EQ(form.cell(1, "Tracer1"), "0");
}

} // namespace
} // namespace input
