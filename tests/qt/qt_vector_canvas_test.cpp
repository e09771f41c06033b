// Qt_SVG_Canvas and Qt_EPS_Canvas: metrics through the private pixmap gauge, the choice of fonts, and
// the sample drawing rendered for real by rsvg-convert and Ghostscript.
#include "sample_drawing.h"

#include "support/external_tools.h"
#include "tavi/qt/qt_eps_canvas.h"
#include "tavi/qt/qt_svg_canvas.h"

#include <gtest/gtest.h>

#include <QString>

#include <sstream>
#include <string>

using namespace Tavi;

namespace {

// The sample page: 400 by 300 points are 8000 by 6000 twentieths of a point.
Extension const sample_page(0, 0, 6000, 8000);

std::string name_of(Font const &f)
{
    return QString::fromUtf16(f.name()).toStdString();
}

}  // namespace

TEST(QtSvgCanvas, GenericFamiliesAreReplacedOnlyThroughItsOwnFontSelection)
{
    std::ostringstream out;
    Qt_SVG_Canvas canvas(out, sample_page);
    struct Case
    {
        char16_t const *wanted;
        char const *measured;
    };
    Case const cases[] = {
        {u"serif", "Times New Roman"}, {u"monospace", "Courier New"}, {u"Serif", "Serif"}, {u"serif ", "serif "},
    };
    for (Case const &c : cases) {
        Font const wanted(c.wanted, 300, true, false);
        canvas.font(wanted);
        Font const got = canvas.font();
        EXPECT_EQ(name_of(got), c.measured);
        EXPECT_TRUE(got.bold());
        EXPECT_EQ(name_of(wanted), QString::fromUtf16(c.wanted).toStdString());  // the caller's font is untouched
    }

    // The family that reaches the file is the gauge's.
    canvas.font(Font(u"serif", 240, false, false), Gauge::cs_unicode, 0);
    canvas.text(u"a", 1, Point(0, 0));
    canvas.font(Font(u"serif", 240, false, false));
    canvas.text(u"b", 1, Point(0, 0));
    std::string const svg = out.str();
    EXPECT_NE(svg.find("font-family=\"serif\""), std::string::npos);
    EXPECT_NE(svg.find("font-family=\"Times New Roman\""), std::string::npos);
}

// With the pixmap at 96 dpi, one pixel is 1440 / 96 = 15 twips.
TEST(QtEpsCanvas, LineMetricsAndTextBoxAreConvertedToTwips)
{
    std::ostringstream out;
    Qt_EPS_Canvas canvas(out, sample_page);
    EXPECT_EQ(canvas.pixel2twips(-3), -45);

    // Select 12 pt DejaVu Serif on the gauge itself (match_font would pick another family): ascent
    // 15, descent 4, "Hello" 43 pixels.
    canvas.gauge()->font(Font(u"DejaVu Serif", 240, false, false), Gauge::cs_unicode, 0);
    EXPECT_EQ(canvas.font_ascent(), 225);  // 15 * 15
    EXPECT_EQ(canvas.font_descent(), 60);  // 4 * 15
    EXPECT_EQ(canvas.text_box(u"Hello", 5), Box(645, 225, 60));
    EXPECT_EQ(canvas.font_ex(), canvas.pixel2twips(canvas.gauge()->font_ex()));
    // The extent stays in pixels.
    EXPECT_EQ(canvas.text_extent(u"Hello", 5), Extent(43, 19));
}

TEST(QtEpsCanvas, MatchFontLandsOnOneOfThreeFamilies)
{
    std::ostringstream out;
    Qt_EPS_Canvas canvas(out, sample_page);
    struct Case
    {
        char16_t const *wanted;
        char const *matched;
        EPS_Canvas::PSFont family;
    };
    Case const cases[] = {
        {u"serif", "Times New Roman", EPS_Canvas::ps_times},
        // The rest is Qt's: a fixed pitch is Courier, a sans-serif face Helvetica, anything else Times.
        {u"DejaVu Sans Mono", "Courier New", EPS_Canvas::ps_courier},
        {u"DejaVu Sans", "Arial", EPS_Canvas::ps_helvetica},
        {u"Symbol", "Times New Roman", EPS_Canvas::ps_times},
    };
    for (Case const &c : cases) {
        Font const wanted(c.wanted, 250, true, true);
        Font matched(u"placeholder", 100, false, false);
        EXPECT_EQ(canvas.match_font(wanted, matched), c.family) << name_of(wanted);
        EXPECT_EQ(name_of(matched), c.matched) << name_of(wanted);
        EXPECT_TRUE(matched.bold() && matched.italic());
        EXPECT_EQ(name_of(wanted), QString::fromUtf16(c.wanted).toStdString());
    }

    // "serif", bold and italic, is drawn in the prolog's Times-BoldItalic.
    canvas.font(Font(u"serif", 240, true, true), Gauge::cs_unicode, 0);
    EXPECT_NE(out.str().find("/TiBI 240 F\n"), std::string::npos);
    EXPECT_EQ(name_of(canvas.gauge()->font()), "Times New Roman");
}

// The sample drawing written by each writer and rendered for real at 72 dpi, one pixel a point, so
// that the 400 by 300 point page is 400 by 300 pixels.
template <class C>
std::string sample_file()
{
    std::ostringstream out;
    {
        C canvas(out, sample_page);
        canvas.put_header("tavi tests");
        TaviTest::draw_sample(canvas);
        canvas.put_footer();
    }
    return out.str();
}

TEST(QtVectorCanvas, SampleDrawingRendersWithRsvgAndGhostscript)
{
    std::string const eps = sample_file<Qt_EPS_Canvas>();
    EXPECT_EQ(eps.rfind("%!PS-Adobe-2.0 EPSF-2.0\n%%BoundingBox: 0 0 400 300\n", 0), 0u);
    QImage const images[] = {TaviTest::render_svg(sample_file<Qt_SVG_Canvas>(), "qt", "sample"),
                             TaviTest::render_eps(eps, "qt", "sample")};
    for (TaviTest::Surface surface : {TaviTest::Surface::svg, TaviTest::Surface::eps}) {
        QImage const &image = images[surface == TaviTest::Surface::svg ? 0 : 1];
        char const *what = surface == TaviTest::Surface::svg ? "svg" : "eps";
        ASSERT_EQ(image.width(), 400) << what;
        ASSERT_EQ(image.height(), 300) << what;
        TaviTest::expect_sample_ink(image, surface, what);
    }
}
