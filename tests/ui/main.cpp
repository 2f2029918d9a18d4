#include "ui/safeapplication.h"

#include <gtest/gtest.h>

#include <QStyleFactory>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    ui::SafeApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    return RUN_ALL_TESTS();
}
