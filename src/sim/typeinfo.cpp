#include "sim/typeinfo.h"

#include "core/modelfiles.h"
#include "core/project.h"
#include "sim/fieldvalue.h"
#include "sim/typfile.h"

#include <algorithm>

namespace sim {

namespace {

using core::FieldInfo;
using core::FieldKind;

constexpr const char* levels[] = {"limited run-time information", "full run-time information",
                                  "minimum run-time information", "no run-time information",
                                  "on screen information (PC front-end)"};
constexpr std::string_view level_letters = "01235";
constexpr int level_count = int(level_letters.size());

constexpr FieldInfo field_table[] = {
    {"InfoLevel", FieldKind::choice, "", levels, "", "1"},
    {"chkProtocol", FieldKind::check, "Protocol (<projectname>.p(xx))", {}, "", "1"},
    {"chkPLT3D", FieldKind::check, "PLT3D (<projectname>.plt)", {}, "", "1"},
    {"chkGnuPlot", FieldKind::check, "GnuPlot (<projectname>.g(xx))", {}, "", "1"},
    {"chkTecPlot", FieldKind::check, "TecPlot (<projectname>.t(xx))", {}, "", "1"},
    {"chkTecPlot2", FieldKind::check, "TecPlot", {}, "", "1"},
    {"chkVtk", FieldKind::check, "vtk file (<projectname>.vtk)", {}, "", "1"},
    {"chkThermal", FieldKind::check, "Thermal Prop. (<projectname>.thm)", {}, "", "1"},
    {"chkDHChemistry", FieldKind::check, "   DH-Chemistry", {}, "", "0"},
};

// A group of IPUTDI: its digits when the files are written, "X" in its first place when not.
struct FileGroup {
    const char* check;
    std::string_view digits;
};
constexpr FileGroup file_groups[] = {
    {"chkProtocol", "12"}, {"chkPLT3D", "3"}, {"chkGnuPlot", "45"},   {"chkTecPlot", "6"},
    {"chkTecPlot2", "7"},  {"chkVtk", "8"},   {"chkThermal", "9012"},
};

} // namespace

char info_letter(int index) {
    return level_letters[std::size_t(std::clamp(index, 0, level_count - 1))];
}

int info_index(char letter) {
    const std::size_t at = level_letters.find(letter);
    return at == std::string_view::npos ? 1 : int(at);
}

TypeInfo::TypeInfo() {
    reset_fields();
}

std::span<const FieldInfo> TypeInfo::fields() const {
    return field_table;
}

void TypeInfo::load(const core::Project& project, const core::ModelFiles& files) {
    reset_fields();
    const TypFile typ_file = TypFile::load(files);
    const std::string LINFO = typ_file.LINFO();
    put("InfoLevel", std::to_string(info_index(LINFO.empty() ? ' ' : LINFO.front())));
    const std::string IPUTDI = typ_file.IPUTDI();
    std::size_t place = 0;
    for (const FileGroup& group : file_groups) {
        put(group.check, check_text(IPUTDI.substr(std::min(place, IPUTDI.size()), 1) ==
                                    group.digits.substr(0, 1)));
        place += group.digits.size();
    }
    DH_Chemistry_ = project.flags(10, 12) == 1;
    put("chkDHChemistry", check_text(DH_Chemistry_));
}

std::vector<core::Notice> TypeInfo::changed(std::string_view name) {
    if (name != "chkDHChemistry")
        return {};
    const bool switched_on = checked(name) && !DH_Chemistry_;
    DH_Chemistry_ = checked(name);
    if (!switched_on)
        return {};
    return {{base::Icon::warning, "Output File DH-Chemistry",
             "The file dhcall.out is for debugging only and can become very large."}};
}

std::string TypeInfo::IPUTDI() const {
    std::string text;
    for (const FileGroup& group : file_groups) {
        const std::size_t place = text.size();
        text += group.digits;
        if (!checked(group.check))
            text[place] = 'X';
    }
    return text;
}

std::string TypeInfo::LINFO() const {
    return std::string(1, info_letter(choice_index(*this, "InfoLevel", level_count)));
}

void TypeInfo::save(core::Project& project, core::ModelFiles& files) {
    TypFile typ_file = TypFile::load(files);
    typ_file.set_line(typ::IPUTDI, IPUTDI() + LINFO());
    typ_file.save(files);
    project.flags.set(10, 12, checked("chkDHChemistry"));
    project.flags.mark_defined(9, 2);
    project.flags.mark_edited();
}

} // namespace sim
