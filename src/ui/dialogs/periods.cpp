// Stress periods.
#include "sim/periods.h"

#include "base/paths.h"
#include "base/textfile.h"
#include "ui/dialogs/tabledialog.h"
#include "ui/dialogs/tabledialogs.h"
#include "ui/tablemodel.h"
#include "ui/tableview.h"
#include "ui/text.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace ui {

namespace {

constexpr const char* filter = "Time Parameter Files (*.TPR)|*.TPR";

class PeriodDialog : public TableDialog {
public:
    PeriodDialog(CommandContext& context, sim::TemporalDiscretization& form)
        : TableDialog(context, form, "Temporal_Discretization", tr("Stress Periods"),
                      "settings.md#Stress Periods"),
          form_(form) {
        auto* fields = new QGridLayout;
        fields->setColumnStretch(2, 1);
        view().add_row(*fields, "SimulationFlowType", Look::across);
        view().add_row(*fields, "SimulationTimeUnit", Look::list);
        view().add_row(*fields, "AutoUpdate");
        body().addLayout(fields);
        table_ = make_table(form, "Table", tr("Stress Periods"));
        body().addWidget(table_, 1);
        add_status_line();
        connect(&add_button("Save_Button", tr("&Save...")), &QPushButton::clicked, this, [this] {
            save_file("Save Time Parameters", filter, ".tpr", [this](const auto& file) {
                base::replace_file(file, form_.table().time_parameters());
            });
        });
        connect(&add_button("Load_Button", tr("&Load...")), &QPushButton::clicked, this, [this] {
            load_file("Load Time Parameters", filter, [this](const auto& file) {
                return form_.load_time_parameters(base::read_bytes(file), file);
            });
        });
    }

private:
    void add_status_line() {
        auto* line = new QHBoxLayout;
        for (QLabel*& part : status_) {
            part = new QLabel;
            line->addWidget(part, 1);
        }
        for (std::size_t i = 0; i < std::size(status_); ++i) {
            status_[i]->setObjectName(QString("Status%1").arg(i + 1));
        }
        body().addLayout(line);
    }

    void updated() override {
        const auto texts = form_.status_texts();
        for (std::size_t i = 0; i < std::size(status_) && i < texts.size(); ++i) {
            status_[i]->setText(to_qt(texts[i]));
        }
        const int unit = form_.table().unit;
        table_->form_model()->set_unit("PeriodLength",
                                       unit == 0 ? QString() : to_qt(sim::time_unit_name(unit)));
    }

    sim::TemporalDiscretization& form_;
    TableView* table_ = nullptr;
    QLabel* status_[3] = {};
};

} // namespace

void edit_periods(CommandContext& context) {
    sim::TemporalDiscretization form;
    PeriodDialog(context, form).run("Stress Periods", "Temporal_Discretization.OKButton_Click()");
}

} // namespace ui
