#include "convert/vtrexport.h"

#include "base/interaction.h"
#include "base/paths.h"
#include "convert/blocklayers.h"
#include "convert/vtrfile.h"
#include "core/modelflags.h"
#include "core/project.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>

namespace convert {

namespace {

constexpr const char* dialog_title = "Convert Data";
constexpr const char* temperature_key = "# TEMP";

// A field of the file and how its next layer is made.
struct Part {
    VtrField field;
    std::string caption;
    std::function<void()> begin;
    std::function<std::span<const float>(int layer)> layer;
};

class Conversion {
public:
    Conversion(const Source& source, const VtkOptions& options)
        : source_(source), grid_(model_grid(source.project)),
          sizes_(simulator_sizes(worksheet_sizes(source.project, source.files),
                                 source.project.flags.GridOrientation() == core::horizontal)),
          scales_(options.scales),
          cells_(static_cast<std::size_t>(grid_.I0) * static_cast<std::size_t>(grid_.J0)) {}

    void add(const ChosenBlock& block) {
        if (block.is_vectors()) {
            add_vectors(block);
        } else if (const auto place = place_of(block.key)) {
            parts_.push_back({{block.name, 1},
                              fmt::format("Converting {}, patience ...", block.name),
                              [this, block, place] {
                                  open({{block.key, *place}});
                              },
                              [this, form = block.form](int) { return scalars(form); }});
        }
    }

    void add_ugradT() {
        const auto T = place_of(temperature_key);
        auto places = velocity_places();
        if (!T || places.empty()) {
            return;
        }
        places.push_back({temperature_key, *T});
        parts_.push_back({{"ugradT", 1},
                          "Calculating u.grad(T), patience ...",
                          [this, places] { open(places); },
                          [this](int layer) { return ugradT(layer); }});
    }

    void write(const Sink& sink) {
        std::vector<VtrField> fields;
        std::ranges::transform(parts_, std::back_inserter(fields), &Part::field);
        VtrFile file(sink, cell_edges(sizes_, scales_), fields);
        for (const Part& part : parts_) {
            source_.user.status(part.caption);
            part.begin();
            file.begin_field(part.field.components);
            for (int layer = 1; layer <= grid_.K0; ++layer) {
                file.add(part.layer(layer));
                source_.user.show_meter(static_cast<int>(100 * std::int64_t{layer} / grid_.K0));
            }
        }
        file.finish();
        source_.stream.require_unchanged();
    }

private:
    struct Place {
        std::string key;
        std::uint64_t position;
    };

    std::optional<std::uint64_t> place_of(const std::string& key) {
        source_.stream.rewind();
        return source_.stream.JumpToPos(key) ? std::optional(source_.stream.position())
                                             : std::nullopt;
    }

    // Empty when one of the three is missing.
    std::vector<Place> velocity_places() {
        std::vector<Place> places;
        for (const char* const key : velocity_keys()) {
            const auto place = place_of(key);
            if (!place) {
                return {};
            }
            places.push_back({key, *place});
        }
        return places;
    }

    void add_vectors(const ChosenBlock& block) {
        if (const auto places = velocity_places(); !places.empty()) {
            parts_.push_back({{block.name, 3},
                              fmt::format("Converting {}, patience ...", block.name),
                              [this, places] { open(places); },
                              [this](int layer) { return vectors(layer); }});
        }
    }

    void open(const std::vector<Place>& places) {
        open_.clear();
        for (const Place& place : places) {
            open_.push_back(std::make_unique<BlockLayers>(source_.stream.file(), place.position,
                                                          grid_, place.key));
        }
    }

    VelocityLayers next_velocity() {
        VelocityLayers velocity;
        velocity.x = open_[0]->next();
        velocity.y = open_[1]->next();
        velocity.z = open_[2]->next();
        return velocity;
    }

    std::span<const float> scalars(ValueForm form) {
        const std::span<const float> here = open_[0]->next().here;
        if (form == ValueForm::plain) {
            return here;
        }
        values_.resize(cells_);
        std::ranges::transform(here, values_.begin(), [&](float value) {
            return form == ValueForm::pH ? static_cast<float>(pH_of(value, source_.stream.file()))
                                         : std::abs(value);
        });
        return values_;
    }

    std::span<const float> vectors(int layer) {
        values_.resize(3 * cells_);
        centre_vectors(grid_, layer, next_velocity(), values_);
        return values_;
    }

    std::span<const float> ugradT(int layer) {
        values_.resize(cells_);
        const VelocityLayers velocity = next_velocity();
        Calculate_ugradT(grid_, sizes_, layer, open_[3]->next(), velocity, values_);
        return values_;
    }

    const Source& source_;
    results::StreamGrid grid_;
    AxisSizes sizes_; // along the simulator's axes
    std::array<double, 3> scales_;
    std::size_t cells_; // of a layer
    std::vector<Part> parts_;
    std::vector<std::unique_ptr<BlockLayers>> open_;
    std::vector<float> values_;
};

} // namespace

std::optional<base::Refusal> export_vtr(const Source& source, const VtkOptions& options,
                                        const Written& written) {
    if (auto refusal = options.choice.refusal()) {
        return refusal;
    }
    if (auto refusal = grid_refusal(source.stream, model_grid(source.project), dialog_title)) {
        return refusal;
    }
    Conversion conversion(source, options);
    for (const ChosenBlock& block :
         chosen_blocks(source.stream, options.choice, source.files, source.target, source.user)) {
        conversion.add(block);
    }
    if (options.choice.ugradT) {
        conversion.add_ugradT();
    }
    const std::filesystem::path file = result_base(source.stream.file()).string() + ".vtr";
    OutputFile out(source.target, file);
    conversion.write(out.sink());
    out.finish();
    written(base::file_name(file));
    return std::nullopt;
}

} // namespace convert
