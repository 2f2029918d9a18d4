#include "deskfixture.h"

#include "sim/typfile.h"
#include "ui/commandtables.h"
#include "ui/dialogs/settingsdialogs.h"
#include "ui/manualwindow.h"

#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QTextBrowser>

#include <map>

namespace {

class SettingsDialogs : public support::DeskFixture {
protected:
    static void press(QDialog& dialog, const char* name) {
        widget<QAbstractButton>(dialog, name).click();
    }
    static void ok(QDialog& dialog) { press(dialog, "cmdOK"); }
    static void type(QDialog& dialog, const char* name, const std::string& text) {
        support::type_into(widget<QLineEdit>(dialog, name), text);
    }
    static std::string shown(QDialog& dialog, const char* name) {
        return widget<QLineEdit>(dialog, name).text().toStdString();
    }
    static bool enabled(QDialog& dialog, const char* name) {
        return widget<QWidget>(dialog, name).isEnabled();
    }
    // OK is refused: the dialog stays, the cursor is in that field and its text selected.
    static void expect_refused(QDialog& dialog, const char* field, const std::string& text) {
        ok(dialog);
        EXPECT_TRUE(dialog.isVisible());
        ASSERT_NE(dialog.focusWidget(), nullptr);
        EXPECT_EQ(dialog.focusWidget()->objectName().toStdString(), field);
        const auto* edit = qobject_cast<QLineEdit*>(dialog.focusWidget());
        EXPECT_EQ(edit ? edit->selectedText().toStdString() : text, text);
    }

    // Line of the file, from 1.
    std::string line(int number) const {
        return sim::TypFile::load(desk.model()->files).line(number);
    }
    int flag(int row, int column) const { return desk.model()->project.flags(row, column); }

    std::map<std::string, std::string> all_files() const {
        std::map<std::string, std::string> files;
        for (const std::string& name : folder.names()) {
            if (std::filesystem::is_regular_file(folder.path() / name)) {
                files[name] = folder.read(name);
            }
        }
        return files;
    }
    // As Type|Settings does with its defaults.
    void save_settings() { in_dialog("mnuTypeSettings", "SimulationType", ok); }
    void in_command(const char* command, const char* dialog,
                    const std::function<void(QDialog&)>& work) {
        in_dialog([&] { window.run_command(command); }, dialog, work);
    }
};

struct Dialog {
    const char* command;
    const char* name;
};
constexpr Dialog dialogs[] = {
    {"mnuTypeSettings", "SimulationType"},
    {"mnuTypeCoupling", "Coupling"},
    {"mnuTypeInfo", "TypeInfo"},
    {"mnuOuterIteration", "OutIter"},
    {"mnuBiCGStab", "BiCGStab"},
    {"mnuTimeExplicitImplicit", "Explicit_Implicit"},
    {"mnuTimePLU", "PLU"},
    {"mnuFluidFlowRefDens", "RefDens"},
    {"mnuHeatHPF", "HPF"},
    {"mnuTransportMatrix", "DiffDisp"},
    {"mnuTransportBox", "Boxmodel"},
    {"mnuInitTracerIndividual", "TracerIndividual"},
};

TEST_F(SettingsDialogs, OK_without_a_change_writes_the_same_bytes_again) {
    make_model(5, 4);
    save_settings();
    for (const Dialog& dialog : dialogs) {
        in_command(dialog.command, dialog.name, ok);
        const auto before = all_files();
        in_command(dialog.command, dialog.name, ok);
        EXPECT_EQ(all_files(), before) << dialog.name;
    }
}

TEST_F(SettingsDialogs, Escape_changes_nothing_whatever_was_typed) {
    make_model(5, 4);
    save_settings();
    for (const Dialog& dialog : dialogs) {
        const auto before = all_files();
        in_command(dialog.command, dialog.name, [](QDialog& open) {
            for (auto* edit : open.findChildren<QLineEdit*>()) {
                if (edit->isEnabled()) {
                    support::type_into(*edit, "7");
                }
            }
            for (auto* check : open.findChildren<QCheckBox*>()) {
                if (check->objectName() != "chkDHChemistry") {
                    check->toggle();
                }
            }
            QTest::keyClick(&open, Qt::Key_Escape);
        });
        EXPECT_EQ(all_files(), before) << dialog.name;
    }
}

TEST_F(SettingsDialogs, settings_have_to_be_saved_before_the_dialogs_that_need_them) {
    make_model(5, 4);
    for (const char* command : {"mnuTypeCoupling", "mnuTypeInfo", "mnuTimePLU"}) {
        user.expect_message("Message", "Check and save |Type|Settings first.");
        window.run_command(command);
    }
}

TEST_F(SettingsDialogs, the_simulation_type_becomes_the_key) {
    make_model(5, 4);
    in_dialog("mnuTypeSettings", "SimulationType", [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Definition of Simulation Type");
        EXPECT_FALSE(enabled(dialog, "HeatAdvection"));
        press(dialog, "FluidFlowCheck");
        press(dialog, "HeatCheck");
        EXPECT_TRUE(enabled(dialog, "HeatAdvection"));
        press(dialog, "HeatAdvection_2");
        press(dialog, "optPermafrost");
        press(dialog, "FlowType_1");
        ok(dialog);
    });
    EXPECT_EQ(line(sim::typ::KEY), "FI-P-");
    EXPECT_EQ(flag(10, 5), 1);
    EXPECT_EQ(flag(9, 0), 2);
}

TEST_F(SettingsDialogs, transport_alone_is_refused) {
    make_model(5, 4);
    user.expect_message("Message", "Only Transport is not possible");
    in_dialog("mnuTypeSettings", "SimulationType", [](QDialog& dialog) {
        press(dialog, "TransportCheck");
        expect_refused(dialog, "TransportCheck", "");
        press(dialog, "cmdCancel");
    });
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "m.typ"));
}

TEST_F(SettingsDialogs, full_coupling_is_all_four_and_a_law) {
    make_model(5, 4);
    save_settings();
    in_dialog("mnuTypeCoupling", "Coupling", [](QDialog& dialog) {
        EXPECT_FALSE(enabled(dialog, "PermeabilityLaw"));
        press(dialog, "CompleteCheck");
        EXPECT_TRUE(widget<QCheckBox>(dialog, "FlowTransportCheck").isChecked());
        press(dialog, "optDepRhombSpheres");
        type(dialog, "CritPor", "0.05");
        press(dialog, "chkWaterDensity");
        type(dialog, "txtPropValDensity", "990");
        ok(dialog);
    });
    EXPECT_EQ(line(sim::typ::KOPLNG), "COWP # 800.0 # 1.8 # -0.0025 # 2400");
    EXPECT_EQ(line(sim::typ::f1), "1.0 # 0.05");
    EXPECT_EQ(flag(10, 0), 1);
    EXPECT_NE(folder.read("m.izv").find("Density=\t990\r\n"), std::string::npos);

    in_dialog("mnuTypeCoupling", "Coupling", [](QDialog& dialog) {
        EXPECT_TRUE(widget<QCheckBox>(dialog, "CompleteCheck").isChecked());
        press(dialog, "FlowHeatCheck");
        EXPECT_FALSE(widget<QCheckBox>(dialog, "CompleteCheck").isChecked());
        ok(dialog);
    });
    EXPECT_EQ(line(sim::typ::KOPLNG).substr(0, 4), "-OWP");
}

TEST_F(SettingsDialogs, another_rock_coefficient_warns_once_when_its_field_is_left) {
    make_model(5, 4);
    save_settings();
    in_dialog("mnuTypeCoupling", "Coupling", [this](QDialog& dialog) {
        press(dialog, "HeatConductivityCheck");
        type(dialog, "txtA1", "2.5"); // no box while it is typed
        for (int i = 0; i < 2; ++i) {
            user.expect_message(
                "Changing Default Value",
                "Values other than 0 are only safe when the temperatures within the model domain "
                "do not exceed the valid range.");
        }
        QTest::keyClick(&widget<QLineEdit>(dialog, "txtA1"), Qt::Key_Tab);
        type(dialog, "txtA2", "0.1");
        ok(dialog); // the field was not left: its box comes now
    });
    EXPECT_EQ(line(sim::typ::KOPLNG), "---P # 800.0 # 2.5 # 0.1 # 2400");
}

TEST_F(SettingsDialogs, a_coefficient_that_is_given_up_is_not_warned_about) {
    make_model(5, 4);
    save_settings();
    for (const bool by_key : {true, false}) {
        in_dialog("mnuTypeCoupling", "Coupling", [by_key](QDialog& dialog) {
            press(dialog, "HeatConductivityCheck");
            type(dialog, "txtA1", "2.5");
            if (by_key) {
                QTest::keyClick(&widget<QLineEdit>(dialog, "txtA1"), Qt::Key_Escape);
            } else {
                support::click(widget<QPushButton>(dialog, "cmdCancel"));
            }
        });
    }
}

TEST_F(SettingsDialogs, output_files_become_the_switch_string) {
    make_model(5, 4);
    save_settings();
    user.expect_message("Output File DH-Chemistry",
                        "The file dhcall.out is for debugging only and can become very large.");
    in_dialog("mnuTypeInfo", "TypeInfo", [](QDialog& dialog) {
        press(dialog, "chkVtk");
        press(dialog, "chkProtocol");
        press(dialog, "InfoLevel_4");
        press(dialog, "chkDHChemistry");
        ok(dialog);
    });
    EXPECT_EQ(line(sim::typ::IPUTDI), "X234567X90125");
    EXPECT_EQ(flag(10, 12), 1);
}

TEST_F(SettingsDialogs, the_projection_coefficient_is_stored_as_its_slider_shows_it) {
    make_model(5, 4);
    in_dialog("mnuOuterIteration", "OutIter", [](QDialog& dialog) {
        EXPECT_FALSE(enabled(dialog, "sldProjCoeff"));
        press(dialog, "chkPicard");
        auto& slider = widget<QSlider>(dialog, "sldProjCoeff");
        QTest::keyClick(&slider, Qt::Key_Right);
        QTest::keyClick(&slider, Qt::Key_Right);
        QTest::keyClick(&slider, Qt::Key_Right);
        EXPECT_EQ(widget<QLabel>(dialog, "sldProjCoeff_value").text(), "0.3");
        type(dialog, "txtIteration", "12");
        ok(dialog);
    });
    const std::string notes = folder.read("m.izv");
    for (const char* key : {"Active=1", "Chi=0.3", "Iteration=12", "TransportLimit=0.001"}) {
        EXPECT_NE(notes.find(key), std::string::npos) << key;
    }
}

TEST_F(SettingsDialogs, NAG_refuses_a_relaxation_above_the_limit_of_the_grid) {
    make_model(1, 1);
    save_settings();
    struct Case {
        const char* field;
        const char* text;
    };
    const Case cases[] = {
        {"APARF", "Fluid flow relaxation must be smaller or equal 1.0"},
        {"APART", "Heat relaxation must be smaller or equal 1.0"},
        {"APARS", "Transport relaxation must be smaller or equal 1.0"},
    };
    in_dialog("mnuTimeExplicitImplicit", "Explicit_Implicit", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QWidget*>("optFlowCond"), nullptr);
        for (const Case& refused : cases) {
            user.expect_message("Over the limit", refused.text);
            type(dialog, refused.field, "1.1");
            expect_refused(dialog, refused.field, "1.1");
            type(dialog, refused.field, "1.0");
        }
        widget<QSlider>(dialog, "HeatSlider").setValue(7);
        EXPECT_EQ(widget<QLabel>(dialog, "HeatSlider_value").text(), "0.7");
        press(dialog, "optHeatTerm_2");
        ok(dialog);
    });
    EXPECT_EQ(line(sim::typ::OMT), "0.7");
    EXPECT_EQ(flag(8, 5) / 256, 2);
    EXPECT_EQ(flag(9, 3), 2);
}

TEST_F(SettingsDialogs, BiCGStab_and_PLU_have_no_limit_and_mark_themselves) {
    make_model(1, 1);
    save_settings();
    in_dialog("mnuBiCGStab", "BiCGStab", [](QDialog& dialog) {
        type(dialog, "APARF", "5");
        type(dialog, "NoIteration", "300");
        press(dialog, "optFlowCond_2");
        press(dialog, "optFlowTerm_1");
        ok(dialog);
    });
    EXPECT_EQ(line(sim::typ::APARF), "5");
    EXPECT_EQ(line(sim::typ::MXIT), "300");
    EXPECT_EQ(flag(8, 4), 2 + 16 * 2 + 256 * 1);
    in_dialog("mnuTimePLU", "PLU", ok);
    EXPECT_EQ(flag(8, 4), 3 + 16 * 2 + 256 * 1);
    EXPECT_EQ(flag(7, 3), 2);
    EXPECT_EQ(flag(8, 3), 0);
}

TEST_F(SettingsDialogs, single_values_are_stored_as_typed) {
    make_model(5, 4);
    save_settings();
    in_command("mnuFluidFlowRefDens", "RefDens", [](QDialog& dialog) {
        EXPECT_FALSE(enabled(dialog, "Text1"));
        press(dialog, "Check1");
        type(dialog, "Text1", "1002.5");
        QTest::keyClick(&widget<QLineEdit>(dialog, "Text1"), Qt::Key_Return);
    });
    EXPECT_EQ(line(sim::typ::RHOF), "1002.5");
    in_command("mnuHeatHPF", "HPF", [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Fluid Heat Production");
        type(dialog, "Value", "1E-6");
        ok(dialog);
    });
    EXPECT_EQ(line(sim::typ::HPF), "1E-6");
    in_command("mnuTransportMatrix", "DiffDisp", [](QDialog& dialog) {
        EXPECT_EQ(shown(dialog, "DIFTS1_Value"), "2.00");
        type(dialog, "DIFLS1_Value", "20");
        ok(dialog);
    });
    EXPECT_EQ(folder.read("m.tma"), "0.5,2.00,20\r\n");
}

TEST_F(SettingsDialogs, continua_are_checked_as_typed_and_saved) {
    make_model(5, 4);
    user.expect_message("Calculated permeability and porosity",
                        "System A\nPorosity = 1.00E-03\nPermeability = 1.25E-10\n\n"
                        "System B\nPorosity = 0.00E+00\nPermeability = 0.00E+00\n\n"
                        "System C\nPorosity = 0.00E+00\nPermeability = 0.00E+00\n\n"
                        "System D\nPorosity = 0.00E+00\nPermeability = 0.00E+00\n\n"
                        "Exchange parameter A-B (m²) = 0.00E+00\n"
                        "Exchange parameter B-C (m²) = 0.00E+00\n"
                        "Exchange parameter C-D (m²) = 0.00E+00\n"
                        "\nExchange coefficients calculated based on\n"
                        "permeability ratio, fracture density of the smaller system\n"
                        "and unity cell length.");
    in_command("mnuTransportBox", "Boxmodel", [](QDialog& dialog) {
        EXPECT_EQ(shown(dialog, "txtPropZones"), "-");
        press(dialog, "chkBox");
        type(dialog, "txtPropZones", "1,3");
        type(dialog, "txtDensA", "1");
        type(dialog, "txtApertA", "0.001");
        type(dialog, "txtTortA", "1");
        press(dialog, "cmdCheck");
        ok(dialog);
    });
    const std::string notes = folder.read("m.izv");
    for (const char* key : {"active=1", "P_Zones=1,3", "Dens_A=1", "Apert_A=1.000E-03"}) {
        EXPECT_NE(notes.find(key), std::string::npos) << key;
    }
}

TEST_F(SettingsDialogs, a_tracer_defined_twice_is_told_when_its_source_is_chosen) {
    make_model(5, 4);
    change([](app::Workspace& model) {
        model.project.flags.mark_defined(2, 13);
        model.project.flags.mark_defined(3, 13);
    });
    user.expect_message("Data Source for TERVEX input file",
                        "The tracer is defined both by zones and by arrays. The definition saved "
                        "last is used for the input file.");
    in_command("mnuInitTracerIndividual", "TracerIndividual", [](QDialog& dialog) {
        press(dialog, "Source_1");
        ok(dialog);
    });
    EXPECT_EQ(flag(2, 13), 0);
    EXPECT_EQ(flag(3, 13), 2);
}

TEST_F(SettingsDialogs, F1_shows_the_page_of_the_dialog) {
    make_model(5, 4);
    const bool found = ui::manual_folder().has_value();
    if (!found) {
        user.expect_message("Tervex Desk", "The manual was not found beside the program.");
    }
    in_command("mnuTransportBox", "Boxmodel", [found](QDialog& dialog) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QTest::keyClick(&dialog, Qt::Key_F1);
        const auto* page = dialog.findChild<QTextBrowser*>();
        EXPECT_EQ(found, page && page->toPlainText().contains("Multiple Continua"));
        press(dialog, "cmdCancel");
    });
}

TEST_F(SettingsDialogs, Tab_comes_to_the_chosen_one_of_radio_buttons) {
    make_model();
    in_dialog("mnuTypeSettings", "SimulationType", [](QDialog& dialog) {
        press(dialog, "FluidFlowCheck");
        press(dialog, "HeatCheck");
        press(dialog, "HeatAdvection_2");
        ok(dialog);
    });
    in_dialog("mnuTypeSettings", "SimulationType", [](QDialog& dialog) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QStringList visited;
        for (int n = 0; n < 12; ++n) {
            visited.append(dialog.focusWidget()->objectName());
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        }
        EXPECT_TRUE(visited.contains("HeatAdvection_2"));
        EXPECT_FALSE(visited.contains("HeatAdvection_0"));
        press(dialog, "cmdCancel");
    });
}

class ModelDimension : public SettingsDialogs {
protected:
    void in_dimension(const std::function<void(QDialog&)>& work) {
        ui::CommandContext context{desk, window};
        in_dialog([&] { accepted = ui::edit_grid_number(context); }, "Grid_Number", work);
    }
    bool accepted = false;
};

TEST_F(ModelDimension, OK_makes_the_mesh) {
    make_model();
    in_dimension([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Model Dimension");
        EXPECT_EQ(widget<QLineEdit>(dialog, "txtLayers").toolTip(),
                  "Define the number of layers for the model.");
        type(dialog, "txtLayers", "2");
        type(dialog, "txtColumns", "3");
        type(dialog, "txtColumnSize", "12.5");
        type(dialog, "txtRows", "1");
        ok(dialog);
    });
    EXPECT_TRUE(accepted);
    EXPECT_EQ(folder.read("m.xy"), " 3  1  2 \r\n 12.5 \r\n 12.5 \r\n 12.5 \r\n 1 \r\n");
    EXPECT_EQ(flag(1, 2), 2);
}

TEST_F(ModelDimension, every_number_is_refused_with_its_text) {
    make_model();
    struct Case {
        const char* field;
        const char* text;
        const char* title;
        const char* message;
    };
    const Case cases[] = {
        {"txtLayers", "0", "Error", "Please enter a positive value."},
        {"txtLayers", "40000", "Error", "Valid range is 1 to 32767"},
        {"txtColumns", "-1", "Error", "Please enter a positive value."},
        {"txtColumns", "2001", "Tervex Desk", "The maximumm number of columns is 2000"},
        {"txtColumnSize", "0", "Error", "Please enter a positive value."},
        {"txtRows", "abc", "Error", "Please enter a positive value."},
        {"txtRows", "2001", "Tervex Desk", "The maximumm number of rows is 2000"},
        {"txtRowSize", "-5", "Error", "Please enter a positive value."},
    };
    in_dimension([&](QDialog& dialog) {
        for (const Case& refused : cases) {
            user.expect_message(refused.title, refused.message);
            type(dialog, refused.field, refused.text);
            expect_refused(dialog, refused.field, refused.text);
            type(dialog, refused.field, "3");
        }
        press(dialog, "cmdCancel");
    });
    EXPECT_FALSE(accepted);
    EXPECT_EQ(flag(1, 2), 0);
}

TEST_F(ModelDimension, the_orientation_warns_names_the_frame_and_is_of_new_models_only) {
    make_model();
    in_dimension([this](QDialog& dialog) {
        const auto frames = dialog.findChildren<QGroupBox*>();
        ASSERT_EQ(frames.size(), 3);
        EXPECT_EQ(frames[1]->title(), "Layers");
        user.expect_message("Warning", "Layers are now understood as vertical cross sections.\n"
                                       "Once saved, this cannot be changed anymore!");
        press(dialog, "GridOrientation_1");
        EXPECT_EQ(frames[1]->title(), "Cross Sections");
        user.expect_message("Warning", "The model is now understood as cylindrical symmetric.\n"
                                       "Once saved, this cannot be changed anymore!");
        press(dialog, "GridOrientation_2");
        EXPECT_EQ(frames[1]->title(), "Cross Sections");
        press(dialog, "GridOrientation_0");
        EXPECT_EQ(frames[1]->title(), "Layers");
        ok(dialog);
    });
    EXPECT_EQ(flag(1, 4), 0);
    in_dimension([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QWidget*>("GridOrientation"), nullptr);
        press(dialog, "cmdCancel");
    });
}

TEST_F(ModelDimension, the_keyboard_goes_through_the_fields_in_reading_order) {
    make_model();
    in_dimension([](QDialog& dialog) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        const char* const order[] = {
            "GridOrientation_0", "txtLayers", "txtColumns", "txtColumnSize", "txtRows",
            "txtRowSize",        "cmdOK",     "cmdCancel",  "cmdHelp",       "GridOrientation_0"};
        for (const char* name : order) {
            EXPECT_EQ(dialog.focusWidget()->objectName().toStdString(), name);
            if (const auto* edit = qobject_cast<QLineEdit*>(dialog.focusWidget())) {
                EXPECT_EQ(edit->selectedText(), edit->text());
            }
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        }
        press(dialog, "cmdCancel");
    });
}

} // namespace
