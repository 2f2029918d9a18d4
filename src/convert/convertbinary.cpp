#include "convert/convertbinary.h"

#include "base/interaction.h"
#include "base/textfile.h"
#include "convert/modelgrid.h"
#include "convert/resultcache.h"
#include "report/attempt.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace convert {

using results::Field;
using results::FieldOrder;
using results::StreamGrid;
using results::StreamReader;

namespace {

struct Fixed {
    int number;
    const char* caption; // of the check box
    const char* shown;   // while it is converted
};

constexpr std::array<Fixed, 9> fixed_boxes = {{{1, "Temperature", "Temperature"},
                                               {2, "Pressure", "Pressure"},
                                               {3, "Porosity", "Porosity"},
                                               {4, "Permeability", "Permeability"},
                                               {5, "Density", "Density"},
                                               {6, "Head", "Head"},
                                               {7, "Velocity (Vx)", "Velocity(X)"},
                                               {8, "Velocity (Vy)", "Velocity(Y)"},
                                               {9, "Velocity (Vz)", "Velocity(Z)"}}};
constexpr int last_fixed = 9, tracers = 5;
constexpr std::string_view tracer_name = "TRACER";
constexpr double seconds_of_a_day = 86400;

std::string shown_name(int number) {
    return number > last_fixed ? fmt::format("Tracer {}", number - last_fixed)
                               : fixed_boxes[static_cast<std::size_t>(number) - 1].shown;
}

std::string key_of(int number) {
    return number > last_fixed
               ? results::numbered_key("# CONC", number - last_fixed)
               : results::fixed_parameters()[static_cast<std::size_t>(number) - 1].keyword;
}

float Umrechnungen(int Number, float Value) {
    if (Number >= 2 && Number <= 4) {
        return std::abs(Value);
    }
    return Number >= 7 && Number <= last_fixed
               ? static_cast<float>(double{Value} * seconds_of_a_day)
               : Value;
}

Field ReadArray(StreamReader& stream, int Number, const StreamGrid& grid, base::Interaction& user) {
    const std::string Key = key_of(Number);
    stream.rewind();
    if (!stream.find_prefix(Key)) {
        throw base::FileFailure(fmt::format("has no block \"{}\"", Key), stream.file());
    }
    return results::read_field(
        stream, grid, FieldOrder::viewer, results::RepeatCount::rounded_32, Key,
        [Number](std::span<float> row) {
            std::ranges::transform(row, row.begin(),
                                   [Number](float value) { return Umrechnungen(Number, value); });
        },
        user);
}

// Nothing, once the user knows why, when the block cannot be read.
std::optional<Field> read_or_tell(StreamReader& stream, int number, const StreamGrid& grid,
                                  base::Interaction& user) {
    user.status(fmt::format("Converting {} Data, please wait ...", shown_name(number)));
    std::optional<Field> field;
    report::attempt(user, "ReadArray", [&] { field = ReadArray(stream, number, grid, user); });
    return field;
}

} // namespace

std::optional<int> number_of_cached(std::string_view name) {
    for (const results::FixedParameter& fixed : results::fixed_parameters()) {
        if (name == fixed.code) {
            return fixed.number;
        }
    }
    for (int n = 1; n <= tracers; ++n) {
        if (name == fmt::format("{}{}", tracer_name, n)) {
            return last_fixed + n;
        }
    }
    return std::nullopt;
}

std::string cached_caption(float number) {
    constexpr float largest = last_fixed + 99;
    if (!(number >= 1 && number <= largest) || number != std::floor(number)) {
        return {};
    }
    const int whole = static_cast<int>(number);
    return whole > last_fixed ? fmt::format("Tracer {}", whole - last_fixed)
                              : fixed_boxes[static_cast<std::size_t>(whole) - 1].caption;
}

std::optional<base::Refusal> ConvertBinary(const core::Project& project,
                                           const std::filesystem::path& sFileNLO,
                                           const std::set<int>& numbers, base::Interaction& user) {
    StreamReader stream(sFileNLO);
    const StreamGrid grid = model_grid(project);
    if (auto refusal = grid_refusal(stream, grid, convert_binary_title)) {
        return refusal;
    }
    CacheUpdate cache(sFileNLO, grid);
    bool any = false;
    for (const int number : numbers) {
        const std::optional<Field> field = read_or_tell(stream, number, grid, user);
        if (!field) {
            break;
        }
        cache.SaveArray(number, *field);
        any = true;
    }
    if (any) {
        stream.require_unchanged();
        cache.commit();
    }
    return std::nullopt;
}

} // namespace convert
