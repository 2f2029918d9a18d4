#include "ui/worksheetview.h"

#include "ui/worksheetlegend.h"
#include "ui/worksheetpainter.h"

#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QShortcut>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace ui {

namespace {

constexpr double most_zoom = 20'000;

bool same_mesh(const WorksheetPicture* a, const WorksheetPicture* b) {
    const auto placed_alike = [&] {
        return a->position->Grid_Left == b->position->Grid_Left &&
               a->position->Grid_Top == b->position->Grid_Top &&
               a->position->Grid_Rad == b->position->Grid_Rad;
    };
    return a && b && a->grid.Column_Width == b->grid.Column_Width &&
           a->grid.Row_Height == b->grid.Row_Height && placed_alike();
}

// A step to another layer must not move the grid because its legend is shorter.
bool same_item(const WorksheetPicture* a, const WorksheetPicture* b) {
    return same_mesh(a, b) && a->scale_title == b->scale_title && a->colours == b->colours;
}

QRectF grid_box(const grid::WorksheetDisplay& display, const grid::GridFile& grid) {
    const auto extent = [](const auto& sizes) {
        return std::accumulate(sizes.begin(), sizes.end(), 0.);
    };
    const double right = extent(grid.Column_Width), bottom = extent(grid.Row_Height);
    QPolygonF corners;
    for (const grid::GridPosition::Point corner :
         {grid::GridPosition::Point{0, 0}, {right, 0}, {right, bottom}, {0, bottom}}) {
        const grid::Pixel pixel = display.pixel(corner);
        corners.append({pixel.x, pixel.y});
    }
    return corners.boundingRect();
}

} // namespace

WorksheetView::WorksheetView(QWidget* parent) : QAbstractScrollArea(parent) {
    setAccessibleName("Worksheet");
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    cell_field_ = new QLineEdit(this);
    cell_field_->setObjectName("find_cell");
    cell_field_->setPlaceholderText("Column, Row");
    cell_field_->setAccessibleName("Column, Row");
    cell_field_->setToolTip("Find a cell: column, row");
    cell_field_->hide();
    cell_field_->installEventFilter(this);
    auto* const shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_G), this);
    connect(shortcut, &QShortcut::activated, this, &WorksheetView::find_cell);
}

WorksheetView::~WorksheetView() = default;

void WorksheetView::set_input(WorksheetInput* input) {
    input_ = input;
}

void WorksheetView::set_picture(std::shared_ptr<const WorksheetPicture> picture,
                                const QString& hint) {
    const bool same = same_mesh(picture_.get(), picture.get());
    const double kept = same_item(picture_.get(), picture.get()) ? legend_margin_ : 0;
    picture_ = std::move(picture);
    hint_ = hint;
    marked_.clear();
    QToolTip::hideText(); // it told the values of the picture before
    if (!same) {
        overlay_ = {};
        show_all();
    } else if (const double margin = std::max(kept, margin_for_legend(whole_size()));
               zoom_ <= 1 && margin != legend_margin_) {
        fit(margin);
    }
    redraw();
    emit picture_changed();
}

void WorksheetView::set_overlay(WorksheetOverlay overlay) {
    overlay_ = std::move(overlay);
    viewport()->update();
}

void WorksheetView::mark_cells(std::span<const std::uint8_t> matched,
                               std::span<const QRgb> colours) {
    marked_.assign(matched.begin(), matched.end());
    mark_colours_.assign(colours.begin(), colours.end());
    redraw();
}

void WorksheetView::set_display(grid::DisplayMode mode) {
    if (mode == mode_) {
        return;
    }
    mode_ = mode;
    show_all();
    emit display_changed();
}

void WorksheetView::show_all() {
    zoom_ = 1;
    offset_ = {};
    rectangle_mode_ = false;
    rectangle_from_.reset();
    viewport()->unsetCursor();
    fit();
}

void WorksheetView::fit() {
    fit(margin_for_legend(whole_size()));
}

// The whole grid in the viewport beside the legend, and the shown part of it.
void WorksheetView::fit(double margin) {
    legend_margin_ = margin;
    whole_.reset();
    shown_.reset();
    if (picture_) {
        whole_ = whole_in(whole_size(), margin);
    }
    place();
}

grid::WorksheetDisplay WorksheetView::whole_in(QSizeF size, double margin) const {
    return {mode_, picture_->grid, *picture_->position, std::max(size.width() - margin, 1.),
            std::max(size.height(), 1.)};
}

// Nothing where the grid does not reach below the legend, or would become too small beside it.
double WorksheetView::margin_for_legend(QSizeF size) const {
    if (!legend_shown_ || !picture_) {
        return 0;
    }
    const QRectF legend = legend_box(QRectF(QPointF(), size), *picture_, font());
    const bool covers = legend.intersects(grid_box(whole_in(size, 0), picture_->grid));
    return covers && legend.width() < size.width() / 3 ? legend.width() : 0;
}

// That of the viewport without scroll bars, which come and go with the zoom.
QSizeF WorksheetView::whole_size() const {
    return contentsRect().size();
}

void WorksheetView::place() {
    show_scroll_bars();
    const QSizeF most = zoom_ * whole_size() - viewport()->size();
    offset_ = {std::clamp(offset_.x(), 0., std::max(most.width(), 0.)),
               std::clamp(offset_.y(), 0., std::max(most.height(), 0.))};
    if (whole_) {
        shown_ = whole_;
        shown_->zoom({0, 0}, zoom_);
        shown_->shift(-offset_.x(), -offset_.y());
    }
    place_scroll_bars();
    redraw();
}

void WorksheetView::show_scroll_bars() {
    placing_ = true;
    const Qt::ScrollBarPolicy policy =
        zoom_ > 1 && picture_ ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
    setHorizontalScrollBarPolicy(policy);
    setVerticalScrollBarPolicy(policy);
    placing_ = false;
}

void WorksheetView::place_scroll_bars() {
    placing_ = true;
    const QSizeF size = whole_size();
    const auto set = [&](QScrollBar* bar, double extent, int page, double value) {
        bar->setRange(0, std::max(0, static_cast<int>(std::ceil(zoom_ * extent)) - page));
        bar->setPageStep(page);
        bar->setSingleStep(std::max(1, page / 10));
        bar->setValue(static_cast<int>(std::lround(value)));
    };
    set(horizontalScrollBar(), size.width(), viewport()->width(), offset_.x());
    set(verticalScrollBar(), size.height(), viewport()->height(), offset_.y());
    placing_ = false;
}

void WorksheetView::scrollContentsBy(int, int) {
    if (placing_) {
        return;
    }
    offset_ = QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value());
    if (whole_) {
        shown_ = whole_;
        shown_->zoom({0, 0}, zoom_);
        shown_->shift(-offset_.x(), -offset_.y());
    }
    redraw();
}

void WorksheetView::zoom(grid::Pixel about, double factor) {
    const double next = std::clamp(zoom_ * factor, 1., most_zoom);
    const double ratio = next / zoom_;
    offset_ = {(offset_.x() + about.x) * ratio - about.x,
               (offset_.y() + about.y) * ratio - about.y};
    zoom_ = next;
    place();
}

void WorksheetView::begin_zoom_rectangle() {
    rectangle_mode_ = picture_ != nullptr;
    if (rectangle_mode_) {
        viewport()->setCursor(Qt::CrossCursor);
    }
}

void WorksheetView::end_rectangle(QPointF pixel) {
    const QRectF drawn = QRectF(*rectangle_from_, pixel).normalized();
    rectangle_from_.reset();
    rectangle_mode_ = false;
    viewport()->unsetCursor();
    const double least = 4; // less is a click
    if (drawn.width() < least && drawn.height() < least) {
        zoom({pixel.x(), pixel.y()}, 2);
    } else {
        const QSizeF size = viewport()->size();
        const double factor = std::min(size.width() / std::max(drawn.width(), 1.),
                                       size.height() / std::max(drawn.height(), 1.));
        const double next = std::clamp(zoom_ * factor, 1., most_zoom);
        const QPointF middle = (drawn.center() + offset_) * (next / zoom_);
        zoom_ = next;
        offset_ = middle - QPointF(size.width() / 2, size.height() / 2);
        place();
    }
    emit zoom_rectangle_done();
}

QPoint WorksheetView::cell_centre(int column, int row) const {
    const auto& cells = picture_->cells;
    return pixel_of({cells.x_centres.at(static_cast<std::size_t>(column - 1)),
                     cells.y_centres.at(static_cast<std::size_t>(row - 1))})
        .toPoint();
}

QPointF WorksheetView::pixel_of(grid::GridPosition::Point local) const {
    const grid::Pixel pixel = shown_->pixel(local);
    return {pixel.x, pixel.y};
}

grid::GridPosition::Point WorksheetView::local_of(QPointF pixel) const {
    return shown_->local({pixel.x(), pixel.y()});
}

std::optional<grid::CellIndex> WorksheetView::cell_at(QPointF pixel) const {
    return shown_ ? shown_->cell({pixel.x(), pixel.y()}) : std::nullopt;
}

double WorksheetView::pixel_size() const {
    return shown_ ? shown_->pixel_size() : 1;
}

WorksheetPointer WorksheetView::pointer_at(QPointF pixel) const {
    WorksheetPointer pointer;
    pointer.pixel = {pixel.x(), pixel.y()};
    if (shown_) {
        pointer.local = shown_->local(pointer.pixel);
        pointer.shown = shown_->shown(pointer.pixel);
        pointer.cell = shown_->cell(pointer.pixel);
    }
    return pointer;
}

void WorksheetView::show_cell(grid::CellIndex cell) {
    if (!shown_ || zoom_ <= 1) {
        return;
    }
    const QPointF at = cell_centre(cell.column, cell.row);
    const QRectF seen(viewport()->rect());
    if (!seen.contains(at)) {
        offset_ += at - seen.center();
        place();
    }
}

void WorksheetView::show_legend(bool on) {
    legend_shown_ = on;
    if (zoom_ <= 1) {
        fit();
    }
    viewport()->update();
    emit legend_changed();
}

void WorksheetView::redraw() {
    stale_ = true;
    viewport()->update();
}

void WorksheetView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    if (!picture_ || !shown_) {
        draw_hint(painter);
        return;
    }
    const double ratio = viewport()->devicePixelRatioF();
    const QSize size = viewport()->size() * ratio;
    if (stale_ || buffer_.size() != size || buffer_.devicePixelRatio() != ratio) {
        WorksheetPainter picture(*picture_, local_to_pixel(*shown_), WorksheetInks(palette()));
        if (!marked_.empty()) {
            picture.set_marks(marked_, mark_colours_);
        }
        buffer_ = picture.image(size, ratio, font());
        stale_ = false;
    }
    painter.drawImage(QPoint(0, 0), buffer_);
    draw_overlay(painter);
    if (legend_shown_) {
        draw_legend(painter, viewport()->rect(), *picture_, WorksheetInks(palette()));
    }
}

void WorksheetView::draw_hint(QPainter& painter) const {
    painter.fillRect(viewport()->rect(), palette().brush(QPalette::Window));
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int gap = fontMetrics().height();
    painter.drawText(viewport()->rect().adjusted(gap, gap, -gap, -gap),
                     Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

void WorksheetView::draw_overlay(QPainter& painter) const {
    const WorksheetInks inks(palette());
    const WorksheetPainter picture(*picture_, local_to_pixel(*shown_), inks);
    const auto selected = static_cast<std::size_t>(overlay_.selected_zone);
    if (overlay_.dragged) {
        picture.draw_zone(painter, *overlay_.dragged, inks.selected_zone);
    } else if (selected >= 1 && selected <= picture_->zones.size()) {
        picture.draw_zone(painter, picture_->zones[selected - 1], inks.selected_zone);
    }
    painter.setBrush(Qt::NoBrush);
    if (overlay_.current) {
        painter.setPen(QPen(Qt::red, 2));
        painter.drawPolygon(picture.cell_outline(*overlay_.current));
    }
    QPolygonF open;
    for (const auto& node : overlay_.open_zone) {
        open.append(pixel_of(node));
    }
    if (!open.isEmpty() && overlay_.rubber_end) {
        open.append(pixel_of(*overlay_.rubber_end));
    }
    painter.setPen(QPen(inks.open_zone, 1.5));
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.drawPolyline(open);
    painter.setRenderHint(QPainter::Antialiasing, false);
    QPolygonF outline;
    for (const auto& corner : overlay_.outline) {
        outline.append(pixel_of(corner));
    }
    painter.drawPolygon(outline);
    if (rectangle_from_) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DashLine));
        painter.drawRect(QRectF(*rectangle_from_, rectangle_to_).normalized());
    }
}

double WorksheetView::aspect() const {
    if (!picture_) {
        return 1;
    }
    const grid::WorksheetDisplay wide(mode_, picture_->grid, *picture_->position, 1, 1e9);
    const grid::WorksheetDisplay high(mode_, picture_->grid, *picture_->position, 1e9, 1);
    return wide.pixel_size() / high.pixel_size();
}

void WorksheetView::paint_to(QPainter& painter, const QRectF& area) const {
    if (!picture_) {
        return;
    }
    const grid::WorksheetDisplay whole = whole_in(area.size(), margin_for_legend(area.size()));
    const QPalette paper(Qt::black, Qt::white);
    WorksheetInks inks(paper);
    const QTransform to_area =
        local_to_pixel(whole) * QTransform::fromTranslate(area.x(), area.y());
    WorksheetPainter picture(*picture_, to_area, inks);
    if (!marked_.empty()) {
        picture.set_marks(marked_, mark_colours_);
    }
    picture.draw(painter, area);
    if (legend_shown_) {
        draw_legend(painter, area, *picture_, inks);
    }
}

QImage WorksheetView::image(int longer_side) const {
    const double ratio = aspect();
    const QSizeF size = ratio >= 1 ? QSizeF(longer_side, longer_side / ratio)
                                   : QSizeF(longer_side * ratio, longer_side);
    QImage image(size.toSize().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font());
    paint_to(painter, QRectF(image.rect()));
    return image;
}

QSize WorksheetView::sizeHint() const {
    return fontMetrics().size(0, QString(80, 'm')) * 1.0 + QSize(0, fontMetrics().height() * 30);
}

QSize WorksheetView::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 20, fontMetrics().height() * 8};
}

} // namespace ui
