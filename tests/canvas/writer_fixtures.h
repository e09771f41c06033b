// Pieces shared by the tests of the SVG and EPS writers: a canvas whose header is written and whose
// later output is taken piece by piece, the creation date made comparable, and the drawing that
// both writers give to a real renderer with the ink it must leave.
#pragma once

#include "support/external_tools.h"
#include "tavi/canvas/canvas.h"
#include "tavi/geometry/extension.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <string>

namespace CanvasTest {

// `take` answers what was written since the last take, the header excepted.
template <class C>
struct Drawing
{
    explicit Drawing(Tavi::Extension const &extension) : canvas(out, extension)
    {
        canvas.put_header("Tavi tests");
        taken = out.str().size();
    }
    std::string take()
    {
        std::string const all = out.str();
        std::string const part = all.substr(taken);
        taken = all.size();
        return part;
    }

    std::ostringstream out;
    C canvas;
    std::size_t taken = 0;
};

// The asctime date varies: a date of the form "Www Mmm dd hh:mm:ss yyyy" becomes DATE. A text of
// another form stays, and fails the comparison.
inline std::string with_fixed_date(std::string const &text)
{
    static std::regex const date("CreationDate: [A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] [0-9]{2}:[0-9]{2}:[0-9]{2} [0-9]{4}");
    return std::regex_replace(text, date, "CreationDate: DATE", std::regex_constants::format_first_only);
}

// Every shape, pen style and hatch on a drawing of 100 by 100 points (2000 twips); at 72 dpi a
// pixel is a point, 20 twips, and y runs down from the top. The square from pixel (70, 70) to the
// corner stays empty; a clip keeps a black fill to pixels 75 to 95 across and 5 to 15 down. Text
// is left to the caller.
inline void draw_shapes(Tavi::Canvas &c)
{
    using namespace Tavi;
    c.fill_rect(Rect(100, 100, 700, 700), Brush(Color(0, 0, 255)));  // pixels 5 to 35
    for (int style = 1; style <= 6; ++style) {
        long const left = 100 + (style - 1) * 250;
        c.fill_rect(Rect(800, left, 1100, left + 200), Brush(static_cast<Brush::FillStyle>(style), Color::black));
    }
    c.pen(Pen(40, Color::black, Pen::solid), true);  // 2 pixels wide
    c.line({100, 1200}, {1900, 1200});
    c.pen(Pen(10, Color(200, 0, 0), Pen::dashed), true);
    c.line({100, 1250}, {1000, 1250});
    c.line({1000, 1250}, {1900, 1300});
    c.pen(Pen(20, Color(0, 150, 0), Pen::dotted), true);
    c.line({100, 1330}, {1900, 1330});
    Point const path[] = {{100, 1450}, {300, 1450}, {300, 1650}, {100, 1650}};
    c.poly_line(path, 4, false);
    c.poly_line(path, 4, Pen(0, Color::black, Pen::solid), true);
    c.frame_rect(Rect(1450, 350, 1650, 550), Pen(30, Color(0, 0, 0, 128), Pen::solid));
    c.frame_ellipse(Rect(1450, 600, 1650, 800));
    c.frame_ellipse(Rect(1450, 850, 1650, 1250), Pen(10, Color::black, Pen::dashed));
    c.fill_ellipse(Rect(1700, 100, 1900, 300));
    c.fill_ellipse(Rect(1700, 350, 1900, 650), Brush(Brush::cross, Color::black));
    Point const triangle[] = {{700, 1700}, {1000, 1700}, {850, 1900}};
    c.fill_polygon(triangle, 3, true);
    c.fill_polygon(triangle, 3, Brush(Brush::diagonal, Color(0, 0, 0, 100)), false);
    c.translation(Point(0, 0));
    c.clip_rect(Rect(100, 1500, 300, 1900));
    c.fill_rect(Rect(0, 1400, 700, 2000), Brush(Color(0, 0, 0)));
    c.no_clip_rect();
    c.translation(Point(40, 40));
    c.fill_rect(Rect(0, 0, 20, 20));
    c.translation(Point(0, 0));
}

// The ink of draw_shapes on the 100 by 100 pixel image of a renderer.
inline void expect_shapes_ink(QImage const &image)
{
    using TaviTest::count_ink;
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.width(), 100);
    EXPECT_EQ(image.height(), 100);
    // Inside the blue rectangle (pixels 5 to 35), away from its edges: all ink.
    EXPECT_EQ(count_ink(image, 8, 8, 32, 32), 24 * 24);
    QRgb const blue = image.pixel(20, 20);
    EXPECT_LT(qRed(blue), 30);
    EXPECT_GT(qBlue(blue), 220);
    EXPECT_EQ(count_ink(image, 71, 71, 100, 100), 0);  // the empty corner
    // The clipped fill.
    EXPECT_EQ(count_ink(image, 77, 7, 93, 13), 16 * 6);
    EXPECT_EQ(count_ink(image, 71, 17, 100, 35), 0);
    // The solid line at y 60 (1200 twips), rows 59 and 60 from x 5 to 95.
    EXPECT_GT(count_ink(image, 10, 59, 90, 61), 150);
    // The filled circle, pixels 5 to 15 across, 85 to 95 down.
    EXPECT_GT(count_ink(image, 8, 88, 12, 92), 12);
}

}  // namespace CanvasTest
