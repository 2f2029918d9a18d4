// Whole models made from New to the input file with menus, dialogs, mouse and keys alone.
#include "editorfixture.h"

#include "base/textfile.h"
#include "input/inputfile.h"
#include "ui/tableview.h"
#include "ui/toolbar.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

#include <cmath>
#include <map>

namespace {

using base::Answer;
using support::type_into;

class WholeModel : public support::EditorFixture {
protected:
    using Fields = std::map<const char*, const char*>;
    using Nodes = std::vector<std::pair<double, double>>;

    static void press(QDialog& dialog, const std::string& button) {
        support::click(widget<QAbstractButton>(dialog, button));
    }
    static void fill(QDialog& dialog, const Fields& fields) {
        for (const auto& [name, text] : fields) {
            type_into(widget<QLineEdit>(dialog, name), text);
        }
    }
    // Pastes from a cell of the table on, rows and columns from 1.
    static void paste(QDialog& dialog, const char* name, int column, const QString& block) {
        auto& table = widget<QTableView>(dialog, name);
        QApplication::clipboard()->setText(block);
        table.setFocus();
        table.setCurrentIndex(table.model()->index(0, column - 1));
        QTest::keySequence(&table, QKeySequence::Paste);
    }
    // By the first letters of the item.
    static void choose_item(QDialog& dialog, const char* list, const char* letters) {
        auto& box = widget<QComboBox>(dialog, list);
        box.setFocus();
        QTest::keyClicks(&box, letters);
    }
    // A dialog with lines to type and buttons to press, then OK.
    void answer(const char* command, const char* dialog, const Fields& fields,
                const std::vector<std::string>& buttons = {}) {
        in_dialog(command, dialog, [&](QDialog& shown) {
            for (const std::string& button : buttons) {
                press(shown, button);
            }
            fill(shown, fields);
            press(shown, "cmdOK");
        });
    }

    void make_mesh(const Fields& numbers) {
        answer("grid_mesh_size", "Grid_Number", numbers);
        choose("grid_mesh_size");
        leave_with(Answer::yes, "Mesh Size");
    }

    // A new model by the menu: its mesh, and the thicknesses of its layers, one a line.
    void begin_model(const char* name, const Fields& numbers, const char* thicknesses) {
        user.expect_file("New Model", folder.path() / name);
        action("file_new_model").trigger();
        make_mesh(numbers);
        in_dialog("grid_layer_type", "Layer_Type", [&](QDialog& dialog) {
            paste(dialog, "Table", 3, thicknesses);
            press(dialog, "cmdOK");
        });
    }
    void choose(const char* command) {
        ASSERT_TRUE(action(command).isEnabled()) << command;
        action(command).trigger();
        ASSERT_TRUE(editor().is_open()) << command;
    }
    void leave_with(Answer answer, const std::string& caption) {
        user.expect_question(caption, "Save changes to " + caption + "?", answer);
        tool("leave_editor");
        ASSERT_FALSE(editor().is_open());
    }

    using Formula = std::function<double(int i, int j)>; // column and row, from 1
    void paste_layer(const Formula& value) {
        const auto& project = desk.model()->project;
        QString block;
        for (int j = 1; j <= project.NY(); ++j) {
            for (int i = 1; i <= project.NX(); ++i) {
                block += QString::number(value(i, j), 'g', 7) + (i < project.NX() ? '\t' : '\n');
            }
        }
        in_dialog("value_matrix_browse", "Matrix", [&](QDialog& dialog) {
            paste(dialog, "Matrix_Table", 1, block);
            press(dialog, "cmdOK");
        });
    }
    void next_layer() { key(Qt::Key_PageDown); }
    void reset_layer(const char* value) {
        answer("value_matrix_reset", "Reset_Array", {{"Value_1", value}});
    }
    // Each node is clicked, the first one once more; ">>" gives the value to the cells.
    void draw_zone(const Nodes& nodes, const char* value) {
        for (const auto& [x, y] : nodes) {
            click(at(x, y));
        }
        type_values([&] { click(at(nodes[0].first, nodes[0].second)); }, {value}, "cmdTransfer");
    }

    void make_permeability(const char* zones, const char* compressibility, const char* table) {
        user.expect_message("Permeability / Porosity Definition",
                            "Initial distribution of Porosity and Permeability is saved. You can "
                            "adapt the values in the cell-by-cell mode.");
        in_dialog("mnuPermPorGS", "PermPor", [&](QDialog& dialog) {
            fill(dialog, {{"Zones", zones}, {"COMPM_Value", compressibility}});
            paste(dialog, "Table", 1, table);
            press(dialog, "cmdOK");
        });
    }
    void create_input() {
        user.expect_question("Create TERVEX Input File", input::run_question, Answer::no);
        action("mnuTervexCreate").trigger();
    }
};

class Aquifer : public WholeModel {
public:
    static constexpr double length = 2500, width = 2000, cell_size = 50;

    // From the western and the northern edge, as the cells are numbered.
    static double x(int i) { return (i - 0.5) * cell_size; }
    static double north(int j) { return (j - 0.5) * cell_size; }

    void begin() {
        user.expect_file("New Model", folder.path() / "aquifer.td1");
        action("file_new_model").trigger();
        in_dialog("file_model_information", "ModelInformation", [](QDialog& dialog) {
            type_into(widget<QLineEdit>(dialog, "txtTitle"),
                      "Phreatic aquifer between a hillside and a river");
            press(dialog, "cmdClose");
        });
    }

    void lay_out() {
        make_mesh({{"txtLayers", "3"},
                   {"txtColumns", "50"},
                   {"txtColumnSize", "50"},
                   {"txtRows", "40"},
                   {"txtRowSize", "50"}});
        answer("grid_layer_type", "Layer_Type", {{"txtNFREE", "1"}}, {"Geometry_1"});
    }

    void set_elevations() {
        const auto below_gravel = [](int i, int) { return 425 - 0.003 * x(i); };
        const auto below_sand = [](int i, int) { return 425 - 0.003 * x(i) - 12; };
        choose("grid_top_of_layers");
        paste_layer([](int i, int j) {
            return 448 - 0.004 * x(i) + 0.6 * std::sin((width - north(j)) / 300);
        });
        next_layer();
        paste_layer(below_gravel);
        next_layer();
        paste_layer(below_sand);
        leave_with(Answer::yes, "Top of Layers");
        user.expect_question("Bottom of Layers (BOT)",
                             "The elevation of the aquifer top has been specified. Use it for the "
                             "elevation of the aquifer bottom?",
                             Answer::yes);
        choose("grid_bottom_of_layers");
        next_layer();
        next_layer();
        paste_layer([&](int i, int j) {
            return below_sand(i, j) - 4 - 8 * std::sin(3.14159 * x(i) / length);
        });
        leave_with(Answer::yes, "Bottom of Layers");
    }

    // A zone in each layer, and a lens of clay drawn into the sand.
    void set_property_zones() {
        choose("mnuChemistryMineral");
        reset_layer("1");
        next_layer();
        reset_layer("2");
        tool("zone");
        Nodes lens;
        for (int n = 0; n < 40; ++n) {
            const double turn = 6.283185 * n / 40;
            lens.emplace_back(900 + 400 * std::cos(turn), width - 1300 - 250 * std::sin(turn));
        }
        draw_zone(lens, "4");
        next_layer();
        reset_layer("3");
        leave_with(Answer::yes, "Property Zones");
    }

    void set_type() {
        answer("mnuTypeSettings", "SimulationType", {}, {"FluidFlowCheck"});
        answer("mnuTypeCoupling", "Coupling", {});
        answer("mnuTypeInfo", "TypeInfo", {},
               {"chkPLT3D", "chkTecPlot", "chkTecPlot2", "chkVtk", "chkThermal"});
    }

    void set_rock() {
        make_permeability("4", "1.0E-09",
                          "0.22\t2E-11\t3.\t3.\n0.18\t5E-12\t5.\t5.\n"
                          "0.12\t1E-13\t10.\t10.\n0.08\t1E-16\t2.\t2.\n");
    }

    void set_boundaries_and_heads() {
        choose("grid_ibound");
        paste_layer([](int i, int) { return i == 50 ? -1 : i == 1 ? 2 : 1; });
        tool("layer_copy");
        next_layer();
        tool("layer_copy");
        next_layer();
        paste_layer([](int i, int) { return i == 50 ? -1 : 1; });
        leave_with(Answer::yes, "Flow Boundary Condition");
        choose("Parameters_Starting_heads");
        paste_layer([](int i, int) { return 437 - 0.002 * x(i); });
        tool("layer_copy");
        next_layer();
        next_layer();
        leave_with(Answer::yes, "Initial Hydraulic Heads");
    }

    void set_fluxes() {
        choose("mnuFluidFlowRechargeLR");
        tool("cell_copy");
        set_cell(1, 1, "1E-7");
        for (int j = 2; j <= 40; ++j) {
            key(Qt::Key_Down);
        }
        tool("layer_copy");
        next_layer();
        leave_with(Answer::yes, "Left / Right - Recharge");
        choose("mnuFluidFlowRechargeTB");
        reset_layer("7.93E-9");
        tool("zone");
        draw_zone({{-40, -40}, {600, -40}, {600, width + 40}, {-40, width + 40}}, "4.75E-9");
        draw_zone({{1500, 900}, {1900, 900}, {1900, 1300}, {1500, 1300}}, "1.9E-9");
        leave_with(Answer::yes, "Top / Bottom - Recharge");
    }

    void set_periods() {
        in_dialog("parameters_time", "Temporal_Discretization", [&](QDialog& dialog) {
            press(dialog, "SimulationFlowType_1");
            choose_item(dialog, "SimulationTimeUnit", "day");
            paste(dialog, "Table", 1, "1\t3650\t120\t12\n1\t3650\t120\t12\n");
            press(dialog, "cmdOK");
        });
    }

    void set_well(int column, int row, const char* rate) {
        type_values([&] { click(cell(column, row)); }, {rate}, "cmdOK", "Specify_Two_values");
    }
    void set_wells() {
        choose("packages_wel1");
        set_well(28, 36, "-0.008");
        next_layer();
        set_well(36, 12, "-0.012");
        window.tools().period_box().setFocus();
        QTest::keyClick(&window.tools().period_box(), Qt::Key_Down);
        set_well(36, 12, "-0.009");
        set_well(20, 24, "-0.007");
        key(Qt::Key_PageUp);
        set_well(28, 36, "-0.006");
        in_dialog([&] { tool("leave_editor"); }, "Transient_data",
                  [](QDialog& dialog) { press(dialog, "cmdOK"); });
        ASSERT_FALSE(editor().is_open());
    }

    void set_monitoring_and_solver() {
        in_dialog("estimation_observations", "ObservationList", [](QDialog& dialog) {
            paste(dialog, "Bores", 1,
                  "WELL1\t1\t1375\t225\t1\nWELL2\t1\t1775\t1425\t2\n"
                  "WELL3\t1\t975\t825\t2\nGAUGE\t1\t2125\t1000\t1\n");
            press(dialog, "cmdOK");
        });
        answer("mnuTimePLU", "PLU", {{"NoIteration", "2000"}}, {"optFlowCond_2", "optFlowTerm_0"});
    }
};

TEST_F(Aquifer, made_in_the_window_is_the_one_made_by_the_script) {
    for (const auto step :
         {&Aquifer::begin, &Aquifer::lay_out, &Aquifer::set_elevations,
          &Aquifer::set_property_zones, &Aquifer::set_type, &Aquifer::set_rock,
          &Aquifer::set_boundaries_and_heads, &Aquifer::set_fluxes, &Aquifer::set_periods,
          &Aquifer::set_wells, &Aquifer::set_monitoring_and_solver}) {
        (this->*step)();
        ASSERT_FALSE(HasFailure());
    }
    create_input();
    const std::string expected =
        base::read_bytes(std::string(TD_TEST_DATA) + "/examples/aquifer.nml");
    EXPECT_TRUE(folder.read("aquifer.nml") == expected);
}

// 10 x 8 cells in two layers by thickness; a heat flow from below and a well that brings cold
// water.
TEST_F(WholeModel, a_small_one_of_flow_and_heat_is_written_with_what_was_typed) {
    begin_model("m.td1",
                {{"txtLayers", "2"},
                 {"txtColumns", "10"},
                 {"txtColumnSize", "25"},
                 {"txtRows", "8"},
                 {"txtRowSize", "20"}},
                "15\n30\n");
    choose("mnuChemistryMineral");
    next_layer();
    reset_layer("2");
    leave_with(Answer::yes, "Property Zones");
    answer("mnuTypeSettings", "SimulationType", {}, {"FluidFlowCheck", "HeatCheck"});
    answer("mnuTypeCoupling", "Coupling", {}, {"FlowHeatCheck"});
    answer("mnuTypeInfo", "TypeInfo", {});
    make_permeability("2", "1E-10", "0.2\t1E-12\t1.\t1.\n0.1\t1E-14\t1.\t1.\n");
    in_dialog("mnuHeatMatrix", "Heat", [](QDialog& dialog) {
        paste(dialog, "Table", 2, "2.2\t2.5\t0.\t1.\t1.\n2.4\t3.1\t0.\t1.\t1.\n");
        press(dialog, "cmdOK");
    });
    choose("mnuHeatTemperature");
    reset_layer("11");
    next_layer();
    reset_layer("12.5");
    leave_with(Answer::yes, "Temperature");
    choose("mnuHeatBoundary");
    reset_layer("-1");
    next_layer();
    reset_layer("2");
    leave_with(Answer::yes, "Thermal Boundary Condition");
    choose("mnuHeatBasal");
    next_layer();
    reset_layer("0.065");
    leave_with(Answer::yes, "Constant Heat Flow");
    choose("grid_ibound");
    paste_layer([](int i, int) { return i == 1 || i == 10 ? -1 : 1; });
    leave_with(Answer::yes, "Flow Boundary Condition");
    choose("Parameters_Starting_heads");
    paste_layer([](int i, int) { return 100 - 0.1 * i; });
    leave_with(Answer::yes, "Initial Hydraulic Heads");
    choose("packages_wel1");
    type_values([&] { click(cell(4, 5)); }, {"0.001", "6"}, "cmdOK", "Specify_Two_values");
    leave_with(Answer::yes, "Wells");
    in_dialog("parameters_time", "Temporal_Discretization", [](QDialog& dialog) {
        choose_item(dialog, "SimulationTimeUnit", "year");
        press(dialog, "cmdOK");
    });
    answer("mnuBiCGStab", "BiCGStab", {});
    create_input();
    const std::string written = folder.read("m.nml");
    for (const char* block :
         {"# KEY\r\nFU---\r\n", "# KOPLNG\r\nC---\r\n", "# BASET\r\nWSD\r\n",
          "# QBASAL3D\r\n80*0.065 \r\n", "# TCON\r\n6. 9999*0. \r\n",
          "# WELLAR\r\n0.001 9999*0. \r\n", "# DELZ\r\n30. 15. \r\n", "# GEOLOGY\r\n80*2 80*1 \r\n",
          "# TEMP\r\n80*12.5 80*11. \r\n", "# WLFM0\r\n80*3.1 80*2.5 \r\n"}) {
        EXPECT_NE(written.find(block), std::string::npos) << block;
    }
}

// The steps of "A first model" on the manual's page of the window.
TEST_F(WholeModel, the_first_one_of_the_manual_is_complete) {
    begin_model("field.td1",
                {{"txtLayers", "3"},
                 {"txtColumns", "50"},
                 {"txtColumnSize", "20"},
                 {"txtRows", "30"},
                 {"txtRowSize", "20"}},
                "5\n15\n10\n");
    choose("mnuChemistryMineral");
    next_layer();
    next_layer();
    reset_layer("2");
    leave_with(Answer::yes, "Property Zones");
    answer("mnuTypeSettings", "SimulationType", {}, {"FluidFlowCheck"});
    answer("mnuTypeCoupling", "Coupling", {});
    answer("mnuTypeInfo", "TypeInfo", {});
    in_dialog("parameters_time", "Temporal_Discretization", [&](QDialog& dialog) {
        press(dialog, "SimulationFlowType_1");
        choose_item(dialog, "SimulationTimeUnit", "day");
        paste(dialog, "Table", 2, "10\t40\n");
        press(dialog, "cmdOK");
    });
    answer("mnuBiCGStab", "BiCGStab", {});
    make_permeability("2", "1.0E-10", "0.25\t2E-11\n0.15\t1E-14\n");
    const auto draw_column = [&](int column, const char* value) {
        set_cell(column, 1, value);
        for (int row = 2; row <= 30; ++row) {
            key(Qt::Key_Down);
        }
    };
    const auto copy_to_layers_below = [&] {
        tool("layer_copy");
        next_layer();
        next_layer();
    };
    choose("grid_ibound");
    tool("cell_copy");
    draw_column(1, "-1");
    draw_column(50, "-1");
    copy_to_layers_below();
    leave_with(Answer::yes, "Flow Boundary Condition");
    choose("Parameters_Starting_heads");
    reset_layer("30");
    tool("cell_copy");
    draw_column(50, "28");
    copy_to_layers_below();
    leave_with(Answer::yes, "Initial Hydraulic Heads");
    choose("packages_wel1");
    next_layer();
    type_values([&] { click(cell(25, 15)); }, {"-0.02"}, "cmdOK", "Specify_Two_values");
    leave_with(Answer::yes, "Wells");
    in_dialog("estimation_observations", "ObservationList", [](QDialog& dialog) {
        paste(dialog, "Bores", 1, "WELL\t1\t490\t310\t2\n");
        press(dialog, "cmdOK");
    });
    create_input();
    const std::string written = folder.read("field.nml");
    for (const char* block : {"# DELZ\r\n10. 15. 5. \r\n", "# GEOLOGY\r\n1500*2 3000*1 \r\n",
                              "# WELLAR\r\n-0.02 9999*0. \r\n"}) {
        EXPECT_NE(written.find(block), std::string::npos) << block;
    }
    const std::string heads = written.substr(written.find("# PHI"), 60);
    EXPECT_TRUE(heads.starts_with("# PHI\r\n49*30. 28. 49*30. 28. ")) << heads;
}

} // namespace
