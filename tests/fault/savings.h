// The commands that are killed and failed, and the models that they work on.
#pragma once

#include <ostream>
#include <string>
#include <vector>

struct Saving {
    std::string name;
    std::string setup;   // command lines that make the old state, one a line
    std::string command; // as Sandbox::run takes it
    std::string input = "";
    std::string model = "@m.td1"; // that the command writes
    bool goes_on = false;         // behind a file that it cannot read
    bool linked = false;          // the project and an array lie elsewhere, behind links
    bool apart = false;           // every folder is a file system of its own
    std::string next = "";        // what settles a kill; empty: any command on the model
};

inline void PrintTo(const Saving& saving, std::ostream* out) {
    *out << saving.command;
}

// 3 columns, 2 rows, 2 layers, flow only, complete for the simulator; porosity and permeability
// come from property zones, a temperature array has a second period.
inline const std::string complete_model = R"(new @m.td1
grid set @m.td1 --columns 3 --rows 2 --layers 2 --finish
array write @m.td1 1403 --define
array write @m.td1 1403 --layer 2
array write @m.td1 5 --define
array write @m.td1 5 --layer 2
array write @m.td1 1402 --period 2
type set @m.td1 --flow 1
coupling set @m.td1
info-results set @m.td1
solver set @m.td1 bicgstab
rock set @m.td1 --zones 2 --porosity all=0.2 --permeability all=1E-12 --yes
periods set @m.td1 --unit 5
)";

inline const std::string layer_of_ones = "1 1 1 1 1 1";
inline const std::string layer_of_twos = "2 2 2 2 2 2";

// A session on porosity, whose files are there. What restores it opens the model, which has been
// opened before.
inline const std::string edit_porosity = "edit @m.td1 --param 51 --script -";
inline const std::string porosity_script = R"(set 1 2 0.5
layer 2
reset 0.25
zone add 0.1 0,0 2,0 2,2
leave yes
)";
inline const std::string restore_session = "open @m.td1 --restore";

inline std::vector<Saving> savings() {
    const std::string& whole = complete_model;
    const std::string opened =
        whole + "edit @m.td1 --param 51 --script /dev/null --yes\nopen @m.td1\n";
    const std::string set_rock = "rock set @m.td1 --porosity 1=0.3 --permeability 1=2E-12 --yes";
    return {
        {"New", "", "new @m.td1"},
        {"NewOverAnOldModel", whole, "new @m.td1 --yes"},
        {"Open", "new @m.td1", "open @m.td1"},
        {"SaveAs", whole, "save-as @m.td1 @copy.td1", "", "@copy.td1"},
        {"SaveAsOverAnOldModel", whole + "save-as @m.td1 @copy.td1\nnote set @m.td1 A B C\n",
         "save-as @m.td1 @copy.td1 --yes", "", "@copy.td1"},
        {"ProjectSet", whole, "project set @m.td1 INFO DESCRIPTION new"},
        {"NoteSet", whole, "note set @m.td1 Section Key value"},
        {"GridSet", "new @m.td1",
         "grid set @m.td1 --columns 5 --rows 4 --layers 3 --column-size 7 --finish"},
        {"GridSetOverAnOldModel", whole + "new @m.td1 --yes",
         "grid set @m.td1 --columns 5 --rows 4 --layers 3 --row-size 7 --finish"},
        {"LayersSet", whole, "layers set @m.td1 --unconfined 1 --thickness all=7"},
        {"TypeSet", whole, "type set @m.td1 --heat 1 --transport 1"},
        {"PeriodsSet", whole, "periods set @m.td1 --unit 4 --period 2 --use 1 --length 5"},
        {"RockSet", whole, set_rock},
        {"ArrayWrite", whole, "array write @m.td1 51 --layer 2 --define", layer_of_twos},
        {"ArrayWriteIntoAnOldFile", whole, "array write @m.td1 1402 --period 3 --layer 2",
         layer_of_twos},
        {"ArrayCopyPeriod", whole, "array copy-period @m.td1 1402 2 4"},
        {"PointsSet", whole, "points set @m.td1 1 --name W --active 1 --x 1 --y 1"},
        {"CreateInput", whole, "create-input @m.td1 --install %install --no", "", "@m.td1", true},
        {"CreateInputOverAnOldOne",
         whole + "create-input @m.td1 --install %install --no\nrock set @m.td1 --porosity all=0.4 "
                 "--yes\n",
         "create-input @m.td1 --install %install --no", "", "@m.td1", true},
        {"SerializedRun",
         whole + "create-input @m.td1 --install %install --no\nperiods save @m.td1 @m.nlo\n",
         "serialized-run @m.td1 --nlo @m.nlo --backup m.*.00 --no-start"},
        {"CacheBuild", whole + "create-input @m.td1 --install %install --no\n",
         "cache build @m.td1 --file @m.nml POR"},
        {"Session", opened, edit_porosity, porosity_script, "@m.td1", false, false, false,
         restore_session},
        {"SessionBehindLinks", opened, edit_porosity, porosity_script, "@m.td1", false, true, false,
         restore_session},
        {"SessionAcrossFileSystems", opened, edit_porosity, porosity_script, "@m.td1", false, true,
         true, restore_session},
        {"RockSetBehindLinks", whole, set_rock, "", "@m.td1", false, true},
        {"RockSetAcrossFileSystems", whole, set_rock, "", "@m.td1", false, true, true},
        {"GridSetAcrossFileSystems", whole + "new @m.td1 --yes",
         "grid set @m.td1 --columns 5 --rows 4 --layers 3 --row-size 7 --finish", "", "@m.td1",
         false, false, true},
    };
}
