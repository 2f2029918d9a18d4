#include "ui/dialogs/environmenttabs.h"

#include "core/project.h"
#include "grid/griddefinition.h"
#include "ui/colours.h"
#include "ui/desk.h"
#include "ui/plaindialog.h"
#include "ui/text.h"
#include "ui/valuefield.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace ui {

namespace {

constexpr const char* appearance = "GRID_APPEARANCE";

struct Element {
    const char* caption;
    const char* key;    // of GRID_APPEARANCE
    const char* colour; // of COLOR, nullptr for none
};
constexpr Element elements[] = {
    {"&Mesh", "MESH", "MESH"},
    {"&Inactive cells", "INACTIVE_CELL", "INACTIVE_CELL"},
    {"Fixed &head cells", "FIXEDHEAD_CELL", "FIXEDHEAD_CELL"},
    {"Fixed &concentration cells", "FIXEDCONC_CELL", "FIXEDCONC_CELL"},
    {"&Discharge wells", "DISCHARGE_WELL", "DISCHARGE_WELL"},
    {"&Recharge wells", "RECHARGE_WELL", "RECHARGE_WELL"},
    {"&Zones", "ZONES", nullptr},
    {"Monitoring &points", "BORES", "Bores"},
    {"Digiti&zed points", "DIGI_POINTS", "DIGI_POINTS"},
};

} // namespace

AppearanceTab::AppearanceTab(Desk& desk, const core::Project& project) {
    auto* const whole = new QVBoxLayout(this);
    auto* const rows = new QGridLayout;
    whole->addLayout(rows);
    whole->addStretch(1);
    rows->setColumnStretch(2, 1);
    rows->addWidget(new QLabel(tr("Visible")), 0, 0);
    rows->addWidget(new QLabel(tr("Color")), 0, 1);
    for (const Element& element : elements) {
        const int row = rows->rowCount();
        auto* const check = new QCheckBox(element.caption);
        check->setObjectName(QString("Visible_%1").arg(element.key));
        check->setChecked(project.integer(appearance, element.key) != 0);
        rows->addWidget(check, row, 0);
        checks_.push_back(check);
        ColourButton* button = nullptr;
        if (element.colour) {
            button = new ColourButton(desk.choosers(), project.integer("COLOR", element.colour));
            button->setObjectName(QString("Color_%1").arg(element.key));
            button->setAccessibleName(tr("Color of %1").arg(check->text().remove('&')));
            rows->addWidget(button, row, 1);
        }
        colours_.push_back(button);
    }
}

void AppearanceTab::save(core::Project& project) const {
    for (std::size_t n = 0; n < std::size(elements); ++n) {
        project.set_integer(appearance, elements[n].key, checks_[n]->isChecked() ? -1 : 0);
        if (colours_[n]) {
            project.set_integer("COLOR", elements[n].colour, colours_[n]->colour());
        }
    }
}

CoordinateTab::CoordinateTab(const core::Project& project) : fields_(field_count) {
    struct Place {
        Field field;
        const char* name;
        const char* caption;
        const char* section;
        const char* key;
        int row, column; // pairs of caption and field
        const char* unit = "m";
    };
    static constexpr Place sheet[] = {
        {x1, "txtX1", "X&1:", "DIMENSION", "SHEET_X1", 0, 0},
        {y1, "txtY1", "&Y1:", "DIMENSION", "SHEET_Y1", 0, 1},
        {x2, "txtX2", "X&2:", "DIMENSION", "SHEET_X2", 1, 0},
        {y2, "txtY2", "Y2:", "DIMENSION", "SHEET_Y2", 1, 1},
    };
    static constexpr Place grid[] = {
        {left, "txtOriginX", "&X:", "GRIDPOSITION", "LEFT", 0, 0},
        {top, "txtOriginY", "Y:", "GRIDPOSITION", "TOP", 0, 1},
        {angle, "txtAngle", "&Angle:", "GRIDPOSITION", "ANGLE", 1, 0, "\u00B0"},
    };
    const auto add = [&](QGridLayout& rows, const Place& place) {
        auto* const field = new ValueField(project.single(place.section, place.key));
        field->setObjectName(place.name);
        rows.addWidget(label_of(field, to_qt(place.caption)), place.row, 3 * place.column);
        rows.addWidget(field, place.row, 3 * place.column + 1);
        rows.addWidget(new QLabel(to_qt(place.unit)), place.row, 3 * place.column + 2);
        fields_[place.field] = field;
    };
    auto* const whole = new QVBoxLayout(this);
    auto* const sheet_box = new QGroupBox(tr("Sheet: lower left and upper right corner"));
    auto* const grid_box = new QGroupBox(tr("Grid: upper left corner and rotation"));
    auto* const sheet_rows = new QGridLayout(sheet_box);
    auto* const grid_rows = new QGridLayout(grid_box);
    for (const Place& place : sheet) {
        add(*sheet_rows, place);
    }
    for (const Place& place : grid) {
        add(*grid_rows, place);
    }
    whole->addWidget(sheet_box);
    whole->addWidget(grid_box);
    whole->addStretch(1);
}

std::optional<CoordinateTab::Fault> CoordinateTab::fault() const {
    const auto value = [this](Field field) { return fields_[field]->value(); };
    if (const auto refusal = grid::sheet_refusal({value(x1), 0, value(x2), 1})) {
        return Fault{*refusal, fields_[x1]};
    }
    if (const auto refusal = grid::sheet_refusal({0, value(y1), 1, value(y2)})) {
        return Fault{*refusal, fields_[y1]};
    }
    return std::nullopt;
}

void CoordinateTab::save(core::Project& project) const {
    const auto value = [this](Field field) { return fields_[field]->value(); };
    const auto typed = [this](std::initializer_list<Field> fields) {
        return std::ranges::any_of(fields, [&](Field field) { return fields_[field]->typed(); });
    };
    if (typed({x1, y1, x2, y2})) {
        grid::set_sheet(project, grid::SheetEdges{value(x1), value(y1), value(x2), value(y2)});
    }
    if (typed({left, top, angle})) {
        grid::set_position(project, value(left), value(top), value(angle));
    }
}

} // namespace ui
