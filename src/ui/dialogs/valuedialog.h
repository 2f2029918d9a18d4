// The fields of the values of an item, and the dialogs that stand on them.
#pragma once

#include "ui/plaindialog.h"

#include <span>
#include <vector>

namespace grid {
class Worksheet;
struct EditRequest;
} // namespace grid

namespace ui {

class ValueField;

// Asks for one value of each array of the item: prompt, field and hint.
class ValueDialog : public PlainDialog {
    Q_OBJECT

public:
    // `head` stands above the fields, empty: nothing does. `values` has one value an array.
    ValueDialog(Desk& desk, const grid::EditRequest& request, const char* object_name,
                const QString& title, const QString& head, std::span<const float> values,
                QWidget* parent);

    std::vector<float> values() const;

protected:
    // Shows what the item refuses. True: the values can be kept.
    bool values_are_good();
    bool take() override { return values_are_good(); }

private:
    const grid::EditRequest& request_;
    std::vector<ValueField*> fields_;
};

// Specify_One_Real, Specify_Two_values or Specify_Three_values.
const char* value_dialog_name(const grid::EditRequest& request);

} // namespace ui
