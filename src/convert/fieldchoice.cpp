#include "convert/fieldchoice.h"

#include "base/paths.h"
#include "base/textfile.h"
#include "results/names.h"
#include "results/streamreader.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace convert {

namespace fs = std::filesystem;

namespace {

constexpr BoxInfo box_table[] = {
    {Box::pres, "Pressure", "# PRES", ValueForm::absolute},
    {Box::por, "Porosity", "# POR", ValueForm::absolute},
    {Box::density, "Density", "# DICHTE", ValueForm::plain},
    {Box::perm, "Permeability", "# PERM", ValueForm::absolute},
    {Box::head, "HydraulicHead", "# PHI", ValueForm::plain},
    {Box::vectors, "FlowVectors", "# VX", ValueForm::plain},
    {Box::temp, "Temperature", "# TEMP", ValueForm::plain},
};
constexpr const char* velocities[] = {"# VX", "# VY", "# VZ"};
constexpr int last_block = 99;
constexpr std::string_view substance_key = "# CONC", mineral_key = "# CONCM";
constexpr std::string_view name_companions[] = {".dhf", ".nkf", ".flu", ".mco", ".dhm", ".nkm"};
constexpr std::size_t longest_part = 40; // characters

bool has_names(const core::ModelFiles& files) {
    return std::ranges::any_of(name_companions,
                               [&](std::string_view extension) { return files.has(extension); });
}

// The companions of a run of a period series are those of the series.
std::optional<fs::path> series_project(const fs::path& result) {
    const std::string base = result_base(base::absolute_path(result)).string();
    const std::size_t word = base.rfind("PERIOD");
    if (word == std::string::npos) {
        return std::nullopt;
    }
    const fs::path stem = base.substr(0, word);
    const fs::path named = stem.has_filename() ? stem : stem / result_base(result).filename();
    return named.string() + ".td1";
}

results::StreamNames names_of(results::StreamReader& stream, const core::ModelFiles& files,
                              const core::ModelFiles& beside, base::Interaction& user) {
    stream.rewind();
    if (!stream.JumpToPos("# ANZSUBS")) {
        return {};
    }
    if (has_names(beside)) {
        return results::read_names(stream, beside, user);
    }
    // A model that is open for writing cannot be opened once more.
    const auto series = series_project(stream.file());
    if (series && *series != files.project() && *series != beside.project()) {
        if (const core::ModelFiles own(*series, core::Access::read); has_names(own)) {
            return results::read_names(stream, own, user);
        }
    }
    return results::read_names(stream, files, user);
}

std::string listed_name(const std::vector<results::NamedBlock>& list, int number,
                        std::string_view family) {
    const auto found = std::ranges::find(list, number, &results::NamedBlock::number);
    return found == list.end() || found->name.empty() ? fmt::format("{} {}", family, number)
                                                      : found->name;
}

ChosenBlock substance(int number, const results::StreamNames& names) {
    ChosenBlock block{"pH", results::numbered_key(substance_key, number), ValueForm::pH, {}};
    if (!names.shown_as_pH(number)) {
        block.form = ValueForm::plain;
        block.name = number > names.components && number <= names.substances
                         ? fmt::format("Tracer-{}", number - names.components)
                         : listed_name(names.species, number, "Species");
    }
    return block;
}

ChosenBlock tracer(int number, const results::StreamNames& names) {
    return {fmt::format("Tracer-{}", number),
            results::numbered_key(substance_key, names.components + number),
            ValueForm::plain,
            {}};
}

ChosenBlock mineral(int number, const results::StreamNames& names) {
    return {listed_name(names.all_minerals, number, "Mineral"),
            results::numbered_key(mineral_key, number),
            ValueForm::plain,
            {}};
}

std::optional<std::uint64_t> place_of(results::StreamReader& stream, const std::string& key) {
    stream.rewind();
    return stream.JumpToPos(key) ? std::optional(stream.position()) : std::nullopt;
}

// Those that are there, as they follow each other in the file.
void keep_present(std::vector<ChosenBlock>& blocks, results::StreamReader& stream) {
    std::vector<std::pair<std::uint64_t, ChosenBlock>> present;
    for (ChosenBlock& block : blocks) {
        if (const auto place = place_of(stream, block.key)) {
            present.emplace_back(*place, std::move(block));
        }
    }
    std::ranges::stable_sort(present, {}, [](const auto& entry) { return entry.first; });
    blocks.clear();
    for (auto& entry : present) {
        blocks.push_back(std::move(entry.second));
    }
}

// One file for each block: none twice, and none under the name of another one.
void make_unique(std::vector<ChosenBlock>& blocks) {
    std::set<std::string> keys, names;
    std::erase_if(blocks, [&](const ChosenBlock& block) {
        return block.key.empty() || !keys.insert(block.key).second;
    });
    for (ChosenBlock& block : blocks) {
        const std::string wanted = block.name;
        for (int n = 2; !names.insert(base::lower(file_name_part(block.name))).second; ++n) {
            block.name = fmt::format("{}_{}", wanted, n);
        }
    }
}

std::vector<int> up_to(int last) {
    std::vector<int> numbers;
    for (int n = 1; n <= last; ++n) {
        numbers.push_back(n);
    }
    return numbers;
}

} // namespace

std::span<const BoxInfo> boxes() {
    return box_table;
}

std::span<const char* const> velocity_keys() {
    return velocities;
}

bool FieldChoice::has(Box box) const {
    return all || std::ranges::find(boxes, box) != boxes.end();
}

std::optional<base::Refusal> FieldChoice::refusal() const {
    if (!ugradT || (has(Box::temp) && has(Box::vectors))) {
        return std::nullopt;
    }
    return base::Refusal{"Parameter missing", "To calculate u.grad(T), Temperature and Fluid "
                                              "Vectors need to be converted."};
}

std::vector<ChosenBlock> chosen_blocks(results::StreamReader& stream, const FieldChoice& choice,
                                       const core::ModelFiles& files,
                                       const core::ModelFiles& beside, base::Interaction& user) {
    std::vector<ChosenBlock> blocks;
    for (const BoxInfo& info : box_table) {
        if (choice.has(info.box)) {
            blocks.push_back({info.name, info.key, info.form, info.box});
        }
    }
    const bool any_named = choice.all || !choice.species.empty() || !choice.tracers.empty() ||
                           !choice.minerals.empty();
    const results::StreamNames names =
        any_named ? names_of(stream, files, beside, user) : results::StreamNames();
    const auto add = [&](const std::vector<int>& numbers, auto make) {
        for (const int number : choice.all ? up_to(last_block) : numbers) {
            blocks.push_back(make(number, names));
        }
    };
    add(choice.species, substance);
    add(choice.tracers, tracer);
    add(choice.minerals, mineral);
    if (choice.all) {
        keep_present(blocks, stream);
    }
    make_unique(blocks);
    stream.rewind();
    return blocks;
}

std::string file_name_part(std::string_view name) {
    constexpr std::string_view unsafe = "\\/:*?\"<>|";
    std::string part = base::first_characters(name, longest_part);
    std::ranges::replace_if(
        part,
        [&](char c) {
            return unsafe.find(c) != std::string_view::npos ||
                   static_cast<unsigned char>(c) < ' ' || c == '\x7F';
        },
        '_');
    return part;
}

fs::path result_base(const fs::path& result) {
    constexpr std::size_t ending = 4;
    const std::string name = result.filename().string();
    return name.size() > ending && name[name.size() - ending] == '.'
               ? result.parent_path() / name.substr(0, name.size() - ending)
               : result;
}

fs::path vtk_file(const fs::path& result, std::string_view name) {
    return fmt::format("{}-{}.vtk", result_base(result).string(), file_name_part(name));
}

} // namespace convert
