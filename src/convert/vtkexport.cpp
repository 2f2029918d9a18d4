#include "convert/vtkexport.h"

#include "base/interaction.h"
#include "base/paths.h"
#include "convert/cellvalues.h"
#include "core/modelflags.h"
#include "core/project.h"

#include <fmt/format.h>

#include <utility>

namespace convert {

namespace {

constexpr const char* dialog_title = "Convert Data";

class Conversion {
public:
    Conversion(const Source& source, DataSet type, const VtkOptions& options,
               const Written& written)
        : source_(source), type_(type), options_(options), written_(written),
          grid_(model_grid(source.project)),
          horizontal_(source.project.flags.GridOrientation() == core::horizontal) {
        axes_.scales = options.scales;
        if (type != DataSet::grid) {
            axes_.sizes = worksheet_sizes(source.project, source.files);
            cell_sizes_ = simulator_sizes(axes_.sizes, horizontal_);
        }
        if (!horizontal_) {
            std::swap(axes_.sizes[1], axes_.sizes[2]);
        }
    }

    void run(const std::vector<ChosenBlock>& blocks) {
        for (const ChosenBlock& block : blocks) {
            source_.user.status(fmt::format("Converting {}, patience ...", block.name));
            block.is_vectors() ? convert_vectors(block) : convert_scalars(block);
        }
        if (options_.choice.ugradT && temperature_ && velocity_.size() == 3) {
            source_.user.status("Calculating u.grad(T), patience ...");
            write_ugradT();
        }
    }

private:
    std::optional<results::Field> Get_Data(const std::string& key) {
        if (!source_.stream.find_prefix(key)) {
            return std::nullopt;
        }
        return results::read_field(source_.stream, grid_, results::FieldOrder::stream,
                                   results::RepeatCount::rounded_32, key, nullptr, source_.user);
    }

    void convert_scalars(const ChosenBlock& block) {
        std::optional<results::Field> field = Get_Data(block.key);
        if (!field) {
            return;
        }
        Write_VTK(block.name, scalars_attribute(block.name), [&](const Sink& sink) {
            print_scalars(*field, block.form, source_.stream.file(), sink);
        });
        if (options_.choice.ugradT && block.box == Box::temp) {
            temperature_ = std::move(field);
        }
    }

    void convert_vectors(const ChosenBlock& block) {
        for (const char* const key : velocity_keys()) {
            std::optional<results::Field> field = Get_Data(key);
            if (!field) {
                velocity_.clear();
                return;
            }
            velocity_.push_back(*std::move(field));
        }
        Write_VTK(block.name, "VECTORS FlowVectors float",
                  [&](const Sink& sink) { Print_Vectors(sink); });
        if (!options_.choice.ugradT) {
            velocity_.clear();
        }
    }

    template <class Print>
    void Write_VTK(std::string_view name, std::string_view attribute, Print print) {
        const std::filesystem::path file = vtk_file(source_.stream.file(), name);
        OutputFile out(source_.target, file);
        out.add(legacy_head(type_, source_.project.title(), grid_));
        if (type_ != DataSet::grid) {
            out.add(legacy_body(type_, axes_, attribute));
            print(out.sink());
        }
        out.finish();
        written_(base::file_name(file));
    }

    std::size_t cells_of_layer() const {
        return static_cast<std::size_t>(grid_.I0) * static_cast<std::size_t>(grid_.J0);
    }
    VelocityLayers velocity_of(int layer) const {
        return {layer_of(velocity_[0], layer), layer_of(velocity_[1], layer),
                layer_of(velocity_[2], layer)};
    }

    void Print_Vectors(const Sink& sink) const {
        std::vector<float> components(3 * cells_of_layer());
        const std::size_t of_row = 3 * static_cast<std::size_t>(grid_.I0);
        std::string text;
        for (int layer = 1; layer <= grid_.K0; ++layer) {
            centre_vectors(grid_, layer, velocity_of(layer), components);
            for (std::size_t first = 0; first < components.size(); first += of_row) {
                text.clear();
                append_vectors(text, std::span(components).subspan(first, of_row));
                sink(text);
            }
        }
    }

    void write_ugradT() {
        constexpr const char* name = "ugradT";
        Write_VTK(name, scalars_attribute(name), [&](const Sink& sink) {
            std::vector<float> values(cells_of_layer());
            std::string text;
            for (int layer = 1; layer <= grid_.K0; ++layer) {
                Calculate_ugradT(grid_, cell_sizes_, layer, layer_of(*temperature_, layer),
                                 velocity_of(layer), values);
                for (int row = 0; row < grid_.J0; ++row) {
                    text.clear();
                    const auto columns = static_cast<std::size_t>(grid_.I0);
                    append_scalars(
                        text,
                        std::span(values).subspan(static_cast<std::size_t>(row) * columns, columns),
                        ValueForm::plain);
                    sink(text);
                }
            }
        });
    }

    const Source& source_;
    DataSet type_;
    const VtkOptions& options_;
    const Written& written_;
    results::StreamGrid grid_;
    bool horizontal_;
    LegacyAxes axes_;
    AxisSizes cell_sizes_;                      // along the simulator's axes
    std::optional<results::Field> temperature_; // kept for u.grad(T)
    std::vector<results::Field> velocity_;
};

} // namespace

std::optional<base::Refusal> export_vtk(const Source& source, DataSet type,
                                        const VtkOptions& options, const Written& written) {
    if (auto refusal = options.choice.refusal()) {
        return refusal;
    }
    if (auto refusal = grid_refusal(source.stream, model_grid(source.project), dialog_title)) {
        return refusal;
    }
    const std::vector<ChosenBlock> blocks =
        chosen_blocks(source.stream, options.choice, source.files, source.target, source.user);
    Conversion(source, type, options, written).run(blocks);
    return std::nullopt;
}

} // namespace convert
