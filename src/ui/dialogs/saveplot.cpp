// File|Save Plot As, Print Plot, and the picture on the clipboard.

#include "app/workspace.h"
#include "base/busy.h"
#include "ui/desk.h"
#include "ui/dialogs/editordialogs.h"
#include "ui/dialogs/filefield.h"
#include "ui/dialogs/plotfiles.h"
#include "ui/dialogs/savefile.h"
#include "ui/plaindialog.h"
#include "ui/text.h"
#include "ui/worksheetview.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPrinter>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr const char* title = "Save Plot As";
constexpr int clipboard_side = 2000; // pixels

// Of the window: a model and the name of the format that was written last for it.
constexpr const char* Plot_Format = "Plot_Format";

QString format_written_last(const QWidget* window, const app::Workspace& model) {
    const QStringList last = window->property(Plot_Format).toStringList();
    return last.value(0) == to_qt(model.Model_Path()) ? last.value(1) : QString();
}

class SavePlotDialog : public PlainDialog {
public:
    SavePlotDialog(Desk& desk, const app::Workspace& model, grid::Worksheet* worksheet,
                   const WorksheetView& view, QWidget* parent);

protected:
    bool take() override;

private:
    const PictureFormat& format() const {
        return picture_formats()[std::size_t(list_->currentIndex())];
    }
    void show_extension();
    void take_format(const QString& name);
    // A name without a folder is one in the model's folder.
    std::filesystem::path file() const { return model_.Model_Folder() / file_->file(); }

    const app::Workspace& model_;
    grid::Worksheet* worksheet_;
    const WorksheetView& view_;
    FileField* file_;
    QComboBox* list_;
};

SavePlotDialog::SavePlotDialog(Desk& desk, const app::Workspace& model, grid::Worksheet* worksheet,
                               const WorksheetView& view, QWidget* parent)
    : PlainDialog(desk, "Save_Worksheet_Plot", title, "plots.md#In the window", parent),
      model_(model), worksheet_(worksheet), view_(view),
      file_(new FileField(
          desk.user(),
          [this] {
              return FileQuestion{base::FileChoice::save, title, format().filter};
          },
          "txtFile")),
      list_(new QComboBox) {
    list_->setObjectName("Format_List");
    for (const PictureFormat& format : picture_formats()) {
        list_->addItem(format.name);
    }
    list_->setCurrentText(format_written_last(parent, model));
    file_->set_file(model.Model_Folder() / (model.files.base_name() + format().extension));
    auto* const rows = new QFormLayout;
    rows->addRow(label_of(&file_->line(), tr("&File:")), file_);
    rows->addRow(label_of(list_, tr("F&ormat:")), list_);
    body().addLayout(rows);
    connect(list_, &QComboBox::currentIndexChanged, this, &SavePlotDialog::show_extension);
    connect(&file_->line(), &QLineEdit::textChanged, this, &SavePlotDialog::take_format);
}

void SavePlotDialog::show_extension() {
    std::filesystem::path named = file_->file();
    if (format_of_file(named) != &format()) {
        file_->set_file(named.replace_extension(format().extension));
    }
}

// A name with another of the extensions asks for that format.
void SavePlotDialog::take_format(const QString& name) {
    if (const PictureFormat* const named = format_of_file(from_qt(name.trimmed()))) {
        list_->setCurrentIndex(int(named - picture_formats().data()));
    }
}

bool SavePlotDialog::take() {
    if (file_->file().empty()) {
        return !refused(base::Refusal{title, "Please enter the name of a file."}, &file_->line());
    }
    if (!may_write(desk().user(), title, file())) {
        return false;
    }
    const base::Busy hourglass(desk().user());
    const auto outcome = desk().attempt("Save_Worksheet_Plot(Filename)", [&] {
        write_picture(desk(), model_, worksheet_, view_, format(), file());
    });
    if (outcome == report::Outcome::done) {
        parentWidget()->setProperty(Plot_Format,
                                    QStringList{to_qt(model_.Model_Path()), format().name});
    }
    return outcome == report::Outcome::done;
}

// The largest rectangle of the view's proportions in the middle of the page.
QRectF area_of(const QRectF& page, double aspect) {
    QSizeF size(aspect, 1);
    size.scale(page.size(), Qt::KeepAspectRatio);
    QRectF area(QPointF(), size);
    area.moveCenter(page.center());
    return area;
}

} // namespace

void save_plot_as(Desk& desk, const app::Workspace& model, grid::Worksheet* worksheet,
                  WorksheetView& view, QWidget* window) {
    SavePlotDialog(desk, model, worksheet, view, window).exec();
}

void copy_picture(WorksheetView& view) {
    QApplication::clipboard()->setImage(view.image(clipboard_side));
}

void print_plot(Desk& desk, const app::Workspace& model, grid::Worksheet*, WorksheetView& view,
                QWidget* window) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(to_qt(model.window_title()));
    printer.setPageOrientation(view.aspect() > 1 ? QPageLayout::Landscape : QPageLayout::Portrait);
    if (!desk.choosers().printer(window, printer)) {
        return;
    }
    QPainter painter;
    if (!painter.begin(&printer)) {
        base::show(desk.user(),
                   {"Print Plot", "The printer does not take the picture.", base::Icon::warning});
        return;
    }
    const QRectF page(QPointF(), printer.pageRect(QPrinter::DevicePixel).size());
    view.paint_to(painter, area_of(page, view.aspect()));
}

} // namespace ui
