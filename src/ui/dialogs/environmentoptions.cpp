// Options|Environment.

#include "app/workspace.h"
#include "ui/desk.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/dialogs/environmenttabs.h"
#include "ui/dialogs/shownlayer.h"
#include "ui/plaindialog.h"

#include <QTabWidget>
#include <QVBoxLayout>

namespace ui {

namespace {

class EnvironmentDialog : public PlainDialog {
public:
    EnvironmentDialog(Desk& desk, const app::Workspace& model, plot::PlotData layer,
                      const grid::Worksheet* worksheet, QWidget* parent)
        : PlainDialog(desk, "Environment_options", "Environment Options", "plots.md#In the window",
                      parent),
          tabs_(new QTabWidget), appearance_(new AppearanceTab(desk, model.project)),
          coordinates_(new CoordinateTab(model.project)),
          contours_(new ContourTab(desk, std::move(layer), model.files, worksheet)) {
        tabs_->setObjectName("Environment_Tabs");
        tabs_->addTab(appearance_, tr("Appearance"));
        tabs_->addTab(coordinates_, tr("Coordinate System"));
        tabs_->addTab(contours_, tr("Contours"));
        body().addWidget(tabs_, 1);
    }

protected:
    bool take() override;

private:
    QTabWidget* tabs_;
    AppearanceTab* appearance_;
    CoordinateTab* coordinates_;
    ContourTab* contours_;
};

bool EnvironmentDialog::take() {
    if (const auto fault = coordinates_->fault()) {
        tabs_->setCurrentWidget(coordinates_);
        return !refused(fault->refusal, fault->field);
    }
    return contours_->finish_editing() &&
           desk().change("Environment_options_OK()", "Environment", [this](app::Workspace& model) {
               appearance_->save(model.project);
               coordinates_->save(model.project);
               contours_->save(model.project, model.files);
               return true;
           });
}

} // namespace

bool environment_options(Desk& desk, const app::Workspace& model, grid::Worksheet* worksheet,
                         WorksheetView&, QWidget* window) {
    bool changed = false;
    desk.attempt("options_environment_Click()", [&] {
        EnvironmentDialog dialog(desk, model, shown_layer(model, worksheet), worksheet, window);
        changed = dialog.exec() == QDialog::Accepted;
    });
    return changed;
}

} // namespace ui
