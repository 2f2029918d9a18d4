// Points of Monitoring.
#include "base/busy.h"
#include "grid/monitoringform.h"
#include "ui/desk.h"
#include "ui/dialogs/tabledialog.h"
#include "ui/dialogs/tabledialogs.h"
#include "ui/tablemodel.h"
#include "ui/tableview.h"
#include "ui/text.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QTabWidget>

#include <functional>

namespace ui {

namespace {

using grid::ObservationList;
using Path = std::filesystem::path;

// What the buttons of a tab do, and what their file dialogs are called.
struct TabRow {
    const char* table;
    const char* caption;
    const char *load_title, *load_filter, *save_title, *save_filter, *extension;
    std::optional<base::Refusal> (ObservationList::*load)(const Path&);
    void (ObservationList::*save)(const Path&) const;
    bool (ObservationList::*clear)(base::Interaction&);
};
constexpr TabRow bores_row = {"Bores",
                              "&Boreholes",
                              "Load Bore File",
                              "Bore Files (*.BOR)|*.BOR|All Files (*.dat)|*.dat",
                              "Save Boreholes As",
                              "Borehole Files (*.BOR)|*.BOR",
                              ".BOR",
                              &ObservationList::import_bores,
                              &ObservationList::export_bores,
                              &ObservationList::clear_bores};
constexpr TabRow observations_row = {"Observations",
                                     "Obser&vations",
                                     "Load Observation File",
                                     "Observation Files (*.OBS)|*.OBS|All Files (*.dat)|*.dat",
                                     "Save Observations As",
                                     "Observation Files (*.OBS)|*.OBS",
                                     ".OBS",
                                     &ObservationList::import_observations,
                                     &ObservationList::export_observations,
                                     &ObservationList::clear_observations};

class MonitoringDialog : public TableDialog {
public:
    MonitoringDialog(CommandContext& context, ObservationList& form)
        : TableDialog(context, form, "ObservationList", to_qt(ObservationList::title),
                      "settings.md#Monitoring"),
          form_(form), tabs_(new QTabWidget) {
        tabs_->setObjectName("Tabs");
        body().addWidget(tabs_, 1);
        add_tab(bores_row, form.bores());
        QBoxLayout* buttons = add_tab(observations_row, form.observations());
        observations_ = tabs_->widget(1)->findChild<TableView*>();
        observations_->form_model()->set_grower([this] { return !form_.add_observation(); });
        buttons->insertWidget(0, make_button("Add_Button", tr("&Add Row"), [this] { add_row(); }));
        auto* options = FormView::frame(tr("Options"));
        FormView::grid_of(options)->addWidget(field("Observation_Option"), 0, 0);
        body().addWidget(options);
        QPushButton* import = &add_button("Import_Button", tr("Import"));
        import->setEnabled(false);
        import->setToolTip(tr("Calibration tools are not part of this program."));
    }

    void accept() override {
        const base::Busy hourglass(context().desk.user());
        TableDialog::accept();
    }

private:
    QPushButton* make_button(const char* name, const QString& caption,
                             const std::function<void()>& work) {
        auto* button = new QPushButton(caption);
        button->setObjectName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, work);
        return button;
    }

    // The row of buttons below the table.
    QBoxLayout* add_tab(const TabRow& row, core::TableForm& form) {
        auto* page = new QWidget;
        auto* layout = new QVBoxLayout(page);
        layout->addWidget(make_table(form, row.table, QString(row.caption).remove('&')), 1);
        auto* buttons = new QHBoxLayout;
        buttons->addWidget(make_button("Save_Button", tr("&Save..."), [this, &row] {
            save_file(row.save_title, row.save_filter, row.extension,
                      [this, &row](const Path& file) { std::invoke(row.save, form_, file); });
        }));
        buttons->addWidget(make_button("Load_Button", tr("&Load..."), [this, &row] {
            load_file(row.load_title, row.load_filter, [this, &row](const Path& file) {
                return std::invoke(row.load, form_, file);
            });
        }));
        buttons->addWidget(make_button("Clear_Button", tr("Cl&ear"), [this, &row] {
            if (commit() && std::invoke(row.clear, form_, context().desk.user())) {
                refresh();
            }
        }));
        buttons->addStretch();
        layout->addLayout(buttons);
        tabs_->addTab(page, tr(row.caption));
        return buttons;
    }

    void add_row() {
        if (!commit()) {
            return;
        }
        if (const auto refusal = form_.add_observation()) {
            base::show(context().desk.user(), *refusal);
            return;
        }
        refresh();
        observations_->setFocus();
        observations_->setCurrentIndex(
            observations_->model()->index(observations_->model()->rowCount() - 1, 0));
    }

    ObservationList& form_;
    QTabWidget* tabs_;
    TableView* observations_;
};

} // namespace

void edit_monitoring(CommandContext& context) {
    ObservationList form;
    MonitoringDialog(context, form).run("Monitoring", "ObservationList.OKButton_Click()");
}

} // namespace ui
