#include "td/command.h"

#include "app/workspace.h"
#include "core/form.h"

#include <fmt/format.h>

#include <ostream>

namespace td {

void Context::record(std::initializer_list<std::string_view> fields) const {
    std::string_view separator;
    for (const std::string_view field : fields) {
        out << separator << field;
        separator = "\t";
    }
    out << '\n';
}

void Context::record(const std::vector<std::string>& fields) const {
    std::string_view separator;
    for (const std::string& field : fields) {
        out << separator << field;
        separator = "\t";
    }
    out << '\n';
}

int Context::refuse(const base::Refusal& refusal) const {
    base::show(user, refusal);
    return refused;
}

int on_model_files(Context& context, core::Access access,
                   const std::function<int(app::Workspace&)>& work) {
    app::Loaded loaded = app::load_model(context.args.argument(model_argument.name), access);
    if (loaded.refusal) {
        return context.refuse(*loaded.refusal);
    }
    return work(*loaded.workspace);
}

int on_model(Context& context, core::Access access,
             const std::function<int(app::Workspace&)>& work) {
    return on_model_files(context, access, [&](app::Workspace& workspace) {
        const int status = work(workspace);
        if (status == done && access == core::Access::write) {
            workspace.save();
        }
        return status;
    });
}

namespace {

constexpr OptionSpec yes_option{"--yes", "", "answers Yes to every question"};
constexpr OptionSpec no_option{"--no", "", "answers No to every question"};
constexpr OptionSpec quiet_option{"--quiet", "", "drops messages that only inform"};

const char* value_name(const FieldOption& field) {
    switch (field.kind) {
    case FieldValue::zero_one:
        return "0|1";
    case FieldValue::word:
        return field.words;
    case FieldValue::integer:
        return "N";
    case FieldValue::text:
        break;
    }
    return "T";
}

std::string field_text(const FieldOption& field, const std::string& value) {
    switch (field.kind) {
    case FieldValue::zero_one:
        return fmt::to_string(integer_of(value, field.name, 0, 1));
    case FieldValue::word:
        return fmt::to_string(index_of_word(value, field.words, field.name));
    case FieldValue::integer:
        return fmt::to_string(integer_of(value, field.name, field.low, field.high));
    case FieldValue::text:
        break;
    }
    return value;
}

} // namespace

int index_of_word(std::string_view text, std::string_view words, std::string_view what) {
    std::string_view rest = words;
    for (int index = 0;; ++index) {
        const std::size_t end = std::min(rest.find('|'), rest.size());
        if (rest.substr(0, end) == text) {
            return index;
        }
        if (end == rest.size()) {
            throw UsageError(fmt::format("{}: \"{}\" is none of {}", what, text, words));
        }
        rest.remove_prefix(end + 1);
    }
}

std::vector<OptionSpec> all_options(const Command& command) {
    std::vector<OptionSpec> options(command.options.begin(), command.options.end());
    for (const FieldOption& field : command.fields) {
        options.push_back({field.name, value_name(field), field.help});
    }
    if (command.asks) {
        options.push_back(yes_option);
        options.push_back(no_option);
    }
    options.push_back(quiet_option);
    return options;
}

void fill_form(Context& context, core::Form& form, std::span<const FieldOption> fields) {
    for (const Arguments::Given& given : context.args.given()) {
        for (const FieldOption& field : fields) {
            if (given.option != field.name) {
                continue;
            }
            for (const core::Notice& notice :
                 form.set(field.field, field_text(field, given.value))) {
                context.user.message(notice.icon, notice.title, notice.text);
            }
        }
    }
}

int run_form(Context& context, core::Form& form, std::span<const FieldOption> fields) {
    return on_model(context, core::Access::write, [&](app::Workspace& workspace) {
        form.load(workspace.project, workspace.files);
        fill_form(context, form, fields);
        return accept_form(context, workspace, form);
    });
}

int accept_form(Context& context, app::Workspace& workspace, core::Form& form) {
    if (const auto refusal = form.check()) {
        return context.refuse(*refusal);
    }
    if (!form.ask(context.user)) {
        return refused;
    }
    form.save(workspace.project, workspace.files);
    for (const core::Notice& notice : form.saved_notices()) {
        context.user.message(notice.icon, notice.title, notice.text);
    }
    return done;
}

} // namespace td
