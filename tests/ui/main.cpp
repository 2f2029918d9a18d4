#include "ui/safeapplication.h"
#include "ui/theme.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    ui::SafeApplication application(argc, argv);
    QApplication::setStyle(ui::make_style());
    return RUN_ALL_TESTS();
}
