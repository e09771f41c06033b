// Qt_Canvas on a recording paint device: symbol translation, font selection and metrics, dashes cut
// by the canvas, long text, translation, damage and clip.
#include "paint_recorder.h"

#include "tavi/qt/qt_canvas.h"

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
        {u"KMT Math Ext", Gauge::cs_symbol, 0x61, 0xf061},  // 0x61 - 0x1000 in 16 bits
        {u"symbol", Gauge::cs_symbol, 0x61, 0x0061},  // unknown: names compare case-sensitively
        {u"Standard Symbols L", Gauge::cs_symbol, 0x3061, 0x03b1},  // only the low byte counts
        {u"OpenSymbol", Gauge::cs_symbol, 0x30, 0x0000},  // a 0 entry goes in as U+0000
        {u"OpenSymbol", Gauge::cs_ansi, 0x0161, 0x0161},  // other sets are not translated
    };
    for (Case const &c : cases) {
        canvas.font(Font(c.family, 240, false, false), c.char_set, 0);
        QString const s = canvas.qstring(&c.unit, 1);
        ASSERT_EQ(s.size(), 1);
        EXPECT_EQ(s.at(0).unicode(), c.expected) << std::hex << c.unit;
    }
    EXPECT_TRUE(canvas.qstring(nullptr, 3).isEmpty());
    wchar const run[] = {0x61, 0x62};

    // What is drawn is the translated run.
    canvas.font(Font(u"OpenSymbol", 240, false, false), Gauge::cs_symbol, 0);
    canvas.text(run, 2, Point(10, 20));
    std::vector<PaintOp> const texts = device.ops_of(PaintOp::text);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].run, QString::fromUtf16(u"\ue0b7\ue0b8"));
}

// Metrics of 12 pt "DejaVu Serif" at 96 dpi, as Qt 6 reports them: ascent 15, descent 4, and 43 pixels
// of advance for "Hello".
TEST_F(QtCanvasTest, FontSelectionAndMetricsOfAPinnedFont)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    // 250 twips are 12.5 points; Qt gets 250 / 20 = 12. The painter has the font when text is drawn.
    canvas.font(Font(u"DejaVu Serif", 250, true, true), Gauge::cs_unicode, 0);
    canvas.text(u"a", 1, Point(10, 20));
    canvas.font(Font(u"DejaVu Sans", 300, false, false), Gauge::cs_unicode, 0);
    canvas.text(u"b", 1, Point(10, 20));
    std::vector<PaintOp> const drawn = device.ops_of(PaintOp::text);
    ASSERT_EQ(drawn.size(), 2u);
    EXPECT_EQ(drawn[0].font.pointSizeF(), 12.0);
    EXPECT_EQ(drawn[0].font.family(), QString("DejaVu Serif"));
    EXPECT_TRUE(drawn[0].font.bold());
    EXPECT_TRUE(drawn[0].font.italic());
    EXPECT_EQ(drawn[1].font.pointSizeF(), 15.0);
    EXPECT_EQ(drawn[1].font.family(), QString("DejaVu Sans"));

    canvas.font(dejavu_serif(240), Gauge::cs_unicode, 0);
    EXPECT_EQ(canvas.font_ascent(), 15);
    EXPECT_EQ(canvas.font_descent(), 4);
    EXPECT_EQ(canvas.text_box(u"Hello", 5), Box(43, 15, 4));
    EXPECT_EQ(canvas.text_box(u"Hello", 0), Box::zero);

    // The ink box: the capital's ink is the highest, the descender's the lowest.
    Box g, x;
    long left = 7, right = 7;
    canvas.text_metrics(u"g", 1, g, left, right);
    canvas.text_metrics(u"aXg", 3, x, left, right);
    EXPECT_EQ(x.ascent(), canvas.font_X_height());
    EXPECT_EQ(x.descent(), g.descent());

    // A new font empties the caches.
    long const ex12 = canvas.font_ex();
    canvas.font(dejavu_serif(480), Gauge::cs_unicode, 0);
    EXPECT_GT(canvas.font_ascent(), 15);
    EXPECT_GT(canvas.font_ex(), ex12);
}

// At 96 dpi a pen of width 1 has D = 96 * 120 / 1440 = 8 (5 * 1 = 5 pixels would be 75 twips, below
// 120), so the period is 16.
TEST_F(QtCanvasTest, DashesAndDotsAreCutByTheCanvasAndRunOnAcrossLines)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.pen(Pen(1, Color::black, Pen::dashed), true);
    EXPECT_EQ(painter.pen().style(), Qt::SolidLine);  // the canvas cuts the dashes itself

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

    // Dots of width 2: 5 * 2 = 10 pixels are 150 twips, so D = 10 and P = 20; a dot is 2 long, the gap 18.
    device.clear();
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
TEST_F(QtCanvasTest, ShortDashedLinesAreWholeOrNothingAndFractionsStay)
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

    // Fractional dashes are not truncated: from 0.5 over 20 to 20.5, dashes 0.5-8.5 and 16.5-20.5.
    canvas.pen(Pen(1, Color::black, Pen::dashed), true);
    canvas.line_f(PointF(0.5, 0.25), PointF(20.5, 0.25));
    expect_segments(lines_of(device), {{0.5, 0.25, 8.5, 0.25}, {16.5, 0.25, 20.5, 0.25}}, "line_f");
}

TEST_F(QtCanvasTest, PatternedFramesAreFourLinesAndThePenComesBack)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.pen(Pen(3, Color(255, 0, 0), Pen::solid), false);
    // A dashed frame: top, right, bottom, left, one path. Its corners are the Rect's own.
    canvas.frame_rect(Rect(0, 0, 8, 16), Pen(1, Color::black, Pen::dashed));
    // Top 0-16: dash 0-8, then r = 16 - 16 = 0 >= 8 is false; r = 0: nothing; phase 0. Right side
    // 0-8: dash (16,0)-(16,8), r = 8 - 16 = -8, phase 8. Bottom from (16,8) to (0,8): phase 8, so the
    // dash starts at x 8 and reaches 0; r = 16 - 8 = 8 >= 8: dash 8-0, r = -8, phase 8. Left from (0,8)
    // up: the dash would start 8 along, at the end: r = 8 - 8 = 0, nothing.
    expect_segments(lines_of(device), {{0, 0, 8, 0}, {16, 0, 16, 8}, {8, 8, 0, 8}}, "frame");
    EXPECT_EQ(device.ops_of(PaintOp::rect).size(), 0u);
    EXPECT_EQ(painter.pen().widthF(), 3.0);  // the canvas's own pen comes back
}

// The extension's top left (20, 10) is the device's origin: the drawing offset is (-20, -10).
TEST_F(QtCanvasTest, OffsetTranslationDamageAndClip)
{
    Qt_Canvas canvas(&painter, Extension(10, 20, 110, 220));
    EXPECT_EQ(canvas.draw_offset(), Point(-20, -10));
    EXPECT_EQ(canvas.damage(), Rect(0, 0, 100, 200));

    canvas.fill_rect(Rect(10, 20, 20, 40), Brush(Color(1, 1, 1)));
    // erase works on the damage in device pixels: no offset.
    canvas.erase(Color(5, 6, 7));
    std::vector<PaintOp> rects = device.ops_of(PaintOp::rect);
    ASSERT_EQ(rects.size(), 2u);
    EXPECT_EQ(rects[0].rectangle, QRectF(0, 0, 20, 10));
    EXPECT_EQ(rects[1].rectangle, QRectF(0, 0, 200, 100));

    // A translation moves the offset with it.
    canvas.translation(Point(5, 7));
    EXPECT_EQ(canvas.draw_offset(), Point(-15, -3));
    EXPECT_EQ(canvas.client_to_point(0, 0), Point(15, 3));

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
        {Rect(111, 200, 120, 230), false, false},   // Extension: top 101
        {Rect(-20, -30, 10, 20), true, true},       // Extension: (0, 0) is its corner
        {Rect(-20, -30, 9, 20), true, false},       // Extension: bottom -1; Rect: bottom 6
    };
    for (Case const &c : cases) {
        EXPECT_EQ(canvas.damaged(c.r), c.rect_damaged) << c.r.top() << "," << c.r.left();
        Extension const e(c.r.top(), c.r.left(), c.r.bottom(), c.r.right());
        EXPECT_EQ(canvas.damaged(e), c.extension_damaged) << c.r.top() << "," << c.r.left();
    }


    // A clip replaces the one before and is offset by (-15, -3): left 15, top 27, 40 wide, 20 high.
    canvas.clip_rect(Rect(0, 0, 100, 100));
    canvas.clip_rect(Rect(30, 30, 50, 70));
    EXPECT_EQ(painter.clipBoundingRect(), QRectF(15, 27, 40, 20));
    canvas.no_clip_rect();
    EXPECT_FALSE(painter.hasClipping());

    // A paint event's rectangle (x 10, y 20, 30 by 40) has right 39 and bottom 59, inclusive.
    QPaintEvent event(QRect(10, 20, 30, 40));
    Qt_Canvas evented(&painter, &event, Extension(0, 0, 300, 400));
    EXPECT_EQ(evented.damage(), Rect(20, 10, 60, 40));
}

TEST_F(QtCanvasTest, FractionalTranslationRoundsHalvesUp)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    // The doubles keep their fractions: three additions of 0.4 make 1.2, which rounds to 1.
    for (int i = 0; i < 3; ++i)
        canvas.add_translation_f(PointF(0.4, 0.4));
    EXPECT_EQ(canvas.translation(), Point(1, 1));
    EXPECT_NEAR(canvas.translation_f().x, 1.2, 1e-12);

    // -2.5 rounds to -2, not -3.
    canvas.translation_f(PointF(-2.5, 2.5));
    EXPECT_EQ(canvas.translation(), Point(-2, 3));

    device.clear();
    canvas.line_f(PointF(0.25, 0.25), PointF(1.25, 0.25));
    std::vector<Segment> const l = lines_of(device);
    ASSERT_EQ(l.size(), 1u);
    EXPECT_DOUBLE_EQ(l[0].x1, -2.25);
    EXPECT_DOUBLE_EQ(l[0].y1, 2.75);
}

TEST_F(QtCanvasTest, LongTextIsDrawnInParts)
{
    Qt_Canvas canvas(&painter, Extension(0, 0, 300, 400));
    canvas.font(dejavu_serif(240), Gauge::cs_unicode, 0);
    std::u16string run;
    // 4000 characters: Qt itemizes runs of up to 4096 characters as one, so a run of this length
    // reaches the engine as one text item per drawText.
    for (int i = 0; i < 800; ++i)
        run += u"Hello";
    QString const whole = QString::fromUtf16(run.data(), static_cast<qsizetype>(run.size()));
    long const width = canvas.text_extent(run.data(), static_cast<long>(run.size())).width();
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
        EXPECT_LE(p.run.size(), part_length);
        joined += p.run;
        x += canvas.text_extent(reinterpret_cast<char16_t const *>(p.run.utf16()), p.run.size()).width();
    }
    EXPECT_EQ(parts[0].run.size(), part_length);
    EXPECT_EQ(joined, whole);

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
    EXPECT_NEAR(along.y(), 40.0, 1e-9);
    EXPECT_TRUE(painter.worldTransform().isIdentity());
}

TEST(QtCanvasDeathTest, PainterWithoutDeviceStops)
{
    QPainter idle;
    EXPECT_DEATH({ Qt_Canvas canvas(&idle, Extension(0, 0, 10, 10)); }, "qt_canvas");
}
