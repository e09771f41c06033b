// Qt_Canvas on a recording paint device: symbol translation, font selection and metrics, dashes cut
// by the canvas, long text, translation, damage and clip.
#include "paint_recorder.h"

#include "tavi/qt/cp1252_table.h"
#include "tavi/qt/qt_canvas.h"
#include "tavi/qt/symbol_tables.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>

#include <cmath>
#include <string>
#include <vector>

using namespace Tavi;
using TaviTest::PaintOp;
using TaviTest::PaintRecorder;

namespace {

Font dejavu_serif(long twips) { return Font(u"DejaVu Serif", twips, false, false); }

class QtCanvasTest : public ::testing::Test
{
protected:
    QtCanvasTest() : device(400, 300, 96), painter(&device) {}
    ~QtCanvasTest() override { painter.end(); }

    PaintRecorder device;
    QPainter painter;
};

struct Segment
{
    double x1, y1, x2, y2;
};

std::vector<Segment> lines_of(PaintRecorder const &device)
{
    std::vector<Segment> found;
    for (PaintOp const &o : device.ops_of(PaintOp::line))
        found.push_back(Segment{o.a.x(), o.a.y(), o.b.x(), o.b.y()});
    return found;
}

void expect_segments(std::vector<Segment> const &got, std::vector<Segment> const &want, char const *what)
{
    ASSERT_EQ(got.size(), want.size()) << what;
    for (std::size_t i = 0; i < want.size(); ++i) {
        EXPECT_DOUBLE_EQ(got[i].x1, want[i].x1) << what << " segment " << i;
        EXPECT_DOUBLE_EQ(got[i].y1, want[i].y1) << what << " segment " << i;
        EXPECT_DOUBLE_EQ(got[i].x2, want[i].x2) << what << " segment " << i;
        EXPECT_DOUBLE_EQ(got[i].y2, want[i].y2) << what << " segment " << i;
    }
}

}  // namespace

TEST(SymbolTables, EntriesFromTheEncodings)
{
    struct Case
    {
        unsigned code;
        wchar standard;  // Standard Symbols L
        wchar open;      // OpenSymbol
    };
    Case const cases[] = {
        {0x00, 0x0000, 0x0000}, {0x20, 0x0020, 0x0020}, {0x22, 0x2200, 0x2200}, {0x2d, 0x2212, 0x002d},
        {0x30, 0x0030, 0x0000}, {0x39, 0x0039, 0x0000}, {0x3a, 0x003a, 0x003a}, {0x3f, 0x003f, 0x0000},
        {0x44, 0x0394, 0xe0ad}, {0x60, 0xf8e5, 0x0000}, {0x61, 0x03b1, 0xe0b7}, {0x7c, 0x007c, 0x2223},
        {0x7f, 0x0000, 0x0000}, {0x80, 0x0000, 0x0000}, {0xa0, 0x20ac, 0x20ac}, {0xbd, 0xf8e6, 0x0000},
        {0xbf, 0x21b5, 0x240d}, {0xc0, 0x2135, 0x2135}, {0xcf, 0x2209, 0x2209}, {0xd0, 0x2220, 0x2221},
        {0xd4, 0xf6db, 0x2122}, {0xe5, 0x2211, 0x2211}, {0xe6, 0xf8eb, 0x0000}, {0xf0, 0x0000, 0x0000},
        {0xf1, 0x232a, 0x232a}, {0xf2, 0x222b, 0x222b}, {0xf3, 0x2320, 0x0000}, {0xfe, 0xf8fe, 0x0000},
        {0xff, 0x0000, 0x0000},
    };
    for (Case const &c : cases) {
        EXPECT_EQ(standard_symbols_code_points[c.code], c.standard) << std::hex << c.code;
        EXPECT_EQ(open_symbol_code_points[c.code], c.open) << std::hex << c.code;
    }
    // The row 0xc0 is shared; no entry below 0x20 or in the rows 0x80 and 0x90 is defined.
    for (unsigned code = 0; code < 256; ++code) {
        if (code >= 0xc0 && code < 0xd0) {
            EXPECT_EQ(open_symbol_code_points[code], standard_symbols_code_points[code]) << std::hex << code;
        }
        if (code < 0x20 || (code >= 0x80 && code < 0xa0)) {
            EXPECT_EQ(standard_symbols_code_points[code], 0) << std::hex << code;
            EXPECT_EQ(open_symbol_code_points[code], 0) << std::hex << code;
        }
    }
}

TEST(Cp1252Table, EntriesOfTheCodePage)
{
    struct Case
    {
        unsigned code;
        wchar unicode;
    };
    Case const cases[] = {
        {0x00, 0x0000}, {0x41, 0x0041}, {0x7f, 0x007f}, {0x80, 0x20ac}, {0x81, 0x0000}, {0x83, 0x0192},
        {0x8a, 0x0160}, {0x8d, 0x0000}, {0x8f, 0x0000}, {0x90, 0x0000}, {0x91, 0x2018}, {0x96, 0x2013},
        {0x97, 0x2014}, {0x99, 0x2122}, {0x9d, 0x0000}, {0x9f, 0x0178}, {0xa0, 0x00a0}, {0xe9, 0x00e9},
        {0xff, 0x00ff},
    };
    for (Case const &c : cases)
        EXPECT_EQ(cp1252_code_points[c.code], c.unicode) << std::hex << c.code;
}

TEST_F(QtCanvasTest, SymbolRunsAreTranslatedForTheSelectedFont)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    struct Case
    {
        char16_t const *family;
        Gauge::CharSet char_set;
        wchar unit;
        char16_t expected;
    };
    Case const cases[] = {
        {u"OpenSymbol", Gauge::cs_symbol, 0x61, 0xe0b7},
        {u"Standard Symbols L", Gauge::cs_symbol, 0x61, 0x03b1},
        {u"KMT Math Ext", Gauge::cs_symbol, 0x61, 0xf061},  // 0x61 - 0x1000 in 16 bits
        {u"Symbol", Gauge::cs_symbol, 0x61, 0x0061},
        {u"symbol", Gauge::cs_symbol, 0x61, 0x0061},  // unknown: names compare case-sensitively
        {u"OpenSymbol", Gauge::cs_symbol, 0x0161, 0xe0b7},  // only the low byte counts
        {u"Standard Symbols L", Gauge::cs_symbol, 0x3061, 0x03b1},
        {u"OpenSymbol", Gauge::cs_symbol, 0x30, 0x0000},  // a 0 entry goes in as U+0000
        {u"OpenSymbol", Gauge::cs_unicode, 0x61, 0x0061},  // other sets are not translated
        {u"OpenSymbol", Gauge::cs_ansi, 0x0161, 0x0161},
    };
    for (Case const &c : cases) {
        canvas.font(Font(c.family, 240, false, false), c.char_set, 0);
        QString const s = canvas.qstring(&c.unit, 1);
        ASSERT_EQ(s.size(), 1);
        EXPECT_EQ(s.at(0).unicode(), c.expected) << std::hex << c.unit;
    }
    EXPECT_TRUE(canvas.qstring(nullptr, 3).isEmpty());
    wchar const run[] = {0x61, 0x62};
    EXPECT_TRUE(canvas.qstring(run, 0).isEmpty());

    // What is drawn is the translated run.
    canvas.font(Font(u"OpenSymbol", 240, false, false), Gauge::cs_symbol, 0);
    canvas.text(run, 2, Point(10, 20));
    std::vector<PaintOp> const texts = device.ops_of(PaintOp::text);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].run, QString::fromUtf16(u"\ue0b7\ue0b8"));
}

TEST_F(QtCanvasTest, FontSelectionTruncatesToWholePointsAndKeepsTheAngle)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    // 250 twips are 12.5 points; Qt gets 250 / 20 = 12.
    canvas.font(Font(u"DejaVu Serif", 250, true, true), Gauge::cs_unicode, 0);
    EXPECT_EQ(painter.font().pointSizeF(), 12.0);
    EXPECT_EQ(painter.font().weight(), QFont::Bold);
    EXPECT_EQ(painter.font().style(), QFont::StyleItalic);
    EXPECT_EQ(painter.font().family(), QString("DejaVu Serif"));

    // The same font again changes only the angle; a changed set alone selects again.
    painter.setFont(QFont("DejaVu Sans"));
    canvas.font(Font(u"DejaVu Serif", 250, true, true), Gauge::cs_unicode, 30);
    EXPECT_EQ(canvas.text_angle(), 30);
    EXPECT_EQ(painter.font().family(), QString("DejaVu Sans"));
    canvas.font(Font(u"DejaVu Serif", 250, true, true), Gauge::cs_ansi, 30);
    EXPECT_EQ(painter.font().family(), QString("DejaVu Serif"));
    EXPECT_EQ(canvas.char_set(), Gauge::cs_ansi);

    // init_font hands the font to the painter whatever it holds, and keeps the set.
    painter.setFont(QFont("DejaVu Sans"));
    canvas.init_font();
    EXPECT_EQ(painter.font().family(), QString("DejaVu Serif"));
    EXPECT_EQ(canvas.char_set(), Gauge::cs_ansi);
}

// Metrics of 12 pt "DejaVu Serif" at 96 dpi, as Qt 6 reports them: ascent 15, descent 4, and 43 pixels
// of advance for "Hello".
TEST_F(QtCanvasTest, MetricsOfAPinnedFont)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    EXPECT_EQ(canvas.dpi(), Extent(96, 96));
    canvas.font(dejavu_serif(240), Gauge::cs_unicode, 0);
    EXPECT_EQ(canvas.font_ascent(), 15);
    EXPECT_EQ(canvas.font_descent(), 4);
    EXPECT_EQ(canvas.font_em(), 19);  // 15 + 4
    EXPECT_EQ(canvas.text_extent(u"Hello", 5), Extent(43, 19));
    EXPECT_EQ(canvas.text_box(u"Hello", 5), Box(43, 15, 4));
    EXPECT_EQ(canvas.text_extent(nullptr, 5), Extent(0, 0));
    EXPECT_EQ(canvas.text_box(u"Hello", 0), Box::zero);

    // The line box is the same for every string; the ink is not.
    EXPECT_EQ(canvas.text_box(u"a", 1).ascent(), canvas.text_box(u"g", 1).ascent());
    EXPECT_EQ(canvas.text_box(u"a", 1).descent(), canvas.text_box(u"g", 1).descent());
    Box a, g, x;
    long left = 7, right = 7;
    canvas.text_metrics(u"a", 1, a, left, right);
    canvas.text_metrics(u"g", 1, g, left, right);
    EXPECT_GT(g.descent(), a.descent());
    canvas.text_metrics(u"aXg", 3, x, left, right);
    EXPECT_EQ(x.width(), canvas.text_box(u"aXg", 3).width());
    // The capital's ink is the highest, the descender's the lowest.
    EXPECT_EQ(x.ascent(), canvas.font_X_height());
    EXPECT_EQ(x.descent(), g.descent());
    EXPECT_GT(canvas.font_X_height(), canvas.font_ex());
    canvas.text_metrics(u"", 0, x, left, right);
    EXPECT_EQ(x, Box::zero);
    EXPECT_EQ(left, 0);
    EXPECT_EQ(right, 0);

    // A new font empties the caches.
    long const ex12 = canvas.font_ex();
    canvas.font(dejavu_serif(480), Gauge::cs_unicode, 0);
    EXPECT_GT(canvas.font_ascent(), 15);
    EXPECT_GT(canvas.font_ex(), ex12);
    canvas.font(dejavu_serif(240), Gauge::cs_unicode, 0);
    EXPECT_EQ(canvas.font_ascent(), 15);
    EXPECT_EQ(canvas.font_ex(), ex12);
}

TEST_F(QtCanvasTest, CharBearingReadsTheCharacterBySet)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.font(Font(u"DejaVu Serif", 480, false, true), Gauge::cs_unicode, 0);
    long uleft = 0, uright = 0;
    wchar const florin = 0x0192;
    canvas.char_bearing(&florin, uleft, uright);
    // The italic florin hangs out on both sides: its bearings are not 0, so a lost translation shows.
    EXPECT_TRUE(uleft != 0 || uright != 0);

    canvas.font(Font(u"DejaVu Serif", 480, false, true), Gauge::cs_ansi, 0);
    long left = 99, right = 99;
    wchar const ansi_florin = 0x0183;  // 0x83 in the low byte
    canvas.char_bearing(&ansi_florin, left, right);
    EXPECT_EQ(left, uleft);
    EXPECT_EQ(right, uright);

    for (wchar undefined : {wchar(0x81), wchar(0x8d), wchar(0x8f), wchar(0x90), wchar(0x9d), wchar(0x00)}) {
        left = right = 99;
        canvas.char_bearing(&undefined, left, right);
        EXPECT_EQ(left, 0) << std::hex << undefined;
        EXPECT_EQ(right, 0) << std::hex << undefined;
    }
    left = right = 99;
    canvas.char_bearing(nullptr, left, right);
    EXPECT_EQ(left, 0);
    EXPECT_EQ(right, 0);
}

// At 96 dpi a pen of width 1 has D = 96 * 120 / 1440 = 8 (5 * 1 = 5 pixels would be 75 twips, below
// 120), so the period is 16.
TEST_F(QtCanvasTest, DashesAreCutByTheCanvasAndRunOnAcrossLines)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.pen(Pen(1, Color::black, Pen::dashed), true);
    // The painter's pen stays solid: the canvas cuts the dashes itself.
    EXPECT_EQ(painter.pen().style(), Qt::SolidLine);
    EXPECT_EQ(painter.pen().capStyle(), Qt::RoundCap);

    // (0,0)-(40,0): phase 0, r = 40: dashes 0-8, 16-24, 32-40; r ends at 40 - 48 = -8, phase 8.
    canvas.line(Point(0, 0), Point(40, 0));
    // (40,0)-(40,30): phase 8, so the first dash starts at y 8: 8-16; r = 30 - 8 = 22 -> 6 after one
    // period; 6 is not above L = 8, so the last dash runs 24-30 to the end. Phase -6.
    canvas.line(Point(40, 0), Point(40, 30));
    // (40,30)-(0,30): phase -6, a dash lit for 6 goes on for 2 more: from the start 40 to 46 - 8 = 38.
    // r = 40 + 6 = 46: dashes 40-38, 30-22, 14-6; r ends at -2, phase 2.
    canvas.line(Point(40, 30), Point(0, 30));
    expect_segments(lines_of(device),
                    {{0, 0, 8, 0}, {16, 0, 24, 0}, {32, 0, 40, 0},
                     {40, 8, 40, 16}, {40, 24, 40, 30},
                     {40, 30, 38, 30}, {30, 30, 22, 30}, {14, 30, 6, 30}},
                    "dashed chain");

    // A restart begins a new pattern.
    device.clear();
    canvas.pen(Pen(1, Color::black, Pen::dashed), true);
    canvas.line(Point(0, 50), Point(20, 50));
    expect_segments(lines_of(device), {{0, 50, 8, 50}, {16, 50, 20, 50}}, "restarted");
}

// Width 2 at 96 dpi: 5 * 2 = 10 pixels are 150 twips, so D = 10 and P = 20; a dot is 2 long, the gap
// 18.
TEST_F(QtCanvasTest, DotsAreOnePenWidthLongAndOnePeriodApart)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.pen(Pen(2, Color::black, Pen::dotted), true);
    // r = 50: dots at 0 and 20 inside the loop (r >= 18), then r = 10 > 2 gives the dot at 40.
    // The phase becomes -10, below -2, so 20 is added: the next dot is 10 into the next line.
    canvas.line(Point(0, 0), Point(50, 0));
    canvas.line(Point(50, 0), Point(80, 0));
    // Second line: phase 10, dot at 60-62; r = 30 - 10 = 20 >= 18, then r = 0: nothing more.
    expect_segments(lines_of(device), {{0, 0, 2, 0}, {20, 0, 22, 0}, {40, 0, 42, 0}, {60, 0, 62, 0}}, "dotted");
}

// A line of at most a pixel is drawn whole or not at all, by the sign of the phase after the length is
// taken off.
TEST_F(QtCanvasTest, ShortDashedLinesAreWholeOrNothing)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.pen(Pen(1, Color::black, Pen::dashed), true);
    // Phase 0 - 0.5 = -0.5: lit, drawn.
    canvas.line_f(PointF(0.0, 0.0), PointF(0.5, 0.0));
    EXPECT_EQ(device.ops_of(PaintOp::line).size(), 1u);
    // Run the phase to 8 (the end of a 40-pixel line, as above), then 8 - 0.5 = 7.5 is dark.
    canvas.pen(Pen(1, Color::black, Pen::dashed), true);
    canvas.line_f(PointF(0.0, 10.0), PointF(40.0, 10.0));
    device.clear();
    canvas.line_f(PointF(40.0, 10.0), PointF(40.5, 10.0));
    EXPECT_EQ(device.ops_of(PaintOp::line).size(), 0u);
}

TEST_F(QtCanvasTest, FractionalDashesAreNotTruncated)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.pen(Pen(1, Color::black, Pen::dashed), true);
    // From 0.5 over 20 to 20.5: dashes 0.5-8.5 and 16.5-20.5.
    canvas.line_f(PointF(0.5, 0.25), PointF(20.5, 0.25));
    expect_segments(lines_of(device), {{0.5, 0.25, 8.5, 0.25}, {16.5, 0.25, 20.5, 0.25}}, "line_f");
}

TEST_F(QtCanvasTest, PenFormsRestoreThePenAndPatternedFramesAreFourLines)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.pen(Pen(3, Color(255, 0, 0), Pen::solid), false);
    canvas.line(Point(0, 0), Point(30, 0), Pen(0, Color(0, 0, 255), Pen::dashed), true);
    EXPECT_EQ(canvas.pen(), Pen(3, Color(255, 0, 0), Pen::solid));
    EXPECT_EQ(painter.pen().color(), QColor(255, 0, 0));
    EXPECT_EQ(painter.pen().widthF(), 3.0);
    std::vector<PaintOp> lines = device.ops_of(PaintOp::line);
    // Width 0 strokes as 1: D = 8, dashes 0-8 and 16-24, nothing after r = 30 - 32 < 0.
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].pen.widthF(), 1.0);
    EXPECT_EQ(lines[0].pen.color(), QColor(0, 0, 255));

    // A dashed frame: top, right, bottom, left, one path. Its corners are the Rect's own.
    device.clear();
    canvas.frame_rect(Rect(0, 0, 8, 16), Pen(1, Color::black, Pen::dashed));
    // Top 0-16: dash 0-8, then r = 16 - 16 = 0 >= 8 is false; r = 0: nothing; phase 0. Right side
    // 0-8: dash (16,0)-(16,8), r = 8 - 16 = -8, phase 8. Bottom from (16,8) to (0,8): phase 8, so the
    // dash starts at x 8 and reaches 0; r = 16 - 8 = 8 >= 8: dash 8-0, r = -8, phase 8. Left from (0,8)
    // up: the dash would start 8 along, at the end: r = 8 - 8 = 0, nothing.
    expect_segments(lines_of(device), {{0, 0, 8, 0}, {16, 0, 16, 8}, {8, 8, 0, 8}}, "frame");
    EXPECT_EQ(device.ops_of(PaintOp::rect).size(), 0u);

    // A solid frame is one rectangle without the brush: the QRect of (left, top, width, height).
    device.clear();
    canvas.brush(Brush(Color(0, 255, 0)));
    canvas.frame_rect(Rect(10, 20, 30, 60));
    std::vector<PaintOp> const rects = device.ops_of(PaintOp::rect);
    ASSERT_EQ(rects.size(), 1u);
    EXPECT_EQ(rects[0].rectangle, QRectF(20, 10, 40, 20));
    EXPECT_EQ(rects[0].brush.style(), Qt::NoBrush);
    EXPECT_EQ(painter.brush().color(), QColor(0, 255, 0));
}

TEST_F(QtCanvasTest, ShapesUseTheBrushTableAndTheFillRule)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    struct Case
    {
        Brush::FillStyle style;
        Qt::BrushStyle qt;
    };
    Case const cases[] = {
        {Brush::solid, Qt::SolidPattern},         {Brush::horizontal, Qt::HorPattern},
        {Brush::vertical, Qt::VerPattern},        {Brush::diagonal, Qt::BDiagPattern},
        {Brush::back_diagonal, Qt::FDiagPattern}, {Brush::cross, Qt::CrossPattern},
        {Brush::diagonal_cross, Qt::DiagCrossPattern}, {static_cast<Brush::FillStyle>(7), Qt::SolidPattern},
    };
    for (Case const &c : cases) {
        device.clear();
        canvas.fill_rect(Rect(0, 0, 10, 10), Brush(c.style, Color(10, 20, 30)));
        canvas.brush(Brush(c.style, Color(40, 50, 60)));
        canvas.fill_ellipse(Rect(0, 0, 10, 10));
        std::vector<PaintOp> const rects = device.ops_of(PaintOp::rect);
        std::vector<PaintOp> const ellipses = device.ops_of(PaintOp::ellipse);
        ASSERT_EQ(rects.size(), 1u);
        ASSERT_EQ(ellipses.size(), 1u);
        EXPECT_EQ(rects[0].brush.style(), c.qt) << c.style;
        EXPECT_EQ(rects[0].brush.color(), QColor(10, 20, 30));
        EXPECT_EQ(ellipses[0].brush.style(), c.qt) << c.style;
        EXPECT_EQ(ellipses[0].pen.style(), Qt::NoPen);
    }

    // A black brush is built anew: the painter never got the canvas's starting brush.
    Qt_Canvas fresh(&painter, Extension(0, 0, 300, 400));
    painter.setBrush(QBrush(QColor(1, 2, 3)));
    device.clear();
    fresh.fill_rect(Rect(0, 0, 5, 5));
    Point const triangle[] = {Point(0, 0), Point(10, 0), Point(0, 10)};
    fresh.fill_polygon(triangle, 3, true);
    ASSERT_EQ(device.ops().size(), 2u);
    EXPECT_EQ(device.ops()[0].brush.color(), QColor(0, 0, 0));
    EXPECT_EQ(device.ops()[1].brush.color(), QColor(0, 0, 0));
    EXPECT_EQ(device.ops()[1].fill_rule, Qt::WindingFill);
    EXPECT_EQ(painter.brush().color(), QColor(1, 2, 3));

    device.clear();
    fresh.brush(Brush(Color(200, 0, 0)));
    fresh.fill_polygon(triangle, 3, false);
    fresh.fill_polygon(triangle, 1, false);
    fresh.fill_polygon(nullptr, 3, false);
    ASSERT_EQ(device.ops().size(), 1u);
    EXPECT_EQ(device.ops()[0].fill_rule, Qt::OddEvenFill);
    EXPECT_EQ(device.ops()[0].brush.color(), QColor(200, 0, 0));
    EXPECT_EQ(device.ops()[0].pen.style(), Qt::NoPen);
    EXPECT_EQ(device.ops()[0].points.size(), 3u);

    // A closed solid poly line repeats its first point and is never filled.
    device.clear();
    fresh.poly_line(triangle, 3, true);
    fresh.poly_line(triangle, 1, true);
    ASSERT_EQ(device.ops().size(), 1u);
    EXPECT_EQ(device.ops()[0].kind, PaintOp::polyline);
    EXPECT_EQ(device.ops()[0].points.size(), 4u);
    EXPECT_EQ(device.ops()[0].brush.style(), Qt::NoBrush);

    // The shadow is grey diagonal hatching anchored at the rectangle's corner.
    device.clear();
    fresh.shadow(Rect(10, 20, 30, 40));
    ASSERT_EQ(device.ops().size(), 1u);
    EXPECT_EQ(device.ops()[0].brush.style(), Qt::BDiagPattern);
    EXPECT_EQ(device.ops()[0].brush.color(), QColor(128, 128, 128));
    EXPECT_EQ(device.ops()[0].brush_origin, QPointF(20, 10));
    EXPECT_EQ(painter.brushOrigin(), QPointF(0, 0));
}

// The extension's top left (20, 10) is the device's origin: the drawing offset is (-20, -10).
TEST_F(QtCanvasTest, OffsetTranslationAndDamage)
{
    Qt_Canvas canvas(&painter, Extension(10, 20, 110, 220));
    EXPECT_EQ(canvas.draw_offset(), Point(-20, -10));
    EXPECT_EQ(canvas.damage(), Rect(0, 0, 100, 200));
    EXPECT_TRUE(canvas.any_real_damage());

    canvas.fill_rect(Rect(10, 20, 20, 40), Brush(Color(1, 1, 1)));
    // erase works on the damage in device pixels: no offset.
    canvas.background(Color(250, 240, 230));
    canvas.erase();
    canvas.erase(Color(5, 6, 7));
    std::vector<PaintOp> rects = device.ops_of(PaintOp::rect);
    ASSERT_EQ(rects.size(), 3u);
    EXPECT_EQ(rects[0].rectangle, QRectF(0, 0, 20, 10));
    EXPECT_EQ(rects[1].rectangle, QRectF(0, 0, 200, 100));
    EXPECT_EQ(rects[1].brush.color(), QColor(250, 240, 230));
    EXPECT_EQ(rects[2].rectangle, QRectF(0, 0, 200, 100));
    EXPECT_EQ(rects[2].brush.color(), QColor(5, 6, 7));

    // A translation moves the offset with it.
    canvas.translation(Point(5, 7));
    EXPECT_EQ(canvas.draw_offset(), Point(-15, -3));
    long x = 1, y = 2;
    canvas.translate(x, y);
    EXPECT_EQ(x, 6);
    EXPECT_EQ(y, 9);
    EXPECT_EQ(canvas.client_to_point(0, 0), Point(15, 3));
    int px = 0, py = 0;
    canvas.to_pixels(Point(15, 3), px, py);
    EXPECT_EQ(px, 0);
    EXPECT_EQ(py, 0);

    // Damage (0, 0, 100, 200) in pixels. A Rect is moved by the offset (-15, -3); an Extension holds
    // the translation already, so it is moved by (-20, -10).
    struct Case
    {
        Rect r;
        bool rect_damaged;
        bool extension_damaged;
    };
    Case const cases[] = {
        {Rect(103, 215, 120, 230), true, true},     // Rect: (100, 200, ...) touches the corner
        {Rect(104, 215, 120, 230), false, true},    // Rect: top 101; Extension: top 94
        {Rect(110, 219, 120, 230), false, true},    // Extension: (100, 199, ...) touches
        {Rect(111, 200, 120, 230), false, false},   // Extension: top 101
        {Rect(-20, -30, -14, -16), false, false},   // Extension: bottom -24
        {Rect(-20, -30, 10, 20), true, true},       // Extension: (0, 0) is its corner
        {Rect(-20, -30, 9, 20), true, false},       // Extension: bottom -1; Rect: bottom 6
    };
    for (Case const &c : cases) {
        EXPECT_EQ(canvas.damaged(c.r), c.rect_damaged) << c.r.top() << "," << c.r.left();
        EXPECT_EQ(canvas.really_damaged(c.r), c.rect_damaged);
        Extension const e(c.r.top(), c.r.left(), c.r.bottom(), c.r.right());
        EXPECT_EQ(canvas.damaged(e), c.extension_damaged) << c.r.top() << "," << c.r.left();
        EXPECT_EQ(canvas.really_damaged(e), c.extension_damaged);
    }

    canvas.set_damaged(Extension(5, 5, 5, 50));
    EXPECT_FALSE(canvas.any_real_damage());
    canvas.change_viewport(Extension(0, 0, 40, 30));
    EXPECT_EQ(canvas.damage(), Rect(5, 5, 40, 30));
    EXPECT_EQ(canvas.draw_offset(), Point(5, 7));
}

TEST_F(QtCanvasTest, FractionalTranslationRoundsHalvesUp)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.translation_f(PointF(2.6, -2.6));
    EXPECT_EQ(canvas.translation(), Point(3, -3));
    EXPECT_EQ(canvas.translation_f(), PointF(2.6, -2.6));
    EXPECT_EQ(canvas.draw_offset(), Point(3, -3));
    EXPECT_EQ(canvas.draw_offset_f(), PointF(2.6, -2.6));

    // The doubles keep their fractions: three additions of 0.4 make 1.2, which rounds to 1.
    canvas.translation(Point(0, 0));
    for (int i = 0; i < 3; ++i)
        canvas.add_translation_f(PointF(0.4, 0.4));
    EXPECT_EQ(canvas.translation(), Point(1, 1));
    EXPECT_NEAR(canvas.translation_f().x, 1.2, 1e-12);
    canvas.add_translation(Point(1, 1));  // integral: the fractions are dropped
    EXPECT_EQ(canvas.translation_f(), PointF(2.0, 2.0));

    // -2.5 rounds to -2, not -3.
    canvas.translation_f(PointF(-2.5, 2.5));
    EXPECT_EQ(canvas.translation(), Point(-2, 3));

    double x = 1.0, y = 1.0;
    canvas.translate_f(x, y);
    EXPECT_EQ(x, -1.5);
    EXPECT_EQ(y, 3.5);

    device.clear();
    canvas.line_f(PointF(0.25, 0.25), PointF(1.25, 0.25));
    std::vector<Segment> const l = lines_of(device);
    ASSERT_EQ(l.size(), 1u);
    EXPECT_DOUBLE_EQ(l[0].x1, -2.25);
    EXPECT_DOUBLE_EQ(l[0].y1, 2.75);
}

TEST_F(QtCanvasTest, ClipReplacesAndIsOffset)
{
    Qt_Canvas canvas(&painter, Extension(10, 20, 110, 220));
    Rect got(1, 1, 1, 1);
    EXPECT_FALSE(canvas.clip_rect(&got));
    EXPECT_EQ(got, Rect(1, 1, 1, 1));

    canvas.clip_rect(Rect(0, 0, 100, 100));
    canvas.clip_rect(Rect(20, 30, 40, 70));
    EXPECT_TRUE(canvas.clip_rect(&got));
    EXPECT_TRUE(canvas.clip_rect(nullptr));
    EXPECT_EQ(got, Rect(20, 30, 40, 70));
    EXPECT_TRUE(painter.hasClipping());
    // Offset (-20, -10): left 10, top 10, 40 wide, 20 high; the second clip replaced the first.
    EXPECT_EQ(painter.clipBoundingRect(), QRectF(10, 10, 40, 20));

    canvas.no_clip_rect();
    EXPECT_FALSE(canvas.clip_rect(&got));
    EXPECT_FALSE(painter.hasClipping());
}

TEST_F(QtCanvasTest, LongTextIsDrawnInParts)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.font(dejavu_serif(240), Gauge::cs_unicode, 0);
    canvas.text_color(Color(0, 0, 200));
    std::u16string run;
    // 4000 characters: Qt itemizes runs of up to 4096 characters as one, so a run of this length
    // reaches the engine as one text item per drawText.
    for (int i = 0; i < 800; ++i)
        run += u"Hello";
    QString const whole = QString::fromUtf16(run.data(), static_cast<qsizetype>(run.size()));
    QFontMetrics const metrics = painter.fontMetrics();
    int const width = metrics.horizontalAdvance(whole);
    ASSERT_GE(width, 30000);  // some 43 pixels a word: well above the limit

    canvas.text(run.data(), static_cast<long>(run.size()), Point(5, 50));
    std::vector<PaintOp> const parts = device.ops_of(PaintOp::text);
    qsizetype const expected_parts = width / 30000 + 1;
    qsizetype const part_length = whole.size() / expected_parts;
    ASSERT_GE(parts.size(), 2u);
    QString joined;
    double x = 5.0;
    for (PaintOp const &p : parts) {
        EXPECT_EQ(p.a.x(), x);
        EXPECT_EQ(p.a.y(), 50.0);
        EXPECT_EQ(p.pen.color(), QColor(0, 0, 200));
        EXPECT_LE(p.run.size(), part_length);
        joined += p.run;
        x += metrics.horizontalAdvance(p.run);
    }
    EXPECT_EQ(parts[0].run.size(), part_length);
    EXPECT_EQ(joined, whole);
    // The painter's pen comes back.
    EXPECT_EQ(painter.pen().color(), QColor(0, 0, 0));

    // At an angle the run is one call on a rotated painter, whose matrix is put back.
    device.clear();
    canvas.font(dejavu_serif(240), Gauge::cs_unicode, 90);
    canvas.text(run.data(), static_cast<long>(run.size()), Point(5, 50));
    std::vector<PaintOp> const turned = device.ops_of(PaintOp::text);
    ASSERT_EQ(turned.size(), 1u);
    EXPECT_EQ(turned[0].run, whole);
    // rotate(-90) after translate(5, 50): the origin lands at (5, 50), and x runs upward.
    QPointF const origin = turned[0].transform.map(turned[0].a);
    EXPECT_NEAR(origin.x(), 5.0, 1e-9);
    EXPECT_NEAR(origin.y(), 50.0, 1e-9);
    QPointF const along = turned[0].transform.map(turned[0].a + QPointF(10, 0));
    EXPECT_NEAR(along.x(), 5.0, 1e-9);
    EXPECT_NEAR(along.y(), 40.0, 1e-9);
    EXPECT_TRUE(painter.worldTransform().isIdentity());
}

TEST_F(QtCanvasTest, ResolutionConversionAndHints)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    // twips * 96 / 1440 + 0.5, truncated: 1440 -> 96, 720 -> 48, 15 -> 1.5 -> 1, 7 -> 0.97 -> 0.
    EXPECT_EQ(canvas.twips_to_pixel(Extent(1440, 720)), Extent(96, 48));
    EXPECT_EQ(canvas.twips_to_pixel(Extent(15, 7)), Extent(1, 0));
    EXPECT_EQ(canvas.twips_to_pixel_f(ExtentF(15.0, 720.0)), ExtentF(1.0, 48.0));
    EXPECT_EQ(canvas.font_pixel_size(240), 16);  // 96 * 240 / 1440 = 16
    EXPECT_EQ(canvas.font_pixel_size(250), 17);  // 16.67 + 0.5
    EXPECT_FALSE(canvas.short_coordinates());

    EXPECT_FALSE(canvas.printing());
    canvas.antialias(true);
    EXPECT_TRUE(canvas.antialias());
    canvas.useInheritAliasing(true);
    canvas.antialias(false);
    EXPECT_TRUE(canvas.antialias());
    canvas.antialias_text(false);
    EXPECT_FALSE(canvas.antialias_text());
}

TEST_F(QtCanvasTest, PaintEventGivesTheDamage)
{
    // Qt's rectangle (x 10, y 20, 30 by 40) has right 39 and bottom 59, inclusive.
    QPaintEvent event(QRect(10, 20, 30, 40));
    Qt_Canvas canvas(&painter, &event, Extension(0, 0, 300, 400));
    EXPECT_EQ(canvas.damage(), Rect(20, 10, 60, 40));
    EXPECT_FALSE(canvas.damaged(Rect(0, 0, 19, 9)));
    EXPECT_TRUE(canvas.damaged(Rect(0, 0, 20, 10)));

    // A copy shares the painter and carries the state.
    canvas.translation(Point(3, 4));
    Qt_Canvas copy(canvas);
    EXPECT_EQ(copy.painter(), &painter);
    EXPECT_EQ(copy.draw_offset(), Point(3, 4));
    EXPECT_EQ(copy.damage(), canvas.damage());
}

TEST(QtCanvasDeathTest, PainterWithoutDeviceStops)
{
    QPainter idle;
    EXPECT_DEATH({ Qt_Canvas canvas(&idle, Extension(0, 0, 10, 10)); }, "qt_canvas");
}
