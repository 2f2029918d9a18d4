// What the worksheet edits: one request for each menu command that opens it.
#pragma once

#include "base/failure.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace grid {

// Dialog that asks for the values of a cell or a zone.
enum class ValueKind {
    one = 1,    // Specify_One_Real
    two = 16,   // Specify_Two_values
    three = 17, // Specify_Three_values
};

// For which orientations a request holds.
enum class Stacking { any, map_view, cross_section };

// One row of the table of requests. The first array of the item has its name in the array store;
// defaults are those of core::parameter_default, the cells of the flags those of core/itemcells.
struct RequestRow {
    std::array<int, 3> numbers; // Parameter_List; 0 for none
    ValueKind Value_Kind;
    std::array<const char*, 3> prompts; // Prompt_1 to Prompt_3
    const char* Edit_Caption;
    const char* Prompt_Line;
    bool positive; // the first value has to be above 0
    bool Zones_Allowed;
    Stacking stacking;
};
std::span<const RequestRow> request_rows();

// The menu commands that open the worksheet, with the first parameter of what they edit.
struct WorksheetCommand {
    const char* command; // name in the menu
    int number;
};
std::span<const WorksheetCommand> worksheet_commands();

// An edit request as the worksheet takes it.
struct EditRequest {
    std::array<int, 3> Parameter_List{}; // 0 for none
    ValueKind Value_Kind = ValueKind::one;
    std::array<std::string, 3> prompts;
    std::string Edit_Caption;
    std::string window_caption; // the first prompt without its colon
    std::string Prompt_Line;
    bool positive = false;
    bool Zones_Allowed = true;

    int Current_Parameter() const { return Parameter_List[0]; }
    int Array_Count() const;
    // Parameter number of array k (from 1); RangeFailure for another one.
    int number(int k) const;
    // Value of a cell of array k (from 1) in a period without data: 0 for the second of two.
    float default_value(int k) const;
    // Number of the zone companion.
    int zone_number() const;
    bool edits(int number) const;

    // Why a value cannot be given to a cell or a zone of array k (from 1).
    std::optional<base::Refusal> value_refusal(int k, float value) const;
    // The value as it is kept: Property Zones are whole numbers.
    float kept_value(float value) const;
};

// The request of the item whose first parameter is `number`, in a model of this orientation; also
// of the arrays of minerals and tracers. Nothing for a parameter that no menu command edits.
std::optional<EditRequest> find_request(int number, int GridOrientation);
// The request of the item that has `number` among its arrays.
std::optional<EditRequest> find_request_with(int number, int GridOrientation);
// The request of one mineral's array, from 1411 on, or of one tracer's, from 1441 on.
EditRequest distribution_request(int number, std::string_view name);

// Why a cell cannot become one of a package ("drain", "GHB", "river"): it has a fixed head (flow
// boundary below 0) or is inactive (0).
std::optional<base::Refusal> package_refusal(std::string_view package, float boundary);

} // namespace grid
