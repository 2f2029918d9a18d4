// The dialog "Info / Results": run-time information and the files that the simulator writes.
#pragma once

#include "core/form.h"

#include <string>

namespace sim {

// The field InfoLevel holds the index of the level in the order of the dialog; LINFO of these
// levels is "0" limited, "1" full, "2" minimum, "3" none, "5" on screen.
char info_letter(int index);
// Index of a letter of LINFO; that of the full information for everything else.
int info_index(char letter);

// Stored in line 6 of .typ and, for the file dhcall.out, in ModelFlags(10,12).
class TypeInfo final : public core::Form {
public:
    TypeInfo();

    std::span<const core::FieldInfo> fields() const override;
    void load(const core::Project& project, const core::ModelFiles& files) override;
    void save(core::Project& project, core::ModelFiles& files) override;

    // What the fields stand for: twelve characters, and one.
    std::string IPUTDI() const;
    std::string LINFO() const;

protected:
    std::vector<core::Notice> changed(std::string_view name) override;

private:
    bool DH_Chemistry_ = false; // before the latest change
};

} // namespace sim
