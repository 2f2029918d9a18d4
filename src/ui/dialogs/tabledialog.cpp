#include "ui/dialogs/tabledialog.h"

#include "ui/desk.h"
#include "ui/dialogs/savefile.h"
#include "ui/tableview.h"
#include "ui/text.h"

#include <QScreen>

#include <algorithm>

namespace ui {

TableView* TableDialog::make_table(core::TableForm& form, const char* name,
                                   const QString& caption) {
    auto* table = new TableView(context().desk, form);
    table->setObjectName(name);
    table->setAccessibleName(caption);
    connect(table, &TableView::edited, this, [this] {
        view().show_values();
        updated();
    });
    if (tables_.empty()) {
        connect(&view(), &FormView::changed, this, &TableDialog::refresh);
    }
    tables_.push_back(table);
    return table;
}

void TableDialog::refresh() {
    for (TableView* table : tables_) {
        table->reload();
    }
    view().show_values();
    updated();
}

void TableDialog::loaded() {
    refresh();
    for (TableView* table : tables_) {
        table->fit_columns();
    }
    // The toolkit would give it two thirds of the screen, with columns out of sight.
    resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
}

bool TableDialog::commit() {
    const auto accepted = [](TableView* table) { return table->finish_editing(); };
    return std::ranges::all_of(tables_, accepted) && FormDialog::commit();
}

void TableDialog::show_refused(const base::Refusal& refusal) {
    if (refusal.field.empty() && !tables_.empty()) {
        tables_.front()->setFocus();
    } else {
        FormDialog::show_refused(refusal);
    }
}

void TableDialog::load_file(
    const char* title, const char* filter,
    const std::function<std::optional<base::Refusal>(const std::filesystem::path&)>& read) {
    Desk& desk = context().desk;
    if (!commit()) {
        return;
    }
    const auto file = desk.user().choose_file(base::FileChoice::open, title, filter, "");
    if (!file) {
        return;
    }
    std::optional<base::Refusal> refusal;
    desk.attempt("Load_Button_Click()", [&] { refusal = read(*file); });
    if (refusal) {
        base::show(desk.user(), *refusal);
    }
    refresh();
}

void TableDialog::save_file(const char* title, const char* filter, const char* extension,
                            const std::function<void(const std::filesystem::path&)>& write) {
    Desk& desk = context().desk;
    if (!commit()) {
        return;
    }
    const std::string name = desk.model()->files.base_name() + extension;
    const auto file = desk.user().choose_file(base::FileChoice::save, title, filter, name);
    if (file && may_write(desk.user(), title, *file)) {
        desk.attempt("Save_Button_Click()", [&] { write(*file); });
    }
}

} // namespace ui
