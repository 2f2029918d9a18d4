#include "convert/legacyvtk.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <cmath>

namespace convert {

namespace {

constexpr std::string_view line_end = "\r\n";
constexpr std::size_t longest_title = 256;

std::string_view word_of(DataSet type) {
    switch (type) {
    case DataSet::points:
        return "STRUCTURED_POINTS";
    case DataSet::grid:
        return "STRUCTURED_GRID";
    case DataSet::rectilinear:
        break;
    }
    return "RECTILINEAR_GRID";
}

std::string points_text(const LegacyAxes& axes) {
    std::string text = "ORIGIN 0.0 0.0 0.0\r\nSPACING";
    for (std::size_t axis = 0; axis < 3; ++axis) {
        text += ' ';
        text += base::value_text(double{axes.sizes[axis].front()} * axes.scales[axis]);
    }
    return text.append(line_end);
}

// Sums in single precision, as the values that follow them are.
template <class Sizes>
void append_coordinates(std::string& text, const Sizes& sizes, double scale) {
    float coordinate = 0;
    bool first = true;
    for (const float size : sizes) {
        const double step = double{size} * scale;
        coordinate = static_cast<float>(first ? step / 2 : double{coordinate} + step);
        first = false;
        text += base::printed(coordinate);
    }
}

std::string rectilinear_text(const LegacyAxes& axes) {
    std::string text;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const std::vector<float>& sizes = axes.sizes[axis];
        text += fmt::format("{}_COORDINATES {} float\r\n", "XYZ"[axis], sizes.size());
        if (axis == 0) {
            append_coordinates(text, sizes, axes.scales[axis]);
        } else {
            append_coordinates(text, std::vector<float>(sizes.rbegin(), sizes.rend()),
                               axes.scales[axis]);
        }
        text += line_end;
    }
    return text;
}

bool prints_as_zero(float value) {
    return value == 0 || std::isnan(value);
}

} // namespace

std::string legacy_head(DataSet type, std::string_view title, const results::StreamGrid& counts) {
    return fmt::format("# vtk DataFile Version 2.0\r\n{}\r\nASCII\r\n\r\nDATASET {}\r\n"
                       "DIMENSIONS {} {} {}\r\n",
                       base::to_ansi(base::first_characters(title, longest_title)), word_of(type),
                       counts.I0, counts.J0, counts.K0);
}

std::string legacy_body(DataSet type, const LegacyAxes& axes, std::string_view attribute) {
    if (type == DataSet::grid) {
        return {};
    }
    const std::size_t cells = axes.sizes[0].size() * axes.sizes[1].size() * axes.sizes[2].size();
    return fmt::format("{}\r\nPOINT_DATA {}\r\n{}\r\n",
                       type == DataSet::points ? points_text(axes) : rectilinear_text(axes), cells,
                       base::to_ansi(attribute));
}

std::string scalars_attribute(std::string_view name) {
    return fmt::format("SCALARS {} float\r\nLOOKUP_TABLE DEFAULT\r\n", name);
}

double pH_of(float concentration, const std::filesystem::path& file) {
    if (!(concentration > 0)) {
        throw base::FileFailure(
            fmt::format("a concentration of {} has no pH", base::exact_text(concentration)), file);
    }
    return -(std::log(double{concentration} / 1000) / std::log(10.0));
}

void append_scalars(std::string& text, std::span<const float> row, ValueForm form) {
    for (const float value : row) {
        if (form == ValueForm::plain && prints_as_zero(value)) {
            text += " 0.0 ";
        } else {
            text += base::printed(form == ValueForm::absolute ? std::abs(value) : value);
        }
    }
    text += line_end;
}

namespace {

void append_pH(std::string& text, std::span<const float> row, const std::filesystem::path& file) {
    for (const float value : row) {
        text += base::printed(pH_of(value, file));
        text += line_end;
    }
    text += line_end;
}

} // namespace

void print_scalars(const results::Field& field, ValueForm form, const std::filesystem::path& file,
                   const Sink& sink) {
    std::string text;
    for (int layer = 1; layer <= field.nK(); ++layer) {
        for (int row = 1; row <= field.nJ(); ++row) {
            text.clear();
            if (form == ValueForm::pH) {
                append_pH(text, field.row(layer, row), file);
            } else {
                append_scalars(text, field.row(layer, row), form);
            }
            sink(text);
        }
    }
}

void append_vectors(std::string& text, std::span<const float> components) {
    base::PrintLine line;
    for (std::size_t i = 0; i < components.size(); i += 3) {
        line = {};
        line.add(base::printed(components[i])).zone().add(base::printed(components[i + 1]));
        line.zone().add(base::printed(components[i + 2]));
        text += line.text();
        text += line_end;
    }
}

} // namespace convert
