// A 2 x 2 matrix typeset with the real fonts and painted on a Qt_Pixmap_Canvas, with thin lines between
// the rows and the columns and a thick frame. The picture is kept under the test artefacts
// ("tables/"); the lines must be there in full at the places the table's rules give, with the pen
// widths of 10 and 30 twips, and every other pixel of ink must lie inside a cell's box.
#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "font_drawing.h"
#include "support/external_tools.h"
#include "support/formula_builder.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/layout/layouttable.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathtablenode.h"
#include "tavi/qt/qt_pixmap_canvas.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

// 24 points of Times New Roman at 96 dpi: the spacings are 240 and 120 twips, 16 and 8 pixels
// (n * 96 / 1440 + 0.5, truncated); the thin pen of 10 twips is 1 pixel, the thick one of 30 is 2.
long const dpi = 96;
long const cs = 16;
long const rs = 8;
long const margin = 12;

struct Band
{
    int left, top, right, bottom;
    bool holds(int x, int y) const { return left <= x && x < right && top <= y && y < bottom; }
};

TEST(TablePng, MatrixWithLinesAndFrame)
{
    // [[(a/b)/c, c], [d, e]]: a first row taller than a line of text over one that is not.
    FormulaBuilder b;
    LayoutTable *layout = new LayoutTable(0, -1, 0, 0, u"x", u"x", u"S", nullptr, false);
    layout->append(new LayoutRunningPlaceholder(nullptr, 0, 0, -1, LayoutPlaceholder::inherit));
    Held<MathTemplate> matrix(layout_template(layout, MathTemplate::no_parens_priority, u"matrix"));
    Held<MathTableNode> table(new MathTableNode(matrix.get(), 2, 2));
    table->append(b.node("frac", {b.node("frac", {b.ident(u"a"), b.ident(u"b")}), b.ident(u"c")}));
    table->append(b.ident(u"c"));
    table->append(b.ident(u"d"));
    table->append(b.ident(u"e"));

    Qt_Pixmap_Canvas gauge(Extension(0, 0, 1, 1), nullptr, dpi);
    MathNodeContext measuring(GlyphContext(nullptr, nullptr, &gauge, nullptr), nullptr, formula_settings(true));
    std::unique_ptr<BoxTree> box(table->request(measuring, BoxTree::unconstrained));
    ASSERT_EQ(4, box->count());
    measuring.select_real_font(MathString::f_text);
    long const fontH = gauge.font_ascent() + gauge.font_descent();
    ASSERT_GT(table->row_ascent(measuring, 0) + table->row_descent(measuring, 0), fontH);

    long const width = box->width();
    long const height = box->ascent() + box->descent();
    Qt_Pixmap_Canvas canvas(Extension(0, 0, height + 2 * margin, width + 2 * margin), nullptr, dpi);
    canvas.erase(Color::white);
    canvas.antialias(false);
    MathNodeContext drawing(GlyphContext(nullptr, nullptr, &canvas, nullptr), nullptr, formula_settings(true));
    Point const origin(margin, margin + box->ascent());
    table->draw(drawing, AllocationTree(origin, box.get()));
    QImage const image = canvas.pixmap()->toImage();
    std::string const path = artefact_path("tables", "matrix-2x2-lines.png");
    EXPECT_TRUE(image.save(QString::fromStdString(path))) << path;

    // Where the lines go: the row line in the middle of the gap of rs and half a line of text below
    // the deeper cell of row 0, the column line cs beyond the width of column 0, the frame on the
    // box's edges.
    BoxTree const *cells[4];
    for (long k = 0; k < 4; ++k)
        cells[k] = box->child(k);
    int const left = static_cast<int>(origin.x);
    int const right = static_cast<int>(origin.x + width);
    int const top = static_cast<int>(origin.y - box->ascent());
    int const bottom = static_cast<int>(origin.y + box->descent());
    int const row_y = static_cast<int>(origin.y + cells[1]->yOffset() +
                                       std::max(cells[0]->descent(), cells[1]->descent()) +
                                       (rs + fontH / 2) / 2);
    int const column_x = static_cast<int>(left + std::max(cells[0]->width(), cells[2]->width()) + cs);

    // Qt paints an aliased line of width w at c on the pixels c - w / 2 to c - w / 2 + w - 1. Each line
    // must cover that strip in full, away from the corners, and leave the pixels just beside it clear
    // where nothing else is drawn: the thin lines are one pixel wide, the frame two.
    auto across = [](int x0, int x1, int y, int w) { return Band{x0 + 2, y - w / 2, x1 - 2, y - w / 2 + w}; };
    auto down = [](int x, int y0, int y1, int w) { return Band{x - w / 2, y0 + 2, x - w / 2 + w, y1 - 2}; };
    auto area = [](Band const &b) { return static_cast<long>(b.right - b.left) * (b.bottom - b.top); };
    auto ink = [&image](Band const &b) { return count_ink(image, b.left, b.top, b.right, b.bottom); };
    Band const lines[6] = {across(left, right, row_y, 1), down(column_x, top, bottom, 1),
                           across(left, right, top, 2),   down(left, top, bottom, 2),
                           across(left, right, bottom, 2), down(right, top, bottom, 2)};
    for (Band const &l : lines)
        EXPECT_EQ(area(l), ink(l)) << "line at " << l.left << "," << l.top << " in " << path;
    // Beside the row line only the column line crosses; beside the column line only the row line.
    EXPECT_EQ(1, ink(across(left, right, row_y - 1, 1))) << path;
    EXPECT_EQ(1, ink(across(left, right, row_y + 1, 1))) << path;
    EXPECT_EQ(1, ink(down(column_x - 1, top, bottom, 1))) << path;
    EXPECT_EQ(1, ink(down(column_x + 1, top, bottom, 1))) << path;
    // Outside the frame, nothing.
    EXPECT_EQ(0, ink(across(left, right, top - 2, 1))) << path;
    EXPECT_EQ(0, ink(down(left - 2, top, bottom, 1))) << path;
    EXPECT_EQ(0, ink(across(left, right, bottom + 1, 1))) << path;
    EXPECT_EQ(0, ink(down(right + 1, top, bottom, 1))) << path;

    // Each cell has ink inside its box and stays clear of the lines, and no ink lies outside the cells
    // and the lines. Glyph edges may stand a pixel beyond a box; the strips of the lines are widened so
    // that they reach the corners again.
    std::vector<Band> allowed;
    for (Band const &l : lines)
        allowed.push_back(Band{l.left - 3, l.top - 3, l.right + 3, l.bottom + 3});
    for (BoxTree const *c : cells) {
        int const x = static_cast<int>(origin.x + c->xOffset());
        int const y = static_cast<int>(origin.y + c->yOffset());
        Band const inside{x, y - static_cast<int>(c->ascent()), x + static_cast<int>(c->width()),
                          y + static_cast<int>(c->descent())};
        EXPECT_GT(ink(inside), 0) << "cell at " << x << "," << y << " in " << path;
        allowed.push_back(Band{inside.left - 1, inside.top - 1, inside.right + 1, inside.bottom + 1});
        EXPECT_TRUE(inside.bottom < row_y || inside.top > row_y) << "cell at " << x << "," << y;
        EXPECT_TRUE(inside.right < column_x || inside.left > column_x) << "cell at " << x << "," << y;
        EXPECT_TRUE(top <= inside.top && inside.bottom <= bottom) << "cell at " << x << "," << y;
    }
    std::string stray;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (count_ink(image, x, y, x + 1, y + 1) > 0 &&
                std::none_of(allowed.begin(), allowed.end(), [&](Band const &a) { return a.holds(x, y); }))
                stray += " " + std::to_string(x) + "," + std::to_string(y);
    EXPECT_EQ("", stray) << path;
}

}  // namespace
