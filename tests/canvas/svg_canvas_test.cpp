// Tests of the SVG writer: the whole text of small drawings against text worked out by hand from the
// format's rules. The writer is rendered for real through the sample drawing of the Qt-measured
// writer (tests/qt).
#include "tavi/canvas/svg_canvas.h"

#include "support/recording_canvas.h"
#include "writer_fixtures.h"

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <sstream>

using namespace Tavi;
using TaviTest::RecordingCanvas;

namespace {

// The writer over a recording gauge with its fixed metrics ("Arial", 240 twips to begin with).
class TestSVGCanvas : public SVG_Canvas
{
public:
    TestSVGCanvas(std::ostream &out, Extension const &extension) : SVG_Canvas(out, extension) {}

    using SVG_Canvas::font;
    Gauge const *gauge() const override { return &measure; }
    Gauge *gauge() override { return &measure; }
    void font(Font const &f) override { measure.font(f, cs_unicode, 0); }

    RecordingCanvas measure;
};

using Drawing = CanvasTest::Drawing<TestSVGCanvas>;
using CanvasTest::with_fixed_date;

// The definitions: six hatch patterns, each a 110-unit tile with one 8-unit path, then the group
// that scales twentieths of a point to points.
std::string const definitions =
    "<defs>\n"
    "<pattern id=\"HpH\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"\n"
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">\n"
    "<path d=\"M 0 55 H 110\" stroke-width=\"8\"/>\n"
    "</pattern>\n"
    "<pattern id=\"HpV\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"\n"
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">\n"
    "<path d=\"M 55 0 V 110\" stroke-width=\"8\"/>\n"
    "</pattern>\n"
    "<pattern id=\"HpD\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"\n"
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">\n"
    "<path d=\"M 0 110 L 110 0\" stroke-width=\"8\"/>\n"
    "</pattern>\n"
    "<pattern id=\"HpBD\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"\n"
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">\n"
    "<path d=\"M 110 0 L 0 110\" stroke-width=\"8\"/>\n"
    "</pattern>\n"
    "<pattern id=\"HpC\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"\n"
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">\n"
    "<path d=\"M 0 55 H 110 M 55 0 V 110\" stroke-width=\"8\"/>\n"
    "</pattern>\n"
    "<pattern id=\"HpXC\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"\n"
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">\n"
    "<path d=\"M 0 110 L 110 0 M 110 110 L 0 0\" stroke-width=\"8\"/>\n"
    "</pattern>\n"
    "</defs>\n"
    "<g transform=\"scale(0.05)\">\n";

TEST(SvgCanvas, HeaderAndFooterOfAnEmptyDrawing)
{
    // Extension top 20, left 10, bottom 130, right 220: width 210, height 110 twips.
    //   width  210 / 20.0 = 10.5 pt, height 110 / 20.0 = 5.5 pt
    //   view box: 10/20 + 0.5 = 1.0 -> 1; 20/20 + 0.5 = 1.5 -> 1; 10.5 + 0.5 -> 11; 5.5 + 0.5 -> 6
    std::ostringstream out;
    TestSVGCanvas canvas(out, Extension(20, 10, 130, 220));
    canvas.put_header("Tavi tests");
    canvas.put_footer();
    std::string const expected =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg version=\"1.1\" baseProfile=\"tiny\" xmlns=\"http://www.w3.org/2000/svg\" width=\"10.5pt\" "
        "height=\"5.5pt\" viewBox=\"1 1 11 6\" stroke-linecap=\"round\" stroke-linejoin=\"miter\">\n"
        "<!-- Creator: Tavi tests CreationDate: DATE -->\n" +
        definitions + "</g>\n</svg>\n";
    EXPECT_EQ(with_fixed_date(out.str()), expected);
}

TEST(SvgCanvas, ShapesPenAttributesAndDashPhases)
{
    Drawing d(Extension(0, 0, 1000, 1000));
    SVG_Canvas &c = d.canvas;
    Point const pts[] = {{0, 0}, {10, 0}, {10, 10}};
    Rect const r(5, 10, 25, 50);  // top 5, left 10, bottom 25, right 50: x 10, y 5, width 40, height 20

    c.line({10, 20}, {110, 20});
    // Width 30 dashed: D = max(30 * 5, 120) = 150, period P = 300. Alpha 128 / 255 = 0.501961.
    // Phases: 0 - fmod(400, 300) = -100; -100 - fmod(300, 300) = -100; -100 - fmod(500, 300) = -300,
    // which is not below -300 and stays; -300 - 50 = -350 < -300, so + 300 = -50.
    c.pen(Pen(30, Color(255, 0, 0, 128), Pen::dashed), false);
    c.line({0, 0}, {400, 0});
    c.line({400, 0}, {400, 300});
    c.line({400, 300}, {0, 0});
    c.line({0, 0}, {0, 50});
    // A dotted pen of width 0 for one line: stroke width 1, dots of 0 and gaps of 2 * 120 - 0 = 240;
    // it starts at the phase -50 and leaves -50 - fmod(10, 240) = -60 for the red pen that comes back.
    c.line({0, 50}, {0, 60}, Pen(0, Color::black, Pen::dotted), false);
    c.line({0, 60}, {0, 0});
    // restart: phase 0. Width 20 dotted: D = max(100, 120) = 120, array 20, 240 - 20 = 220.
    // The phase becomes -fmod(10, 240) = -10.
    c.line({0, 0}, {10, 0}, Pen(20, Color(0, 0, 255), Pen::dotted), true);
    // A solid line leaves the phase alone: the next dashed line starts at -10.
    c.pen(Pen(1, Color::black, Pen::solid), false);
    c.line({5, 5}, {6, 6});
    c.pen(Pen(10, Color::black, Pen::dashed), false);  // D = max(50, 120) = 120
    c.line({0, 0}, {0, 1});                             // phase -10 - 1 = -11
    c.poly_line(pts, 3, false);                         // phase 0
    c.poly_line(nullptr, 3, false);                     // nothing
    c.poly_line(pts, 3, Pen(0, Color(0, 128, 0), Pen::solid), true);
    c.frame_rect(r);
    c.fill_rect(r, Brush(Color(0, 128, 255, 0)));
    c.fill_rect(r, Brush(Brush::cross, Color(0, 0, 0, 51)));  // 51 / 255 = 0.2
    // Ellipses: rx = width * 0.5, cx = left + rx; a square gives a circle with cy = top + rx.
    // 31 by 15: rx 15.5, cx 15.5, ry 7.5, cy 7.5. They are never dashed.
    c.frame_ellipse(Rect(0, 0, 50, 50));
    c.frame_ellipse(Rect(0, 0, 15, 31));
    // Single precision with six digits: cx = 1000000 + 0.5 prints as 1e+06.
    c.frame_ellipse(Rect(0, 1000000, 10, 1000001), Pen(0, Color::black, Pen::solid));
    c.fill_ellipse(Rect(0, 0, 15, 31), Brush(Brush::vertical, Color::black));
    c.fill_polygon(pts, 3, Brush(Brush::diagonal_cross, Color::black), false);
    c.fill_polygon(pts, 2, true);
    c.shadow(r);
    c.background(Color(1, 2, 3));
    c.erase();

    std::string const expected =
        "<line stroke=\"#000000\" stroke-width=\"1\" x1=\"10\" y1=\"20\" x2=\"110\" y2=\"20\"/>\n"
        "<line stroke=\"#ff0000\" stroke-width=\"30\" stroke-opacity=\"0.501961\" stroke-dasharray=\"150,150\" "
        "stroke-dashoffset=\"-0\" x1=\"0\" y1=\"0\" x2=\"400\" y2=\"0\"/>\n"
        "<line stroke=\"#ff0000\" stroke-width=\"30\" stroke-opacity=\"0.501961\" stroke-dasharray=\"150,150\" "
        "stroke-dashoffset=\"100\" x1=\"400\" y1=\"0\" x2=\"400\" y2=\"300\"/>\n"
        "<line stroke=\"#ff0000\" stroke-width=\"30\" stroke-opacity=\"0.501961\" stroke-dasharray=\"150,150\" "
        "stroke-dashoffset=\"100\" x1=\"400\" y1=\"300\" x2=\"0\" y2=\"0\"/>\n"
        "<line stroke=\"#ff0000\" stroke-width=\"30\" stroke-opacity=\"0.501961\" stroke-dasharray=\"150,150\" "
        "stroke-dashoffset=\"300\" x1=\"0\" y1=\"0\" x2=\"0\" y2=\"50\"/>\n"
        "<line stroke=\"#000000\" stroke-width=\"1\" stroke-dasharray=\"0,240\" stroke-dashoffset=\"50\" "
        "x1=\"0\" y1=\"50\" x2=\"0\" y2=\"60\"/>\n"
        "<line stroke=\"#ff0000\" stroke-width=\"30\" stroke-opacity=\"0.501961\" stroke-dasharray=\"150,150\" "
        "stroke-dashoffset=\"60\" x1=\"0\" y1=\"60\" x2=\"0\" y2=\"0\"/>\n"
        "<line stroke=\"#0000ff\" stroke-width=\"20\" stroke-dasharray=\"20,220\" stroke-dashoffset=\"-0\" "
        "x1=\"0\" y1=\"0\" x2=\"10\" y2=\"0\"/>\n"
        "<line stroke=\"#000000\" stroke-width=\"1\" x1=\"5\" y1=\"5\" x2=\"6\" y2=\"6\"/>\n"
        "<line stroke=\"#000000\" stroke-width=\"10\" stroke-dasharray=\"120,120\" stroke-dashoffset=\"10\" "
        "x1=\"0\" y1=\"0\" x2=\"0\" y2=\"1\"/>\n"
        "<polyline fill=\"none\" stroke=\"#000000\" stroke-width=\"10\" stroke-dasharray=\"120,120\" "
        "stroke-dashoffset=\"-0\" points=\"0,0 10,0 10,10 \"/>\n"
        "<polygon fill=\"none\" stroke=\"#008000\" stroke-width=\"1\" points=\"0,0 10,0 10,10 \"/>\n"
        "<rect fill=\"none\" stroke=\"#000000\" stroke-width=\"10\" stroke-dasharray=\"120,120\" "
        "stroke-dashoffset=\"-0\" x=\"10\" y=\"5\" width=\"40\" height=\"20\"/>\n"
        "<rect stroke=\"none\" fill=\"#0080ff\" fill-opacity=\"0\" x=\"10\" y=\"5\" width=\"40\" height=\"20\"/>\n"
        "<rect stroke=\"none\" fill=\"url(#HpC)\" fill-opacity=\"0.2\" x=\"10\" y=\"5\" width=\"40\" "
        "height=\"20\"/>\n"
        "<circle fill=\"none\" stroke=\"#000000\" stroke-width=\"10\" cx=\"25\" cy=\"25\" r=\"25\"/>\n"
        "<ellipse fill=\"none\" stroke=\"#000000\" stroke-width=\"10\" cx=\"15.5\" cy=\"7.5\" rx=\"15.5\" "
        "ry=\"7.5\"/>\n"
        "<ellipse fill=\"none\" stroke=\"#000000\" stroke-width=\"1\" cx=\"1e+06\" cy=\"5\" rx=\"0.5\" ry=\"5\"/>\n"
        "<ellipse stroke=\"none\" fill=\"url(#HpV)\" cx=\"15.5\" cy=\"7.5\" rx=\"15.5\" ry=\"7.5\"/>\n"
        "<polygon stroke=\"none\" fill=\"url(#HpXC)\" fill-rule=\"evenodd\" points=\"0,0 10,0 10,10 \"/>\n"
        "<rect stroke=\"none\" fill=\"#010203\" x=\"0\" y=\"0\" width=\"1000\" height=\"1000\"/>\n";
    EXPECT_EQ(d.take(), expected);
    // The forms with their own pen or brush put the current one back.
    EXPECT_TRUE(c.pen() == Pen(10, Color::black, Pen::dashed));
    EXPECT_TRUE(c.brush() == Brush(Color::black));
}

TEST(SvgCanvas, TextElements)
{
    Drawing d(Extension(0, 0, 1000, 1000));
    SVG_Canvas &c = d.canvas;

    // The family name and the text go through the XML character-data writer.
    c.font(Font(u"Times & \"Co\"", 240, true, true), Gauge::cs_unicode, 0);
    c.text(u"a<b&c", 5, Point(10, 20));
    // Only the first count units are written, in UTF-8: U+00E9 is C3 A9, U+2211 is E2 88 91.
    c.font(Font(u"Arial", 200, false, false), Gauge::cs_unicode, 0);
    c.text(u"\u00e9\u2211xyz", 2, Point(-3, 4));
    // An angle turns a group around the point; the text stands at its origin. Alpha 51 / 255 = 0.2.
    c.text_color(Color(255, 0, 0, 51));
    c.font(Font(u"Arial", 200, false, false), Gauge::cs_ansi, 90);
    c.text(u"xy", 2, Point(10, 20));
    c.text(nullptr, 2, Point(0, 0));
    c.text(u"xy", 0, Point(0, 0));

    EXPECT_EQ(d.take(),
              "<text x=\"10\" y=\"20\" font-family=\"Times &amp; &quot;Co&quot;\" font-size=\"240\" "
              "font-weight=\"bold\" font-style=\"italic\" stroke=\"none\" fill=\"#000000\">a&lt;b&amp;c</text>\n"
              "<text x=\"-3\" y=\"4\" font-family=\"Arial\" font-size=\"200\" stroke=\"none\" fill=\"#000000\">"
              "\xc3\xa9\xe2\x88\x91</text>\n"
              "<g transform=\"translate(10,20) rotate(-90)\">\n"
              "<text x=\"0\" y=\"0\" font-family=\"Arial\" font-size=\"200\" stroke=\"none\" fill=\"#ff0000\" "
              "fill-opacity=\"0.2\">xy</text>\n"
              "</g>\n");

    // The gauge measures in the set given, never at an angle.
    EXPECT_EQ(d.canvas.measure.char_set(), Gauge::cs_ansi);
    EXPECT_EQ(d.canvas.measure.text_angle(), 0);

    // Symbol text is left out; the gauge measures the symbol font as Unicode.
    c.font(Font(u"Symbol", 240, false, false), Gauge::cs_symbol, 0);
    c.text(u"\x61", 1, Point(10, 20));
    EXPECT_EQ(d.take(), "");
    EXPECT_EQ(d.canvas.measure.char_set(), Gauge::cs_unicode);
}

TEST(SvgCanvas, LongTextRunsAreCopiedWhole)
{
    // 255 units and the terminator fill the 256-unit area in the frame; 256 and more take a heap
    // block. Every unit must reach the file either way.
    for (long count : {255L, 256L}) {
        Drawing d(Extension(0, 0, 100, 100));
        std::u16string run(static_cast<std::size_t>(count), u'q');
        run.back() = u'z';
        d.canvas.text(run.c_str(), count, Point(0, 0));
        std::string const body = d.take();
        std::string const text = std::string(static_cast<std::size_t>(count) - 1, 'q') + "z</text>";
        EXPECT_NE(body.find(">" + text), std::string::npos) << count;
    }
}

TEST(SvgCanvas, ARunTooLongToCopyRaisesBadAllocation)
{
    Drawing d(Extension(0, 0, 100, 100));
    wchar const one[] = u"x";
    try {
        d.canvas.text(one, LONG_MAX, Point(0, 0));
        ADD_FAILURE() << "no exception";
    } catch (std::bad_alloc const &e) {
        EXPECT_STREQ(e.what(), "bad allocation");
    }
    EXPECT_EQ(d.take(), "");
}

}  // namespace
