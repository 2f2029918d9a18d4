#include "results/names.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "results/streamreader.h"
#include "sim/rockfile.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <optional>

namespace results {

namespace {

constexpr int largest_counter = std::numeric_limits<std::int16_t>::max();
constexpr int kinetic_model = 5;
constexpr std::size_t element_width = 5, mineral_width = 8, value_width = 10;
constexpr int settings_of_solution = 5; // lines between the head of a solution and its elements

// The chemistry model of the project; 0 without a project file.
int chemistry_model(const core::ModelFiles& files) {
    return files.has_file(files.project())
               ? core::Project::read(files.read_project()).flags.ActivityModel()
               : 0;
}

bool is_Debye_Hueckel(int model) {
    return model == 1 || model == 3;
}

int counter(StreamReader& stream, std::string_view word, base::Interaction& user) {
    const int count = read_counter(stream, word, user);
    if (count < 0 || count > largest_counter) {
        throw base::FileFailure(
            fmt::format("\"{}\" is {}, where 0 to {} was expected", word, count, largest_counter),
            stream.file());
    }
    return count;
}

[[noreturn]] void fail_short(const core::ModelFiles& files, std::string_view extension,
                             std::string_view head, std::size_t found, std::size_t expected) {
    throw base::FileFailure(
        fmt::format("holds {} lines behind \"{}\", where {} were expected", found, head, expected),
        files.name_of(extension));
}

// The `count` lines behind the one that begins with `head`; nothing when the model has no such
// companion.
std::optional<std::vector<std::string>> lines_behind(const core::ModelFiles& files,
                                                     std::string_view extension,
                                                     std::string_view head, std::size_t count) {
    const auto bytes = files.read_if(extension);
    if (!bytes) {
        return std::nullopt;
    }
    const std::vector<std::string> lines = base::text_lines(*bytes);
    const auto found = std::ranges::find_if(
        lines, [&](const std::string& line) { return line.starts_with(head); });
    if (found == lines.end()) {
        throw base::FileFailure(fmt::format("has no line \"{}\"", head), files.name_of(extension));
    }
    const auto rest = static_cast<std::size_t>(lines.end() - found) - 1;
    if (rest < count) {
        fail_short(files, extension, head, rest, count);
    }
    return std::vector<std::string>(found + 1, found + 1 + static_cast<std::ptrdiff_t>(count));
}

std::string left_part(const std::string& line, std::size_t width) {
    return std::string(base::trimmed(base::first_characters(line, width)));
}

using Names = std::optional<std::vector<std::string>>;

// The first `count` elements of the first solution.
Names elements_of_solution(const core::ModelFiles& files, std::size_t count) {
    const auto bytes = files.read_if(".dhf");
    if (!bytes) {
        return std::nullopt;
    }
    constexpr std::string_view head = "SOLUTION";
    const std::vector<std::string> lines = base::text_lines(*bytes);
    auto line =
        std::ranges::find_if(lines, [&](const std::string& l) { return l.starts_with(head); });
    std::vector<std::string> names;
    if (lines.end() - line > settings_of_solution) {
        for (line += settings_of_solution + 1;
             line != lines.end() && base::trimmed(*line) != "END" && names.size() < count; ++line) {
            const std::string_view element = base::trimmed(*line);
            names.emplace_back(base::trimmed(element.substr(0, element.find('\t'))));
        }
    }
    if (names.size() < count) {
        fail_short(files, ".dhf", head, names.size(), count);
    }
    return names;
}

// The components behind the hydrogen ion.
Names component_names(const core::ModelFiles& files, int model, std::size_t count) {
    if (is_Debye_Hueckel(model)) {
        return elements_of_solution(files, count);
    }
    Names names = lines_behind(files, model == kinetic_model ? ".nkf" : ".flu", "ELEMENTS", count);
    if (names) {
        std::ranges::transform(*names, names->begin(),
                               [](const auto& line) { return left_part(line, element_width); });
    }
    return names;
}

std::vector<NamedBlock> species_list(const StreamNames& names, const core::ModelFiles& files,
                                     int model) {
    std::vector<NamedBlock> list;
    if (names.components > 0) {
        list.push_back({1, "PH"});
        const auto found =
            component_names(files, model, static_cast<std::size_t>(names.components) - 1);
        for (int n = 2; n <= names.components; ++n) {
            list.push_back({n, found ? (*found)[static_cast<std::size_t>(n) - 2]
                                     : fmt::format("Species {}", n)});
        }
    }
    for (int n = names.components + 1; n <= names.substances; ++n) {
        list.push_back({n, fmt::format("Tracer {}", n - names.components)});
    }
    return list;
}

std::string_view mineral_extension(int model) {
    return is_Debye_Hueckel(model) ? ".dhm" : model == kinetic_model ? ".nkm" : ".mco";
}

// Listed are the minerals that the current fluid has an amount of; the kinetic model has them all.
void name_minerals(StreamNames& names, const core::ModelFiles& files, int model) {
    const auto lines = lines_behind(files, mineral_extension(model), "LOOK MIN",
                                    static_cast<std::size_t>(names.minerals));
    const auto column =
        lines ? static_cast<std::size_t>(sim::PropertyZonesCount(files) + 1) * value_width : 0;
    const auto is_there = [&](const std::string& line) {
        return model == kinetic_model ||
               base::leading_number(base::fixed_field(line, column, value_width)) != 0;
    };
    for (int n = 1; n <= names.minerals; ++n) {
        const std::string* const line =
            lines ? &(*lines)[static_cast<std::size_t>(n) - 1] : nullptr;
        const NamedBlock mineral{n, line != nullptr ? left_part(*line, mineral_width)
                                                    : fmt::format("Mineral {}", n)};
        names.all_minerals.push_back(mineral);
        if (line == nullptr || is_there(*line)) {
            names.mineral_blocks.push_back(mineral);
        }
    }
}

} // namespace

StreamNames read_names(StreamReader& stream, const core::ModelFiles& files,
                       base::Interaction& user) {
    StreamNames names;
    names.substances = counter(stream, "# ANZSUBS", user);
    names.components = counter(stream, "# ANZCHEM", user);
    names.minerals = counter(stream, "# ANZMINS", user);
    if (stream.at_end()) {
        stream.rewind();
    }
    const int model = names.components > 0 || names.minerals > 0 ? chemistry_model(files) : 0;
    names.species = species_list(names, files, model);
    if (names.minerals > 0) {
        name_minerals(names, files, model);
    }
    return names;
}

} // namespace results
