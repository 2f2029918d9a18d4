// The drawing surface of the main window: shows the worksheet, zooms, pans, and tells what the
// mouse and the keys do on it.
#pragma once

#include "grid/worksheetdisplay.h"
#include "ui/worksheetpicture.h"

#include <QAbstractScrollArea>

#include <functional>
#include <optional>
#include <span>

class QLineEdit;
class QMenu;

namespace ui {

// The pointer in the worksheet: pixels of the viewport, metres in the grid's own frame (y
// downward), metres as the display shows them, and the cell, if there is one.
struct WorksheetPointer {
    grid::Pixel pixel;
    grid::GridPosition::Point local, shown;
    std::optional<grid::CellIndex> cell;
    Qt::MouseButton button = Qt::NoButton;
    Qt::MouseButtons buttons = Qt::NoButton;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
};

// Who edits in the worksheet. The view has zoomed and panned before anybody is asked.
class WorksheetInput {
public:
    virtual ~WorksheetInput() = default;
    virtual void press(const WorksheetPointer&) {}
    virtual void move(const WorksheetPointer&) {}
    virtual void release(const WorksheetPointer&) {}
    virtual void double_click(const WorksheetPointer&) {}
    // The pointer left the worksheet.
    virtual void gone() {}
    // True: the key was used.
    virtual bool key(QKeyEvent&) { return false; }
    // A cell was looked for and found.
    virtual void find(grid::CellIndex) {}
    // Shown beside the pointer.
    virtual QString tip(const WorksheetPointer&) { return {}; }
    // May add to the menu of the right button; false: no menu.
    virtual bool menu(QMenu&) { return true; }
};

// What lies over the picture and changes with every move of the pointer.
struct WorksheetOverlay {
    std::optional<grid::CellIndex> current; // in a thick frame
    std::vector<grid::GridPosition::Point> open_zone;
    std::optional<grid::GridPosition::Point> rubber_end; // from the last node of the open zone
    int selected_zone = 0;                               // from 1
    std::optional<core::Zone> dragged;                   // the selected zone with a node on its way
    std::vector<grid::GridPosition::Point> outline;      // of the grid at the place it is drawn to
};

class WorksheetView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit WorksheetView(QWidget* parent = nullptr);
    ~WorksheetView() override;

    // nullptr: nobody edits.
    void set_input(WorksheetInput* input);

    // Shows a picture; an empty one shows the hint. Zoom and display stay while the mesh is the
    // same.
    void set_picture(std::shared_ptr<const WorksheetPicture> picture, const QString& hint = {});
    const WorksheetPicture* picture() const { return picture_.get(); }
    void set_overlay(WorksheetOverlay overlay);
    const WorksheetOverlay& overlay() const { return overlay_; }
    // Gives cells a colour until the next picture: entry n of `matched` (one a cell) is the number
    // of the colour, from 1, 0 for none.
    void mark_cells(std::span<const std::uint8_t> matched, std::span<const QRgb> colours);

    // "Local" or "Real-World" display; the whole grid is shown then.
    void set_display(grid::DisplayMode mode);
    grid::DisplayMode display() const { return mode_; }

    // The next drag of the left button is the rectangle to be shown, a click zooms by two.
    void begin_zoom_rectangle();
    bool zooms_by_rectangle() const { return rectangle_mode_; }
    void zoom(grid::Pixel about, double factor);
    void show_all();
    double zoom_factor() const { return zoom_; }

    // The ways between the grid and the viewport, in logical pixels. Columns and rows count from 1.
    QPoint cell_centre(int column, int row) const;
    QPointF pixel_of(grid::GridPosition::Point local) const;
    grid::GridPosition::Point local_of(QPointF pixel) const;
    std::optional<grid::CellIndex> cell_at(QPointF pixel) const;
    // Metres of a pixel.
    double pixel_size() const;
    WorksheetPointer pointer_at(QPointF pixel) const;
    // Scrolls until the cell is seen.
    void show_cell(grid::CellIndex cell);

    bool legend_shown() const { return legend_shown_; }
    void show_legend(bool on);
    // Opens the field that takes "column,row".
    void find_cell();

    // The whole worksheet, whatever the zoom, into `area`; without highlight and rubber band.
    void paint_to(QPainter& painter, const QRectF& area) const;
    // Width to height of the whole worksheet as it is shown.
    double aspect() const;
    // The whole worksheet in so many pixels for its longer side.
    QImage image(int longer_side) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void display_changed();
    void zoom_rectangle_done();
    void legend_changed();
    void picture_changed();

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override; // of the field for a cell
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void fit();
    void fit(double margin);
    grid::WorksheetDisplay whole_in(QSizeF size, double margin) const;
    double margin_for_legend(QSizeF size) const;
    QSizeF whole_size() const;
    void place();
    void show_scroll_bars();
    void place_scroll_bars();
    void redraw();
    void draw_overlay(QPainter& painter) const;
    void draw_hint(QPainter& painter) const;
    void end_rectangle(QPointF pixel);
    void take_cell_text();
    WorksheetPointer pointer(const QMouseEvent& event) const;

    std::shared_ptr<const WorksheetPicture> picture_;
    std::vector<std::uint8_t> marked_; // as mark_cells() got them
    std::vector<QRgb> mark_colours_;
    QString hint_;
    WorksheetOverlay overlay_;
    WorksheetInput* input_ = nullptr;
    grid::DisplayMode mode_ = grid::DisplayMode::world;
    std::optional<grid::WorksheetDisplay> whole_, shown_;
    double zoom_ = 1;
    QPointF offset_; // of the shown part in the zoomed whole, pixels
    bool placing_ = false;
    QImage buffer_;
    bool stale_ = true;
    bool legend_shown_ = false;
    double legend_margin_ = 0; // pixels at the right of the whole grid
    bool rectangle_mode_ = false;
    std::optional<QPointF> rectangle_from_, pan_from_;
    QPointF rectangle_to_;
    QLineEdit* cell_field_ = nullptr;
};

} // namespace ui
