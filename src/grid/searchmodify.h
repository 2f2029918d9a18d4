// Search and modify: up to 50 rules that mark or change the cells whose value lies in a range.
#pragma once

#include "base/failure.h"
#include "core/arraystore.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace base {
class Interaction;
}
namespace core {
class ModelFiles;
}

namespace grid {

enum class TraceOption { display_only, replace, add, multiply };

// One rule. A cell matches when minimum <= value <= maximum.
struct Trace_Row {
    bool active = false;
    std::int32_t colour = 0; // of a matched cell
    float minimum = 0, maximum = 0;
    float value = 0; // operand
    TraceOption option = TraceOption::display_only;
};

// The rules of the dialog, and its file (.TRS): a first line, then one line for each rule with six
// items.
struct TraceRules {
    static constexpr std::size_t row_count = 50;
    std::array<Trace_Row, row_count> rows;

    // Free-form; rows and items that the file does not have keep their defaults. An option beyond
    // the four is Display Only. Refused: another first line. `file` is named in the message.
    struct Read;
    static Read read(std::string_view bytes, const std::filesystem::path& file);
    std::string bytes() const;

    // The rules of the model, <base>.trs: the default ones when there is no file or one that is no
    // rule file.
    static TraceRules load(const core::ModelFiles& files);
    void save(core::ModelFiles& files) const;
};
struct TraceRules::Read {
    TraceRules rules;
    std::optional<base::Refusal> refusal;
};

// Why a typed number cannot be a limit or an operand: it is beyond the range of a single.
std::optional<base::Refusal> trace_value_refusal(double value);

// What to search.
struct TraceSearch {
    int number = 0;          // parameter of the array
    float default_value = 0; // of a cell of a period without data
    int period = 1;
    int first_layer = 1, last_layer = 1; // as typed; nothing is searched when first > last
    int shown_layer = 0;                 // the one that is drawn; 0 for none
};
// Why the typed layers cannot be searched.
std::optional<base::Refusal> trace_layers_refusal(const TraceSearch& search, int layers);

struct TraceOutcome {
    // Cells that each rule matched before all others.
    std::array<std::size_t, TraceRules::row_count> counts{};
    // As trace_cells gives it for the shown layer; empty when that was not searched.
    std::vector<std::uint8_t> shown;
};

// The number of the rule (from 1) that each cell of a layer matches, 0 for none; changes `values`
// as the rules say. Inactive cells (`boundary` 0; empty: all are active) match nothing. True when a
// value changed. The spans have one item a cell.
bool trace_cells(const TraceRules& rules, std::span<float> values, std::span<const float> boundary,
                 std::span<std::uint8_t> matched);

// Searches the layers and writes those that changed. Cells are active as the flow boundaries of
// period 1 say; for the flow boundaries themselves, those being searched count. Stops behind the
// present row of cells when the user asks for it; what was done so far is written.
TraceOutcome Search_And_Modify(const TraceRules& rules, const TraceSearch& search,
                               core::ArrayStore& store, base::Interaction& user);

} // namespace grid
