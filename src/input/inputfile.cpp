#include "input/inputfile.h"

#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "input/boundaries.h"
#include "input/creation.h"
#include "input/gridblocks.h"
#include "input/inputarrays.h"
#include "input/recharge.h"
#include "input/settingblocks.h"
#include "input/wellblocks.h"
#include "sim/rockfile.h"
#include "sim/typfile.h"

#include <string>
#include <vector>

namespace input {

namespace {

using Setting = std::string TervexSteuerzeichen::*;
using Write = void (*)(Creation&);

// One row of the keyword order: a key line with a fixed text, with a setting, or with values that a
// function writes; or several blocks that a function writes with their key lines.
struct Row {
    const char* keyword = nullptr;
    const char* text = nullptr;
    Setting setting = nullptr;
    Write values = nullptr;
    Write blocks = nullptr;

    constexpr Row(const char* key, const char* fixed) : keyword(key), text(fixed) {}
    constexpr Row(const char* key, Setting stored) : keyword(key), setting(stored) {}
    constexpr Row(const char* key, Write write) : keyword(key), values(write) {}
    constexpr explicit Row(Write write) : blocks(write) {}
};

using Typ = TervexSteuerzeichen;

// The settings are read once, when the title stands. They stay unknown when their file is damaged.
void read_settings(Creation& creation) {
    creation.attempt("TervexSteuerzeichen", [&creation] {
        creation.settings.emplace(sim::TypFile::load(creation.files), creation.project.flags);
    });
}

void columns(Creation& creation) {
    creation.stream.tabbed_integer_line(creation.grid.I0());
}
void rows(Creation& creation) {
    creation.stream.tabbed_integer_line(creation.grid.J0());
}
void layers(Creation& creation) {
    creation.stream.tabbed_integer_line(creation.grid.K0());
}

void STAT(Creation& creation) {
    creation.stream.text_line(creation.project.transient() ? "INST" : "STAT");
}

void CONTROLF(Creation& creation) {
    creation.stream.integer_line(creation.project.flags.SolverControlFlow());
}
void CONTROLT(Creation& creation) {
    creation.stream.integer_line(creation.project.flags.SolverControlHeat());
}
void CONTROLS(Creation& creation) {
    creation.stream.integer_line(creation.project.flags.SolverControlTransport());
}

void flow_boundary(Creation& creation) {
    Boundary(creation, Process::flow);
}
void heat_boundary(Creation& creation) {
    Boundary(creation, Process::heat);
}
void transport_boundary(Creation& creation) {
    Boundary(creation, Process::transport);
}

void ANZCHEM(Creation& creation) {
    creation.stream.integer_line(creation.ChemicalSpecies());
}

void FRACEXP(Creation& creation) {
    for (int exponent = 0; exponent < 3; ++exponent) {
        creation.stream.text_line("1.");
    }
}

void zeros(Creation& creation) {
    all_cells(creation, "0.");
}
void water_density(Creation& creation) {
    all_cells(creation, "1000.");
}

void ANISOI(Creation& creation) {
    Matrix_Parameter(creation, {.line = sim::rock::ANISOI});
}
void ANISOJ(Creation& creation) {
    Matrix_Parameter(creation, {.line = sim::rock::ANISOJ});
}
void XANG(Creation& creation) {
    Matrix_Parameter(creation, {.line = sim::rock::XANG});
}
void YANG(Creation& creation) {
    Matrix_Parameter(creation, {.line = sim::rock::YANG});
}
// MJ/(m3 K) become J/(m3 K) by the exponent alone.
void RHOCM(Creation& creation) {
    Matrix_Parameter(creation,
                     {.line = sim::rock::RhoCm, .without_point = ".E6", .with_point = "E6"});
}
void WLFM0(Creation& creation) {
    Matrix_Parameter(creation, {.line = sim::rock::Cond, .marked_by_sign = true});
}
void HPR(Creation& creation) {
    Matrix_Parameter(creation, {.line = sim::rock::HPF});
}
void WLXANI(Creation& creation) {
    Matrix_Parameter(creation, {.line = sim::rock::WLXANI});
}
void WLYANI(Creation& creation) {
    Matrix_Parameter(creation, {.line = sim::rock::WLYANI});
}

// The order of the keywords of a model without chemistry.
constexpr Row keyword_order[] = {
    {"TITLE", TITLE},
    Row(read_settings),
    {"IPUTDI", &Typ::IPUTDI},
    {"LINFO", &Typ::LINFO},
    {"I0", columns},
    {"J0", rows},
    {"K0", layers},
    {"IDIM", columns},
    {"JDIM", rows},
    {"KDIM", layers},
    {"KEY", &Typ::KEY},
    {"STAT", STAT},
    {"KOPLNG", &Typ::KOPLNG},
    {"KOPPX_FLAG", KOPPX_FLAG},
    {"KOPPX_FIELD", KOPPX_FIELD},
    {"WARNG", "WARN"},
    {"MXIT", &Typ::MXIT},
    {"NPER", NPER},
    Row(Write_PICARD), // PICARD, CHI, MAXPICARDIT, ABSPICARDF, ABSPICARDT, ABSPICARDS
    {"RHOF", &Typ::RHOF},
    {"TREF", "20.0000"},
    {"CREF", "120.000"},
    Row(flow_boundary), // TOPF, BASEF, SEITEF
    Row(K_N_FREE),      // NFREE, KFREE
    {"IFLO", "MASS"},
    {"IQRE", IQRE},
    {"GRAV", "9.80665"},
    {"COMPF", "0.460000E-09"},
    Row(COMPM), // COMPM or COMP3D
    {"VBASAL", "0.0"},
    {"ERRF", &Typ::ERRF},
    {"OMF", &Typ::OMF},
    {"APARF", &Typ::APARF},
    {"CONTROLF", CONTROLF},
    Row(heat_boundary), // TOPT, BASET, SEITET
    Row(Rock_Capacity), // CMA1, CMA2, CMA3
    {"HPF", &Typ::HPF},
    {"QTOP3D", QTOP3D},
    {"QBASAL3D", QBASAL3D},
    {"OMT", &Typ::OMT},
    {"APART", &Typ::APART},
    {"CONTROLT", CONTROLT},
    {"ERRT", &Typ::ERRT},
    Row(transport_boundary),   // TOPS, BASES, SEITES
    Row(Transport_Properties), // MDIFS1, MDIFD1, MDIFD2, MDIFD3, DIFTS1, DIFLS1
    {"ERRS", &Typ::ERRS},
    {"OMS", &Typ::OMS},
    {"APARS", &Typ::APARS},
    {"CONTROLS", CONTROLS},
    Row(BOX), // only with multiple continua
    {"ANZSUBS", ANZSUBS},
    {"BETAC", BETAC},
    {"ANZCHEM", ANZCHEM},
    {"ANZMINS", "0"},
    {"FRACEXP", FRACEXP},
    {"IZV", "100*0"},
    {"SIEQ", "20*0.0"},
    {"VMOL", "20*0.0"},
    {"AO", "20*0."},
    {"EACT", "20*0."},
    {"RATE", "20*0."},
    {"NWELAR", Set_NWELAR},
    Row(Time_Parameter), // DELTATMP, TMAXAR, DELTAR
    {"TCON", TCON},
    {"SCON", SCON},
    {"IWL", IWL},
    {"WELLAR", WELLAR},
    {"PUMPAR", "10000*0."},
    Row(Monitoring), // PMONIX, PMONIY, PMONIZ
    {"PMONIFR", PMONIFR},
    {"DELX", DELX},
    {"DELY", DELY},
    {"DELZ", DELZ},
    {"GEOLOGY", GEOLOGY},
    {"PRES", PRES},
    {"POR", POR},
    Row(Permafrost_Arrays), // ICE, TSOL, TLIQ, only with permafrost
    {"DICHTE", water_density},
    {"PERM", PERM},
    {"RHOCF", zeros},
    {"PHI", PHI},
    Row(Velocities), // VX, VY, VZ
    {"QRE", QRE},
    {"QRELR", QRELR},
    {"QREVH", QREVH},
    {"ANISOI", ANISOI},
    {"ANISOJ", ANISOJ},
    {"TEMP", TEMP},
    {"RHOCM", RHOCM},
    {"WLFM0", WLFM0},
    {"WLXANI", WLXANI},
    {"WLYANI", WLYANI},
    {"XANG", XANG},
    {"YANG", YANG},
    {"HPR", HPR},
    Row(Tracer_Distribution), // CONC of each tracer
    {"AREAKT", zeros},
};

void write_row(Creation& creation, const Row& row) {
    if (row.blocks != nullptr) {
        row.blocks(creation);
    } else if (row.text != nullptr) {
        creation.block(row.keyword, row.text);
    } else if (row.values != nullptr) {
        creation.block(row.keyword, [&] { row.values(creation); });
    } else {
        creation.block(row.keyword, [&] {
            if (creation.settings) {
                creation.stream.text_line(*creation.settings.*row.setting);
            }
        });
    }
}

} // namespace

std::optional<base::Refusal> chemistry_refusal(const core::ModelFlags& flags) {
    if (flags.ChemistryMode() == 0) {
        return std::nullopt;
    }
    return base::Refusal{create_title, "This edition cannot write models with chemistry yet."};
}

std::optional<base::Refusal> decimal_refusal() {
    if (base::value_text(3.5) == "3.5") {
        return std::nullopt;
    }
    return base::Refusal{
        "Can't write TERVEX Input files",
        "Your system uses ',' instead of '.' as decimal separator.\n\n"
        "Change your Country Settings, at least for the creation of the inputfiles!\n\n"
        "After the usage of Tervex Desk you may reset them.\n\n(see installation guide)"};
}

CreatedInput CreateTervexNml(core::Project& project, core::ModelFiles& files,
                             base::Interaction& user) {
    Creation creation(project, files, user);
    for (const Row& row : keyword_order) {
        if (creation.ended()) {
            break;
        }
        write_row(creation, row);
    }
    creation.stream.finish();
    return creation.result();
}

void CreateTervexCtl(const core::ModelFiles& files, const std::filesystem::path& install) {
    const std::string& proj = files.base();
    base::replace_file(install / "tervex.ctl", base::to_text_file({
                                                   "# TERVEX Control File (generated by TD.EXE)",
                                                   "# Version 6.0 of FEB 1998S   X",
                                                   "#",
                                                   "#Insert name of default file here (of type 2):",
                                                   proj + ".nml",
                                                   "#Project:",
                                                   "#   Type:                   Number:   Suffix:",
                                                   "#   old formated type          1        .dat",
                                                   "#   new type with NAMELIST     2        .nml",
                                                   "#Insert name of project and type here:",
                                                   proj + " 3",
                                                   "# (The correct suffix will be added.)",
                                               }));
}

CreateResult CreateTervexInput(core::Project& project, core::ModelFiles& files,
                               const std::filesystem::path& install, base::Interaction& user) {
    auto refusal = decimal_refusal();
    if (!refusal) {
        refusal = chemistry_refusal(project.flags);
    }
    if (refusal) {
        return {std::move(refusal), {}};
    }
    user.status("Creating Input Files, please wait ...");
    const CreatedInput created = CreateTervexNml(project, files, user);
    project.flags.set(0, 1, created.InputError ? 1 : 0);
    project.Write_Project_File(files);
    files.commit([&] { CreateTervexCtl(files, install); });
    if (created.InputError) {
        user.message(base::Icon::warning, create_title,
                     "Error occured -> TERVEX Inputfile not complete.");
    }
    return {std::nullopt, created};
}

} // namespace input
