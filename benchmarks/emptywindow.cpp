// The least that a program with a window can be: what the start of the desktop program is held
// against. Draws its window into the file of its argument.

#include <QApplication>
#include <QMainWindow>
#include <QPixmap>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1280, 800);
    window.show();
    QApplication::processEvents();
    return window.grab().save(QString::fromLocal8Bit(argv[argc - 1])) ? 0 : 1;
}
