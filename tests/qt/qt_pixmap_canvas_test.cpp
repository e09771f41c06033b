// Qt_Pixmap_Canvas: its own pixmap, the back buffer of a paint event, and the sample drawing checked
// on real pixels.
#include "sample_drawing.h"

#include "support/external_tools.h"
#include "tavi/qt/qt_pixmap_canvas.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPaintEvent>
#include <QPixmap>

using namespace Tavi;
using TaviTest::count_ink;

TEST(QtPixmapCanvas, MakesItsOwnPixmapTheSizeOfTheExtension)
{
    // Extension top 10, left 20, bottom 60, right 120: 100 by 50 pixels; the top left (20, 10) is the
    // pixmap's origin.
    Qt_Pixmap_Canvas canvas(Extension(10, 20, 60, 120), nullptr, 0);
    ASSERT_NE(canvas.pixmap(), nullptr);
    EXPECT_EQ(canvas.pixmap()->width(), 100);
    EXPECT_EQ(canvas.pixmap()->height(), 50);
    EXPECT_EQ(canvas.draw_offset(), Point(-20, -10));

    canvas.fill_rect(Rect(10, 20, 20, 30), Brush(Color::black));
    QImage const image = canvas.pixmap()->toImage();
    // The rectangle lands on pixels 0-9 by 0-9 and nowhere else.
    EXPECT_EQ(count_ink(image, 0, 0, 10, 10), 100);
    EXPECT_EQ(count_ink(image, 0, 0, 100, 50), 100);
}

TEST(QtPixmapCanvas, PaintEventBackBuffer)
{
    // The event's area is x 10, y 20, 30 by 40; the extension's top left is (5, 5).
    QPaintEvent event(QRect(10, 20, 30, 40));
    Qt_Pixmap_Canvas canvas(&event, Extension(5, 5, 305, 405), nullptr);
    ASSERT_NE(canvas.pixmap(), nullptr);
    EXPECT_EQ(canvas.pixmap()->width(), 30);   // right 39 - left 10 + 1
    EXPECT_EQ(canvas.pixmap()->height(), 40);  // bottom 59 - top 20 + 1
    // (0, 0) - (5, 5) - (10, 20)
    EXPECT_EQ(canvas.draw_offset(), Point(-15, -25));

    // The canvas point (15, 25) is the pixmap's origin.
    canvas.fill_rect(Rect(25, 15, 27, 17), Brush(Color::black));
    QImage const image = canvas.pixmap()->toImage();
    EXPECT_EQ(count_ink(image, 0, 0, 2, 2), 4);
    EXPECT_EQ(count_ink(image, 0, 0, 30, 40), 4);
}

TEST(QtPixmapCanvas, EmptyExtensionStillHasADevice)
{
    Qt_Pixmap_Canvas canvas(Extension(0, 0, 0, -5), nullptr, 0);
    ASSERT_NE(canvas.pixmap(), nullptr);
    EXPECT_EQ(canvas.pixmap()->width(), 1);
    EXPECT_EQ(canvas.pixmap()->height(), 1);
    canvas.fill_rect(Rect(0, 0, 10, 10));
}

// The sample drawing at 96 dpi: its 400 by 300 points are 533 by 400 pixels (8000 twips * 96 / 1440
// = 533.3, 6000 twips give 400).
TEST(QtPixmapCanvas, SampleDrawingOnRealPixels)
{
    Qt_Pixmap_Canvas canvas(Extension(0, 0, 400, 533), nullptr, 0);
    TaviTest::draw_sample(canvas);
    QImage const image = canvas.pixmap()->toImage().convertToFormat(QImage::Format_ARGB32);
    image.save(QString::fromStdString(TaviTest::artefact_path("qt", "sample_pixmap.png")));
    ASSERT_EQ(image.width(), 533);
    ASSERT_EQ(image.height(), 400);
    TaviTest::expect_sample_ink(image, TaviTest::Surface::pixmap, "pixmap");

    // Exact pixels of the dashed line at y = 140 pt = 186.7 + 0.5 -> 187: it starts at 20 pt -> 27,
    // and with D = 8 pixels the first dash covers 27-35, the first gap 36-42, the next dash 43-51.
    EXPECT_EQ(image.pixelColor(30, 187), QColor(0, 0, 0));
    EXPECT_EQ(image.pixelColor(39, 187), QColor(255, 255, 255));
    EXPECT_EQ(image.pixelColor(47, 187), QColor(0, 0, 0));
    // Inside the red rectangle, and in a blank place.
    EXPECT_EQ(image.pixelColor(66, 53), QColor(200, 0, 0));
    EXPECT_EQ(image.pixelColor(5, 5), QColor(255, 255, 255));
}
