// The periods of a session, and the copying of one to another.

#include "app/workspace.h"
#include "base/numbertext.h"
#include "grid/worksheet.h"
#include "grid/worksheettools.h"
#include "sim/periods.h"
#include "ui/desk.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/plaindialog.h"
#include "ui/text.h"
#include "ui/valuefield.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr const char* page = "worksheet.md#In the window";
constexpr int edit_data = 3;

bool has_data(grid::Worksheet& worksheet, int period) {
    bool any = false;
    for (int k = 1; k <= worksheet.Array_Count(); ++k) {
        any = any || worksheet.store().has_period(worksheet.request().number(k), period);
    }
    return any;
}

class CopyDialog : public PlainDialog {
public:
    CopyDialog(EditorContext& editor, int from, QWidget* parent)
        : PlainDialog(editor.desk, "CopyTransientData", grid::copy_data_title, page, parent),
          worksheet_(editor.worksheet), from_(new CountField(from)), to_(new CountField(from + 1)) {
        from_->setObjectName("txtFrom");
        to_->setObjectName("txtTo");
        auto* const rows = new QFormLayout;
        rows->addRow(label_of(from_, tr("Copy data &from stress period:")), from_);
        rows->addRow(label_of(to_, tr("&to stress period:")), to_);
        body().addLayout(rows);
    }

protected:
    bool take() override;

private:
    grid::Worksheet& worksheet_;
    CountField* from_;
    CountField* to_;
};

bool CopyDialog::take() {
    const int from = from_->value(), to = to_->value();
    if (refused(grid::copy_target_refusal(from), from_) ||
        refused(grid::copy_target_refusal(to), to_)) {
        return false;
    }
    if (from != to && has_data(worksheet_, to) &&
        desk().user().ask(grid::copy_data_title, grid::copy_data_question(to),
                          base::Buttons::yes_no_risky) != base::Answer::yes) {
        return false;
    }
    return desk().attempt("Copy_Transient_Data()", [&] { worksheet_.copy_period(from, to); }) ==
           report::Outcome::done;
}

class PeriodsDialog : public PlainDialog {
public:
    explicit PeriodsDialog(EditorContext& editor);

    int period() const { return table_->item(table_->currentRow(), 0)->text().toInt(); }

protected:
    bool take() override { return true; }

private:
    void add_row(int period, double start);
    void mark_data();

    EditorContext& editor_;
    QTableWidget* table_;
};

PeriodsDialog::PeriodsDialog(EditorContext& editor)
    : PlainDialog(editor.desk, "Transient_data", to_qt(editor.worksheet.request().Edit_Caption),
                  page, editor.window),
      editor_(editor), table_(new QTableWidget(0, 3)) {
    const sim::PeriodTable periods = sim::PeriodTable::load(editor.model.files);
    table_->setObjectName("Period_Table");
    table_->setAccessibleName(tr("Stress periods"));
    table_->setHorizontalHeaderLabels(
        {tr("Period"), tr("Start time [%1]").arg(sim::time_unit_name(periods.unit)), tr("Data")});
    table_->verticalHeader()->hide();
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setTabKeyNavigation(false);
    double start = 0;
    int number = 0;
    for (const sim::Period& period : periods.rows) {
        ++number;
        if (period.active) {
            add_row(number, start);
            start += period.length;
        }
    }
    mark_data();
    table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    for (int column = 0; column < 2; ++column) {
        const int head = table_->horizontalHeader()->sectionSizeHint(column);
        table_->setColumnWidth(column, head + 2 * fontMetrics().height());
    }
    table_->horizontalHeader()->setStretchLastSection(true);
    body().addWidget(table_, 1);
    const auto edit = [this] { done(edit_data); };
    connect(&add_button("cmdEdit", tr("&Edit Data")), &QPushButton::clicked, this, edit);
    connect(table_, &QTableWidget::cellDoubleClicked, this, edit);
    connect(&add_button("copy_button", tr("&Copy...")), &QPushButton::clicked, this, [this] {
        CopyDialog(editor_, period(), this).exec();
        mark_data();
    });
    table_->setFocus();
}

void PeriodsDialog::add_row(int period, double start) {
    const int row = table_->rowCount();
    table_->insertRow(row);
    int column = 0;
    for (const QString& text :
         {QString::number(period), to_qt(base::value_text(start)), QString()}) {
        auto* const item = new QTableWidgetItem(text);
        item->setTextAlignment(column < 2 ? Qt::AlignRight | Qt::AlignVCenter : Qt::AlignCenter);
        table_->setItem(row, column++, item);
    }
    if (row == 0 || period == editor_.worksheet.Current_Period()) {
        table_->selectRow(row);
    }
}

void PeriodsDialog::mark_data() {
    for (int row = 0; row < table_->rowCount(); ++row) {
        const bool has = has_data(editor_.worksheet, table_->item(row, 0)->text().toInt());
        table_->item(row, 2)->setText(has ? tr("data") : QString());
    }
}

} // namespace

TransientChoice transient_data(EditorContext& editor) {
    PeriodsDialog dialog(editor);
    switch (dialog.exec()) {
    case QDialog::Accepted:
        return {1, editor.worksheet.Current_Period()};
    case edit_data:
        return {edit_data, dialog.period()};
    default:
        return {2, editor.worksheet.Current_Period()};
    }
}

} // namespace ui
