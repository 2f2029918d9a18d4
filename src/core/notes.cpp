#include "core/notes.h"

#include "base/failure.h"
#include "base/textfile.h"
#include "core/modelfiles.h"

#include <fmt/format.h>

#include <algorithm>

namespace core {

namespace {

constexpr std::string_view extension = ".izv";
constexpr std::size_t limit = 300;

bool is_line_of_text(std::string_view name) {
    return !base::trimmed(name).empty() &&
           std::none_of(name.begin(), name.end(), [](char c) { return c >= 0 && c < ' '; });
}

bool can_be_section(std::string_view name) {
    return is_line_of_text(name) && name.find(']') == std::string_view::npos;
}

bool can_be_key(std::string_view name) {
    const std::string_view first = base::trimmed(name).substr(0, 1);
    return is_line_of_text(name) && first != "[" && first != ";" &&
           name.find('=') == std::string_view::npos;
}

} // namespace

Notes::Notes(const ModelFiles& files)
    : name_(files.name_of(extension)), file_(files.read_if(extension).value_or("")) {}

std::string Notes::get(std::string_view section, std::string_view key) const {
    return base::first_characters(file_.get(section, key).value_or(""), limit);
}

void Notes::set(std::string_view section, std::string_view key, std::string_view value) {
    if (!can_be_section(section) || !can_be_key(key)) {
        throw base::FileFailure(
            fmt::format("a note cannot have the section \"{}\" and the key \"{}\"", section, key),
            name_);
    }
    file_.set(section, key, value);
}

void Notes::save(ModelFiles& files) const {
    files.write(extension, file_.bytes());
}

std::string Get_IZV_Data(const ModelFiles& files, std::string_view section, std::string_view key) {
    return Notes(files).get(section, key);
}

void Save_IZV_Data(ModelFiles& files, std::string_view section, std::string_view key,
                   std::string_view value) {
    Notes notes(files);
    notes.set(section, key, value);
    notes.save(files);
}

} // namespace core
