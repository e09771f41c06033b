// IntegralCanvas: every floating-point operation arrives at the integral one of the same name with
// each coordinate rounded (halves up), translation keeps whole units, and the shared twips and dash
// arithmetic of all surfaces.
#include "support/recording_canvas.h"
#include "tavi/canvas/integralcanvas.h"

#include <gtest/gtest.h>

#include <pthread.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

using namespace Tavi;
using TaviTest::RecordingCanvas;

namespace {

// Whether an address lies in the stack of the calling thread: the converted points of a short path
// must stand in the routine's own frame, those of a long one in a heap block.
bool on_this_threads_stack(void const *p)
{
    pthread_attr_t attr;
    if (pthread_getattr_np(pthread_self(), &attr) != 0)
        return false;
    void *base = nullptr;
    std::size_t size = 0;
    pthread_attr_getstack(&attr, &base, &size);
    pthread_attr_destroy(&attr);
    auto const a = reinterpret_cast<std::uintptr_t>(p);
    auto const lo = reinterpret_cast<std::uintptr_t>(base);
    return a >= lo && a < lo + size;
}

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
    {"line_f", [](IntegralCanvas &c) { c.line_f(p1, p2); }, "line(1,0,2,-1)"},
    {"line_f pen", [](IntegralCanvas &c) { c.line_f(p1, p2, pn, true); },
     "line(1,0,2,-1,pen=10/#ff0000/dashed,restart=1)"},
    {"line_f pen no restart", [](IntegralCanvas &c) { c.line_f(p1, p2, pn, false); },
     "line(1,0,2,-1,pen=10/#ff0000/dashed,restart=0)"},
    {"poly_line_f", [](IntegralCanvas &c) { c.poly_line_f(path, 3, true); }, "poly_line[3](1,0,2,-1,-2,3,closed=1)"},
    {"poly_line_f pen", [](IntegralCanvas &c) { c.poly_line_f(path, 3, pn, false); },
     "poly_line[3](1,0,2,-1,-2,3,pen=10/#ff0000/dashed,closed=0)"},
    {"poly_line_f null", [](IntegralCanvas &c) { c.poly_line_f(nullptr, 5, false); }, "poly_line[5](null,closed=0)"},
    {"frame_rect_f", [](IntegralCanvas &c) { c.frame_rect_f(rf); }, "frame_rect(-2,0,3,-3)"},
    {"frame_rect_f pen", [](IntegralCanvas &c) { c.frame_rect_f(rf, pn); },
     "frame_rect(-2,0,3,-3,pen=10/#ff0000/dashed)"},
    {"fill_rect_f", [](IntegralCanvas &c) { c.fill_rect_f(rf); }, "fill_rect(-2,0,3,-3)"},
    {"fill_rect_f brush", [](IntegralCanvas &c) { c.fill_rect_f(rf, br); }, "fill_rect(-2,0,3,-3,brush=5/#0000ff)"},
    {"frame_ellipse_f", [](IntegralCanvas &c) { c.frame_ellipse_f(rf); }, "frame_ellipse(-2,0,3,-3)"},
    {"frame_ellipse_f pen", [](IntegralCanvas &c) { c.frame_ellipse_f(rf, pn); },
     "frame_ellipse(-2,0,3,-3,pen=10/#ff0000/dashed)"},
    {"fill_ellipse_f", [](IntegralCanvas &c) { c.fill_ellipse_f(rf); }, "fill_ellipse(-2,0,3,-3)"},
    {"fill_ellipse_f brush", [](IntegralCanvas &c) { c.fill_ellipse_f(rf, br); },
     "fill_ellipse(-2,0,3,-3,brush=5/#0000ff)"},
    {"fill_polygon_f", [](IntegralCanvas &c) { c.fill_polygon_f(path, 3, true); },
     "fill_polygon[3](1,0,2,-1,-2,3,winding=1)"},
    {"fill_polygon_f brush", [](IntegralCanvas &c) { c.fill_polygon_f(path, 3, br, false); },
     "fill_polygon[3](1,0,2,-1,-2,3,brush=5/#0000ff,winding=0)"},
    {"shadow_f", [](IntegralCanvas &c) { c.shadow_f(rf); }, "shadow(-2,0,3,-3)"},
    {"text_f", [](IntegralCanvas &c) { c.text_f(u"ab", 2, p3); }, "text(\"ab\",-2,3)"},
};

// Keeps the converted points and where they stood.
class ProbeCanvas : public RecordingCanvas
{
public:
    ProbeCanvas() { received.reserve(1024); }

    void poly_line(Point const *p, std::size_t n, Pen const &pen, bool) override { keep(p, n, "poly_line pen", pen.width()); }
    void poly_line(Point const *p, std::size_t n, bool) override { keep(p, n, "poly_line", 0); }
    void fill_polygon(Point const *p, std::size_t n, Brush const &b, bool) override
    {
        keep(p, n, "fill_polygon brush", b.fill_style());
    }
    void fill_polygon(Point const *p, std::size_t n, bool) override { keep(p, n, "fill_polygon", 0); }

    void keep(Point const *p, std::size_t n, char const *which, long extra)
    {
        on_stack = on_this_threads_stack(p);
        received.assign(p, p + n);
        operation = which;
        argument = extra;
    }

    std::vector<Point> received;
    char const *operation = nullptr;
    long argument = -1;
    bool on_stack = false;
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
}

TEST(IntegralCanvas, ForwardedCoordinatesAreTranslatedByTheSurface)
{
    RecordingCanvas canvas;
    canvas.translation(Point(100, 200));
    canvas.line_f(p1, p2);
    EXPECT_EQ(canvas.calls().back(), "line(101,200,102,199)");
}

// Points (i + 0.5, -i - 0.5) round to (i + 1, -i). Up to 256 points the routine uses its own frame;
// one more takes a heap block (freed again, which the leak checker sees), with the same result in kind.
TEST(IntegralCanvas, PointArraysOfAnySize)
{
    struct Op
    {
        char const *operation;
        long argument;
        std::function<void(IntegralCanvas &, PointF const *, std::size_t)> call;
    } const ops[] = {
        {"poly_line", 0, [](IntegralCanvas &c, PointF const *p, std::size_t n) { c.poly_line_f(p, n, false); }},
        {"poly_line pen", 7,
         [](IntegralCanvas &c, PointF const *p, std::size_t n) { c.poly_line_f(p, n, Pen(7), true); }},
        {"fill_polygon", 0, [](IntegralCanvas &c, PointF const *p, std::size_t n) { c.fill_polygon_f(p, n, true); }},
        {"fill_polygon brush", Brush::diagonal,
         [](IntegralCanvas &c, PointF const *p, std::size_t n) {
             c.fill_polygon_f(p, n, Brush(Brush::diagonal, Color::black), false);
         }},
    };
    for (std::size_t count : {std::size_t(3), std::size_t(256), std::size_t(257), std::size_t(600)}) {
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
            EXPECT_EQ(canvas.on_stack, count <= 256) << op.operation << " " << count;
            EXPECT_STREQ(canvas.operation, op.operation);
            EXPECT_EQ(canvas.argument, op.argument);
            EXPECT_EQ(canvas.received, expected) << op.operation << " " << count;
        }
    }
}

TEST(IntegralCanvas, TranslationKeepsWholeUnits)
{
    RecordingCanvas canvas;
    EXPECT_EQ(canvas.translation(), Point(0, 0));
    canvas.translation_f(PointF(2.6, -2.6));
    EXPECT_EQ(canvas.translation_f(), PointF(3.0, -3.0));
    // Each increment is rounded alone: 0.4 three times adds nothing.
    for (int i = 0; i < 3; ++i)
        canvas.add_translation_f(PointF(0.4, 0.4));
    EXPECT_EQ(canvas.translation(), Point(3, -3));
    canvas.add_translation_f(PointF(0.5, -0.5));  // (1, 0)
    EXPECT_EQ(canvas.translation(), Point(4, -3));
    canvas.add_translation(Point(1, 1));
    EXPECT_EQ(canvas.translation(), Point(5, -2));

    long x = 10, y = 10;
    canvas.translate(x, y);
    EXPECT_EQ(x, 15);
    EXPECT_EQ(y, 8);
    double fx = 0.25, fy = 0.25;
    canvas.translate_f(fx, fy);
    EXPECT_EQ(fx, 5.25);
    EXPECT_EQ(fy, -1.75);
    canvas.translation(Point(-1, -2));
    EXPECT_EQ(canvas.translation_f(), PointF(-1.0, -2.0));
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
    {Extent(240, 240), Extent(96, 72), Extent(16, 12)},     // 16.0 + .5; 12.0 + .5
    {Extent(250, 250), Extent(96, 72), Extent(17, 13)},     // 16.67 + .5 = 17.17; 12.5 + .5 = 13.0
    {Extent(7, 10), Extent(96, 72), Extent(0, 1)},          // 0.467 + .5 = 0.967; 0.5 + .5 = 1.0
    {Extent(15, 20), Extent(96, 72), Extent(1, 1)},         // 1.0 + .5; 1.0 + .5
    {Extent(-15, -30), Extent(96, 72), Extent(0, -1)},      // -1.0 + .5 = -0.5 -> 0; -1.5 + .5 = -1.0
    {Extent(1440, 1440), Extent(1440, 1440), Extent(1440, 1440)},
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
    // No rounding in the floating form: 250 * 96 / 1440 = 16.666..., 7 * 72 / 1440 = 0.35.
    ExtentF const f = Gauge::twips_to_device_f(ExtentF(250, 7), Extent(96, 72));
    EXPECT_DOUBLE_EQ(f.width(), 50.0 / 3.0);
    EXPECT_DOUBLE_EQ(f.height(), 0.35);

    // On the integral family the floating form rounds first: (0.4, 0.6) -> (0, 1) at 1440 dpi;
    // (1440.4, 720.6) -> (1440, 721) -> (96.5 -> 96, 36.05 + .5 -> 36) at 96 x 72.
    RecordingCanvas twips;
    EXPECT_EQ(twips.twips_to_pixel_f(ExtentF(0.4, 0.6)), ExtentF(0.0, 1.0));
    RecordingCanvas screen(Extent(96, 72));
    EXPECT_EQ(screen.twips_to_pixel_f(ExtentF(1440.4, 720.6)), ExtentF(96.0, 36.0));
}

TEST(Canvas, DashLength)
{
    struct Case
    {
        long width;
        long dpi;
        double expected;
    } const cases[] = {
        {10, 1440, 120.0},  // 50 is under 120 twips
        {30, 1440, 150.0},  // 150
        {24, 1440, 120.0},  // exactly 120: kept
        {25, 1440, 125.0},
        {0, 1440, 120.0},
        {1, 96, 8.0},       // 5 px = 75 twips < 120: 96 * 120 / 1440 = 8
        {2, 96, 10.0},      // 10 px = 150 twips
        {0, 96, 8.0},
        {1, 72, 6.0},       // 5 px = 100 twips < 120: 72 * 120 / 1440 = 6
        {3, 72, 15.0},      // 15 px = 300 twips
        {1, 600, 50.0},     // 5 px = 12 twips: 600 * 120 / 1440 = 50
    };
    for (auto const &c : cases)
        EXPECT_DOUBLE_EQ(Canvas::dash_length(c.width, Extent(c.dpi, c.dpi)), c.expected)
            << c.width << " at " << c.dpi;
    // Only the horizontal resolution counts.
    EXPECT_DOUBLE_EQ(Canvas::dash_length(1, Extent(96, 1440)), 8.0);

    // Period 2 D: dashes D on, D off; dots the pen's width on, the rest off.
    struct PatternCase
    {
        Pen pen;
        long dpi;
        double on, off, period;
    } const patterns[] = {
        {Pen(30, Color::black, Pen::dashed), 1440, 150.0, 150.0, 300.0},
        {Pen(10, Color::black, Pen::dotted), 1440, 10.0, 230.0, 240.0},
        {Pen(1, Color::black, Pen::dotted), 96, 1.0, 15.0, 16.0},
        {Pen(10, Color::black, Pen::solid), 1440, 0.0, 0.0, 0.0},
    };
    for (auto const &c : patterns) {
        Canvas::DashPattern const d = Canvas::dash_pattern(c.pen, Extent(c.dpi, c.dpi));
        EXPECT_DOUBLE_EQ(d.on, c.on);
        EXPECT_DOUBLE_EQ(d.off, c.off);
        EXPECT_DOUBLE_EQ(d.period, c.period);
    }
}
