// Value|Array: the shown layer as a table.

#include "app/workspace.h"
#include "base/paths.h"
#include "grid/worksheet.h"
#include "grid/worksheettools.h"
#include "ui/desk.h"
#include "ui/dialogs/arraymodel.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/dialogs/loadmatrix.h"
#include "ui/dialogs/savefile.h"
#include "ui/tableview.h"
#include "ui/text.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr const char* save_filter =
    "ASCII Array (Wrap form)|*.*|ASCII Array|*.*|Surfer files|*.*|Surfer files (real world)|*.*";
constexpr int least_width = 20, largest_width = 400; // pixels
constexpr int letters = 16;                          // of a cell that shows every value whole

class MatrixDialog : public PlainDialog {
public:
    explicit MatrixDialog(EditorContext& editor);

protected:
    bool take() override;

private:
    QWidget* head();
    void prepare_table();
    void save();
    void load();

    EditorContext& editor_;
    grid::Worksheet& worksheet_;
    ArrayModel* model_;
    QComboBox* list_;
    QSpinBox* width_;
    TableView* table_;
};

MatrixDialog::MatrixDialog(EditorContext& editor)
    : PlainDialog(editor.desk, "Matrix", "Browse Array", "worksheet.md#In the window",
                  editor.window),
      editor_(editor), worksheet_(editor.worksheet), model_(new ArrayModel(editor.worksheet, this)),
      list_(new QComboBox), width_(new QSpinBox), table_(new TableView(editor.desk, *model_)) {
    body().addWidget(head());
    body().addWidget(table_, 1);
    prepare_table();
    connect(&add_button("cmdSave", tr("&Save...")), &QPushButton::clicked, this,
            &MatrixDialog::save);
    connect(&add_button("cmdLoad", tr("&Load...")), &QPushButton::clicked, this,
            &MatrixDialog::load);
    resize(editor.window->size() * 0.8);
    table_->setFocus();
}

QWidget* MatrixDialog::head() {
    auto* const whole = new QWidget;
    auto* const row = new QHBoxLayout(whole);
    row->setContentsMargins({});
    list_->setObjectName("Browse_Parameter");
    for (int k = 1; k <= worksheet_.Array_Count(); ++k) {
        list_->addItem(to_qt(grid::array_label(worksheet_.request(), k)));
    }
    connect(list_, &QComboBox::currentIndexChanged, this, [this](int index) {
        const QModelIndex current = table_->currentIndex();
        model_->show_array(index + 1);
        table_->setCurrentIndex(model_->index(current.row(), current.column()));
    });
    width_->setObjectName("ColumnWidth");
    width_->setRange(least_width, largest_width);
    width_->setSuffix(tr(" pixels"));
    width_->setKeyboardTracking(false);
    row->addWidget(label_of(list_, tr("&Parameter:")));
    row->addWidget(list_);
    row->addStretch(1);
    row->addWidget(label_of(width_, tr("Column&Width")));
    row->addWidget(width_);
    return whole;
}

void MatrixDialog::prepare_table() {
    table_->setObjectName("Matrix_Table");
    table_->setAccessibleName(tr("Values of the layer, columns by rows"));
    const QFontMetrics metrics(model_->data(model_->index(0, 0), Qt::FontRole).value<QFont>());
    QHeaderView& across = *table_->horizontalHeader();
    QHeaderView& down = *table_->verticalHeader();
    across.setMinimumSectionSize(least_width);
    down.setDefaultSectionSize(metrics.height() * 5 / 4);
    down.setSectionResizeMode(QHeaderView::Fixed);
    connect(width_, &QSpinBox::valueChanged, &across,
            [&across](int width) { across.setDefaultSectionSize(width); });
    width_->setValue(std::min(metrics.horizontalAdvance(u'0') * letters, largest_width));
    const QModelIndex current =
        model_->index(worksheet_.Current_Row() - 1, worksheet_.Current_Column() - 1);
    table_->setCurrentIndex(current);
    table_->scrollTo(current, QAbstractItemView::PositionAtCenter);
}

void MatrixDialog::save() {
    const auto chosen = choose_to_write(desk().user(), "Save Array As", save_filter);
    if (!chosen) {
        return;
    }
    desk().attempt("SaveArray(Filename)", [&] {
        const grid::GridPosition position(editor_.model.project);
        base::replace_file(chosen->file,
                           grid::array_text(static_cast<grid::ArrayForm>(chosen->filter - 1),
                                            model_->values(), worksheet_.grid(), position));
    });
}

void MatrixDialog::load() {
    LoadMatrixDialog dialog(desk(), model_->values(), worksheet_.NX(), worksheet_.NY(), this);
    if (dialog.exec() == QDialog::Accepted) {
        const QModelIndex current = table_->currentIndex();
        model_->set_values(std::move(dialog.values()));
        table_->setCurrentIndex(model_->index(current.row(), current.column()));
    }
}

bool MatrixDialog::take() {
    if (!table_->finish_editing()) {
        return false;
    }
    desk().attempt("value_matrix_browse_Click()", [&] { model_->keep(); });
    return true;
}

} // namespace

void browse_array(EditorContext& editor) {
    MatrixDialog(editor).exec();
}

} // namespace ui
