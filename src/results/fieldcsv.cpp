#include "results/fieldcsv.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "results/tablefile.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>

namespace results {

namespace {

// Texts of the cell centres along the simulator's axes; sums in double precision, so that many
// small cells do not add up their rounding.
std::vector<std::string> centre_texts(std::span<const float> sizes) {
    std::vector<std::string> texts;
    double edge = 0;
    for (const float size : sizes) {
        texts.push_back(base::exact_text(static_cast<float>(edge + double{size} / 2)));
        edge += double{size};
    }
    return texts;
}

std::string quoted(std::string_view text) {
    if (text.find_first_of(",\"") == std::string_view::npos) {
        return std::string(text);
    }
    std::string result = "\"";
    for (const char c : text) {
        result += c == '"' ? "\"\"" : std::string(1, c);
    }
    return result + '"';
}

class CellLines {
public:
    CellLines(const ParameterField& field, const Axes& axes, int GridOrientation)
        : field_(&field), grid_(simulator_grid(field.field().grid(), GridOrientation)),
          x_(centre_texts(axes.delx)), y_(centre_texts(axes.dely)),
          z_(centre_texts(std::vector<float>(axes.delz.rbegin(), axes.delz.rend()))) {}

    void write(int layer, TableFile& file) const {
        std::string line;
        for (int row = 1; row <= field_->rows(); ++row) {
            for (int column = 1; column <= field_->columns(); ++column) {
                const auto [I, J, K] = grid_.index({column, row, layer});
                line.clear();
                fmt::format_to(std::back_inserter(line), "{},{},{},{},{},{},{}\n", column, row,
                               layer, text_at(x_, I), text_at(y_, J), text_at(z_, K),
                               base::exact_text(field_->at(layer, row, column)));
                file.add(line);
            }
        }
    }

private:
    static const std::string& text_at(const std::vector<std::string>& texts, int index) {
        return texts[static_cast<std::size_t>(index) - 1];
    }

    const ParameterField* field_;
    input::SimulatorGrid grid_;
    std::vector<std::string> x_, y_, z_;
};

} // namespace

void require_layer(const ParameterField& field, int layer) {
    if (layer < 1 || layer > field.layers()) {
        throw base::RangeFailure(fmt::format("layer {} is outside 1 to {}", layer, field.layers()));
    }
}

void write_field_csv(const ParameterField& field, const Axes& axes, int GridOrientation,
                     std::string_view label, std::optional<int> layer,
                     const std::filesystem::path& target) {
    require_layer(field, layer.value_or(1));
    const CellLines lines(field, axes, GridOrientation);
    TableFile file(target);
    file.add(fmt::format("column,row,layer,x [m],y [m],z [m],{}\n", quoted(label)));
    for (int n = layer.value_or(1); n <= layer.value_or(field.layers()); ++n) {
        lines.write(n, file);
    }
    file.finish();
}

} // namespace results
