#include "td/sessionscript.h"

#include "base/failure.h"
#include "base/numbertext.h"
#include "base/paths.h"
#include "base/textfile.h"
#include "core/extensions.h"
#include "td/scriptlines.h"
#include "td/sessionwords.h"

#include <fmt/format.h>

#include <ostream>

namespace td {

namespace {

using Words = std::vector<std::string>;
using Refused = std::optional<base::Refusal>;

// A line being carried out: its words behind the command.
struct Line {
    Context& context;
    const core::Project& project;
    grid::Worksheet& worksheet;
    const Words& words;

    int integer(std::size_t index, const char* what, int high) const {
        return integer_of(words[index], what, 1, high);
    }
    int array(std::size_t index) const {
        return index < words.size() ? integer(index, "array", worksheet.Array_Count()) : 1;
    }
    int zone(std::size_t index) const { return zone_of(words[index], worksheet.zones().size()); }
    std::vector<float> values(std::size_t first) const {
        std::vector<float> found;
        for (std::size_t i = first; i < words.size(); ++i) {
            found.push_back(base::leading_single(words[i]));
        }
        if (static_cast<int>(found.size()) > worksheet.Array_Count()) {
            throw UsageError(fmt::format("{} values are given for {} arrays", found.size(),
                                         worksheet.Array_Count()));
        }
        return found;
    }
};

Refused show_layer(const Line& line) {
    line.worksheet.show_layer(line.integer(0, "layer", line.worksheet.layers()));
    return std::nullopt;
}

Refused show_period(const Line& line) {
    line.worksheet.show_period(line.integer(0, "period", core::period_count));
    return std::nullopt;
}

Refused set(const Line& line) {
    const int column = line.integer(0, "column", line.worksheet.NX());
    const int row = line.integer(1, "row", line.worksheet.NY());
    return line.worksheet.set_cell(column, row, line.values(2));
}

Refused get(const Line& line) {
    const int column = line.integer(0, "column", line.worksheet.NX());
    const int row = line.integer(1, "row", line.worksheet.NY());
    Words fields{fmt::to_string(column), fmt::to_string(row)};
    for (int k = 1; k <= line.worksheet.Array_Count(); ++k) {
        fields.push_back(base::exact_text(line.worksheet.cell(k, column, row)));
    }
    line.context.record(fields);
    return std::nullopt;
}

Refused reset(const Line& line) {
    return line.worksheet.reset(line.values(0));
}

Refused zone_add(const Line& line) {
    const std::vector<float> values = values_of(line.words[0], line.worksheet.Array_Count());
    return grid::add_zone(line.worksheet, nodes_of({line.words.begin() + 1, line.words.end()}),
                          values);
}

Refused zone_value(const Line& line) {
    const std::vector<float> values = values_of(line.words[1], line.worksheet.Array_Count());
    return grid::set_zone_values(line.worksheet, line.zone(0), values);
}

Refused zone_delete(const Line& line) {
    grid::delete_zone(line.worksheet, line.zone(0));
    return std::nullopt;
}

Refused zone_clear(const Line& line) {
    grid::clear_zones(line.worksheet);
    return std::nullopt;
}

Refused zone_transfer(const Line& line) {
    grid::transfer_zone(line.worksheet, line.zone(0));
    return std::nullopt;
}

Refused zone_list(const Line& line) {
    std::size_t number = 0;
    for (const core::Zone& zone : line.worksheet.zones()) {
        line.context.record(zone_record(++number, zone));
    }
    return std::nullopt;
}

Refused zone_save(const Line& line) {
    base::replace_file(line.words[0], grid::zones_text(line.worksheet.zones()));
    return std::nullopt;
}

Refused zone_load(const Line& line) {
    return grid::load_zones(line.worksheet, line.words[0]);
}

Refused save(const Line& line) {
    const auto form =
        static_cast<grid::ArrayForm>(index_of_word(line.words[1], array_form_words, "form"));
    const grid::GridPosition position(line.project);
    base::replace_file(line.words[0], grid::array_text(form, line.worksheet.array(line.array(2)),
                                                       line.worksheet.grid(), position));
    return std::nullopt;
}

// "FILE [A B] [K]": with an even number of words behind the file, A and B are not followed by K.
bool has_pair(const Words& words) {
    return words.size() >= 3;
}

Refused load(const Line& line) {
    grid::FirstCell first;
    if (has_pair(line.words)) {
        first = first_cell_of(line.words[1] + "," + line.words[2]);
    }
    return grid::load_array(line.worksheet, line.array(has_pair(line.words) ? 3 : 1), line.words[0],
                            grid::matrix_file_of(line.words[0]), first);
}

Refused modify(const Line& line) {
    const int last = line.worksheet.layers();
    grid::LayerRange layers{1, last};
    if (has_pair(line.words)) {
        layers = {line.integer(1, "layer", last), line.integer(2, "layer", last)};
    }
    const int k = line.array(has_pair(line.words) ? 3 : 1);
    const auto read = grid::TraceRules::read(base::read_bytes(line.words[0]), line.words[0]);
    if (read.refusal) {
        return read.refusal;
    }
    const auto result =
        grid::search_and_modify(line.worksheet, k, read.rules, layers, line.context.user);
    for (const Words& record : match_records(read.rules, result.outcome)) {
        line.context.record(record);
    }
    return result.refusal;
}

Refused copy_period(const Line& line) {
    const int from = line.integer(0, "period", core::period_count);
    const int to = line.integer(1, "period", core::period_count);
    line.worksheet.copy_period(from, to);
    return std::nullopt;
}

Refused files(const Line& line) {
    for (const std::string& name : line.worksheet.scratch_files()) {
        line.context.record({name});
    }
    return std::nullopt;
}

constexpr std::size_t any_number = 1000;

struct ScriptCommand {
    const char* name;
    std::size_t least, most; // words behind the name
    Refused (*run)(const Line&);
    bool needs_zones = false;
};

constexpr ScriptCommand commands[] = {
    {"layer", 1, 1, show_layer},
    {"period", 1, 1, show_period},
    {"set", 3, any_number, set},
    {"get", 2, 2, get},
    {"reset", 1, any_number, reset},
    {"zone add", 1, any_number, zone_add, true},
    {"zone value", 2, 2, zone_value, true},
    {"zone delete", 1, 1, zone_delete, true},
    {"zone clear", 0, 0, zone_clear, true},
    {"zone transfer", 1, 1, zone_transfer, true},
    {"zone list", 0, 0, zone_list, true},
    {"zone save", 1, 1, zone_save, true},
    {"zone load", 1, 1, zone_load, true},
    {"save", 2, 3, save},
    {"load", 1, 4, load},
    {"modify", 1, 4, modify},
    {"copy-period", 2, 2, copy_period},
    {"files", 0, 0, files},
};

// Finds the command and leaves the words behind it.
const ScriptCommand& command_of(Words& words) {
    std::string name = words.front();
    std::size_t count = 1;
    if (name == "zone" && words.size() > 1) {
        name += " " + words[count++];
    }
    for (const ScriptCommand& command : commands) {
        if (name == command.name) {
            words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(count));
            if (words.size() < command.least || words.size() > command.most) {
                throw UsageError(fmt::format("{}: wrong number of words", name));
            }
            return command;
        }
    }
    throw UsageError(fmt::format("unknown word \"{}\"", name));
}

int carry_out(Context& context, const core::Project& project, grid::Worksheet& worksheet,
              Words words) {
    const ScriptCommand& command = command_of(words);
    Refused refusal = command.needs_zones ? grid::zones_refusal(worksheet.request()) : std::nullopt;
    if (!refusal) {
        refusal = command.run({context, project, worksheet, words});
    }
    context.out.flush(); // somebody may be waiting for it to write the next line
    return refusal ? context.refuse(*refusal) : int{done};
}

base::Answer leave_answer(const Words& words) {
    static constexpr base::Answer answers[] = {base::Answer::yes, base::Answer::no,
                                               base::Answer::cancel};
    if (words.size() != 2) {
        throw UsageError("leave: yes, no or cancel is needed");
    }
    return answers[index_of_word(words[1], "yes|no|cancel", "leave")];
}

int leave_at_end(Context& context, grid::Worksheet& worksheet) {
    const base::Answer answer = context.user.ask(
        worksheet.request().Edit_Caption, worksheet.leave_question(), base::Buttons::yes_no_cancel);
    if (answer == base::Answer::cancel) {
        return refused;
    }
    worksheet.leave(answer);
    return done;
}

} // namespace

int run_session_script(Context& context, const core::Project& project, grid::Worksheet& worksheet,
                       ScriptLines& lines) {
    while (const auto words = lines.next()) {
        if (words->front() != "leave") {
            if (const int status = carry_out(context, project, worksheet, *words); status != done) {
                return status;
            }
            continue;
        }
        const base::Answer answer = leave_answer(*words);
        if (answer != base::Answer::cancel) {
            lines.require_end();
        }
        worksheet.leave(answer);
        if (worksheet.ended()) {
            return done;
        }
    }
    return leave_at_end(context, worksheet);
}

} // namespace td
