#include "convert/inputfromresult.h"

#include "base/interaction.h"
#include "base/paths.h"
#include "core/arraystore.h"
#include "core/itemcells.h"
#include "core/project.h"
#include "input/simulatorfield.h"
#include "results/savedfield.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace convert {

namespace {

constexpr const char* dialog = "Convert Data";
namespace arrays = input::arrays;

constexpr InitialField fields[] = {
    {"POR", "Porosity", arrays::por.number, true},
    {"ICE", "Ice Content", arrays::ice.number},
    {"TSOL", "Solidus Temperature", arrays::sol.number},
    {"TLIQ", "Liquidus Temperature", arrays::liq.number},
    {"PERM", "Permeability", arrays::per.number, true},
    {"PHI", "Head", arrays::hea.number},
    {"VX", "Velocity(X)", arrays::vx.number},
    {"VY", "Velocity(Y)", arrays::vy.number},
    {"VZ", "Velocity(Z)", arrays::vz.number},
    {"TEMP", "Temperature", arrays::tem.number},
};

base::Refusal refusal(const char* text) {
    return {dialog, text, base::Icon::warning};
}

// A count of the stream; nothing when it is not there.
std::optional<int> count_in(results::StreamReader& stream, std::string_view key) {
    stream.rewind();
    return stream.JumpToPos(key) ? std::optional(stream.next_line_int(key)) : std::nullopt;
}

// A stream that tells no extents is taken as one of the model.
bool is_of_grid(results::StreamReader& stream, const results::StreamGrid& grid) {
    const auto same = [&](std::string_view key, int count) {
        return count_in(stream, key).value_or(count) == count;
    };
    return same("# I0", grid.I0) && same("# J0", grid.J0) && same("# K0", grid.K0);
}

std::optional<base::Refusal> refusal_of(const std::filesystem::path& result,
                                        const ChosenFields& chosen) {
    if (!base::is_file(result)) {
        return refusal("Default file does not exist!\nPlease browse for a valid file.");
    }
    if (chosen.names.empty() && chosen.tracers.empty()) {
        return refusal("You need to choose at least one parameter to convert.");
    }
    return std::nullopt;
}

// One run over a result file.
class Conversion {
public:
    Conversion(const std::filesystem::path& result, core::Project& project, core::ModelFiles& files,
               base::Interaction& user)
        : stream_(result), project_(project), store_(files, project), grid_(project),
          extents_(results::stream_grid(grid_)), user_(user) {}

    bool is_of_grid() { return convert::is_of_grid(stream_, extents_); }

    void convert(const ChosenFields& chosen) {
        for (const InitialField& field : fields) {
            if (std::ranges::find(chosen.names, field.name) != chosen.names.end()) {
                take(fmt::format("# {}", field.name), field.caption, field.number, field.Absolute);
            }
        }
        const int components = std::max(count_in(stream_, "# ANZCHEM").value_or(0), 0);
        constexpr int most = std::numeric_limits<int>::max() / 2;
        for (const int tracer : chosen.tracers) {
            const auto key = results::numbered_key("# CONC", std::min(components, most) + tracer);
            take(key, fmt::format("Tracer {}", tracer), arrays::tracer(tracer).number, false);
        }
    }

private:
    // The search goes on from the block before; a block further up is found from the beginning.
    bool find(std::string_view key) {
        if (stream_.find_prefix(key)) {
            return true;
        }
        stream_.rewind();
        return stream_.find_prefix(key);
    }

    void Results_NLO_to_Input_TD(std::string_view key, int number, bool Absolute) {
        const auto field = results::read_field(stream_, extents_, results::FieldOrder::stream,
                                               results::RepeatCount::rounded_32, key, {}, user_);
        results::Save_Layers(store_, number, grid_, field, Absolute);
        core::create_arrays_of_item(store_, number);
        core::mark_item_defined(project_.flags, number);
        project_.flags.mark_edited();
    }

    void take(const std::string& key, std::string_view caption, int number, bool Absolute) {
        user_.status(fmt::format("Converting {}, patience ...", caption));
        if (!key.empty() && find(key)) {
            Results_NLO_to_Input_TD(key, number, Absolute);
        }
    }

    results::StreamReader stream_;
    core::Project& project_;
    core::ArrayStore store_;
    input::SimulatorGrid grid_;
    results::StreamGrid extents_;
    base::Interaction& user_;
};

} // namespace

std::span<const InitialField> initial_fields() {
    return fields;
}

Converted Convert_Click(const std::filesystem::path& result, const ChosenFields& chosen,
                        core::Project& project, core::ModelFiles& files, base::Interaction& user) {
    if (const auto refused = refusal_of(result, chosen)) {
        base::show(user, *refused);
        return Converted::refused;
    }
    Conversion conversion(result, project, files, user);
    if (!conversion.is_of_grid()) {
        base::show(user, refusal("The grid of the result file differs from the model."));
        return Converted::refused;
    }
    if (user.ask("Overwrite file?", "WARNING!!! - Current input will be overwritten!",
                 base::Buttons::yes_no_risky) != base::Answer::yes) {
        return Converted::refused;
    }
    conversion.convert(chosen);
    return Converted::done;
}

} // namespace convert
