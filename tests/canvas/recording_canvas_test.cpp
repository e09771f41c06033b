// The recording canvas that layout tests compute by hand against: its documented metrics and records.
#include "support/recording_canvas.h"

#include <gtest/gtest.h>

using namespace Tavi;
using TaviTest::RecordingCanvas;

TEST(RecordingCanvas, MetricsScaleWithTheFontSize)
{
    struct Case
    {
        long size;
        Box box;  // text_box of three characters
        Box ink;  // text_metrics of three characters
        long ex, X;
    } const cases[] = {
        {240, Box(30, 8, 2), Box(30, 7, 1), 5, 7},
        // 10 * 170 / 240 = 7 per character; 8 * 170 / 240 = 5; 2 * 170 / 240 = 1; 7 * 170 / 240 = 4;
        // 1 * 170 / 240 = 0; 5 * 170 / 240 = 3.
        {170, Box(21, 5, 1), Box(21, 4, 0), 3, 4},
        {480, Box(60, 16, 4), Box(60, 14, 2), 10, 14},
    };
    for (auto const &c : cases) {
        RecordingCanvas canvas;
        canvas.font(Font(u"Times New Roman", c.size, false, false), Gauge::cs_unicode, 0);
        EXPECT_EQ(canvas.text_box(u"abc", 3), c.box) << c.size;
        Box ink;
        long left = -1, right = -1;
        canvas.text_metrics(u"abc", 3, ink, left, right);
        EXPECT_EQ(ink, c.ink) << c.size;
        EXPECT_EQ(left, 0);
        EXPECT_EQ(right, 0);
        EXPECT_EQ(canvas.text_extent(u"abc", 3), Extent(c.box.width(), c.box.height()));
        EXPECT_EQ(canvas.font_em(), c.box.height());
        EXPECT_EQ(canvas.font_ex(), c.ex);
        EXPECT_EQ(canvas.font_X_height(), c.X);
        EXPECT_EQ(canvas.font_leading(), 0);
    }
}

TEST(RecordingCanvas, EmptyRunsMeasureEmptyAndEverythingIsRecorded)
{
    RecordingCanvas canvas;
    EXPECT_EQ(canvas.text_box(nullptr, 3), Box::zero);
    EXPECT_EQ(canvas.text_box(u"a", 0), Box::zero);
    EXPECT_EQ(canvas.text_extent(u"a", -1), Extent(0, 0));
    EXPECT_EQ(canvas.measure_count(), 3u);
    EXPECT_EQ(canvas.measure_count("text_box"), 2u);
    EXPECT_EQ(canvas.measures()[0], "text_box(null)");
    EXPECT_TRUE(canvas.calls().empty());

    canvas.font(Font(u"Symbol", 300, true, false), Gauge::cs_symbol, 90);
    canvas.text(u"x\u03b1", 2, Point(3, 4));
    canvas.pen(Pen(2, Color(1, 2, 3, 4), Pen::dotted), true);
    EXPECT_EQ(canvas.calls(), (std::vector<std::string>{"font(Symbol,300,1,0,cs=2,angle=90)",
                                                        "text(\"x\xce\xb1\",3,4)",
                                                        "pen(2/#01020304/dotted,restart=1)"}));
    EXPECT_EQ(canvas.char_set(), Gauge::cs_symbol);
    EXPECT_EQ(canvas.text_angle(), 90);
    canvas.clear();
    EXPECT_TRUE(canvas.calls().empty());
    EXPECT_EQ(canvas.measure_count(), 0u);
}
