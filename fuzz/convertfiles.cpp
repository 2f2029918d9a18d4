// Files that conversions of results read.
#include "checks.h"
#include "scratchfolder.h"
#include "targets.h"

#include "convert/convertbinary.h"
#include "convert/convertdata.h"
#include "convert/formula.h"
#include "convert/histogram.h"
#include "convert/plotrewrite.h"
#include "convert/resultcache.h"

#include "base/textfile.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <sstream>

namespace fuzz {

namespace {

namespace fs = std::filesystem;

using results::Field;
using results::FieldOrder;

constexpr results::StreamGrid cache_grid{2, 3, 4};

struct Quiet {
    std::ostringstream boxes;
    td::TerminalUser user{boxes, td::StandingAnswer::none};
};

bool same_values(const Field& a, const Field& b, bool upside_down = false) {
    for (int layer = 1; layer <= a.nK(); ++layer) {
        for (int row = 1; row <= a.nJ(); ++row) {
            const auto bits = [](float x) { return std::bit_cast<std::uint32_t>(x); };
            if (!std::ranges::equal(a.row(layer, row),
                                    b.row(upside_down ? a.nK() + 1 - layer : layer, row), {}, bits,
                                    bits)) {
                return false;
            }
        }
    }
    return true;
}

std::vector<std::optional<Field>> all_slots(const core::RandomFile& cache, Quiet& quiet) {
    constexpr int most_numbers = 14;
    std::vector<std::optional<Field>> fields;
    for (int number = 1; number <= most_numbers; ++number) {
        fields.push_back(
            convert::read_slot(number, cache, cache_grid, FieldOrder::viewer, quiet.user));
        const auto turned =
            convert::read_slot(number, cache, cache_grid, FieldOrder::stream, quiet.user);
        require(fields.back().has_value() == turned.has_value(), "a slot has two lengths");
        require(!turned || same_values(*fields.back(), *turned, true), "the orders differ");
    }
    return fields;
}

// The file as a rewriting without a change leaves it.
std::string copied_plot(std::string_view bytes, const convert::PlotRewrite& rewrite) {
    const ScratchFolder folder;
    Quiet quiet;
    const fs::path source = folder.write("m.tal", bytes), target = folder.path() / "m.plt";
    fs::last_write_time(source, fs::file_time_type::clock::now() - std::chrono::hours(1));
    convert::rewrite_plot(source, target, rewrite, quiet.user);
    return base::read_bytes(target);
}

std::string ascii_table(std::string_view bytes) {
    const ScratchFolder folder;
    Quiet quiet;
    const fs::path target = folder.path() / "a.dat";
    return convert::Write_ASCII(folder.write("p.dat", bytes), target, quiet.user)
               ? base::read_bytes(target)
               : std::string();
}

} // namespace

void rvb(std::string_view bytes) {
    const ScratchFolder folder;
    Quiet quiet;
    const fs::path file = folder.write("m.rvb", bytes);
    core::RandomFile cache(file, core::RandomFile::Mode::update, file);
    for (const float number : convert::read_directory(cache)) {
        convert::cached_caption(number);
    }
    const auto before = all_slots(cache, quiet);
    const int number = static_cast<int>(bytes.size() % before.size()) + 1;
    Field field(cache_grid);
    field.at(1, 2, 1) = -1;
    convert::SaveArray(number, field, cache);
    const auto after = all_slots(cache, quiet);
    for (std::size_t n = 0; n < before.size(); ++n) {
        const bool written = n + 1 == static_cast<std::size_t>(number);
        const auto& expected = written ? std::optional(field) : before[n];
        require(!expected || (after[n] && same_values(*expected, *after[n])),
                "a slot has other values");
    }
}

void his(std::string_view bytes) {
    require_stable(bytes, [](std::string_view b) {
        return convert::Save_Histogram_Data(convert::Load_Histogram_Data(b, "m.his"));
    });
}

void tal(std::string_view bytes) {
    convert::PlotRewrite rewrite;
    rewrite.Head = true;
    require_stable(bytes, [&](std::string_view b) { return copied_plot(b, rewrite); });
    rewrite.Elements = true;
    rewrite.new_names[1] = "x";
    rewrite.steps = {{2, {convert::PlotOperation::divide, 1E-30}},
                     {3, {convert::PlotOperation::multiply, 1E300}}};
    rewrite.molar_weights[4] = 100;
    copied_plot(bytes, rewrite);
}

void irgrid(std::string_view bytes) {
    const std::string table = ascii_table(bytes);
    if (table.empty()) {
        return;
    }
    std::istringstream counts(table);
    std::size_t columns = 0, rows = 0;
    counts >> columns >> rows;
    std::string again = "IRGRID" + table.substr(0, table.find('\n') + 1);
    for (std::size_t n = 0; n < columns + rows; ++n) {
        again += "0 ";
    }
    require(ascii_table(again + table.substr(table.find('\n'))) == table,
            "a table that was written has other values");
}

void formula(std::string_view text) {
    constexpr results::StreamGrid grid{2, 1, 1};
    const ScratchFolder folder;
    const fs::path file =
        folder.write("m.nlo", "# GEOLOGY\r\n1 7\r\n# PERM\r\n2 -3\r\n# TEMP\r\n10 20\r\n"
                              "# CONC           1\r\n4 5\r\n# CONCM          12\r\n6 1E38\r\n");
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(1));
    Quiet quiet;
    const auto value = [&](std::string_view words) {
        results::StreamReader stream(file);
        return convert::evaluate_formula(words, stream, grid, quiet.user);
    };
    const std::string_view trimmed = base::trimmed(text, " ");
    const Field result = value(text);
    const bool ends_with_operand = !trimmed.empty() && std::ranges::count(trimmed, ' ') % 2 == 0;
    if (!ends_with_operand) {
        return;
    }
    // Signs without an effect, and an operator without an operand.
    for (const char* const more : {" - GONE", " / GONE", " +"}) {
        require(same_values(value(std::string(trimmed) + more), result), "the value has changed");
    }
}

} // namespace fuzz
