#include "base/paths.h"
#include "core/modelfiles.h"
#include "core/project.h"
#include "grid/worksheet.h"
#include "grid/worksheettools.h"
#include "ui/colourcells.h"
#include "ui/desk.h"
#include "ui/dialogs/contourdialogs.h"
#include "ui/dialogs/environmenttabs.h"
#include "ui/dialogs/levelmodel.h"
#include "ui/dialogs/savefile.h"
#include "ui/dialogs/shownlayer.h"
#include "ui/plaindialog.h"
#include "ui/text.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace ui {

namespace {

constexpr const char* filter = "Contour Files (*.ctr)|*.ctr";
constexpr int shown_rows = 11;

struct Switch {
    const char* name;
    const char* caption;
    const char* section;
    const char* key;
};
constexpr Switch switch_rows[] = {
    {"Contour_Visible", "&Visible", "GRID_APPEARANCE", "CONTOURS"},
    {"display_contour_line", "&Display contour lines", "GRID_APPEARANCE", "Contour_lines"},
    {"Contour_fill", "&Fill contours", "GRID_APPEARANCE", "Fill CONTOURS"},
    {"Ignore_Inactive_Cells", "&Ignore inactive cells", "GRID_APPEARANCE", "IGNORE_INACTIVE"},
    {"Check1", "Orient labels &uphill", "CONTOURS", "LabelUphill"},
};

// The colours of the first and the last row, by the project's keys.
struct BlendKeys {
    LevelModel::Column column;
    const char* low;
    const char* high;
};
constexpr BlendKeys blend_keys[] = {{LevelModel::line, "MinContour", "MaxContour"},
                                    {LevelModel::fill, "MinFill", "MaxFill"}};

plot::LevelRange range_of(const plot::ContourLevels& levels) {
    if (levels.size() < 2) {
        const double level = levels.empty() ? 0 : levels.front().level;
        return {level, level, 1};
    }
    return {levels.front().level, levels.back().level, double{levels[1].level} - levels[0].level};
}

} // namespace

ContourTab::ContourTab(Desk& desk, plot::PlotData layer, const core::ModelFiles& files,
                       const grid::Worksheet* worksheet)
    : desk_(desk), data_(std::move(layer)), worksheet_(worksheet), parameter_(new QComboBox),
      model_(new LevelModel(this)), table_(new TableView(desk, *model_)), format_(data_.project) {
    auto* const whole = new QVBoxLayout(this);
    whole->addWidget(make_switches());
    make_table();
    whole->addWidget(table_, 1);
    whole->addWidget(make_buttons());
    load(files);
    table_->fit_columns();
}

QWidget* ContourTab::make_switches() {
    auto* const place = new QWidget;
    auto* const fields = new QGridLayout(place);
    fields->setContentsMargins({});
    int number = 0;
    for (const Switch& row : switch_rows) {
        auto* const check = new QCheckBox(row.caption);
        check->setObjectName(row.name);
        check->setChecked(data_.project.integer(row.section, row.key) != 0);
        fields->addWidget(check, number % 3, number / 3);
        switches_.push_back(check);
        ++number;
    }
    parameter_->setObjectName("contour_parameter");
    if (worksheet_) {
        for (int k = 1; k <= worksheet_->Array_Count(); ++k) {
            parameter_->addItem(to_qt(grid::array_label(worksheet_->request(), k)));
        }
        parameter_->setCurrentIndex(contoured_array(data_.project, *worksheet_) - 1);
        connect(parameter_, &QComboBox::currentIndexChanged, this,
                [this](int index) { show_array(data_, *worksheet_, index + 1); });
    }
    parameter_->setEnabled(parameter_->count() > 0);
    auto* const list = new QHBoxLayout;
    list->addWidget(label_of(parameter_, tr("&Parameter:")));
    list->addWidget(parameter_, 1);
    fields->addLayout(list, 2, 1);
    return place;
}

void ContourTab::make_table() {
    table_->setObjectName("TDBGrid2");
    table_->setAccessibleName(tr("Contour levels"));
    table_->set_shown_rows(shown_rows);
    new ColourCells(*table_, desk_.choosers());
    table_->horizontalHeader()->setSectionsClickable(true);
    // A click on a head selects its column first, and is the way to change the whole of it.
    connect(table_->horizontalHeader(), &QHeaderView::sectionClicked, this,
            &ContourTab::change_column);
    auto* const change = new QAction(tr("Change &Column..."), table_);
    change->setObjectName("change_column");
    change->setShortcut(tr("Ctrl+Shift+C"));
    change->setShortcutContext(Qt::WidgetShortcut);
    connect(change, &QAction::triggered, this,
            [this] { change_column(std::max(table_->currentIndex().column(), 0)); });
    table_->addAction(change);
}

QWidget* ContourTab::make_buttons() {
    auto* const place = new QWidget;
    auto* const row = new QHBoxLayout(place);
    row->setContentsMargins({});
    const auto add = [&](const char* name, const QString& text, auto work) {
        QPushButton* const button = plain_button(name, text);
        connect(button, &QPushButton::clicked, this, work);
        row->addWidget(button);
        return button;
    };
    add("cmdSaveLevels", tr("&Save"), [this] { save_levels(); });
    add("cmdLoadLevels", tr("&Load"), [this] { load_levels(); });
    QPushButton* const restore = add("cmdRestore", tr("&Restore Defaults"),
                                     [this] { model_->set_levels(plot::restored_levels(data_)); });
    restore->setEnabled(worksheet_ != nullptr);
    add("cmdLabelFormat", tr("Label For&mat"), [this] {
        if (const auto format = ask_label_format(desk_, format_, window())) {
            format_ = *format;
        }
    });
    row->addStretch(1);
    return place;
}

void ContourTab::load(const core::ModelFiles& files) {
    desk_.attempt("Load_Contours()", [&] {
        plot::LevelsRead read = plot::load_levels(data_, files);
        if (read.refusal) {
            base::show(desk_.user(), *read.refusal);
        }
        model_->set_levels(std::move(read.levels));
    });
}

void ContourTab::change_column(int column) {
    if (!finish_editing()) {
        return;
    }
    const plot::ContourLevels& levels = model_->levels();
    if (column == LevelModel::level) {
        if (const auto range = ask_level_range(desk_, range_of(levels), window())) {
            model_->set_levels(plot::make_levels(*range, levels));
        }
    } else if (levels.empty()) {
        desk_.user().beep();
    } else if (column == LevelModel::line || column == LevelModel::fill) {
        blend(column);
    } else if (column == LevelModel::label) {
        if (const auto choice = ask_labels(desk_, levels.size(), window())) {
            plot::ContourLevels labelled = levels;
            plot::choose_labels(labelled, *choice);
            model_->set_levels(std::move(labelled));
        }
    } else {
        set_label_sizes(column);
    }
}

void ContourTab::blend(int column) {
    const auto& first = model_->levels().front();
    const auto& last = model_->levels().back();
    const bool line = column == LevelModel::line;
    const plot::ColourRange preset =
        line ? plot::ColourRange{first.line, last.line} : plot::ColourRange{first.fill, last.fill};
    if (const auto range = ask_colours(desk_, LevelModel::head(column), preset, window())) {
        model_->blend(LevelModel::Column(column), *range);
        blends_[column] = *range;
    }
}

void ContourTab::set_label_sizes(int column) {
    const auto size = column == LevelModel::label_height ? &plot::Contour_Level::label_height
                                                         : &plot::Contour_Level::label_spacing;
    const auto value =
        ask_label_size(desk_, LevelModel::head(column), model_->levels().front().*size, window());
    if (value) {
        plot::ContourLevels levels = model_->levels();
        for (plot::Contour_Level& level : levels) {
            level.*size = *value;
        }
        model_->set_levels(std::move(levels));
    }
}

void ContourTab::save_levels() {
    const auto file = choose_to_write(desk_.user(), "Save File", filter);
    if (file && finish_editing()) {
        desk_.attempt("Save_Contours(Filename)", [&] {
            base::replace_file(file->file, plot::levels_bytes(model_->levels()));
        });
    }
}

void ContourTab::load_levels() {
    const auto file = desk_.user().choose_file(base::FileChoice::open, "Open File", filter, "");
    if (!file) {
        return;
    }
    desk_.attempt("Load_Contours(Filename)", [&] {
        plot::LevelsRead read = plot::load_level_file(*file);
        if (read.refusal) {
            base::show(desk_.user(), *read.refusal);
        } else {
            model_->set_levels(std::move(read.levels));
        }
    });
}

bool ContourTab::finish_editing() {
    return table_->finish_editing();
}

void ContourTab::save(core::Project& project, core::ModelFiles& files) const {
    for (std::size_t n = 0; n < std::size(switch_rows); ++n) {
        project.set_integer(switch_rows[n].section, switch_rows[n].key,
                            switches_[n]->isChecked() ? -1 : 0);
    }
    if (worksheet_) {
        project.set_integer("CONTOURS", "DataSource", parameter_->currentIndex());
    }
    for (const BlendKeys& keys : blend_keys) {
        if (const auto chosen = blends_.find(keys.column); chosen != blends_.end()) {
            project.set_integer("COLOR", keys.low, chosen->second.low);
            project.set_integer("COLOR", keys.high, chosen->second.high);
        }
    }
    format_.save(project);
    files.write(".ctr", plot::levels_bytes(model_->levels()));
}

} // namespace ui
