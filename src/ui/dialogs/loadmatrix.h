// The dialog that asks which values of a text file go where.
#pragma once

#include "ui/dialogs/filefield.h"
#include "ui/plaindialog.h"

#include "core/arraystore.h"

namespace ui {

class CountField;

// Matrix_Load: takes a text file into a layer of NX columns and NY rows.
class LoadMatrixDialog : public PlainDialog {
    Q_OBJECT

public:
    LoadMatrixDialog(Desk& desk, core::LayerValues values, int NX, int NY, QWidget* parent);

    // The layer with the file's values, after OK.
    core::LayerValues& values() { return values_; }

protected:
    bool take() override;

private:
    QWidget* refused_field() const;

    core::LayerValues values_;
    int NX_, NY_;
    FileField* file_;
    CountField* column_;
    CountField* row_;
};

} // namespace ui
