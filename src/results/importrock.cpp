#include "results/importparts.h"

#include "base/interaction.h"
#include "base/numbertext.h"
#include "base/textfile.h"
#include "core/itemcells.h"
#include "core/modelfiles.h"
#include "input/simulatorfield.h"
#include "results/savedfield.h"
#include "sim/rockfile.h"
#include "sim/rockproperties.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace results {

namespace {

using sim::PropertyZonesMax;

// How the text of a value becomes that of the rock file, whose writer completes it again.
enum class Text {
    as_given,      // less a point at its end
    heat_capacity, // J to MJ
    magnitude,     // without the sign, which is a mark; numbers in the form of the rock file
};

struct Property {
    std::string_view keyword;
    int line;
    const char* label;
    Text text = Text::as_given;
    bool tells_zones = true; // its values make candidates of zones
};
constexpr Property properties[] = {
    {"POR", sim::rock::Por, "Por", Text::magnitude},
    {"PERM", sim::rock::Perm, "Perm", Text::magnitude},
    {"ANISOI", sim::rock::ANISOI, "ANISOI"},
    {"ANISOJ", sim::rock::ANISOJ, "ANISOJ"},
    {"RHOCM", sim::rock::RhoCm, "Capacity", Text::heat_capacity},
    {"WLFM0", sim::rock::Cond, "Cond"},
    {"WLFMO", sim::rock::Cond, "Cond"},
    {"WLXANI", sim::rock::WLXANI, "WLXANI"},
    {"WLYANI", sim::rock::WLYANI, "WLYANI"},
    {"HPR", sim::rock::HPF, "HPF"},
    {"XANG", sim::rock::XANG, "XANG", Text::as_given, false},
    {"YANG", sim::rock::YANG, "YANG", Text::as_given, false},
    {"COMP3D", sim::rock::Compress, "Compress", Text::as_given, false},
};

// A number in a field of so many columns, with as many digits as fit.
std::string fitted_number(std::string_view text, std::size_t width) {
    const float value = base::leading_single(text);
    std::string shown = base::value_text(value);
    for (int digits = 6; shown.size() > width && digits > 0; --digits) {
        shown = base::value_text(base::leading_single(fmt::format("{:.{}e}", value, digits - 1)));
    }
    return shown;
}

std::string capacity_text(std::string_view text) {
    constexpr std::string_view unit = "E6";
    if (text.ends_with(unit)) {
        text.remove_suffix(unit.size());
        return std::string(text);
    }
    return base::value_text(static_cast<float>(base::leading_number(text) / 1E6));
}

std::string rock_text(std::string_view given, const Property& property) {
    if (property.text == Text::magnitude) {
        given.remove_prefix(given.starts_with('-') ? 1 : 0);
        return fitted_number(given, property.line == sim::rock::Perm ? 20 : 10);
    }
    std::string text =
        property.text == Text::heat_capacity ? capacity_text(given) : std::string(given);
    // The writer puts the point behind a text that has none, even behind an exponent.
    const bool bare = text.find_first_of("Ee") != std::string::npos || text.size() > 10;
    if (text.ends_with('.') && (bare || text.size() == 1)) {
        text.pop_back();
    }
    return text.size() <= 10 ? text : fitted_number(text, 10);
}

// Texts that stand for one value: "2", "2." and "2.0".
std::string compared(std::string_view text, const Property& property) {
    text.remove_prefix(property.text == Text::magnitude && text.starts_with('-') ? 1 : 0);
    if (text.ends_with(".0")) {
        text.remove_suffix(2);
    } else if (text.ends_with('.')) {
        text.remove_suffix(1);
    }
    return std::string(text);
}

// Zone number of each cell in the order of the stream.
using Zones = std::vector<std::uint8_t>;

// The zones that the stream itself has; nothing when there is a number that is no zone.
std::optional<Zones> given_zones(ModelImport& import) {
    Zones zones;
    const Field field = import.stream.field("GEOLOGY", import.extents, import.user);
    zones.reserve(field.grid().cells());
    for (int K = 1; K <= field.nK(); ++K) {
        for (int J = 1; J <= field.nJ(); ++J) {
            for (const float value : field.row(K, J)) {
                const float number = std::nearbyint(value);
                if (!(number >= 1 && number <= PropertyZonesMax)) {
                    return std::nullopt;
                }
                zones.push_back(static_cast<std::uint8_t>(number));
            }
        }
    }
    return zones;
}

// Divides zones by the values of one more block. Zones are numbered as their first cells come.
class Division {
public:
    Division(Zones& zones, const Property& property) : zones_(zones), property_(property) {}

    // False: there are more than 15.
    bool add(std::string_view text, std::uint64_t count) {
        const std::string value = compared(text, property_);
        for (; count > 0; --count, ++cell_) {
            const std::uint8_t old = zones_[cell_];
            if (old != last_old_ || value != last_value_) {
                last_old_ = old;
                last_value_ = value;
                const auto next = static_cast<int>(numbers_.size()) + 1;
                last_ = numbers_.try_emplace({old, value}, next).first->second;
            }
            if (last_ > PropertyZonesMax) {
                return false;
            }
            zones_[cell_] = static_cast<std::uint8_t>(last_);
        }
        return true;
    }

private:
    Zones& zones_;
    const Property& property_;
    std::map<std::pair<int, std::string>, int> numbers_;
    std::size_t cell_ = 0;
    int last_old_ = -1, last_ = 0;
    std::string last_value_;
};

bool is_individual(const Property& property, const RockChoice& choice) {
    return (property.line == sim::rock::Por && choice.individual_porosity) ||
           (property.line == sim::rock::Perm && choice.individual_permeability);
}

// Candidates by the values of the rock; nothing when there are too many.
std::optional<Zones> combined_zones(ModelImport& import, const RockChoice& choice) {
    Zones zones(import.extents.cells(), 1);
    bool fits = true;
    for (const Property& property : properties) {
        if (!property.tells_zones || is_individual(property, choice) ||
            !import.stream.has(property.keyword)) {
            continue;
        }
        Division division(zones, property);
        const auto add = [&](std::string_view text, std::uint64_t count) {
            fits = fits && division.add(text, count);
        };
        import.stream.runs(property.keyword, zones.size(), add);
        if (!fits) {
            return std::nullopt;
        }
    }
    return zones;
}

// Place of the first cell of each zone, by the zone less 1.
using FirstCells = std::array<std::uint64_t, PropertyZonesMax>;
constexpr std::uint64_t nowhere = std::numeric_limits<std::uint64_t>::max();

FirstCells first_cells(const Zones& zones) {
    FirstCells first;
    first.fill(nowhere);
    for (std::uint64_t cell = 0; cell < zones.size(); ++cell) {
        std::uint64_t& place = first[zones[cell] - 1U];
        place = std::min(place, cell);
    }
    return first;
}

// The texts of a block at the first cell of each zone. `first_alone`: in a block that folds equal
// neighbours the first cell stands alone, which marks a conductivity that is negative.
struct ZoneTexts {
    std::array<std::string, PropertyZonesMax> texts;
    bool first_alone = false;
};

ZoneTexts texts_of_zones(ImportedStream& stream, const Property& property, std::uint64_t cells,
                         const FirstCells& first) {
    ZoneTexts found;
    std::string last;
    std::uint64_t begin = 0, equal_neighbours = 0;
    stream.runs(property.keyword, cells, [&](std::string_view text, std::uint64_t count) {
        if (begin > 0 && text == last) {
            ++equal_neighbours;
            found.first_alone = begin == 1;
        }
        last = text;
        for (std::size_t zone = 0; zone < first.size(); ++zone) {
            if (first[zone] >= begin && first[zone] - begin < count) {
                found.texts[zone] = rock_text(text, property);
            }
        }
        begin += count;
    });
    found.first_alone = found.first_alone && equal_neighbours == 1;
    return found;
}

void Edit_MCO(ModelImport& import, const Property& property, const FirstCells& first,
              sim::RockFile& rock) {
    ZoneTexts found = texts_of_zones(import.stream, property, import.extents.cells(), first);
    rock.set_label(property.line, property.label);
    for (std::size_t zone = 0; zone < first.size(); ++zone) {
        if (first[zone] != nowhere) {
            rock.set_field(property.line, static_cast<int>(zone) + 1, found.texts[zone]);
        }
    }
    // The mark is that of zone 1, whether the grid has it or not.
    if (property.line == sim::rock::Cond && found.first_alone) {
        rock.set_field(property.line, 1, "-" + rock.field(property.line, 1));
    }
}

// The rock file, whose zones are as many as the highest number.
void GS_Values(ModelImport& import, const Zones& zones) {
    sim::RockFile rock(std::ranges::max(zones));
    const FirstCells first = first_cells(zones);
    for (const Property& property : properties) {
        if (import.stream.has(property.keyword)) {
            Edit_MCO(import, property, first, rock);
        }
    }
    rock.save(import.files);
    import.project.flags.mark_defined(1, 0);
    if (import.heat()) {
        import.project.flags.mark_defined(9, 13);
    }
}

void save_zones(ModelImport& import, const Zones& zones) {
    constexpr int number = input::arrays::mds.number;
    save_cells(import.store, number, import.grid, [&](int J, int K, std::span<float> cells) {
        const auto first = static_cast<std::size_t>(import.grid.place({1, J, K}));
        std::ranges::copy(std::span(zones).subspan(first, cells.size()), cells.begin());
    });
    core::mark_item_defined(import.project.flags, number);
}

// Porosity or permeability with the marks of its process.
void save_marked_field(ModelImport& import, std::string_view keyword, int number, bool individual,
                       Marks process) {
    std::vector<bool> fixed;
    if (import.stream.has(keyword)) {
        const Field field = import.stream.field(keyword, import.extents, import.user);
        if (individual) {
            Save_Layers(import.store, number, import.grid, field, true);
            core::mark_item_defined(import.project.flags, number);
        }
        fixed = marked_cells(field);
    }
    save_boundary(import, process, fixed);
}

void tell_too_many(base::Interaction& user) {
    user.message(base::Icon::warning, "Built Property Zones from Model Import",
                 fmt::format("Building Property Zones not possible -> More than {} potential "
                             "Property Zones.",
                             PropertyZonesMax));
}

} // namespace

void Create_Geological_Structure(ModelImport& import, const RockChoice& choice) {
    RockChoice rock = choice;
    {
        auto zones =
            import.stream.has("GEOLOGY") ? given_zones(import) : combined_zones(import, choice);
        if (!zones) {
            tell_too_many(import.user);
            zones.emplace(import.extents.cells(), 1);
            rock = {true, true};
        }
        save_zones(import, *zones);
        GS_Values(import, *zones);
    }
    const bool has_rock = import.stream.has("POR") || import.stream.has("PERM");
    if (has_rock && !(rock.individual_porosity && rock.individual_permeability)) {
        sim::Save_Per_Por(import.project, import.files);
    }
    save_marked_field(import, "POR", input::arrays::por.number, rock.individual_porosity,
                      Marks::heat);
    save_marked_field(import, "PERM", input::arrays::per.number, rock.individual_permeability,
                      Marks::flow);
}

} // namespace results
