// The tabs of Environment Options.
#pragma once

#include "base/failure.h"
#include "plot/plotsource.h"

#include <QWidget>

#include <map>
#include <optional>
#include <vector>

class QCheckBox;
class QComboBox;

namespace core {
class Project;
}
namespace grid {
class Worksheet;
}

namespace ui {

class ColourButton;
class Desk;
class LevelModel;
class TableView;
class ValueField;

// What is drawn, and in which colours.
class AppearanceTab : public QWidget {
    Q_OBJECT

public:
    AppearanceTab(Desk& desk, const core::Project& project);
    void save(core::Project& project) const;

private:
    std::vector<QCheckBox*> checks_;     // by element
    std::vector<ColourButton*> colours_; // by element, nullptr for those without a colour
};

// Where sheet and grid lie.
class CoordinateTab : public QWidget {
    Q_OBJECT

public:
    explicit CoordinateTab(const core::Project& project);

    struct Fault {
        base::Refusal refusal;
        QWidget* field;
    };
    std::optional<Fault> fault() const;
    void save(core::Project& project) const;

private:
    enum Field { x1, y1, x2, y2, left, top, angle, field_count };

    std::vector<ValueField*> fields_;
};

// Contour lines: what is drawn of them, and the table of levels.
class ContourTab : public QWidget {
    Q_OBJECT

public:
    // Without a worksheet there is nothing to restore defaults from. A level file that is none is
    // shown, and the table is empty then.
    ContourTab(Desk& desk, plot::PlotData layer, const core::ModelFiles& files,
               const grid::Worksheet* worksheet);

    // False: a cell is being edited and refused, which was shown.
    bool finish_editing();
    void save(core::Project& project, core::ModelFiles& files) const;

private:
    QWidget* make_switches();
    QWidget* make_buttons();
    void make_table();
    void load(const core::ModelFiles& files);
    void change_column(int column);
    void blend(int column);
    void set_label_sizes(int column);
    void save_levels();
    void load_levels();

    Desk& desk_;
    plot::PlotData data_;
    const grid::Worksheet* worksheet_;
    std::vector<QCheckBox*> switches_; // by row of their table
    QComboBox* parameter_;
    LevelModel* model_;
    TableView* table_;
    plot::LabelFormat format_;
    std::map<int, plot::ColourRange> blends_; // chosen anew, by column
};

} // namespace ui
