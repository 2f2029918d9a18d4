#include "core/form.h"

#include "base/numbertext.h"
#include "base/textfile.h"

#include <fmt/format.h>

#include <algorithm>

namespace core {

namespace {

const FieldInfo* find_field(std::span<const FieldInfo> fields, std::string_view name) {
    const auto field = std::find_if(fields.begin(), fields.end(),
                                    [&](const FieldInfo& info) { return info.name == name; });
    return field == fields.end() ? nullptr : &*field;
}

[[noreturn]] void fail_unknown(std::string_view name) {
    throw base::RangeFailure(fmt::format("the form has no field \"{}\"", name));
}

// How a field of the kind holds `text`.
std::string field_text(FieldKind kind, std::string_view text) {
    text = base::trimmed(text);
    if (kind == FieldKind::check) {
        return base::leading_number(text) != 0 ? "1" : "0";
    }
    return std::string(text);
}

std::string initial_text(const FieldInfo& field) {
    const bool counts_from_zero = field.kind == FieldKind::check ||
                                  field.kind == FieldKind::choice ||
                                  field.kind == FieldKind::slider;
    const std::string_view initial = field.initial;
    return std::string(initial.empty() && counts_from_zero ? "0" : initial);
}

} // namespace

const std::string& Form::get(std::string_view name) const {
    const auto value = values_.find(name);
    if (value == values_.end()) {
        fail_unknown(name);
    }
    return value->second;
}

std::vector<Notice> Form::set(std::string_view name, std::string_view text) {
    const FieldInfo* const field = find_field(fields(), name);
    if (field == nullptr) {
        fail_unknown(name);
    }
    values_.insert_or_assign(std::string(name), field_text(field->kind, text));
    return changed(name);
}

bool Form::enabled(std::string_view) const {
    return true;
}

bool Form::ask(base::Interaction&) const {
    return true;
}

void Form::reset_fields() {
    values_.clear();
    for (const FieldInfo& field : fields()) {
        values_.emplace(field.name, initial_text(field));
    }
}

void Form::put(std::string_view name, std::string_view text) {
    if (find_field(fields(), name) == nullptr) {
        fail_unknown(name);
    }
    values_.insert_or_assign(std::string(name), std::string(text));
}

std::vector<Notice> Form::changed(std::string_view) {
    return {};
}

std::optional<base::Refusal> TableForm::set_all(std::string_view column, std::string_view text) {
    std::optional<base::Refusal> first;
    for (int row = 1; row <= rows(); ++row) {
        const auto refusal = set_cell(row, column, text);
        if (!first) {
            first = refusal;
        }
    }
    return first;
}

} // namespace core
