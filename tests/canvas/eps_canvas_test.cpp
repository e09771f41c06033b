// Tests of the EPS writer: the whole text of small drawings, prolog included, against text worked
// out by hand from the format's rules. The writer is rendered for real by Ghostscript through the
// sample drawing of the Qt-measured writer (tests/qt).
#include "tavi/canvas/eps_canvas.h"

#include "support/recording_canvas.h"
#include "writer_fixtures.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace Tavi;
using TaviTest::RecordingCanvas;

namespace {

// The writer over a recording gauge ("Arial", 240 twips to begin with). Fonts are matched by name:
// "serif" becomes "Times New Roman" in Times, "Arial" and "Helvetica" are Helvetica, "Courier" is
// Courier, "none" has no PostScript family, and any other name stays as it is, in Times.
class TestEPSCanvas : public EPS_Canvas
{
public:
    TestEPSCanvas(std::ostream &out, Extension const &extension) : EPS_Canvas(out, extension) {}

    Gauge const *gauge() const override { return &measure; }
    Gauge *gauge() override { return &measure; }
    PSFont match_font(Font const &wanted, Font &matched) override
    {
        matched = wanted;
        std::u16string const name = wanted.name();
        if (name == u"serif") {
            matched.name(u"Times New Roman");
            return ps_times;
        }
        if (name == u"Arial" || name == u"Helvetica")
            return ps_helvetica;
        if (name == u"Courier")
            return ps_courier;
        if (name == u"none")
            return ps_none;
        return ps_times;
    }

    using EPS_Canvas::grestore;
    using EPS_Canvas::gsave;
    using EPS_Canvas::ps_font_name;
    using EPS_Canvas::set_color;

    RecordingCanvas measure;
};

using Drawing = CanvasTest::Drawing<TestEPSCanvas>;
using CanvasTest::with_fixed_date;

// Six uncoloured tiling patterns of 5.5 points with 0.4-point lines; twelve fonts re-encoded to
// ISO Latin 1 under their short names; the operators, with the variables beside those that use them.
std::string const prolog = R"PS(<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5
/PaintProc { pop [] 0 setdash 0.4 setlinewidth 0 -2.75 moveto 0 2.75 lineto stroke } bind
>> matrix makepattern /HpV exch def
<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5
/PaintProc { pop [] 0 setdash 0.4 setlinewidth -2.75 0 moveto 2.75 0 lineto stroke } bind
>> matrix makepattern /HpH exch def
<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5
/PaintProc { pop [] 0 setdash 0.4 setlinewidth -2.75 -2.75 moveto 2.75 2.75 lineto stroke } bind
>> matrix makepattern /HpD exch def
<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5
/PaintProc { pop [] 0 setdash 0.4 setlinewidth -2.75 2.75 moveto 2.75 -2.75 lineto stroke } bind
>> matrix makepattern /HpBD exch def
<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5
/PaintProc { pop [] 0 setdash 0.4 setlinewidth 0 -2.75 moveto 0 2.75 lineto -2.75 0 moveto 2.75 0 lineto stroke } bind
>> matrix makepattern /HpC exch def
<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5
/PaintProc { pop [] 0 setdash 0.4 setlinewidth -2.75 -2.75 moveto 2.75 2.75 lineto -2.75 2.75 moveto 2.75 -2.75 lineto stroke } bind
>> matrix makepattern /HpXC exch def
/Times-Roman findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /Ti exch definefont pop
/Times-Italic findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /TiI exch definefont pop
/Times-Bold findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /TiB exch definefont pop
/Times-BoldItalic findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /TiBI exch definefont pop
/Helvetica findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /He exch definefont pop
/Helvetica-Oblique findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /HeI exch definefont pop
/Helvetica-Bold findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /HeB exch definefont pop
/Helvetica-BoldOblique findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /HeBI exch definefont pop
/Courier findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /Co exch definefont pop
/Courier-Oblique findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /CoI exch definefont pop
/Courier-Bold findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /CoB exch definefont pop
/Courier-BoldOblique findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall
/Encoding ISOLatin1Encoding def currentdict end /CoBI exch definefont pop
/l { lineto } bind def
/m { moveto } bind def
/d { setdash } bind def
/f { fill } bind def
/f* { eofill } bind def
/h { closepath } bind def
/q { gsave } bind def
/Q { grestore } bind def
/rg { setrgbcolor } bind def
/s { closepath stroke } bind def
/S { stroke } bind def
/sc { setcolor } bind def
/Tj { show } bind def
/w { setlinewidth } bind def
/a { arc } bind def
/n { newpath } bind def
/t { translate } bind def
/r { rotate } bind def
/rf { rectfill } bind def
/rc { rectclip } bind def
/rs { rectstroke } bind def
/D { [] 0 setdash } bind def
/c { 0 360 arc } bind def
/P { [/Pattern /DeviceRGB] setcolorspace setcolor } bind def
/size 0 def
/F { /size exch def findfont [size 0 0 size neg 0 0] makefont setfont } bind def
/xr 0 def
/yr 0 def
/es { /yr exch def /xr exch def gsave translate xr yr div 1 scale newpath 0 0 yr 0 360 arc yr xr div 1 scale stroke grestore } bind def
/ef { /yr exch def /xr exch def gsave translate xr yr div 1 scale newpath 0 0 yr 0 360 arc fill grestore } bind def
/x 0 def
/y 0 def
/ep { /yr exch def /xr exch def /y exch def /x exch def gsave P x y translate xr yr div 1 scale newpath 0 0 yr 0 360 arc fill grestore } bind def
/ang 0 def
/Tr { /ang exch def gsave translate ang rotate 0 0 moveto show grestore } bind def
)PS";

TEST(EpsCanvas, HeaderPrologAndFooterOfAnEmptyDrawing)
{
    // Extension top 30, left 10, bottom 330, right 210. Bounding box, each / 20 and rounded with
    // halves up: left 0.5 -> 1, top 1.5 -> 2, right 10.5 -> 11, bottom 16.5 -> 17. Height 300.
    // The pen of width 0 is written as 1; the gauge's "Arial" 240 matches Helvetica, plain: He.
    std::ostringstream out;
    TestEPSCanvas canvas(out, Extension(30, 10, 330, 210));
    canvas.put_header("Tavi tests");
    canvas.put_footer();
    EXPECT_EQ(with_fixed_date(out.str()),
              "%!PS-Adobe-2.0 EPSF-2.0\n"
              "%%BoundingBox: 1 2 11 17\n"
              "%%Creator: Tavi tests\n"
              "%%CreationDate: DATE\n"
              "%%EndComments\n"
              "%%BeginProlog\n" +
                  prolog +
                  "%%EndProlog\n"
                  "%%Page: 1 1\n"
                  "0.05 -0.05 scale\n"
                  "0 -300 translate\n"
                  "1 setlinecap\n"
                  "1 setlinewidth\n"
                  "/He 240 F\n"
                  "showpage\n"
                  "%%EOF\n");
    // The font matched the gauge's own: the gauge was not asked to change it.
    EXPECT_TRUE(canvas.measure.calls().empty());
}

TEST(EpsCanvas, ShapesPensColoursAndDashPhases)
{
    Drawing d(Extension(30, 10, 330, 210));
    TestEPSCanvas &c = d.canvas;
    Point const pts[] = {{0, 0}, {100, 0}, {100, 100}};
    Rect const r(10, 20, 60, 120);  // top 10, left 20, bottom 60, right 120: 20 10 100 50

    c.pen(Pen(2, Color::black, Pen::solid), false);
    // The dash of a changed pen is computed from the old width, 2: D = max(10, 120) = 120.
    c.pen(Pen(30, Color::black, Pen::dashed), false);
    // Each line writes its dash from the present width, 30: D = 150, period 300. Phases:
    // -fmod(400, 300) = -100; -100 - fmod(300, 300) = -100; -100 - fmod(500, 300) = -300, not below
    // -300; -300 - 50 = -350 < -300, so -50.
    c.line({0, 0}, {400, 0});
    c.line({400, 0}, {400, 300});
    c.line({400, 300}, {0, 0});
    c.line({0, 0}, {0, 50});
    // A red dotted pen of width 0 for one line. Setting it: width "1 w"; dots from the old width 30:
    // [30 300 - 30]. Its line: D = 120, [0 240] at phase -50, which becomes -50 - 10 = -60. Putting
    // the dashed pen back: "30 w" and, from the old width 0, [120].
    c.line({0, 50}, {0, 60}, Pen(0, Color(255, 0, 0), Pen::dotted), false);
    c.line({0, 60}, {0, 0});  // phase -60 - 60 = -120
    // restart: phase 0. 128 / 255 = 0.501961 in single precision.
    c.pen(Pen(30, Color(128, 0, 255, 7), Pen::dotted), true);
    c.line({0, 0}, {10, 0});  // phase -10
    // A colour that differs only in alpha is the same colour: nothing is written for it.
    c.pen(Pen(30, Color(128, 0, 255, 200), Pen::dotted), false);
    c.line({10, 0}, {20, 0});
    c.pen(Pen(2, Color::black, Pen::solid), true);
    c.line({1, 1}, {2, 2});
    c.poly_line(pts, 3, true);
    c.poly_line(pts, 1, false);
    c.frame_rect(r);
    c.fill_rect(r, Brush(Brush::diagonal, Color(255, 0, 0)));
    c.fill_polygon(pts, 3, true);  // in black
    c.fill_polygon(pts, 3, Brush(Brush::cross, Color(0, 255, 0)), false);
    c.fill_polygon(nullptr, 3, true);
    c.shadow(r);
    // Ellipses are stroked solid: "D" before, the dash of width 30 (D 150) after. 31 by 15 in single
    // precision: rx 15.5, cx 0 + 15.5, ry 7.5, cy 0 + 7.5.
    c.pen(Pen(30, Color::black, Pen::dashed), false);
    c.frame_ellipse(Rect(0, 0, 15, 31));
    // Flat ellipses would divide by a radius of 0 in the file: nothing is written.
    c.frame_ellipse(Rect(0, 0, 0, 31));
    c.fill_ellipse(Rect(0, 0, 10, 0), Brush(Brush::cross, Color::black));
    c.fill_ellipse(Rect(0, 0, 50, 50), Brush(Brush::vertical, Color(0, 0, 255)));
    c.fill_ellipse(Rect(0, 0, 15, 31), Brush(Brush::diagonal_cross, Color::black));
    c.erase();  // the extension: left 10, top 30, 200 by 300, in white

    EXPECT_EQ(d.take(),
              "2 w\n"
              "30 w\n[120] 0 d\n"
              "[150] -0 d\n0 0 m 400 0 l S\n"
              "[150] 100 d\n400 0 m 400 300 l S\n"
              "[150] 100 d\n400 300 m 0 0 l S\n"
              "[150] 300 d\n0 0 m 0 50 l S\n"
              "1 w\n[30 270] 0 d\n"
              "[0 240] 50 d\n1 0 0 rg\n0 50 m 0 60 l S\n"
              "30 w\n[120] 0 d\n"
              "[150] 60 d\n0 0 0 rg\n0 60 m 0 0 l S\n"
              "[30 270] 0 d\n"
              "[30 270] -0 d\n0.501961 0 1 rg\n0 0 m 10 0 l S\n"
              "[30 270] 10 d\n10 0 m 20 0 l S\n"
              "2 w\nD\n"
              "0 0 0 rg\n1 1 m 2 2 l S\n"
              "0 0 m\n100 0 l\n100 100 l\ns\n"
              "20 10 100 50 rs\n"
              "q\n1 0 0 HpD P\n20 10 100 50 rf\nQ\n"
              "0 0 m\n100 0 l\n100 100 l\nh f\n"  // still black: a hatch's colour stays inside q Q
              "q\n0 1 0 HpC P\n0 0 m\n100 0 l\n100 100 l\nh f*\nQ\n"
              "30 w\n[120] 0 d\n"
              "D\n15.5 7.5 15.5 7.5 es\n[150] 0 d\n"
              "q\n0 0 1 HpV P\nn 25 25 25 c f\nQ\n"
              "0 0 0 HpXC 15.5 7.5 15.5 7.5 ep\n"
              "1 1 1 rg\n10 30 200 300 rf\n");
    EXPECT_TRUE(c.pen() == Pen(30, Color::black, Pen::dashed));
    EXPECT_TRUE(c.brush() == Brush(Color::black));
}

TEST(EpsCanvas, TranslationClipAndSavedStates)
{
    Drawing d(Extension(0, 0, 100, 200));
    TestEPSCanvas &c = d.canvas;
    Rect got;

    c.translation(Point(100, 50));
    c.translation(Point(100, 50));  // no difference: nothing
    c.translation(Point(90, 70));   // by (-10, 20)
    c.add_translation(Point(0, 0));
    c.add_translation(Point(5, -5));
    EXPECT_TRUE(c.translation() == Point(95, 65));
    EXPECT_FALSE(c.clip_rect(&got));
    c.clip_rect(Rect(0, 0, 100, 200));
    c.pen(Pen(5, Color::black, Pen::solid), false);
    c.text_color(Color(255, 0, 0));
    c.text(u"A(b)\\", 5, Point(10, 20));
    // The new clip replaces the old: grestore first, which puts back through the setters what the
    // gsave kept (pen width 0, written 1; colour black; text colour black), then a new gsave.
    c.clip_rect(Rect(1, 2, 3, 4));
    EXPECT_TRUE(c.clip_rect(&got));
    EXPECT_TRUE(got == Rect(1, 2, 3, 4));
    EXPECT_TRUE(c.pen() == Pen(0, Color::black, Pen::solid));
    c.text(u"x", 1, Point(0, 0));  // 'x' is 120, octal 170, in the ANSI set
    c.put_footer();

    EXPECT_EQ(d.take(),
              "100 50 t\n"
              "-10 20 t\n"
              "5 -5 t\n"
              "q\n0 0 200 100 rc n\n"
              "5 w\n"
              "1 0 0 rg\n10 20 m\n(101\\(142\\)\\\\) Tj\n"
              "Q\n1 w\n0 0 0 rg\n"
              "q\n2 1 2 2 rc n\n"
              "0 0 m\n(170) Tj\n"
              "Q\nshowpage\n%%EOF\n");
}

TEST(EpsCanvas, TextFontsAndOctalEscapes)
{
    Drawing d(Extension(0, 0, 100, 100));
    TestEPSCanvas &c = d.canvas;

    // The ANSI set, the start value: printable units come out as octal digits, others as a backslash
    // and octal: e9 = 351, tab 9 = 11, 0x100 = 400, '~' 126 = 176, blank 32 = 40.
    c.text(u"A(b)\\", 5, Point(10, 20));
    c.text(u"\u00e9\t\u0100~ ", 5, Point(0, 0));
    // The same font in another set: nothing is written.
    c.font(Font(u"Arial", 240, false, false), Gauge::cs_unicode, 0);
    // Unicode: printable units stay, e9 and tab and 127 (177) are escaped, 0x100 is dropped.
    c.text(u"A\u00e9\t\u0100)~ \u007f", 8, Point(1, 2));
    c.font(Font(u"Helvetica", 200, true, true), Gauge::cs_unicode, 0);
    c.font(Font(u"Courier", 200, false, true), Gauge::cs_unicode, 90);
    c.text(u"x", 1, Point(10, 20));
    c.font(Font(u"serif", 240, true, false), Gauge::cs_unicode, -45);
    c.text(u"y", 1, Point(-1, -2));
    // No PostScript family: nothing, and the gauge keeps its font; the symbol set drops the text.
    c.font(Font(u"none", 240, false, false), Gauge::cs_symbol, 0);
    c.text(u"a", 1, Point(0, 0));
    // The font the gauge has already: nothing.
    c.font(Font(u"Times New Roman", 240, true, false), Gauge::cs_unicode, 0);
    c.text_color(Color(0, 0, 255));
    c.text(u"1", 1, Point(0, 0));
    c.text(nullptr, 1, Point(0, 0));
    c.text(u"1", 0, Point(0, 0));

    EXPECT_EQ(d.take(),
              "10 20 m\n(101\\(142\\)\\\\) Tj\n"
              "0 0 m\n(\\351\\11\\40017640) Tj\n"
              "1 2 m\n(A\\351\\11\\)~ \\177) Tj\n"
              "/HeBI 200 F\n"
              "/CoI 200 F\n"
              "(x)\n10 20 -90 Tr\n"
              "/TiB 240 F\n"
              "(y)\n-1 -2 45 Tr\n"
              "0 0 1 rg\n0 0 m\n(1) Tj\n");
    // The gauge measures the matched font, upright.
    EXPECT_EQ(std::u16string(c.measure.font().name()), u"Times New Roman");
    EXPECT_EQ(c.measure.text_angle(), 0);
}

}  // namespace
