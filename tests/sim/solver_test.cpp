#include "sim/solver.h"

#include "sim/fieldvalue.h"
#include "sim/settingsmodel.h"

#include <gtest/gtest.h>

namespace sim {
namespace {

SolverForm loaded(const SettingsModel& model, Solver solver) {
    SolverForm form(solver);
    form.load(model.project, model.files);
    return form;
}

void set_extents(SettingsModel& model, int NX, int NY, int NZ) {
    model.project.set_integer("DIMENSION", "NX", NX);
    model.project.set_integer("DIMENSION", "NY", NY);
    model.project.set_integer("DIMENSION", "NZ", NZ);
}

TEST(SolverCode, JoinsAndSplitsThreeNumbers) {
    EXPECT_EQ((SolverCode{2, 3, 1}.code()), 2 + 48 + 256);
    EXPECT_EQ((SolverCode{3, 15, 127}.code()), 32755);
    const SolverCode code = SolverCode::decode(32755);
    EXPECT_EQ(code.solver, 3);
    EXPECT_EQ(code.preconditioner, 15);
    EXPECT_EQ(code.termination, 127);
}

TEST(SolverCode, CodeOfANewModelNamesNoSolver) {
    SettingsModel model;
    model.project.flags.set(8, 4, 48);
    EXPECT_EQ(chosen_solver(model.project.flags), Solver::none);
    EXPECT_EQ(SolverCode::decode(48).preconditioner, 3);
    EXPECT_EQ(SolverCode::decode(-48).code(), 0);
}

TEST(RelaxationLimit, IsCutOnePlaceBehindThePoint) {
    EXPECT_EQ(relaxation_limit(1, 1, 1), "1.0");
    EXPECT_EQ(relaxation_limit(2, 1, 1), "0.3");
    EXPECT_EQ(relaxation_limit(1, 3, 2), "1.6");
    EXPECT_EQ(relaxation_limit(2, 2, 2), "1");
    EXPECT_EQ(relaxation_limit(30, 30, 1), "560.6");
    EXPECT_EQ(relaxation_limit(2000, 2000, 80), "2666081");
}

TEST(SolverForm, NagRefusesRelaxationAboveTheLimit) {
    SettingsModel model;
    set_extents(model, 1, 1, 1);
    SolverForm form = loaded(model, Solver::NAG);
    EXPECT_FALSE(form.check());
    const std::pair<const char*, const char*> cases[] = {
        {"APARS", "Transport relaxation must be smaller or equal 1.0"},
        {"APART", "Heat relaxation must be smaller or equal 1.0"},
        {"APARF", "Fluid flow relaxation must be smaller or equal 1.0"}};
    for (const auto& [name, text] : cases) { // the flow is tested first, the transport last
        form.set(name, "1.1");
        ASSERT_TRUE(form.check());
        EXPECT_EQ(form.check()->title, "Over the limit");
        EXPECT_EQ(form.check()->text, text);
    }
    SolverForm other = loaded(model, Solver::PLU);
    other.set("APARF", "1.1");
    EXPECT_FALSE(other.check());
}

TEST(SolverForm, RelaxationIsComparedWithTheCutLimit) {
    SettingsModel model;
    set_extents(model, 2, 1, 1);
    SolverForm form = loaded(model, Solver::NAG);
    for (const char* name : {"APARF", "APART", "APARS"})
        form.set(name, "0.3");
    EXPECT_FALSE(form.check());
    form.set("APART", "0.32");
    ASSERT_TRUE(form.check());
    EXPECT_EQ(form.check()->text, "Heat relaxation must be smaller or equal 0.3");
}

TEST(SolverForm, SavesLinesSevenToSixteen) {
    SettingsModel model;
    SolverForm form = loaded(model, Solver::BiCGStab);
    const std::pair<const char*, const char*> fields[] = {
        {"FlowSlider", "0"}, {"HeatSlider", "3"}, {"APARF", ".9"},
        {"APART", "2"},      {"APARS", "3"},      {"ERRF", "1E-5"},
        {"ERRT", "2"},       {"ERRS", "x"},       {"NoIteration", "5"}};
    for (const auto& [name, text] : fields)
        form.set(name, text);
    form.save(model.project, model.files);
    std::string lines;
    for (int number = 6; number <= 17; ++number)
        lines += model.line(number) + "|";
    EXPECT_EQ(lines, "1234567890121|0|0.3|1|.9|2|3|1E-5|2|x|5|0.08|");
    EXPECT_EQ(model.flag(0, 1), 1);
}

TEST(SolverForm, WeightBetweenTwoPositionsStaysUntilItsSliderIsMoved) {
    SettingsModel model;
    model.set_line(typ::OMF, "0.55");
    model.set_line(typ::OMT, "0.55");
    SolverForm form = loaded(model, Solver::PLU);
    form.set("HeatSlider", "5");
    form.save(model.project, model.files);
    EXPECT_EQ(model.line(typ::OMF), "0.55");
    EXPECT_EQ(model.line(typ::OMT), "0.5");
}

TEST(SolverForm, SavingChoosesTheSolverAndDropsTheOthers) {
    SettingsModel model;
    const std::pair<Solver, int> rows[] = {
        {Solver::NAG, 9}, {Solver::BiCGStab, 8}, {Solver::PLU, 7}};
    for (const auto& [solver, own_row] : rows) {
        loaded(model, solver).save(model.project, model.files);
        for (int row = 7; row <= 9; ++row)
            EXPECT_EQ(model.flag(row, 3), row == own_row ? 2 : 0);
        EXPECT_EQ(chosen_solver(model.project.flags), solver);
    }
}

TEST(SolverForm, CodesTakeTheOptionsAndKeepTheOthers) {
    SettingsModel model;
    for (int process = 4; process <= 6; ++process)
        model.project.flags.set(8, process, 48);
    SolverForm form = loaded(model, Solver::BiCGStab);
    form.set("optHeatCond", "2");
    form.set("optTransTerm", "127");
    form.save(model.project, model.files);
    EXPECT_EQ(model.flag(8, 4), 2 + 48);
    EXPECT_EQ(model.flag(8, 5), 2 + 32);
    EXPECT_EQ(model.flag(8, 6), 2 + 48 + 127 * 256);
}

TEST(SolverForm, NagKeepsTheStoredPreconditioner) {
    SettingsModel model;
    model.project.flags.set(8, 4, 3 + 16 * 2 + 256);
    SolverForm form = loaded(model, Solver::NAG);
    EXPECT_FALSE(form.enabled("optFlowCond"));
    EXPECT_TRUE(form.enabled("optFlowTerm"));
    form.set("optFlowCond", "1");
    form.set("optFlowTerm", "2");
    form.save(model.project, model.files);
    EXPECT_EQ(model.flag(8, 4), 1 + 16 * 2 + 2 * 256);
}

TEST(Slider, PositionsAreTenthsInValueText) {
    EXPECT_EQ(tenth_text(0), "0");
    EXPECT_EQ(tenth_text(3), "0.3");
    EXPECT_EQ(tenth_text(10), "1");
    for (int position = 0; position <= slider_end; ++position)
        EXPECT_EQ(tenth_position(tenth_text(position)), position);
    EXPECT_EQ(tenth_position("7"), 10);
    EXPECT_EQ(tenth_position("-1"), 0);
    EXPECT_TRUE(is_tenth("1.0"));
    EXPECT_FALSE(is_tenth("0.55"));
}

} // namespace
} // namespace sim
