// Value|Search And Modify: the rules, then the layers.

#include "base/paths.h"
#include "base/textfile.h"
#include "grid/worksheet.h"
#include "grid/worksheettools.h"
#include "ui/colourcells.h"
#include "ui/colours.h"
#include "ui/desk.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/dialogs/rulemodel.h"
#include "ui/dialogs/savefile.h"
#include "ui/plaindialog.h"
#include "ui/text.h"
#include "ui/valuefield.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr const char* page = "zones.md#Search and modify";
constexpr const char* filter = "Trace Files (*.TRS)|*.trs";
constexpr int shown_rows = 14;

// Asks for the layers to be searched.
class LevelDialog : public PlainDialog {
public:
    LevelDialog(Desk& desk, int layers, QWidget* parent)
        : PlainDialog(desk, "Trace_Level", "Search Level", page, parent), layers_(layers),
          first_(new CountField(1)), last_(new CountField(layers)) {
        first_->setObjectName("txtMinimum");
        last_->setObjectName("txtMaximum");
        auto* const rows = new QFormLayout;
        rows->addRow(label_of(first_, tr("M&inimum:")), first_);
        rows->addRow(label_of(last_, tr("M&aximum:")), last_);
        body().addLayout(rows);
    }

    grid::LayerRange range() const { return {first_->value(), last_->value()}; }

protected:
    bool take() override {
        const auto refusal = [&](int first, int last) {
            return grid::trace_layers_refusal({.first_layer = first, .last_layer = last}, layers_);
        };
        return !refused(refusal(first_->value(), 1), first_) &&
               !refused(refusal(1, last_->value()), last_);
    }

private:
    int layers_;
    CountField* first_;
    CountField* last_;
};

class TraceDialog : public PlainDialog {
public:
    explicit TraceDialog(EditorContext& editor);

    const grid::TraceRules& rules() const { return model_->rules(); }
    int array() const { return list_->currentIndex() + 1; }
    grid::LayerRange layers() const { return layers_; }

protected:
    bool take() override;

private:
    void load();
    void save();

    EditorContext& editor_;
    RuleModel* model_;
    QComboBox* list_;
    TableView* table_;
    grid::LayerRange layers_{1, 1};
};

TraceDialog::TraceDialog(EditorContext& editor)
    : PlainDialog(editor.desk, "TraceCellValue", "Search And Modify", page, editor.window),
      editor_(editor), model_(new RuleModel(this)), list_(new QComboBox),
      table_(new TableView(editor.desk, *model_)) {
    desk().attempt("Read_TRS()",
                   [&] { model_->set_rules(grid::TraceRules::load(editor.worksheet.files())); });
    list_->setObjectName("Trace_Parameter");
    for (int k = 1; k <= editor.worksheet.Array_Count(); ++k) {
        list_->addItem(to_qt(grid::array_label(editor.worksheet.request(), k)));
    }
    auto* const head = new QHBoxLayout;
    head->addWidget(label_of(list_, tr("&Parameter:")));
    head->addWidget(list_);
    head->addStretch(1);
    body().addLayout(head);
    table_->setObjectName("Trace_Table");
    table_->setAccessibleName(tr("Rules"));
    table_->fit_columns();
    table_->set_shown_rows(shown_rows);
    new ColourCells(*table_, desk().choosers());
    body().addWidget(table_, 1);
    connect(&add_button("cmdLoad", tr("&Load...")), &QPushButton::clicked, this,
            &TraceDialog::load);
    connect(&add_button("cmdSave", tr("&Save...")), &QPushButton::clicked, this,
            &TraceDialog::save);
    connect(&add_button("cmdClear", tr("&Clear")), &QPushButton::clicked, this,
            [this] { model_->set_rules({}); });
    table_->setCurrentIndex(model_->index(0, 0));
    table_->setFocus();
}

void TraceDialog::load() {
    const auto file =
        desk().user().choose_file(base::FileChoice::open, "Load Trace File", filter, "");
    if (!file) {
        return;
    }
    desk().attempt("Load_TRS(Filename)", [&] {
        const auto read = grid::TraceRules::read(base::read_bytes(*file), *file);
        if (!refused(read.refusal, table_)) {
            model_->set_rules(read.rules);
        }
    });
}

void TraceDialog::save() {
    const auto file = choose_to_write(desk().user(), "Save Trace File As", filter);
    if (file) {
        desk().attempt("Save_TRS(Filename)",
                       [&] { base::replace_file(file->file, rules().bytes()); });
    }
}

bool TraceDialog::take() {
    if (!table_->finish_editing()) {
        return false;
    }
    LevelDialog dialog(desk(), editor_.worksheet.layers(), this);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    layers_ = dialog.range();
    return true;
}

SearchMarks marks_of(const grid::TraceRules& rules, grid::TraceOutcome outcome) {
    SearchMarks marks{std::move(outcome.shown), {}};
    for (const grid::Trace_Row& row : rules.rows) {
        marks.colours.push_back(to_qt_colour(row.colour).rgb());
    }
    return marks;
}

} // namespace

SearchMarks search_and_modify(EditorContext& editor) {
    TraceDialog dialog(editor);
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    grid::TraceResult result;
    editor.desk.attempt("Search_And_Modify()", [&] {
        result = grid::search_and_modify(editor.worksheet, dialog.array(), dialog.rules(),
                                         dialog.layers(), editor.desk.user());
    });
    if (result.refusal) {
        base::show(editor.desk.user(), *result.refusal);
    }
    return marks_of(dialog.rules(), std::move(result.outcome));
}

} // namespace ui
