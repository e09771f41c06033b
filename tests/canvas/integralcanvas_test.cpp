// IntegralCanvas: floating-point operations arrive rounded (halves up) at the integral ones,
// translation keeps whole units, and the twips arithmetic shared by all surfaces.
#include "support/recording_canvas.h"
#include "tavi/canvas/integralcanvas.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace Tavi;
using TaviTest::RecordingCanvas;

namespace {

// (0.5, -0.5) -> (1, 0); (1.5, -1.5) -> (2, -1); (-2.5, 2.5) -> (-2, 3).
PointF const p1(0.5, -0.5), p2(1.5, -1.5), p3(-2.5, 2.5);
PointF const path[3] = {p1, p2, p3};
// top -2.5 -> -2, left 0.49 -> 0, bottom 2.5 -> 3, right -2.6 -> -3.
RectF const rf(-2.5, 0.49, 2.5, -2.6);
Pen const pn(10, Color(255, 0, 0), Pen::dashed);
Brush const br(Brush::cross, Color(0, 0, 255));

struct ForwardCase
{
    char const *name;
    std::function<void(IntegralCanvas &)> call;
    std::string expected;
};

std::vector<ForwardCase> const forward_cases = {
    {"line_f pen", [](IntegralCanvas &c) { c.line_f(p1, p2, pn, true); },
     "line(1,0,2,-1,pen=10/#ff0000/dashed,restart=1)"},
    {"poly_line_f null", [](IntegralCanvas &c) { c.poly_line_f(nullptr, 5, false); }, "poly_line[5](null,closed=0)"},
    {"frame_rect_f pen", [](IntegralCanvas &c) { c.frame_rect_f(rf, pn); },
     "frame_rect(-2,0,3,-3,pen=10/#ff0000/dashed)"},
    {"fill_ellipse_f brush", [](IntegralCanvas &c) { c.fill_ellipse_f(rf, br); },
     "fill_ellipse(-2,0,3,-3,brush=5/#0000ff)"},
    {"fill_polygon_f brush", [](IntegralCanvas &c) { c.fill_polygon_f(path, 3, br, false); },
     "fill_polygon[3](1,0,2,-1,-2,3,brush=5/#0000ff,winding=0)"},
    {"text_f", [](IntegralCanvas &c) { c.text_f(u"ab", 2, p3); }, "text(\"ab\",-2,3)"},
};

// Keeps the converted points and where they stood.
class ProbeCanvas : public RecordingCanvas
{
public:
    ProbeCanvas() { received.reserve(1024); }

    void poly_line(Point const *p, std::size_t n, bool) override { keep(p, n, "poly_line", 0); }
    void fill_polygon(Point const *p, std::size_t n, Brush const &b, bool) override
    {
        keep(p, n, "fill_polygon brush", b.fill_style());
    }

    void keep(Point const *p, std::size_t n, char const *which, long extra)
    {
        received.assign(p, p + n);
        operation = which;
        argument = extra;
    }

    std::vector<Point> received;
    char const *operation = nullptr;
    long argument = -1;
};

}  // namespace

TEST(IntegralCanvas, EveryFloatingOperationForwardsRounded)
{
    for (ForwardCase const &c : forward_cases) {
        RecordingCanvas canvas;
        c.call(canvas);
        ASSERT_EQ(canvas.calls().size(), 1u) << c.name;
        EXPECT_EQ(canvas.calls()[0], c.expected) << c.name;
    }
    // The surface's translation applies after the rounding.
    RecordingCanvas canvas;
    canvas.translation(Point(100, 200));
    canvas.line_f(p1, p2);
    EXPECT_EQ(canvas.calls().back(), "line(101,200,102,199)");
}

// Points (i + 0.5, -i - 0.5) round to (i + 1, -i). Up to 256 points the routine converts into its own
// frame, one more takes a heap block (freed again, which the leak checker sees): both sides of the edge.
TEST(IntegralCanvas, PointArraysOfAnySize)
{
    struct Op
    {
        char const *operation;
        long argument;
        std::function<void(IntegralCanvas &, PointF const *, std::size_t)> call;
    } const ops[] = {
        {"poly_line", 0, [](IntegralCanvas &c, PointF const *p, std::size_t n) { c.poly_line_f(p, n, false); }},
        {"fill_polygon brush", Brush::diagonal,
         [](IntegralCanvas &c, PointF const *p, std::size_t n) {
             c.fill_polygon_f(p, n, Brush(Brush::diagonal, Color::black), false);
         }},
    };
    for (std::size_t count : {std::size_t(256), std::size_t(257)}) {
        std::vector<PointF> input;
        std::vector<Point> expected;
        for (std::size_t i = 0; i < count; ++i) {
            double const v = static_cast<double>(i);
            input.push_back(PointF(v + 0.5, -v - 0.5));
            expected.push_back(Point(static_cast<long>(i) + 1, -static_cast<long>(i)));
        }
        for (Op const &op : ops) {
            ProbeCanvas canvas;
            op.call(canvas, input.data(), count);
            EXPECT_STREQ(canvas.operation, op.operation);
            EXPECT_EQ(canvas.argument, op.argument);
            EXPECT_EQ(canvas.received, expected) << op.operation << " " << count;
        }
    }
}

TEST(IntegralCanvas, TranslationKeepsWholeUnits)
{
    RecordingCanvas canvas;
    canvas.translation_f(PointF(2.6, -2.6));
    EXPECT_EQ(canvas.translation_f(), PointF(3.0, -3.0));
    // Each increment is rounded alone: 0.4 three times adds nothing; (0.5, -0.5) adds (1, 0).
    for (int i = 0; i < 3; ++i)
        canvas.add_translation_f(PointF(0.4, 0.4));
    canvas.add_translation_f(PointF(0.5, -0.5));
    EXPECT_EQ(canvas.translation(), Point(4, -3));
    double fx = 0.25, fy = 0.25;
    canvas.translate_f(fx, fy);
    EXPECT_EQ(fx, 4.25);
    EXPECT_EQ(fy, -2.75);
}

namespace {

struct TwipsCase
{
    Extent twips;
    Extent dpi;
    Extent expected;
};

// length * dpi / 1440 + 0.5, truncated toward zero, each axis by its own resolution.
TwipsCase const twips_cases[] = {
    {Extent(250, 250), Extent(96, 72), Extent(17, 13)},     // 16.67 + .5 = 17.17; 12.5 + .5 = 13.0
    {Extent(7, 10), Extent(96, 72), Extent(0, 1)},          // 0.467 + .5 = 0.967; 0.5 + .5 = 1.0
    {Extent(-15, -30), Extent(96, 72), Extent(0, -1)},      // -1.0 + .5 = -0.5 -> 0; -1.5 + .5 = -1.0
    {Extent(123, -7), Extent(1440, 1440), Extent(123, -6)}, // -7 + .5 = -6.5, truncated toward zero
};

}  // namespace

TEST(Gauge, TwipsToDeviceUnits)
{
    for (TwipsCase const &c : twips_cases) {
        EXPECT_EQ(Gauge::twips_to_device(c.twips, c.dpi), c.expected) << c.twips.width() << "," << c.twips.height();
        RecordingCanvas canvas(c.dpi);
        EXPECT_EQ(canvas.twips_to_pixel(c.twips), c.expected);
    }
    // On the integral family the floating form rounds first: (1440.4, 720.6) -> (1440, 721) ->
    // (96.5 -> 96, 36.05 + .5 -> 36) at 96 x 72.
    RecordingCanvas screen(Extent(96, 72));
    EXPECT_EQ(screen.twips_to_pixel_f(ExtentF(1440.4, 720.6)), ExtentF(96.0, 36.0));
}
