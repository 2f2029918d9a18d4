// A worksheet session for the dialogs that work on one.
#pragma once

#include "deskfixture.h"

#include "grid/worksheet.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/worksheetview.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include <memory>
#include <optional>

namespace support {

class EditorDialogFixture : public DeskFixture {
protected:
    // A session on the item of a parameter, in a new model of that size unless one is open.
    void open_worksheet(int number, int NX = 3, int NY = 2, int NZ = 1) {
        if (!desk.model()) {
            make_model(NX, NY, NZ);
        }
        model = desk.begin_session("test()", "test");
        ASSERT_TRUE(model);
        desk.lend(&*model);
        auto request = grid::find_request(number, model->project.flags.GridOrientation());
        worksheet = grid::Worksheet::Edit_data_for(*request, model->project, model->files, user);
        editor.emplace(ui::EditorContext{desk, *model, *worksheet, view, &window});
    }
    void leave(base::Answer answer) {
        editor.reset();
        worksheet->leave(answer);
        worksheet.reset();
        desk.lend(nullptr);
        model.reset();
        desk.end_session();
    }
    void TearDown() override {
        if (worksheet) {
            leave(base::Answer::no);
        }
    }

    static std::string text_of(QDialog& dialog, const char* field) {
        return widget<QLineEdit>(dialog, field).text().toStdString();
    }
    static void type(QDialog& dialog, const char* field, const char* text) {
        type_into(widget<QLineEdit>(dialog, field), text);
    }
    static void press(QDialog& dialog, const char* button) {
        click(widget<QPushButton>(dialog, button));
    }
    // Types into a cell of the table, rows and columns from 1, and ends with Enter.
    static void type_cell(QTableView& table, int column, int row, const char* text);
    static std::string cell_text(QTableView& table, int column, int row) {
        return table.model()
            ->index(row - 1, column - 1)
            .data(Qt::EditRole)
            .toString()
            .toStdString();
    }

    ui::WorksheetView view;
    std::optional<app::Workspace> model;
    std::unique_ptr<grid::Worksheet> worksheet;
    std::optional<ui::EditorContext> editor;
};

} // namespace support
