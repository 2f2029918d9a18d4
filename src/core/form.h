// A dialog without its picture: fields under their control names, with the dialog's rules.
//
// The desktop program binds widgets to a form, the headless program fills it from its options; both
// then check(), ask() and save() it.
#pragma once

#include "base/interaction.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace core {

class ModelFiles;
class Project;

enum class FieldKind {
    text,   // stored as typed, without blanks round it
    number, // a text that is read by its numeric prefix
    check,  // "0" or "1"
    choice, // index of the chosen item, from 0
    slider, // integer
};

struct FieldInfo {
    const char* name; // of the control
    FieldKind kind;
    const char* label;
    std::span<const char* const> choices = {};
    const char* unit = "";
    const char* initial = ""; // of a check, choice or slider: "0" when empty
};

// A box that a change of a field raises; the change stands.
struct Notice {
    base::Icon icon = base::Icon::warning;
    std::string title;
    std::string text;
};

class Form {
public:
    virtual ~Form() = default;

    virtual std::span<const FieldInfo> fields() const = 0;

    // Fills the fields from the model's files; missing files count as their defaults.
    virtual void load(const Project& project, const ModelFiles& files) = 0;

    // The field's text; an unknown name is a RangeFailure.
    const std::string& get(std::string_view name) const;
    bool checked(std::string_view name) const { return get(name) == "1"; }
    // Sets a field and applies the rules that hang on it. Blanks round `text` are dropped;
    // any number but 0 switches a check on. An unknown name is a RangeFailure.
    std::vector<Notice> set(std::string_view name, std::string_view text);

    virtual bool enabled(std::string_view name) const;

    // What OK refuses, before anything is written.
    virtual std::optional<base::Refusal> check() const { return std::nullopt; }
    // The questions of OK, before anything is written. False: the user said No.
    virtual bool ask(base::Interaction& user) const;
    // Writes the form into the model: flags, project values and companion files.
    virtual void save(Project& project, ModelFiles& files) = 0;
    // What OK reports after it has saved.
    virtual std::vector<Notice> saved_notices() const { return {}; }

protected:
    // Puts every field to its initial text.
    void reset_fields();
    void put(std::string_view name, std::string_view text);
    // Called by set() after the field has its new text.
    virtual std::vector<Notice> changed(std::string_view name);

private:
    std::map<std::string, std::string, std::less<>> values_;
};

// A form whose main part is a table. Columns have names as fields have; rows count from 1.
class TableForm : public Form {
public:
    virtual std::span<const FieldInfo> columns() const = 0;
    virtual int rows() const = 0;
    virtual std::string cell(int row, std::string_view column) const = 0;
    // Refused: the cell keeps its old text.
    virtual std::optional<base::Refusal> set_cell(int row, std::string_view column,
                                                  std::string_view text) = 0;
    // The same text in all rows. Gives the first refusal; rows that do not refuse have the text.
    virtual std::optional<base::Refusal> set_all(std::string_view column, std::string_view text);
};

} // namespace core
