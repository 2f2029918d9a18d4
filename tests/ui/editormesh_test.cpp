// The mesh editor by mouse and keys.
#include "editorfixture.h"

#include "grid/griddefinition.h"
#include "grid/mesheditor.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

namespace {

using base::Answer;

class EditorMesh : public support::EditorFixture {
protected:
    void open_mesh() { open("grid_mesh_size"); }
    // The laying out has ended.
    void make_laid_out(int NX, int NY, int NZ = 1) {
        make_model(NX, NY, NZ);
        change([](app::Workspace& model) { model.project.flags.mark_defined(1, 3); });
    }
    const grid::MeshEditor& mesh() { return *editor().mesh(); }
    void leave_mesh(Answer answer, bool ends = true) {
        user.expect_question("Mesh Size", "Save changes to Mesh Size?", answer);
        EXPECT_EQ(editor().leave(), ends);
    }
};

TEST_F(EditorMesh, columns_and_rows_are_inserted_and_deleted_while_the_mesh_is_laid_out) {
    make_model(2, 1);
    open_mesh();
    EXPECT_EQ(pane(3),
              "Number of Columns = 2; Number of Rows = 1; Current Position (Column, Row) = (1,1)");
    key(Qt::Key_Right, Qt::ControlModifier);
    key(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(pane(3),
              "Number of Columns = 3; Number of Rows = 2; Current Position (Column, Row) = (1,1)");
    key(Qt::Key_Down, Qt::ControlModifier);
    key(Qt::Key_Left, Qt::ControlModifier);
    key(Qt::Key_Left, Qt::ControlModifier);
    user.expect_message("Tervex Desk", "At least one column is required");
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(mesh().grid().NX, 1);
    tool("undo");
    EXPECT_EQ(mesh().grid().NX, 2);
    leave_mesh(Answer::yes);
    EXPECT_EQ(grid::GridFile::load(desk.model()->files)->NX, 2);
    EXPECT_TRUE(desk.model()->project.flags.is_defined(1, 3));
}

TEST_F(EditorMesh, factors_go_from_1_to_10) {
    make_laid_out(4, 3);
    open_mesh();
    user.expect_message("Tervex Desk", "The maximumm refinement step is 10");
    for (int n = 0; n < 10; ++n) {
        key(Qt::Key_Right, Qt::ControlModifier);
    }
    EXPECT_EQ(mesh().division().columns[0], 10);
    for (int n = 0; n < 9; ++n) {
        key(Qt::Key_Left, Qt::ControlModifier);
    }
    const int beeps = user.beeps();
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(user.beeps(), beeps + 1);
    EXPECT_EQ(mesh().division().columns[0], 1);
    leave_mesh(Answer::no);
}

TEST_F(EditorMesh, a_factor_divides_on_leaving_unless_the_warning_is_declined) {
    make_laid_out(4, 3);
    open_mesh();
    key(Qt::Key_Right, Qt::ControlModifier);
    constexpr const char* warning = "After the grid refinement, your model will have 15 cells. You "
                                    "will need about 0 Megabytes of RAM for a simulation. Continue "
                                    "anyway?";
    user.expect_question("Mesh Size", "Save changes to Mesh Size?", Answer::yes);
    user.expect_question("Warning", warning, Answer::no);
    EXPECT_FALSE(editor().leave());
    EXPECT_EQ(mesh().division().columns[0], 2);
    user.expect_question("Mesh Size", "Save changes to Mesh Size?", Answer::yes);
    user.expect_question("Warning", warning, Answer::yes);
    EXPECT_TRUE(editor().leave());
    EXPECT_EQ(desk.model()->project.NX(), 5);
    EXPECT_EQ(grid::GridFile::load(desk.model()->files)->NX, 5);
}

TEST_F(EditorMesh, a_press_selects_and_on_the_selected_cell_asks_for_its_size) {
    make_model(4, 3);
    open_mesh();
    click(cell(3, 2));
    EXPECT_EQ(mesh().column(), 3);
    in_dialog([&] { click(cell(3, 2)); }, "GridSize", [](QDialog& dialog) { dialog.reject(); });
    key(Qt::Key_Left);
    EXPECT_EQ(mesh().column(), 2);
    click(QPoint(1, 1));
    EXPECT_EQ(user.beeps(), 1);
    leave_mesh(Answer::no);
}

TEST_F(EditorMesh, the_grid_is_turned_and_shifted_by_drags_and_kept_at_Yes) {
    make_model(10, 10);
    open_mesh();
    tool("rotate_grid");
    EXPECT_EQ(pane(4), "Rotate grid; Drag = Turn round its upper left corner; Esc = End");
    press(cell(10, 1)); // to the right of the origin
    move_to(at(95, -90));
    release(at(95, -90));
    // An angle that vanished with the next event would be read by nobody.
    QCoreApplication::processEvents();
    EXPECT_TRUE(pane(4).starts_with("Angle = 4")) << pane(4);
    tool("rotate_grid");
    EXPECT_EQ(pane(4), "");
    tool("shift_grid");
    const QPoint from = cell(5, 5);
    press(from);
    release(from + QPoint(40, 0));
    leave_mesh(Answer::yes);
    const grid::GridPosition position(desk.model()->project);
    EXPECT_NEAR(position.Grid_Angle, 45, 3);
    EXPECT_GT(position.Grid_Left, 1);
    EXPECT_NEAR(position.Grid_Top, 100, 0.5);
}

TEST_F(EditorMesh, OK_without_another_size_is_no_step_to_go_back) {
    make_model(4, 3);
    open_mesh();
    tool("shift_grid");
    press(cell(2, 2));
    release(cell(3, 3));
    in_dialog([&] { tool("set_value"); }, "GridSize",
              [](QDialog& dialog) { widget<QPushButton>(dialog, "cmdOK").click(); });
    tool("undo");
    leave_mesh(Answer::yes);
    EXPECT_EQ(grid::GridPosition(desk.model()->project).Grid_Left, 0) << "the shift";
}

TEST_F(EditorMesh, the_right_button_leads_back_to_the_dimension_as_long_as_there_are_no_arrays) {
    bool offered = false;
    const auto choose = [&] {
        QTimer::singleShot(0, [&] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            auto* const item = menu->findChild<QAction*>("mesh_dimension");
            ASSERT_TRUE(item);
            offered = item->isEnabled();
            item->trigger();
            menu->close();
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, cell(2, 2),
                                view().viewport()->mapToGlobal(cell(2, 2)));
        QApplication::sendEvent(view().viewport(), &event);
        QApplication::processEvents();
    };
    make_model(4, 3);
    open_mesh();
    user.expect_question("Mesh Size", "Save changes to Mesh Size?", Answer::no);
    in_dialog(choose, "Grid_Number", [](QDialog& dialog) {
        support::type_into(widget<QLineEdit>(dialog, "txtLayers"), "5");
        widget<QPushButton>(dialog, "cmdOK").click();
    });
    EXPECT_FALSE(editor().is_open());
    EXPECT_EQ(desk.model()->project.NZ(), 5);
    open();
    leave(Answer::no);
    open_mesh();
    choose();
    EXPECT_FALSE(offered);
    leave_mesh(Answer::no);
}

TEST_F(EditorMesh, No_leaves_the_model_as_it_was) {
    make_model(4, 3);
    const auto before = all_files();
    open_mesh();
    key(Qt::Key_Right, Qt::ControlModifier);
    tool("shift_grid");
    press(cell(2, 2));
    release(cell(3, 3));
    leave_mesh(Answer::cancel, false);
    EXPECT_EQ(mesh().grid().NX, 5);
    leave_mesh(Answer::no);
    EXPECT_EQ(all_files(), before);
}

} // namespace
