#include "ui/viewmenu.h"

#include "ui/dialogs/editordialogs.h"
#include "ui/editorsession.h"
#include "ui/mainwindow.h"

#include <QActionGroup>
#include <QMenu>

namespace ui {

namespace {

struct ColourItem {
    CellColours colours;
    const char* name;
    const char* caption;
};
constexpr ColourItem colour_items[] = {
    {CellColours::classes, "view_colours_classes", "&Classes"},
    {CellColours::viridis, "view_colours_viridis", "&Viridis"},
    {CellColours::cividis, "view_colours_cividis", "C&ividis"},
    {CellColours::diverging, "view_colours_diverging", "&Diverging"},
    {CellColours::grey, "view_colours_grey", "&Grey"},
};

void add_colours(QMenu& menu, EditorSession& session) {
    QMenu* const colours = menu.addMenu("Cell &Colours");
    auto* const group = new QActionGroup(colours);
    for (const ColourItem& item : colour_items) {
        QAction* const action = colours->addAction(item.caption);
        action->setObjectName(item.name);
        action->setCheckable(true);
        action->setChecked(session.colours() == item.colours);
        group->addAction(action);
        QObject::connect(action, &QAction::triggered, &menu,
                         [&session, &item] { session.set_colours(item.colours); });
    }
}

} // namespace

void fill_view_menu(QMenu& menu, MainWindow& window, EditorSession* session) {
    WorksheetView& view = window.view();
    QAction* const legend = menu.addAction("&Legend");
    legend->setObjectName("view_legend");
    legend->setCheckable(true);
    legend->setChecked(view.legend_shown());
    QObject::connect(legend, &QAction::toggled, &view, &WorksheetView::show_legend);
    if (session && session->state() != grid::EditorState::mesh) {
        add_colours(menu, *session);
    }
    QAction* const find = menu.addAction("&Find Cell...\tCtrl+G");
    find->setObjectName("view_find_cell");
    QObject::connect(find, &QAction::triggered, &view, &WorksheetView::find_cell);
    menu.addSeparator();
    QAction* const copy = menu.addAction("Copy &Picture");
    copy->setObjectName("view_copy_picture");
    QObject::connect(copy, &QAction::triggered, &view, [&view] { copy_picture(view); });
    QAction* const save = menu.addAction("&Save Plot As...");
    save->setObjectName("view_save_plot");
    QObject::connect(save, &QAction::triggered, &window,
                     [&window] { window.run_command("file_save_plot_as"); });
}

} // namespace ui
