// The sample drawing and its probes.
#include "sample_drawing.h"

#include "support/external_tools.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Tavi;

namespace TaviTest {

namespace {

// Points to the canvas's units: 20 twips a point, then the canvas's own conversion.
long u(Canvas &canvas, double pt)
{
    return canvas.twips_to_pixel(Extent(std::lround(pt * 20.0), 0)).width();
}

Point at(Canvas &canvas, double x, double y) { return Point(u(canvas, x), u(canvas, y)); }

// top, left, bottom, right from a point box given as left, top, right, bottom.
Rect box(Canvas &canvas, double left, double top, double right, double bottom)
{
    return Rect(u(canvas, top), u(canvas, left), u(canvas, bottom), u(canvas, right));
}

// A five-pointed star drawn as one self-crossing path: the middle is covered twice, so the non-zero
// rule fills it and the even-odd rule leaves it open.
std::vector<Point> pentagram(Canvas &canvas, double cx, double cy, double r)
{
    double const pi = 3.14159265358979323846;
    std::vector<Point> points;
    for (int k = 0; k < 5; ++k) {
        double const angle = (-90.0 + 144.0 * k) * pi / 180.0;
        points.push_back(at(canvas, cx + r * std::cos(angle), cy + r * std::sin(angle)));
    }
    return points;
}

Color const red(200, 0, 0);
Color const blue(0, 0, 180);
Color const green(0, 140, 0);

}  // namespace

void draw_sample(Canvas &canvas)
{
    canvas.erase();

    // Row 1: a filled rectangle, frames in the three pen styles, a framed ellipse.
    canvas.fill_rect(box(canvas, 20, 20, 80, 60), Brush(red));
    canvas.pen(Pen(u(canvas, 2), Color::black, Pen::solid), true);
    canvas.frame_rect(box(canvas, 100, 20, 160, 60));
    canvas.frame_rect(box(canvas, 180, 20, 240, 60), Pen(u(canvas, 1), blue, Pen::dashed));
    canvas.frame_rect(box(canvas, 260, 20, 320, 60), Pen(u(canvas, 2), Color::black, Pen::dotted));
    canvas.frame_ellipse(box(canvas, 340, 20, 390, 60));

    // Row 2: the six hatch patterns.
    Brush::FillStyle const hatches[] = {Brush::horizontal, Brush::vertical, Brush::diagonal,
                                        Brush::back_diagonal, Brush::cross, Brush::diagonal_cross};
    for (int i = 0; i < 6; ++i)
        canvas.fill_rect(box(canvas, 20 + 60 * i, 80, 70 + 60 * i, 110), Brush(hatches[i], blue));

    // Row 3: a long dashed line and a long dotted one.
    canvas.line(at(canvas, 20, 140), at(canvas, 380, 140), Pen(u(canvas, 1), Color::black, Pen::dashed), true);
    canvas.line(at(canvas, 20, 155), at(canvas, 380, 155), Pen(u(canvas, 2), Color::black, Pen::dotted), true);

    // Row 4: stars under both fill rules, filled ellipses, poly lines.
    canvas.brush(Brush(green));
    std::vector<Point> const star = pentagram(canvas, 60, 200, 28);
    canvas.fill_polygon(star.data(), star.size(), true);
    std::vector<Point> const open_star = pentagram(canvas, 150, 200, 28);
    canvas.fill_polygon(open_star.data(), open_star.size(), false);
    canvas.fill_ellipse(box(canvas, 200, 170, 260, 230));
    canvas.fill_ellipse(box(canvas, 280, 170, 340, 230), Brush(Brush::cross, blue));
    Point const zigzag[] = {at(canvas, 350, 175), at(canvas, 360, 195), at(canvas, 370, 175), at(canvas, 380, 195),
                            at(canvas, 390, 175)};
    canvas.poly_line(zigzag, 5, false);
    Point const triangle[] = {at(canvas, 350, 225), at(canvas, 390, 225), at(canvas, 370, 205)};
    canvas.poly_line(triangle, 3, Pen(u(canvas, 2), red, Pen::dotted), true);

    // Row 5: a fill cut by a clip, a fill under a translation, turned and upright text, a shadow.
    canvas.clip_rect(box(canvas, 20, 250, 60, 290));
    canvas.fill_rect(box(canvas, 10, 240, 120, 295), Brush(Color::black));
    canvas.no_clip_rect();

    canvas.translation(at(canvas, 140, 250));
    canvas.fill_rect(box(canvas, 0, 0, 40, 30), Brush(blue));
    canvas.translation(Point(0, 0));

    canvas.text_color(Color::black);
    canvas.font(Font(u"DejaVu Serif", 480, false, false), Gauge::cs_unicode, 90);
    canvas.text(u"Tavi", 4, at(canvas, 230, 295));
    canvas.font(Font(u"DejaVu Serif", 480, false, false), Gauge::cs_unicode, 0);
    canvas.text(u"Hi", 2, at(canvas, 262, 285));

    canvas.shadow(box(canvas, 310, 250, 345, 290));
}

std::vector<InkProbe> const &sample_probes()
{
    // Each probe keeps two points or more from the edges of what it looks at, so that rounding and
    // anti-aliasing do not decide it.
    static std::vector<InkProbe> const probes = {
        {"inside the filled rectangle", 30, 30, 70, 50, InkProbe::most, true, true, true},
        {"blank top left corner", 2, 2, 15, 15, InkProbe::none, true, true, true},
        {"inside the solid frame", 105, 25, 155, 55, InkProbe::none, true, true, true},
        {"left side of the solid frame", 98, 30, 103, 50, InkProbe::some, true, true, true},
        {"top side of the dashed frame", 180, 18, 240, 22, InkProbe::some, true, true, true},
        {"bottom side of the dotted frame", 260, 58, 320, 62, InkProbe::some, true, true, true},
        {"left end of the framed ellipse", 338, 36, 343, 44, InkProbe::some, true, true, true},
        // The SVG hatch patterns carry no stroke, so their fills show nothing: probed elsewhere only.
        {"horizontal hatch", 22, 82, 68, 108, InkProbe::part, true, false, true},
        {"diagonal cross hatch", 322, 82, 368, 108, InkProbe::part, true, false, true},
        // A dash is 6 points (120 twips) on the files and 8 pixels at 96 dpi, which is 6 points too:
        // the line starts at 20, so 20-26 is lit and 26-32 dark on every surface.
        {"first dash", 21, 138, 25, 142, InkProbe::some, true, true, true},
        {"gap after the first dash", 28.5, 137, 30, 143, InkProbe::none, true, true, true},
        {"along the dotted line", 20, 153, 380, 157, InkProbe::some, true, true, true},
        {"middle of the non-zero star", 57, 197, 63, 203, InkProbe::most, true, true, true},
        {"middle of the even-odd star", 147, 197, 153, 203, InkProbe::none, true, true, true},
        {"arm of the even-odd star", 149, 181.7, 151, 184.7, InkProbe::most, true, true, true},
        {"inside the filled ellipse", 220, 190, 240, 210, InkProbe::most, true, true, true},
        {"cross-hatched ellipse", 295, 185, 325, 215, InkProbe::part, true, false, true},
        {"dotted triangle", 348, 203, 392, 228, InkProbe::some, true, true, true},
        {"inside the clip", 25, 255, 55, 285, InkProbe::most, true, true, true},
        {"clipped away, right of the clip", 65, 255, 115, 285, InkProbe::none, true, true, true},
        {"the translated rectangle", 145, 255, 175, 275, InkProbe::most, true, true, true},
        {"turned text, left of its baseline", 212, 250, 228, 292, InkProbe::some, true, true, true},
        {"right of the turned text's baseline", 233, 245, 250, 295, InkProbe::none, true, true, true},
        {"upright text", 262, 266, 292, 284, InkProbe::some, true, true, true},
        {"shadow", 312, 252, 343, 288, InkProbe::some, true, false, false},
        {"no shadow in print", 312, 252, 343, 288, InkProbe::none, false, true, true},
    };
    return probes;
}

void expect_sample_ink(QImage const &image, Surface surface, std::string const &label)
{
    ASSERT_FALSE(image.isNull()) << label;
    double const scale_x = static_cast<double>(image.width()) / sample_page_width_pt;
    double const scale_y = static_cast<double>(image.height()) / sample_page_height_pt;
    for (InkProbe const &p : sample_probes()) {
        bool const applies = (surface == Surface::pixmap && p.pixmap) || (surface == Surface::svg && p.svg) ||
                             (surface == Surface::eps && p.eps);
        if (!applies)
            continue;
        int const left = static_cast<int>(std::floor(p.left * scale_x));
        int const top = static_cast<int>(std::floor(p.top * scale_y));
        int const right = static_cast<int>(std::ceil(p.right * scale_x));
        int const bottom = static_cast<int>(std::ceil(p.bottom * scale_y));
        long const area = static_cast<long>(right - left) * (bottom - top);
        long const ink = count_ink(image, left, top, right, bottom);
        switch (p.expect) {
        case InkProbe::none:
            EXPECT_EQ(ink, 0) << label << ": " << p.what;
            break;
        case InkProbe::some:
            EXPECT_GE(ink, 3) << label << ": " << p.what;
            break;
        case InkProbe::part:
            EXPECT_GE(ink, 3) << label << ": " << p.what;
            EXPECT_LT(ink * 4, area * 3) << label << ": " << p.what << " (" << ink << " of " << area << ")";
            break;
        case InkProbe::most:
            EXPECT_GE(ink * 5, area * 4) << label << ": " << p.what << " (" << ink << " of " << area << ")";
            break;
        }
    }
}

}  // namespace TaviTest
