// The project file: the scalar settings of a model and its table of flags.
#pragma once

#include "core/modelflags.h"
#include "core/projectkeys.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace base {
class IniFile;
}

namespace core {

class ModelFiles;

// A background map of the project. Its keys in the file begin with its number.
struct DxfMap {
    int number = 1;
    std::string file;
    float shift_x = 0, shift_y = 0, factor = 1;
    int display = 0;
    std::int32_t colour = 0;
};

class Project {
public:
    // A model with no file: all defaults, and the cells that every reading sets.
    Project();

    // The keys of `bytes` over the defaults. Never fails: what is no number reads as its numeric
    // prefix or 0, an unknown key stays unread.
    static Project read(std::string_view bytes);

    // VERSION of the file; 5000 when it has none.
    int version() const { return version_; }

    // Values by section and key (any case). A key that is not in the list is a RangeFailure, and so
    // is a number of a text key or an integer of a single.
    int integer(std::string_view section, std::string_view key) const;
    float single(std::string_view section, std::string_view key) const;
    // Of a number, the text in the form of the file.
    const std::string& text(std::string_view section, std::string_view key) const;

    // The value is converted by the key's kind. A key that is not in the list is a RangeFailure.
    void set_integer(std::string_view section, std::string_view key, int value);
    void set_single(std::string_view section, std::string_view key, float value);
    void set_text(std::string_view section, std::string_view key, std::string_view value);

    // Converts `value` by the key's kind and stores it. Works for every key of the list and for
    // MENUSTATE; false for an unknown key, for VERSION and for the keys of the maps.
    bool set_from_text(std::string_view section, std::string_view key, std::string_view value);

    // Every key as it would be written, in writing order, and the keys that are only read: those of
    // the maps and, at the end of OPTIONS, THKMIN and NPRMAS.
    struct Entry {
        std::string section, key, value;
        bool written = true;
    };
    std::vector<Entry> entries() const;

    // The file's bytes: all keys put into `old_bytes` (empty for a new file), whose foreign keys,
    // comments, spelling and order stay.
    std::string bytes(std::string_view old_bytes) const;

    // Writes the project file through `files`, over what it holds already.
    void Write_Project_File(ModelFiles& files) const;

    ModelFlags flags;

    int NX() const { return integer("DIMENSION", "NX"); }
    int NY() const { return integer("DIMENSION", "NY"); }
    int NZ() const { return integer("DIMENSION", "NZ"); }
    // True when the model counts as transient (SIMULATION_MODE 2).
    bool transient() const { return integer("OPTIONS", "SIMULATION_MODE") == 2; }
    const std::string& title() const { return text("INFO", "DESCRIPTION"); }
    void set_title(std::string_view title) { set_text("INFO", "DESCRIPTION", title); }

    // The maps that the file names, by number. No command changes them: their keys just stay.
    const std::vector<DxfMap>& maps() const { return maps_; }

private:
    struct Value {
        std::string text; // in the form of the file
        double number = 0;
    };

    static Value converted(const KeyInfo& key, std::string_view text);
    static std::size_t index_of(std::string_view section, std::string_view key);
    double number(std::string_view section, std::string_view key, KeyKind widest) const;
    void read_values(const base::IniFile& file);
    void read_flags(const base::IniFile& file);
    void set_cells_of_reading();
    std::string written_text(std::size_t index) const;

    std::vector<Value> values_; // by index of project_keys()
    std::vector<DxfMap> maps_;
    int version_ = 5000;
};

// `title` with the prefix of the grid's orientation ("Horizontal - ", "Vertical - ",
// "Cylindrical - ", "GHE - ") in place of an older one of these four; at most 132 characters.
std::string with_orientation_prefix(std::string_view title, int GridOrientation);

} // namespace core
