#include "ui/icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

// Outside of the namespace: the macro declares a function of the global one.
static void load_resources() {
    Q_INIT_RESOURCE(resources);
}

namespace ui {

namespace {

// Draws anew for every size and palette: a change of the theme needs no other icons.
class InkEngine : public QIconEngine {
public:
    explicit InkEngine(QByteArray svg) : svg_(std::move(svg)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor ink = QApplication::palette().color(group, QPalette::ButtonText);
        QByteArray svg = svg_;
        svg.replace("currentColor", ink.name().toUtf8());
        QSvgRenderer(svg).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, {QPoint(), size}, mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new InkEngine(svg_); }

private:
    QByteArray svg_;
};

} // namespace

QIcon tool_icon(const char* key) {
    load_resources();
    QFile file(QString(":/resources/%1.svg").arg(key));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QIcon(new InkEngine(file.readAll()));
}

QPixmap title_picture(int width, double ratio) {
    load_resources();
    QSvgRenderer svg(QString(":/resources/title.svg"));
    QSize size = svg.defaultSize();
    size.scale(int(width * ratio), int(width * ratio), Qt::KeepAspectRatio);
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    svg.render(&painter);
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QIcon program_icon() {
    load_resources();
    return QIcon(":/resources/tervexdesk.svg");
}

} // namespace ui
