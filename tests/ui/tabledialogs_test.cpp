#include "deskfixture.h"

#include "core/arraystore.h"
#include "grid/griddefinition.h"
#include "grid/monitoring.h"
#include "sim/periods.h"
#include "sim/reinjection.h"
#include "sim/rockfile.h"
#include "sim/simplevalues.h"
#include "sim/simulationtype.h"
#include "sim/transport.h"
#include "sim/typfile.h"
#include "ui/tablemodel.h"
#include "ui/tableview.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

namespace {

using support::click;
using support::DeskFixture;
using support::type_into;

class TableDialogs : public DeskFixture {
protected:
    TableDialogs() {
        make_model(3, 2, 3);
        change([](app::Workspace& model) {
            sim::SimulationType form;
            form.load(model.project, model.files);
            form.save(model.project, model.files);
        });
    }

    const core::ModelFiles& files() const { return desk.model()->files; }
    const core::ModelFlags& flags() const { return desk.model()->project.flags; }

    static void press(QDialog& dialog, const char* button) {
        click(widget<QPushButton>(dialog, button));
    }
    static ui::TableView& table_of(QDialog& dialog, const char* name = "Table") {
        return widget<ui::TableView>(dialog, name);
    }
    // Types into a cell and leaves the editor open, as before a press on OK.
    static void type(ui::TableView& table, int row, const char* column, const char* text) {
        table.setCurrentIndex(cell(table, row, column));
        table.setFocus();
        QTest::keyClicks(&table, QString(text[0]));
        if (text[1] != '\0') {
            QTest::keyClicks(table.findChild<QLineEdit*>(), text + 1);
        }
    }
    static QModelIndex cell(ui::TableView& table, int row, const char* column) {
        return table.model()->index(row - 1, table.form_model()->column_of(column));
    }
    static std::string heads(ui::TableView& table) {
        std::string text;
        for (int i = 0; i < table.model()->columnCount(); ++i) {
            text += table.model()
                        ->headerData(i, Qt::Horizontal, Qt::EditRole)
                        .toString()
                        .toStdString() +
                    "|";
        }
        return text;
    }
    static void paste(ui::TableView& table, int row, const char* column, const char* block) {
        QApplication::clipboard()->setText(block);
        table.setCurrentIndex(cell(table, row, column));
        table.paste();
    }
    void define_wells() {
        change([](app::Workspace& model) {
            core::ArrayStore store(model.files, model.project);
            const std::vector<float> rates = {0, -0.5F, 0, 0.25F, 0, 0};
            store.write_array(11, 1, 1, rates);
            model.project.flags.mark_defined(3, 2);
        });
    }
};

TEST_F(TableDialogs, layers_are_typed_and_refused_in_the_order_of_their_types) {
    in_dialog("grid_layer_type", "Layer_Type", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Layer Options");
        ui::TableView& table = table_of(dialog);
        EXPECT_EQ(heads(table), "Layer|Type|Thickness [m]|");
        user.expect_message("Wrong Data Input",
                            "Unconfined layers below confined layers are not allowed!");
        paste(table, 2, "Type", "1: Unconfined\t4.5\n");
        auto& count = widget<QLineEdit>(dialog, "txtNFREE");
        type_into(count, "4");
        user.expect_message("Input Error", "Too many unconfined layer defined!\n"
                                           "Value will be reset to none.");
        QTest::keyClick(&count, Qt::Key_Tab);
        EXPECT_EQ(count.text(), "");
        type_into(count, "2");
        QTest::keyClick(&count, Qt::Key_Tab);
        EXPECT_EQ(cell(table, 2, "Type").data().toString(), "1: Unconfined");
        paste(table, 3, "Type", "1\n");
        EXPECT_EQ(count.text(), "3");
        click(widget<QWidget>(dialog, "Geometry_0"));
        type(table, 3, "Thickness", "7.5");
        press(dialog, "cmdOK");
    });
    const auto layers = grid::LayerFile::load(files(), 3)->layers;
    EXPECT_EQ(layers[1].thickness, 4.5F);
    EXPECT_EQ(layers[2].thickness, 7.5F);
    EXPECT_EQ(layers[2].type, 1);
    EXPECT_TRUE(flags().is_defined(1, 6));
}

TEST_F(TableDialogs, Cancel_changes_nothing) {
    for (const auto& [command, name, column] :
         {std::tuple("grid_layer_type", "Layer_Type", "Thickness"),
          std::tuple("parameters_time", "Temporal_Discretization", "PeriodLength"),
          std::tuple("mnuPermPorGS", "PermPor", "Por"), std::tuple("mnuHeatMatrix", "Heat", "Cond"),
          std::tuple("mnuTransportTracer", "Tracer", "BetaC")}) {
        const std::string before = files().read_project();
        const auto rock = files().read_if(".mco"), layers = files().read_if(".l");
        in_dialog(command, name, [&](QDialog& dialog) {
            ui::TableView& table = table_of(dialog);
            table.setFocus();
            type(table, 1, column, "33");
            QTest::keyClick(table.findChild<QLineEdit*>(), Qt::Key_Return);
            QApplication::processEvents();
            EXPECT_EQ(cell(table, 1, column).data().toString(), "33") << name;
            QTest::keyClick(&table, Qt::Key_Escape);
        });
        EXPECT_EQ(files().read_project(), before) << name;
        EXPECT_EQ(files().read_if(".mco"), rock) << name;
        EXPECT_EQ(files().read_if(".l"), layers) << name;
        EXPECT_FALSE(files().has(".trn")) << name;
        EXPECT_FALSE(files().has(".ttc")) << name;
    }
}

TEST_F(TableDialogs, periods_show_their_totals_while_they_are_typed) {
    in_dialog("parameters_time", "Temporal_Discretization", [&](QDialog& dialog) {
        ui::TableView& table = table_of(dialog);
        const auto status = [&] {
            return widget<QLabel>(dialog, "Status1").text() + "; " +
                   widget<QLabel>(dialog, "Status2").text() + "; " +
                   widget<QLabel>(dialog, "Status3").text();
        };
        EXPECT_EQ(heads(table),
                  "Use|Period Length|Time Steps|Monitoring Frequency [steps]|Temperature Shift [K]|"
                  "Max. No. of Transport Steps|Multiplier (Transport)|");
        EXPECT_EQ(status(), "Total Period Number = 1; Total Time Steps = 1; "
                            "Total Simulation Time = undefined");
        widget<QComboBox>(dialog, "SimulationTimeUnit").setCurrentIndex(4);
        EXPECT_TRUE(heads(table).starts_with("Use|Period Length [days]|"));
        paste(table, 2, "Use", "1\t2.5\t20\t4\t1.5\t100\t1.2\n");
        EXPECT_EQ(status(), "Total Period Number = 2; Total Time Steps = 21; "
                            "Total Simulation Time = 3.5E+0 time units");
        widget<QCheckBox>(dialog, "AutoUpdate").click();
        widget<QComboBox>(dialog, "SimulationTimeUnit").setCurrentIndex(3);
        EXPECT_EQ(cell(table, 2, "PeriodLength").data().toString(), "60");
        click(widget<QWidget>(dialog, "SimulationFlowType_1"));
        type(table, 1, "TimeSteps", "12");
        press(dialog, "cmdOK");
    });
    const sim::PeriodTable table = sim::PeriodTable::load(files());
    EXPECT_EQ(table.rows[0].steps, 12);
    EXPECT_EQ(table.rows[1].length, 60);
    EXPECT_EQ(table.rows[1].max_transport_steps, 100);
    EXPECT_EQ(table.unit, 3);
    EXPECT_TRUE(flags().is_defined(0, 3));
}

TEST_F(TableDialogs, periods_refuse_what_no_period_can_be) {
    in_dialog("parameters_time", "Temporal_Discretization", [&](QDialog& dialog) {
        ui::TableView& table = table_of(dialog);
        user.expect_message("Time Parameter",
                            "The data of the first stress period must always be used!");
        table.setCurrentIndex(cell(table, 1, "Use"));
        QTest::keyClick(&table, Qt::Key_Space);
        user.expect_message("Time Parameter",
                            "Valid range of the maximum number of transport steps is 1 to "
                            "2147483647.");
        type(table, 1, "MaxTransportSteps", "0");
        press(dialog, "cmdOK");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(table.hasFocus());
        user.expect_file("Load Time Parameters", folder.write("none.tpr", "1\r\n"));
        user.expect_message("Message", "File has a wrong format.");
        press(dialog, "Load_Button");
        std::string none = "BALDO5000_TIME_FILE\r\n100 3\r\n";
        for (int i = 0; i < 700; ++i) {
            none += i < 100 ? "0\r\n" : "1\r\n";
        }
        user.expect_file("Load Time Parameters", folder.write("off.tpr", none));
        press(dialog, "Load_Button");
        user.expect_message("Time Parameter", "At least one period must be active!");
        press(dialog, "cmdOK");
        dialog.reject();
    });
    EXPECT_FALSE(files().has(".trn"));
}

TEST_F(TableDialogs, a_cell_that_is_given_up_with_its_dialog_is_not_refused) {
    for (const bool by_button : {true, false}) {
        in_dialog("parameters_time", "Temporal_Discretization", [&](QDialog& dialog) {
            type(table_of(dialog), 2, "MaxTransportSteps", "0");
            by_button ? press(dialog, "cmdCancel") : dialog.reject();
        });
    }
    EXPECT_FALSE(files().has(".trn"));
}

TEST_F(TableDialogs, time_parameters_are_saved_and_loaded) {
    const auto file = folder.path() / "time.tpr";
    in_dialog("parameters_time", "Temporal_Discretization", [&](QDialog& dialog) {
        type(table_of(dialog), 1, "TimeSteps", "77");
        user.expect_file("Save Time Parameters", file);
        press(dialog, "Save_Button");
        user.expect_file("Load Time Parameters", {});
        press(dialog, "Load_Button");
        dialog.reject();
    });
    EXPECT_TRUE(folder.read("time.tpr").starts_with("BALDO5000_TIME_FILE"));
    in_dialog("parameters_time", "Temporal_Discretization", [&](QDialog& dialog) {
        user.expect_file("Load Time Parameters", file);
        press(dialog, "Load_Button");
        EXPECT_EQ(cell(table_of(dialog), 1, "TimeSteps").data().toString(), "77");
        user.expect_file("Load Time Parameters", folder.path() / "missing.tpr");
        user.expect_failure("", base::Reaction::leave);
        press(dialog, "Load_Button");
        press(dialog, "cmdOK");
    });
    EXPECT_EQ(sim::PeriodTable::load(files()).rows[0].steps, 77);
}

TEST_F(TableDialogs, flow_properties_build_the_arrays_behind_their_question) {
    change([](app::Workspace& model) {
        core::ArrayStore store(model.files, model.project);
        for (int layer = 1; layer <= 3; ++layer) {
            store.write_array(1403, 1, layer, std::vector<float>(6, 2));
        }
        model.project.flags.mark_defined(2, 2);
    });
    const char* title = "Permeability / Porosity Definition";
    const char* question = "Porosity values are already defined in the cell-by-cell mode. When you "
                           "go on these values will be overwriten. Continue?";
    in_dialog("mnuPermPorGS", "PermPor", [&](QDialog& dialog) {
        ui::TableView& table = table_of(dialog);
        EXPECT_EQ(heads(table),
                  "Porosity [-]|Permeability [m²]|Anisotropy x-Direction|Anisotropy y-Direction|"
                  "Compressibility [1/Pa]|");
        EXPECT_EQ(table.model()->headerData(1, Qt::Vertical).toString(), "Zone 2");
        auto& zones = widget<QLineEdit>(dialog, "Zones");
        type_into(zones, "16");
        user.expect_message("Error", "Valid range is 1 to 15");
        press(dialog, "cmdOK");
        EXPECT_EQ(zones.selectedText(), "16");
        type_into(zones, "3");
        type_into(widget<QLineEdit>(dialog, "COMPM_Value"), "2E-9");
        QTest::keyClick(&widget<QLineEdit>(dialog, "COMPM_Value"), Qt::Key_Tab);
        EXPECT_EQ(table.model()->rowCount(), 3);
        paste(table, 2, "Por", "0.3\t1.00000000000001E-12\n");
        user.expect_question(title, question, base::Answer::no);
        press(dialog, "cmdOK");
        EXPECT_TRUE(dialog.isVisible());
        user.expect_question(title, question, base::Answer::yes);
        user.expect_message(title,
                            "Initial distribution of Porosity and Permeability is saved. You can "
                            "adapt the values in the cell-by-cell mode.");
        press(dialog, "cmdOK");
    });
    const sim::RockFile rock = sim::RockFile::load(files());
    EXPECT_EQ(rock.zones(), 3);
    EXPECT_EQ(rock.field(sim::rock::Perm, 2), "1.00000000000001E-12");
    EXPECT_EQ(sim::TypFile::load(files()).line(sim::typ::COMPM), "2E-9");
    core::ModelFiles read(model_path(), core::Access::read);
    std::vector<float> porosity(6);
    core::ArrayStore(read, desk.model()->project).read_array(6, 1, 3, porosity, 0);
    EXPECT_EQ(porosity[5], 0.3F);
}

TEST_F(TableDialogs, rock_tables_are_loaded_from_other_files_and_cleared) {
    folder.write("none.mco", "Heat\r\n");
    sim::RockFile other(15);
    other.set_field(sim::rock::Por, 1, "0.11");
    other.set_field(sim::rock::Cond, 1, "4.4");
    folder.write("other.mco", other.bytes());
    const char* clear = "This will clear the Table of Properties. Continue?";
    for (const auto& [command, name, title, column, loaded] :
         {std::tuple("mnuPermPorGS", "PermPor", "Load Fluid Flow Rock Properties", "Por", "0.11"),
          std::tuple("mnuHeatMatrix", "Heat", "Load Heat Rock Properties", "Cond", "4.4")}) {
        in_dialog(command, name, [&](QDialog& dialog) {
            ui::TableView& table = table_of(dialog);
            user.expect_file(title, folder.path() / "none.mco");
            user.expect_message("Message", "File has a wrong format.");
            press(dialog, "Load_Button");
            user.expect_file(title, folder.path() / "other.mco");
            press(dialog, "Load_Button");
            EXPECT_EQ(cell(table, 1, column).data().toString(), loaded);
            user.expect_question("Tervex Desk", clear, base::Answer::no);
            press(dialog, "Clear_Button");
            EXPECT_EQ(cell(table, 1, column).data().toString(), loaded);
            user.expect_question("Tervex Desk", clear, base::Answer::yes);
            press(dialog, "Clear_Button");
            EXPECT_EQ(cell(table, 15, column).data().toString(), "0.");
            type(table, 1, column, "0.5");
            press(dialog, "cmdOK");
        });
    }
    const sim::RockFile rock = sim::RockFile::load(files());
    EXPECT_EQ(rock.field(sim::rock::Por, 1) + rock.field(sim::rock::Cond, 1), "0.50.5");
    EXPECT_TRUE(flags().is_defined(9, 13));
}

TEST_F(TableDialogs, heat_shows_porosities_that_it_does_not_change) {
    in_dialog("mnuHeatMatrix", "Heat", [&](QDialog& dialog) {
        ui::TableView& table = table_of(dialog);
        EXPECT_EQ(heads(table),
                  "Porosity [-]|Thermal Capacity [MJ/(m³ K)]|Thermal Conductivity [W/(m K)]|Heat "
                  "Production Rate [W/m³]|Anisotropy x-Direction|Anisotropy y-Direction|");
        paste(table, 1, "Por", "0.9\t2.5\n");
        press(dialog, "cmdOK");
    });
    const sim::RockFile rock = sim::RockFile::load(files());
    EXPECT_EQ(rock.field(sim::rock::Por, 1) + " " + rock.field(sim::rock::RhoCm, 1), "0.25 2.5");
}

TEST_F(TableDialogs, injected_concentrations_follow_the_active_tracers) {
    const auto show = [&] { window.run_command("mnuTransportReinjectionConc"); };
    user.expect_message("Tervex Desk", "There is no active Tracer!\nYou can't edit any value.");
    show();
    define_wells();
    const auto activate = [&](int row) {
        in_dialog("mnuTransportTracer", "Tracer", [&](QDialog& dialog) {
            ui::TableView& table = table_of(dialog);
            EXPECT_EQ(heads(table), "Tracer|Active|Concentration [mmol/L]|BetaC * [kg/mol]|");
            table.setCurrentIndex(cell(table, row, "Active"));
            QTest::keyClick(&table, Qt::Key_Space);
            type(table, row, "Concentration", "1.5");
            press(dialog, "cmdOK");
        });
    };
    activate(2);
    EXPECT_EQ(sim::TracerTable::load(files()).rows[1].concentration, 1.5F);
    in_dialog(show, "SCON_Table", [&](QDialog& dialog) {
        ui::TableView& table = table_of(dialog);
        EXPECT_EQ(heads(table), "Well|Rate [m³/s] 1st Period|Tracer 1 [mmol/L]|");
        EXPECT_FALSE(widget<QLabel>(dialog, "NoWells").isVisible());
        paste(table, 1, "Well", "9\t9\t2.5\n9\t9\t3.5\n9\t9\t4.5\n");
        press(dialog, "cmdOK");
    });
    const auto stored = sim::ReinjectionTable::read(files().read(".sco"), "m.sco");
    EXPECT_EQ(stored.rows.size(), 2U);
    EXPECT_EQ(stored.concentration(2, 1), 3.5F);
    activate(4);
    user.expect_message("Tervex Desk", "Species list has changed since last opening!\n"
                                       "You have to define new values.");
    in_dialog(show, "SCON_Table", [&](QDialog& dialog) { press(dialog, "cmdCancel"); });
}

TEST_F(TableDialogs, the_menu_switches_the_reinjection_of_produced_water) {
    window.run_command("mnuTransportR");
    EXPECT_TRUE(sim::reinjects_produced_water(flags()));
    EXPECT_FALSE(window.findChild<QAction*>("mnuTransportReinjectionConc")->isEnabled());
    window.run_command("mnuTransportR");
    EXPECT_FALSE(sim::reinjects_produced_water(flags()));
}

TEST_F(TableDialogs, monitoring_points_and_observations_are_typed) {
    in_dialog("estimation_observations", "ObservationList", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Points of Monitoring");
        EXPECT_FALSE(widget<QPushButton>(dialog, "Import_Button").isEnabled());
        ui::TableView& bores = table_of(dialog, "Bores");
        EXPECT_TRUE(heads(bores).starts_with(
            "Node Name|Active|X - easting [m]|Y - northing [m]|Z (Layer-No.)|"));
        paste(bores, 2, "Name", "Borehole no. 2\t-1\t12.5\t7\t3\n");
        widget<QTabWidget>(dialog, "Tabs").setCurrentIndex(1);
        ui::TableView& observations = table_of(dialog, "Observations");
        press(dialog, "Add_Button");
        type(observations, 1, "Bore_Name", "Borehole");
        QApplication::clipboard()->setText("A\t0\t1\t-1\nB\t0\t2\t1\nC\t0\t3\t1\n");
        user.expect_message("Tervex Desk", "Value must be >= 0");
        EXPECT_TRUE(observations.finish_editing());
        observations.setCurrentIndex(cell(observations, 1, "Bore_Name"));
        observations.paste();
        EXPECT_EQ(observations.model()->rowCount(), 3);
        click(widget<QWidget>(dialog, "Observation_Option_1"));
        press(dialog, "cmdOK");
    });
    const grid::MonitoringList list = grid::Read_Monitoring_Points(files());
    EXPECT_EQ(list.bores[1].Name, "Borehole");
    EXPECT_TRUE(list.bores[1].Active);
    EXPECT_EQ(list.bores[1].Layer, 3);
    ASSERT_EQ(list.observations.size(), 3U);
    EXPECT_EQ(list.observations[2].Bore_Name, "C");
    EXPECT_EQ(list.observations[0].Weight, 0);
    EXPECT_EQ(list.Observation_Option, 2);
    EXPECT_FALSE(user.is_busy());
}

TEST_F(TableDialogs, monitoring_lists_are_exchanged_and_cleared) {
    const auto& [bores, observations] = std::pair(folder.path() / "p.bor", folder.path() / "o.obs");
    folder.write("none.bor", "BALDO\r\n");
    in_dialog("estimation_observations", "ObservationList", [&](QDialog& dialog) {
        auto& tabs = widget<QTabWidget>(dialog, "Tabs");
        const auto button = [&](const char* name) {
            click(*tabs.currentWidget()->findChild<QPushButton*>(name));
        };
        type(table_of(dialog, "Bores"), 1, "X", "5");
        user.expect_file("Save Boreholes As", bores);
        button("Save_Button");
        type(table_of(dialog, "Bores"), 1, "X", "6");
        user.expect_file("Save Boreholes As", bores);
        user.expect_question("Save Boreholes As", "File exist '" + bores.string() + "' overwrite ?",
                             base::Answer::no);
        button("Save_Button");
        user.expect_file("Load Bore File", folder.path() / "none.bor");
        user.expect_message("Load Bore File", "The file " + (folder.path() / "none.bor").string() +
                                                  " does not contain the borehole data.");
        button("Load_Button");
        const char* question = "This will clear the Table of Boreholes. Continue?";
        user.expect_question("Tervex Desk", question, base::Answer::no);
        button("Clear_Button");
        user.expect_question("Tervex Desk", question, base::Answer::yes);
        button("Clear_Button");
        EXPECT_EQ(cell(table_of(dialog, "Bores"), 1, "X").data().toString(), "0");
        user.expect_file("Load Bore File", bores);
        button("Load_Button");
        EXPECT_EQ(cell(table_of(dialog, "Bores"), 1, "X").data().toString(), "5");

        tabs.setCurrentIndex(1);
        button("Add_Button");
        user.expect_file("Save Observations As", observations);
        button("Save_Button");
        user.expect_question("Tervex Desk", "This will clear the Table of Observations. Continue?",
                             base::Answer::yes);
        button("Clear_Button");
        EXPECT_EQ(table_of(dialog, "Observations").model()->rowCount(), 0);
        user.expect_file("Load Observation File", bores);
        user.expect_message("Load Observation File", "The file " + bores.string() +
                                                         " does not contain the observation data.");
        button("Load_Button");
        user.expect_file("Load Observation File", observations);
        button("Load_Button");
        EXPECT_EQ(table_of(dialog, "Observations").model()->rowCount(), 1);
        press(dialog, "cmdCancel");
    });
    EXPECT_TRUE(folder.read("p.bor").starts_with("BALDO5000_BOR_FILE\r\n"));
}

} // namespace
