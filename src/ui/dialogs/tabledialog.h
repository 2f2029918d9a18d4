// A dialog over a form whose main part is one or more tables.
#pragma once

#include "ui/formdialog.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace ui {

class TableView;

class TableDialog : public FormDialog {
    Q_OBJECT

public:
    using FormDialog::FormDialog;

protected:
    // A table with the object name `name`; the owner lays it out.
    TableView* make_table(core::TableForm& form, const char* name, const QString& caption);
    // Shows the whole form anew.
    void refresh();
    // After load, refresh(), and each change of a cell or field.
    virtual void updated() {}

    // Asks for a file and takes it over by `read`; shows its refusal or failure.
    void load_file(
        const char* title, const char* filter,
        const std::function<std::optional<base::Refusal>(const std::filesystem::path&)>& read);
    // Asks for a file and writes it, when no cell is refused; `extension` follows the model's name
    // in the proposal.
    void save_file(const char* title, const char* filter, const char* extension,
                   const std::function<void(const std::filesystem::path&)>& write);

    void loaded() override;
    bool commit() override;
    void show_refused(const base::Refusal& refusal) override;

private:
    std::vector<TableView*> tables_;
};

} // namespace ui
