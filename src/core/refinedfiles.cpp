#include "core/refinedfiles.h"

#include "base/binaryio.h"
#include "core/extensions.h"
#include "core/modelfiles.h"
#include "core/periodtables.h"
#include "core/randomfile.h"
#include "core/zonefile.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <optional>
#include <set>
#include <string>

namespace core {

namespace {

constexpr std::uint64_t single_bytes = 4;
constexpr std::size_t entry_bytes = 2;

std::uint64_t product(std::size_t a, std::size_t b) {
    return std::uint64_t{a} * std::uint64_t{b};
}

// Layers of the file's records before (each with its factor).
std::vector<int> layer_factors(int number, const Division& division) {
    return is_2D_array(number) ? std::vector<int>{1} : division.layers;
}

// The record numbers in a table of 16-bit entries, each once; nothing when one cannot be.
std::optional<std::set<int>> record_numbers(std::string_view table) {
    std::set<int> records;
    for (std::size_t at = 0; at < table.size(); at += entry_bytes) {
        const int record = base::int16_at(table, at);
        if (record < 0) {
            return std::nullopt;
        }
        if (record != 0) {
            records.insert(record);
        }
    }
    return records;
}

bool is_named_by_digits(int number) {
    return std::ranges::all_of(file_ext(number).substr(1),
                               [](char c) { return c >= '0' && c <= '9'; });
}

// The records of an array file, nothing when it is none of this grid. A name that results have,
// too, has to be borne out by the length to the byte; elsewhere the last record may end early.
std::optional<std::set<int>> array_records(int number, const RandomFile& file,
                                           std::string_view tables, std::uint64_t record_bytes) {
    if (file.size() < PeriodTables::size) {
        return std::nullopt;
    }
    const auto records = record_numbers(tables.substr(tables.size() / 2));
    if (!records || records->empty()) {
        return std::nullopt;
    }
    const auto largest = static_cast<std::uint64_t>(*records->rbegin());
    const std::uint64_t values = file.size() - PeriodTables::size;
    const bool is_whole = values % record_bytes == 0;
    const std::uint64_t stored = values / record_bytes + (is_whole ? 0 : 1);
    const bool fits = largest <= stored && (is_whole || !is_named_by_digits(number));
    return fits ? records : std::nullopt;
}

// The old file is read while the new one is written, whether it is in the folder or still aside.
std::filesystem::path temporary_name(const ModelFiles& files) {
    return files.base() + ".ccc";
}

RandomFile new_file(ModelFiles& files, const std::filesystem::path& shown) {
    return RandomFile(files.open_file_aside(temporary_name(files), true), RandomFile::Mode::update,
                      shown);
}

// One layer of the old grid as one of the new grid.
class LayerExpansion {
public:
    explicit LayerExpansion(const Division& division)
        : division_(division), width_(static_cast<std::size_t>(divided_count(division.columns))),
          new_values_(width_ * static_cast<std::size_t>(divided_count(division.rows))) {}

    const std::vector<float>& expanded(const std::vector<float>& old) {
        auto to = new_values_.begin();
        auto from = old.begin();
        for (const int factor : division_.rows) {
            const auto row = to;
            for (const int columns : division_.columns) {
                to = std::fill_n(to, columns, *from++);
            }
            for (int copy = 1; copy < factor; ++copy) {
                to = std::copy_n(row, width_, to);
            }
        }
        return new_values_;
    }

private:
    const Division& division_;
    std::size_t width_;
    std::vector<float> new_values_;
};

} // namespace

int divided_count(const std::vector<int>& factors) {
    return std::accumulate(factors.begin(), factors.end(), 0);
}

bool refine_array_file(int number, const std::filesystem::path& name, const Division& division,
                       ModelFiles& files) {
    const auto place = files.find_file(name);
    if (!place) {
        return false;
    }
    const RandomFile old(*place, RandomFile::Mode::read, name);
    const std::vector<int> layers = layer_factors(number, division);
    std::vector<float> values(division.columns.size() * division.rows.size());
    const std::uint64_t old_layer = single_bytes * values.size();
    std::string tables(PeriodTables::size, '\0');
    old.read(0, tables);
    const auto records = array_records(number, old, tables, product(layers.size(), old_layer));
    if (!records) {
        return false;
    }
    RandomFile fresh = new_file(files, name);
    fresh.write(0, tables);
    LayerExpansion expansion(division);
    const std::uint64_t new_layer =
        single_bytes * product(static_cast<std::size_t>(divided_count(division.columns)),
                               static_cast<std::size_t>(divided_count(division.rows)));
    for (const int record : *records) {
        const auto before = static_cast<std::uint64_t>(record - 1);
        std::uint64_t from = PeriodTables::size + before * layers.size() * old_layer;
        std::uint64_t to = PeriodTables::size +
                           before * static_cast<std::uint64_t>(divided_count(layers)) * new_layer;
        for (const int factor : layers) {
            old.read_singles(from, values);
            const std::vector<float>& expanded = expansion.expanded(values);
            for (int copy = 0; copy < factor; ++copy, to += new_layer) {
                fresh.write_singles(to, expanded);
            }
            from += old_layer;
        }
    }
    files.move_file(temporary_name(files), name);
    return true;
}

bool refine_zone_file(int number, const std::filesystem::path& name, const Division& division,
                      ModelFiles& files) {
    const auto place = files.find_file(name);
    if (!place) {
        return false;
    }
    const RandomFile old(*place, RandomFile::Mode::read, name);
    std::string head(zone_head_bytes, '\0');
    old.read(0, head);
    const auto records = record_numbers(std::string_view(head).substr(zone_mark.size()));
    if (!(head.starts_with(zone_mark) || head.starts_with(older_zone_mark)) || !records) {
        return false;
    }
    const std::vector<int> layers = layer_factors(number - zone_offset, division);
    // A damaged table must not make a file that no disk holds.
    const std::uint64_t old_record = product(layers.size(), zone_block_bytes);
    if (!records->empty() &&
        zone_head_bytes + static_cast<std::uint64_t>(*records->rbegin()) * old_record >
            old.size() + period_count * old_record) {
        return false;
    }
    RandomFile fresh = new_file(files, name);
    fresh.write(0, head);
    std::string block(zone_block_bytes, '\0');
    for (const int record : *records) {
        const auto before = static_cast<std::uint64_t>(record - 1);
        std::uint64_t from = zone_head_bytes + before * old_record;
        std::uint64_t to = zone_head_bytes + before * zone_block_bytes *
                                                 static_cast<std::uint64_t>(divided_count(layers));
        for (const int factor : layers) {
            old.read(from, block);
            for (int copy = 0; copy < factor; ++copy, to += zone_block_bytes) {
                fresh.write(to, block);
            }
            from += zone_block_bytes;
        }
    }
    files.move_file(temporary_name(files), name);
    return true;
}

} // namespace core
