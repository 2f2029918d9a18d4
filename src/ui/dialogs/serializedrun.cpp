#include "ui/dialogs/serializedrun.h"

#include "input/runcontrol.h"
#include "ui/commandtables.h"
#include "ui/desk.h"
#include "ui/dialogs/runmonitor.h"
#include "ui/dialogs/runprograms.h"
#include "ui/mainwindow.h"
#include "ui/plaindialog.h"
#include "ui/text.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <optional>

namespace ui {

namespace {

constexpr const char* caption = "Serialized Run";
constexpr const char* file_filter = "TERVEX Resultfile (*.NLO)|*.NLO;*.NLO.*";
constexpr const char* explanation[] = {
    "TERVEX offers the possibility to use a simulation result for a continueous run.",
    "Choose a *.nlo TERVEX result file to copy as a *.nml input file. The old files ( e.g. *.nml "
    "and *.nlo) will be saved with a different name which you can choose.",
    "You must not change the directory!",
};

class SerializedRun final : public PlainDialog {
public:
    explicit SerializedRun(CommandContext& context)
        : PlainDialog(context.desk, "SerializedRun", caption, "running.md#Running on",
                      &context.window) {
        for (const char* paragraph : explanation) {
            body().addWidget(wrapped_label(paragraph));
        }
        body().addWidget(result_file());
        body().addWidget(names());
        auto* run =
            new QPushButton("&Start Serialized Run of TERVEX with the loaded *.nlo as *.nml");
        run->setObjectName("Run");
        run->setAutoDefault(false);
        connect(run, &QPushButton::clicked, this, &PlainDialog::accept);
        body().addWidget(run);
        body().addStretch();
        setMinimumWidth(fontMetrics().averageCharWidth() * 80);
        NLO_old_->setFocus();
        NLO_old_->selectAll();
    }

    std::vector<input::Started> take_started() { return std::move(started_); }

protected:
    // OK and `Run`.
    bool take() override {
        if (NLO_old_->text().trimmed().isEmpty()) {
            return !refused(base::Refusal{"Message", "Choose a result file first."}, NLO_old_);
        }
        auto result = attempt({.NLO_old = from_qt(NLO_old_->text().trimmed()),
                               .new_Names = {},
                               .backed_up = backed_up_,
                               .proposed = from_qt(new_Names_->text().trimmed())});
        if (!result || result->cancelled) {
            return false;
        }
        if (result->refusal) {
            const bool names = result->refusal->text != folder_text();
            return !refused(result->refusal, names ? new_Names_ : NLO_old_);
        }
        started_ = std::move(result->started);
        return true;
    }

private:
    const core::ModelFiles& files() { return desk().model()->files; }

    QWidget* result_file() {
        auto* box = new QWidget(this);
        auto* row = new QGridLayout(box);
        row->setContentsMargins({});
        NLO_old_ = new QLineEdit(box);
        NLO_old_->setObjectName("NLO_old");
        if (const auto result = files().find(".nlo")) {
            NLO_old_->setText(to_qt(*result));
        }
        auto* load = new QPushButton("&Load...", box);
        load->setObjectName("NLO_old_Load");
        load->setAutoDefault(false);
        connect(load, &QPushButton::clicked, this, &SerializedRun::choose);
        row->addWidget(label_of(NLO_old_, "Resultfile from which a &copy will be taken"), 0, 0);
        row->addWidget(NLO_old_, 1, 0);
        row->addWidget(load, 1, 1);
        return box;
    }

    QWidget* names() {
        auto* box = new QGroupBox("Rename Input/Result files :", this);
        auto* row = new QGridLayout(box);
        new_Names_ = new QLineEdit(to_qt(input::proposed_names(files())), box);
        new_Names_->setObjectName("new_Names");
        new_Names_->setAccessibleName("Rename Input/Result files");
        auto* rename = new QPushButton("&Rename", box);
        rename->setObjectName("Rename");
        rename->setAutoDefault(false);
        connect(rename, &QPushButton::clicked, this, &SerializedRun::rename);
        renamed_ = wrapped_label("");
        renamed_->setObjectName("lblRenamed");
        renamed_->hide();
        row->addWidget(new_Names_, 0, 0);
        row->addWidget(rename, 0, 1);
        row->addWidget(renamed_, 1, 0, 1, 2);
        return box;
    }

    void choose() {
        const auto file = desk().user().choose_file(base::FileChoice::open, caption, file_filter,
                                                    files().name_of(".nlo").string());
        if (file && !refused(input::folder_refusal(*file, files()), NLO_old_)) {
            NLO_old_->setText(to_qt(*file));
        }
    }

    void rename() {
        auto result = attempt({.NLO_old = {}, .new_Names = from_qt(new_Names_->text().trimmed())});
        if (!result || refused(result->refusal, new_Names_)) {
            return;
        }
        backed_up_ = true;
        QStringList lines;
        for (const auto& [from, to] : result->renamed) {
            lines += QString("%1 is now %2.").arg(to_qt(from), to_qt(to));
            if (to_qt(files().folder() / from) == NLO_old_->text()) {
                NLO_old_->setText(to_qt(files().folder() / to));
            }
        }
        renamed_->setText(lines.isEmpty() ? "There is no input or result file to be renamed."
                                          : lines.join('\n'));
        renamed_->show();
    }

    // Nothing when it has failed, which was shown.
    std::optional<input::SerializedResult> attempt(const input::SerializedRunForm& form) {
        std::optional<input::SerializedResult> result;
        desk().change("[Run] SerializedRun()", caption, [&](app::Workspace& model) {
            result.reset();
            result = input::SerializedRun(form, model.files, run_programs(desk()), desk().user());
            return false; // it has saved the files itself
        });
        return result;
    }

    std::string folder_text() {
        const auto refusal = input::folder_refusal(from_qt(NLO_old_->text().trimmed()), files());
        return refusal ? refusal->text : "";
    }

    QLineEdit* NLO_old_ = nullptr;
    QLineEdit* new_Names_ = nullptr;
    QLabel* renamed_ = nullptr;
    bool backed_up_ = false;
    std::vector<input::Started> started_;
};

} // namespace

void serialized_run(CommandContext& context) {
    if (RunMonitor* monitor = RunMonitor::of_model(context.desk, context.window);
        monitor && monitor->is_running()) {
        return monitor->bring_to_front();
    }
    SerializedRun dialog(context);
    if (dialog.exec() == QDialog::Accepted) {
        show_run(context, dialog.take_started());
    }
}

} // namespace ui
