#include "convert/vtrfile.h"

#include "base/binaryio.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <utility>

namespace convert {

namespace {

constexpr std::size_t values_a_piece = std::size_t{1} << 16;

void append_uint64(std::string& bytes, std::uint64_t number) {
    for (int shift = 0; shift < 64; shift += 8) {
        bytes += static_cast<char>(number >> shift & 0xFFU);
    }
}

// XML has no characters below the blank.
std::string attribute_text(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += static_cast<unsigned char>(c) < ' ' ? '_' : c;
        }
    }
    return escaped;
}

// The lines that describe the arrays, in the order of their bytes.
class ArrayLines {
public:
    std::string line(std::string_view type, std::string_view name, int components,
                     std::uint64_t bytes) {
        const std::string parts =
            components == 1 ? "" : fmt::format(" NumberOfComponents=\"{}\"", components);
        std::string text = fmt::format(
            "        <DataArray type=\"{}\" Name=\"{}\"{} format=\"appended\" offset=\"{}\"/>\n",
            type, attribute_text(name), parts, offset_);
        offset_ += sizeof(std::uint64_t) + bytes;
        return text;
    }

private:
    std::uint64_t offset_ = 0;
};

std::string xml_head(const std::array<std::vector<double>, 3>& edges,
                     const std::vector<VtrField>& fields, std::uint64_t cells) {
    ArrayLines lines;
    std::string coordinates, data;
    for (std::size_t axis = 0; axis < edges.size(); ++axis) {
        coordinates += lines.line("Float64", std::string_view("xyz").substr(axis, 1), 1,
                                  edges[axis].size() * sizeof(double));
    }
    for (const VtrField& field : fields) {
        const std::uint64_t values = cells * static_cast<std::uint64_t>(field.components);
        data += lines.line("Float32", field.name, field.components, values * sizeof(float));
    }
    const std::string extent = fmt::format("0 {} 0 {} 0 {}", edges[0].size() - 1,
                                           edges[1].size() - 1, edges[2].size() - 1);
    return fmt::format(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<VTKFile type=\"RectilinearGrid\" version=\"1.0\" byte_order=\"LittleEndian\" "
        "header_type=\"UInt64\">\n"
        "  <RectilinearGrid WholeExtent=\"{0}\">\n"
        "    <Piece Extent=\"{0}\">\n"
        "      <CellData>\n{1}      </CellData>\n"
        "      <Coordinates>\n{2}      </Coordinates>\n"
        "    </Piece>\n  </RectilinearGrid>\n  <AppendedData encoding=\"raw\">\n_",
        extent, data, coordinates);
}

} // namespace

VtrFile::VtrFile(Sink sink, const std::array<std::vector<double>, 3>& edges,
                 const std::vector<VtrField>& fields)
    : sink_(std::move(sink)) {
    for (const std::vector<double>& axis : edges) {
        cells_ *= axis.size() - 1;
    }
    sink_(xml_head(edges, fields, cells_));
    for (const std::vector<double>& axis : edges) {
        add_length(axis.size() * sizeof(double));
        std::string bytes;
        for (const double edge : axis) {
            append_uint64(bytes, std::bit_cast<std::uint64_t>(edge));
        }
        sink_(bytes);
    }
}

void VtrFile::add_length(std::uint64_t bytes) {
    std::string text;
    append_uint64(text, bytes);
    sink_(text);
}

void VtrFile::begin_field(int components) {
    add_length(cells_ * static_cast<std::uint64_t>(components) * sizeof(float));
}

void VtrFile::add(std::span<const float> values) {
    if constexpr (std::endian::native == std::endian::little) {
        sink_({reinterpret_cast<const char*>(values.data()), values.size_bytes()});
        return;
    }
    bytes_.resize(std::min(values.size(), values_a_piece) * sizeof(float));
    while (!values.empty()) {
        const auto piece = values.first(std::min(values.size(), values_a_piece));
        const std::span<char> bytes = std::span(bytes_).first(piece.size_bytes());
        base::singles_to_bytes(piece, bytes);
        sink_({bytes.data(), bytes.size()});
        values = values.subspan(piece.size());
    }
}

void VtrFile::finish() {
    sink_("\n  </AppendedData>\n</VTKFile>\n");
}

} // namespace convert
