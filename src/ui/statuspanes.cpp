#include "ui/statuspanes.h"

#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QStyleOption>

#include <algorithm>

namespace ui {

namespace {

// A label that asks for the room of its usual text, or of its own text when it is to be seen whole.
// A text that does not fit is cut, or with a mark replaced by that: half a number is worse than
// none.
class PaneLabel : public QLabel {
public:
    PaneLabel(const QString& usual, bool whole, const QString& mark, QWidget* parent)
        : QLabel(parent), usual_(usual), whole_(whole), mark_(mark) {
        setTextFormat(Qt::PlainText);
        setFrameStyle(QFrame::NoFrame);
    }

    QSize sizeHint() const override {
        const auto width = [this](const QString& shown) {
            return fontMetrics().horizontalAdvance(shown + "0");
        };
        return {std::max(width(usual_), whole_ ? width(text()) : 0), QLabel::sizeHint().height()};
    }
    QSize minimumSizeHint() const override {
        // In a narrow window the long texts give way to the numbers.
        const int least = fontMetrics().averageCharWidth() * 3;
        return {whole_ || usual_.isEmpty() ? least : sizeHint().width(),
                QLabel::minimumSizeHint().height()};
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QRect area = contentsRect();
        const QString shown = !mark_.isEmpty() && is_cut()
                                  ? mark_
                                  : fontMetrics().elidedText(text(), Qt::ElideRight, area.width());
        painter.setPen(palette().color(foregroundRole()));
        painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, shown);
    }

    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        show_rest();
    }

public:
    void show_rest() { setToolTip(is_cut() ? text() : QString()); }

private:
    bool is_cut() const { return fontMetrics().horizontalAdvance(text()) > contentsRect().width(); }

    QString usual_;
    bool whole_;
    QString mark_;
};

struct PaneKind {
    const char* usual; // text that has to fit
    bool whole;        // and any other
    int stretch;
    const char* says; // for those who cannot see it
    const char* mark = "";
};

constexpr PaneKind kinds[] = {
    {"0000,0000", false, 0, "Column and row"},
    {"-123456.7, -123456.7", false, 0, "Position of the pointer"},
    {"Initial Temperature Field; Time independent", true, 0, "Open item"},
    {"", false, 1, "Progress"},
    {"+0.000E+00", true, 0, "Value of the cell", "###"},
};

} // namespace

StatusPanes::StatusPanes(QWidget* parent) : QStatusBar(parent) {
    int number = 0;
    for (const PaneKind& kind : kinds) {
        auto* label = new PaneLabel(kind.usual, kind.whole, kind.mark, this);
        label->setObjectName(QString("pane%1").arg(number + 1));
        label->setAccessibleName(kind.says);
        texts_.at(std::size_t(number++)) = label;
        addWidget(label, kind.stretch);
    }
    meter_ = new QProgressBar(this);
    meter_->setObjectName("pane6");
    meter_->setAccessibleName("Progress in percent");
    meter_->setRange(0, 100);
    meter_->setMaximumWidth(fontMetrics().averageCharWidth() * 20);
    meter_->hide();
    addPermanentWidget(meter_);
    meter_->hide();
}

void StatusPanes::set(int pane, const QString& text) {
    auto* label = static_cast<PaneLabel*>(texts_.at(std::size_t(pane - 1)));
    if (label->text() != text) {
        label->setText(text);
        label->updateGeometry();
        label->show_rest();
    }
}

void StatusPanes::set_cell(const QString& text) {
    set(1, text);
}

void StatusPanes::set_pointer(const QString& text) {
    set(2, text);
}

void StatusPanes::set_caption(const QString& text) {
    set(3, text);
}

void StatusPanes::set_progress(const QString& text) {
    progress_ = text;
    if (!text.isEmpty()) {
        result_.clear();
    }
    show_text();
}

void StatusPanes::set_hint(const QString& text) {
    hint_ = text;
    show_text();
}

void StatusPanes::set_tip(const QString& text) {
    tip_ = text;
    show_text();
}

void StatusPanes::set_result(const QString& text) {
    result_ = text;
    show_text();
}

void StatusPanes::show_text() {
    for (const QString* text : {&tip_, &progress_, &hint_, &result_}) {
        if (!text->isEmpty()) {
            return set(4, *text);
        }
    }
    set(4, {});
}

void StatusPanes::set_values(const QString& text) {
    set(5, text);
}

void StatusPanes::set_meter(int percent) {
    meter_->setVisible(percent >= 0);
    meter_->setValue(std::clamp(percent, 0, 100));
}

} // namespace ui
