// The main of every test program: a headless Qt application around GoogleTest, so that tests
// may measure fonts and paint on pixmaps without a display.
#include <QApplication>
#include "tavi/qt/font_registry.h"
#include <gmock/gmock.h>
#include <cstdlib>

int main(int argc, char **argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    Tavi::register_fonts(TAVI_SOURCE_DIR "/fonts");
    return RUN_ALL_TESTS();
}
