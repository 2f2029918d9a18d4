#include "ui/dialogs/valuedialog.h"

#include "grid/worksheet.h"
#include "grid/worksheettools.h"
#include "grid/zones.h"
#include "ui/desk.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/text.h"
#include "ui/valuefield.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr const char* page = "worksheet.md#In the window";

} // namespace

const char* value_dialog_name(const grid::EditRequest& request) {
    switch (request.Value_Kind) {
    case grid::ValueKind::one:
        return "Specify_One_Real";
    case grid::ValueKind::two:
        return "Specify_Two_values";
    case grid::ValueKind::three:
        break;
    }
    return "Specify_Three_values";
}

ValueDialog::ValueDialog(Desk& desk, const grid::EditRequest& request, const char* object_name,
                         const QString& title, const QString& head, std::span<const float> values,
                         QWidget* parent)
    : PlainDialog(desk, object_name, title, page, parent), request_(request) {
    if (!head.isEmpty()) {
        auto* const place = new QLabel(head);
        place->setObjectName("Place_Label");
        body().addWidget(place);
    }
    auto* const rows = new QFormLayout;
    for (std::size_t k = 0; k < values.size(); ++k) {
        auto* const field = new ValueField(values[k]);
        field->setObjectName(QString("Value_%1").arg(k + 1));
        rows->addRow(label_of(field, to_qt(request.prompts[k])), field);
        fields_.push_back(field);
    }
    body().addLayout(rows);
    if (!request.Prompt_Line.empty()) {
        QLabel* const hint = wrapped_label(to_qt(request.Prompt_Line));
        hint->setObjectName("Prompt_Line");
        QFont italic = hint->font();
        italic.setItalic(true);
        hint->setFont(italic);
        body().addWidget(hint);
    }
}

std::vector<float> ValueDialog::values() const {
    std::vector<float> values;
    for (const ValueField* const field : fields_) {
        values.push_back(field->value());
    }
    return values;
}

bool ValueDialog::values_are_good() {
    for (std::size_t k = 0; k < fields_.size(); ++k) {
        const auto refusal = request_.value_refusal(static_cast<int>(k) + 1, fields_[k]->value());
        if (refused(refusal, fields_[k])) {
            return false;
        }
    }
    return true;
}

namespace {

// Values of a zone, with the button that gives them to the cells.
class ZoneValueDialog : public ValueDialog {
public:
    ZoneValueDialog(EditorContext& editor, int zone, std::span<const float> values)
        : ValueDialog(editor.desk, editor.worksheet.request(),
                      value_dialog_name(editor.worksheet.request()), "Zone Value",
                      QString("Zone: %1").arg(zone), values, editor.window) {
        auto* const transfer = plain_button("cmdTransfer", ">>");
        auto* const hint = new QLabel("Click >> to transfer the zone value to cells");
        body().addSpacing(fontMetrics().height() / 2);
        auto* const row = new QHBoxLayout;
        row->addWidget(transfer);
        row->addWidget(hint, 1);
        body().addLayout(row);
        transfer->setToolTip(hint->text());
        transfer->setAccessibleName(hint->text());
        connect(transfer, &QPushButton::clicked, this, [this] {
            transfers_ = values_are_good();
            if (transfers_) {
                QDialog::accept();
            }
        });
    }

    bool transfers() const { return transfers_; }

private:
    bool transfers_ = false;
};

std::vector<float> zone_values(const grid::Worksheet& worksheet, int zone) {
    const core::Zone& edited = worksheet.zones().at(static_cast<std::size_t>(zone - 1));
    std::vector<float> values;
    for (int k = 0; k < worksheet.Array_Count(); ++k) {
        values.push_back(grid::zone_value(edited, static_cast<std::size_t>(k)));
    }
    return values;
}

// The values of a zone; where one of them, such as the 0 of a new zone, would be refused at OK, the
// default of the array.
std::vector<float> proposed_values(const grid::Worksheet& worksheet, int zone) {
    std::vector<float> values = zone_values(worksheet, zone);
    const grid::EditRequest& request = worksheet.request();
    for (int k = 1; k <= worksheet.Array_Count(); ++k) {
        float& value = values[static_cast<std::size_t>(k - 1)];
        if (request.value_refusal(k, value)) {
            value = request.default_value(k);
        }
    }
    return values;
}

// Where the transfer could stop in the middle, the step is one of the history all the same.
void keep_zone_values(grid::Worksheet& worksheet, int zone, const ZoneValueDialog& dialog) {
    const grid::Worksheet::Step step(worksheet);
    if (dialog.values() != zone_values(worksheet, zone)) {
        grid::set_zone_values(worksheet, zone, dialog.values());
    }
    if (dialog.transfers()) {
        grid::transfer_zone(worksheet, zone);
    }
}

// Asks for the values with which a layer is filled.
class ResetDialog : public ValueDialog {
public:
    explicit ResetDialog(EditorContext& editor)
        : ValueDialog(editor.desk, editor.worksheet.request(), "Reset_Array", "Reset Array", {},
                      editor.worksheet.Cell_Values(), editor.window) {
        auto* const caution = new QLabel("Caution:");
        QFont bold = caution->font();
        bold.setBold(true);
        caution->setFont(bold);
        body().addSpacing(fontMetrics().height() / 2);
        body().addWidget(caution);
        body().addWidget(wrapped_label(
            editor.worksheet.Array_Count() == 1
                ? "All cell values in the current layer will be replaced by the value specified "
                  "above."
                : "All cell values in the current layer will be replaced by the values specified "
                  "above."));
    }
};

} // namespace

bool edit_cell_values(EditorContext& editor) {
    grid::Worksheet& worksheet = editor.worksheet;
    const int column = worksheet.Current_Column(), row = worksheet.Current_Row();
    const QString head = QString("Column: %1  Row: %2  Layer: %3")
                             .arg(column)
                             .arg(row)
                             .arg(worksheet.Current_Layer());
    ValueDialog dialog(editor.desk, worksheet.request(), value_dialog_name(worksheet.request()),
                       "Cell Value", head, worksheet.Cell_Values(), editor.window);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    editor.desk.attempt("Set_Cell_Value()",
                        [&] { worksheet.set_cell(column, row, dialog.values()); });
    return true;
}

bool edit_zone_values(EditorContext& editor, int zone) {
    grid::Worksheet& worksheet = editor.worksheet;
    ZoneValueDialog dialog(editor, zone, proposed_values(worksheet, zone));
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    editor.desk.attempt("Transfer_Zone_to_Cells(zone)",
                        [&] { keep_zone_values(worksheet, zone, dialog); });
    return true;
}

void reset_array(EditorContext& editor) {
    ResetDialog dialog(editor);
    if (dialog.exec() == QDialog::Accepted) {
        editor.desk.attempt("value_matrix_reset_Click()",
                            [&] { editor.worksheet.reset(dialog.values()); });
    }
}

} // namespace ui
