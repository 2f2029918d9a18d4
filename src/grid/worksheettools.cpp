#include "grid/worksheettools.h"

#include "base/paths.h"
#include "base/textfile.h"
#include "grid/worksheet.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace grid {

namespace {

core::Zone& zone_of(std::vector<core::Zone>& zones, int number) {
    if (number < 1 || static_cast<std::size_t>(number) > zones.size()) {
        throw base::RangeFailure(fmt::format("there is no zone {}", number));
    }
    return zones[static_cast<std::size_t>(number - 1)];
}

void put_values(const EditRequest& request, core::Zone& zone, std::span<const float> values) {
    for (std::size_t k = 0; k < values.size(); ++k) {
        set_zone_value(zone, k, request.kept_value(values[k]));
    }
}

// Clicks all nodes, then the first one again; the box that a click brought.
std::optional<base::Refusal> digitize(ZoneDigitizer& digitizer, std::span<const ZoneNode> nodes) {
    for (const ZoneNode& node : nodes) {
        if (const auto step = digitizer.click(node.x, node.y, 0); step.refusal) {
            return step.refusal;
        }
    }
    if (digitizer.Zone_Open) {
        digitizer.click(nodes[0].x, nodes[0].y, 0);
    }
    return std::nullopt;
}

} // namespace

std::string array_label(const EditRequest& request, int k) {
    constexpr int first_parameter_number = 63, last_parameter_number = 69, well_temperature = 299;
    const int number = request.number(k);
    if (number >= first_parameter_number && number <= last_parameter_number) {
        return "Parameter Number";
    }
    if (number == well_temperature) {
        return "Temperature";
    }
    const std::string& prompt = request.prompts[static_cast<std::size_t>(k - 1)];
    const std::string label(base::trimmed_right(prompt.substr(0, prompt.find('[')), " :"));
    return label.empty() ? request.Edit_Caption : label;
}

std::optional<base::Refusal> zones_refusal(const EditRequest& request) {
    if (request.Zones_Allowed) {
        return std::nullopt;
    }
    return no_zones_allowed(request.Edit_Caption);
}

std::optional<base::Refusal> add_zone(Worksheet& worksheet, std::span<const ZoneNode> nodes,
                                      std::span<const float> values) {
    if (const char* const fault = nodes_fault(nodes)) {
        throw base::RangeFailure(fault);
    }
    ZoneDigitizer digitizer{worksheet.zones(), {}, 0};
    if (const auto refusal = digitize(digitizer, nodes)) {
        return refusal;
    }
    if (const auto refusal = worksheet.values_refusal(values)) {
        return refusal;
    }
    put_values(worksheet.request(), digitizer.zones.back(), values);
    worksheet.set_zones(std::move(digitizer.zones));
    return std::nullopt;
}

std::optional<base::Refusal> set_zone_values(Worksheet& worksheet, int zone,
                                             std::span<const float> values) {
    std::vector<core::Zone> zones = worksheet.zones();
    core::Zone& changed = zone_of(zones, zone);
    if (const auto refusal = worksheet.values_refusal(values)) {
        return refusal;
    }
    put_values(worksheet.request(), changed, values);
    worksheet.set_zones(std::move(zones));
    return std::nullopt;
}

void delete_zone(Worksheet& worksheet, int zone) {
    ZoneDigitizer digitizer{worksheet.zones(), {}, 0};
    digitizer.remove(zone);
    worksheet.set_zones(std::move(digitizer.zones));
}

void clear_zones(Worksheet& worksheet) {
    worksheet.set_zones({});
}

std::size_t transfer_zone(Worksheet& worksheet, int zone) {
    std::vector<core::Zone> zones = worksheet.zones();
    const core::Zone& source = zone_of(zones, zone);
    std::vector<core::LayerValues> layers;
    for (int k = 1; k <= worksheet.Array_Count(); ++k) {
        layers.push_back(worksheet.array(k));
    }
    const std::size_t count = transfer_zone(source, worksheet.cells(), layers);
    const Worksheet::Step step(worksheet);
    for (int k = 1; k <= worksheet.Array_Count(); ++k) {
        worksheet.set_array(k, std::move(layers[static_cast<std::size_t>(k - 1)]));
    }
    return count;
}

std::optional<base::Refusal> load_zones(Worksheet& worksheet, const std::filesystem::path& file) {
    ZonesRead read = zones_from_text(base::read_bytes(file), file);
    if (!read.refusal) {
        worksheet.set_zones(std::move(read.zones));
    }
    return read.refusal;
}

std::optional<base::Refusal> load_array_file(const std::filesystem::path& file, MatrixFile form,
                                             FirstCell first, int nx, int ny,
                                             std::span<float> values) {
    if (const auto refusal = first_cell_refusal(first, nx, ny)) {
        return refusal;
    }
    if (!base::is_file(file)) {
        return no_matrix_file(file);
    }
    return load_matrix(base::read_bytes(file), file, form, first, nx, ny, values);
}

std::optional<base::Refusal> load_array(Worksheet& worksheet, int k,
                                        const std::filesystem::path& file, MatrixFile form,
                                        FirstCell first) {
    core::LayerValues values = worksheet.array(k);
    const auto refusal = load_array_file(file, form, first, worksheet.NX(), worksheet.NY(), values);
    if (!refusal) {
        worksheet.set_array(k, std::move(values));
    }
    return refusal;
}

std::optional<base::Refusal> copy_target_refusal(int to) {
    constexpr int last_period = 100;
    if (to <= 0) {
        return base::Refusal{copy_data_title, "Please enter a positive integer!"};
    }
    if (to > last_period) {
        return base::Refusal{
            copy_data_title,
            fmt::format("The period number must be smaller than {}", last_period + 1)};
    }
    return std::nullopt;
}

std::string copy_data_question(int to) {
    return fmt::format("Data for the stress period {} already exists. Overwrite?", to);
}

TraceResult search_and_modify(Worksheet& worksheet, int k, const TraceRules& rules,
                              LayerRange layers, base::Interaction& user) {
    const TraceSearch search{worksheet.request().number(k),
                             worksheet.request().default_value(k),
                             worksheet.Current_Period(),
                             layers.first,
                             layers.last,
                             worksheet.Current_Layer()};
    TraceResult result;
    result.refusal = trace_layers_refusal(search, worksheet.layers());
    if (result.refusal) {
        return result;
    }
    rules.save(worksheet.files());
    if (layers.first <= layers.last) {
        worksheet.on_files(k, layers.first, layers.last, [&](core::ArrayStore& store) {
            result.outcome = Search_And_Modify(rules, search, store, user);
        });
    }
    return result;
}

} // namespace grid
