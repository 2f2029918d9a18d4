#include "base/paths.h"
#include "ui/desk.h"
#include "ui/mainwindow.h"
#include "ui/qtuser.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    ui::QtUser user;
    ui::Desk desk(user, {base::executable_folder(), base::user_settings_folder()});
    ui::MainWindow window(desk);
    user.set_window(&window);
    window.show();
    return QApplication::exec();
}
