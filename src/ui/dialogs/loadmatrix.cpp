#include "ui/dialogs/loadmatrix.h"

#include "grid/worksheettools.h"
#include "ui/desk.h"
#include "ui/text.h"
#include "ui/valuefield.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr const char* filter = "ASCII Array Files (*.DAT)|*.DAT|SURFER GRD Files(*.GRD)|*.GRD";
constexpr int grd_filter = 2;

} // namespace

LoadMatrixDialog::LoadMatrixDialog(Desk& desk, core::LayerValues values, int NX, int NY,
                                   QWidget* parent)
    : PlainDialog(desk, "Matrix_Load", grid::load_matrix_title, "zones.md#Layers as text", parent),
      values_(std::move(values)), NX_(NX), NY_(NY),
      file_(new FileField(
          desk.user(),
          [] {
              return FileQuestion{base::FileChoice::open, grid::load_matrix_title, filter};
          },
          "txtFile")),
      column_(new CountField(1)), row_(new CountField(1)) {
    column_->setObjectName("txtColumn");
    row_->setObjectName("txtRow");
    auto* const rows = new QFormLayout;
    rows->addRow(label_of(&file_->line(), tr("&File:")), file_);
    rows->addRow(tr("Maximum Numbers:"), new QLabel(QString("Column=%1; Row=%2").arg(NX).arg(NY)));
    rows->addRow(label_of(column_, tr("&Column")), column_);
    rows->addRow(label_of(row_, tr("&Row")), row_);
    for (CountField* const field : {column_, row_}) {
        field->setToolTip(tr("The cell of the worksheet that takes the first value"));
    }
    body().addLayout(rows);
}

// The cell first, as the loading tests it.
QWidget* LoadMatrixDialog::refused_field() const {
    if (grid::first_cell_refusal({column_->value(), 1}, NX_, NY_)) {
        return column_;
    }
    if (grid::first_cell_refusal({1, row_->value()}, NX_, NY_)) {
        return row_;
    }
    return &file_->line();
}

bool LoadMatrixDialog::take() {
    const auto form =
        file_->filter() == grd_filter ? grid::MatrixFile::grd : grid::matrix_file_of(file_->file());
    std::optional<base::Refusal> refusal;
    const auto outcome = desk().attempt("ReadArray(Filename)", [&] {
        refusal = grid::load_array_file(file_->file(), form, {column_->value(), row_->value()}, NX_,
                                        NY_, values_);
    });
    return outcome == report::Outcome::done && !refused(refusal, refused_field());
}

} // namespace ui
