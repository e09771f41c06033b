// Tests of tables: cells measured in text style, column widths and row heights kept in the table node,
// the baseline at the middle row, alignment in columns, the width shared out among wrapped columns,
// and row, column and frame lines.
//
// All tests run at 144 dpi with the 240-twip text font of the recording canvas, so that:
//   cs (column spacing) = 120 twips -> 120 * 144 / 1440 = 12,   rs (row spacing) = 60 twips -> 6,
//   fontH = 8 + 2 = 10,   halfH = 5,   m = 10,
//   thick pen 30 twips -> 3,   thin pen 10 twips -> 1.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/math_fixture.h"
#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/layout/layouttable.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathtablenode.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

// What a cell answers: its natural width W, ascent and descent. Given less room than W it breaks like
// text made of words `step` wide: as many words as fit a line (at least one), and a line more of
// descent (10) for every further line. A step of 0 makes a row of atoms 10 wide, 8 up and 2 down, that
// only line wrapping can break.
struct Cell
{
    long w;
    long a;
    long d;
    long step;
};

Cell cell(long w, long a, long d) { return Cell{w, a, d, w}; }
Cell words(long w, long step) { return Cell{w, 8, 2, step}; }
Cell atoms(long n) { return Cell{10 * n, 8, 2, 0}; }

// A cell layout that shows the node child of the running child index with the measures of the test,
// and notes what it sees.
class CellProbe : public MathLayout
{
public:
    explicit CellProbe(std::vector<Cell> cells) : cells_(std::move(cells)) {}

    BoxTree *request(GlyphContext &glyph_context, BoxTree const &constraint) override
    {
        MathNodeContext &context = math_context(glyph_context);
        text_style = text_style && !context.displaystyle();
        Cell const &c = cells_.at(static_cast<std::size_t>(context.child_index()));
        if (c.step == 0) {
            BoxTreeNode *row = new BoxTreeNode(c.w / 10);
            for (long i = 0; i < c.w / 10; ++i)
                row->setChild(i, Point(10 * i, 0), new BoxTreeLeaf(10, 8, 2));
            return row;
        }
        long width = c.w;
        if (constraint.width() < c.w)
            width = std::max(c.step, constraint.width() / c.step * c.step);
        long const lines = (c.w + width - 1) / width;
        return new BoxTreeLeaf(width, c.a, c.d + 10 * (lines - 1));
    }
    void draw(GlyphContext &glyph_context, AllocationTree const &allocation) override
    {
        MathNodeContext &context = math_context(glyph_context);
        drawn.push_back(std::to_string(context.child_index()) + "@" + std::to_string(allocation.point().x) + "," +
                        std::to_string(allocation.point().y) + (context.displaystyle() ? "D" : ""));
    }

    bool text_style = true;
    std::vector<std::string> drawn;

private:
    std::vector<Cell> cells_;
};

// A table node of rows x cols on a template whose layout is the table under test, with one identifier
// child per cell of the test (maybe fewer than the grid), and a context at 144 dpi.
struct TableFixture
{
    TableFixture(LayoutTable *layout, std::size_t rows, std::size_t cols, std::vector<Cell> const &cells)
        : f(math_settings(), Extent(144, 144)), probe(new CellProbe(cells)), table_layout(layout),
          idents(layout_template(new LayoutIdentNode)), tables(layout_template(layout)),
          table(new MathTableNode(tables.get(), rows, cols))
    {
        layout->append(probe);
        for (std::size_t i = 0; i < cells.size(); ++i)
            table->append(ident_node(idents.get(), u"x"));
    }
    BoxTree *request(BoxTree const &constraint = BoxTree::unconstrained)
    {
        return request_as(f.context, table.get(), table_layout, constraint);
    }
    std::vector<long> col_widths()
    {
        std::vector<long> out;
        for (std::size_t c = 0; c < table->n_cols(); ++c)
            out.push_back(table->col_width(f.context, c));
        return out;
    }
    std::vector<long> row_descents()
    {
        std::vector<long> out;
        for (std::size_t r = 0; r < table->n_rows(); ++r)
            out.push_back(table->row_descent(f.context, r));
        return out;
    }

    MathFixture f;
    CellProbe *probe;
    LayoutTable *table_layout;
    Held<MathTemplate> idents;
    Held<MathTemplate> tables;
    Held<MathTableNode> table;
};

LayoutTable *plain_table(wchar const *align = nullptr, long first = 0, std::size_t rows = 0, std::size_t cols = 0)
{
    return new LayoutTable(first, -1, rows, cols, nullptr, nullptr, nullptr, align, false);
}

// Offsets of the cells, (-1, -1) for a cell the node does not have.
std::vector<Point> offsets(BoxTree const *box)
{
    std::vector<Point> out;
    for (long k = 0; k < box->count(); ++k)
        out.push_back(box->child(k) != nullptr ? box->child(k)->offset() : Point(-1, -1));
    return out;
}

std::vector<Cell> const two_by_two{cell(20, 8, 2), cell(30, 8, 2), cell(40, 8, 2), cell(10, 8, 2)};

TEST(LayoutTable, GridGeometry)
{
    struct Case
    {
        char const *name;
        std::size_t rows;
        std::size_t cols;
        std::vector<Cell> cells;
        wchar const *align;
        Box box;
        std::vector<Point> cells_at;
        std::vector<long> widths;
    };
    Case const cases[] = {
        // colW 40, 30; rows 8 + 2 = 10 each. Rows stand rs 6 + halfH 5 = 11 apart: height = 20 + 11 =
        // 31. Baseline: row 0 gives 8; row 1 starts at y = 10 + 11 = 21 and gives (8 + 21 + 8) / 2 =
        // 18; descent 31 - 18 = 13. width = 70 + one gap cs 12 + half a gap, 6, on either side = 94. Row 0 at y = -18 + 8 = -10, row 1 at -18 + 21 + 8 = 11; columns from x = 6
        // and 6 + 40 + 12 = 58; centred: (40 - 20) / 2 + 6 = 16, 58, 6, (30 - 10) / 2 + 58 = 68.
        {"2x2 centred", 2, 2, two_by_two, nullptr, Box(94, 18, 13), {{16, -10}, {58, -10}, {6, 11}, {68, 11}}, {40, 30}},
        // "l" then "r": 6, 58 + 30 - 30 = 58, 6, 58 + 30 - 10 = 78.
        {"left, right", 2, 2, two_by_two, u"lr", Box(94, 18, 13), {{6, -10}, {58, -10}, {6, 11}, {78, 11}}, {40, 30}},
        // Rows 10, 18, 10: height = 38 + 2 rs + 2 halfH = 60, width 10 + 2 * 6 = 22. Middle row 1 starts at
        // y = 10 + 11 = 21: ascent 12 + 21 = 33, descent 27. Rows at -33 + 8 = -25, -33 + 21 + 12 = 0,
        // and -33 + 21 + 18 + 11 + 8 = 25.
        {"odd rows, tall middle", 3, 1, {cell(10, 8, 2), cell(10, 12, 6), cell(10, 8, 2)}, nullptr, Box(22, 33, 27),
         {{6, -25}, {6, 0}, {6, 25}}, {10}},
        // Four rows of 10: height = 40 + 3 * 11 = 73. Row 1 starts at 21 (ascent 29), row 2 at 42: ascent
        // (8 + 42 + 29) / 2 = 39, midway between the baselines 29 and 50; descent 73 - 39 = 34, the last
        // row's 32 + 2. Rows at -31, -10, 11, 32.
        {"even rows", 4, 1, {cell(10, 8, 2), cell(10, 8, 2), cell(10, 8, 2), cell(10, 8, 2)}, nullptr, Box(22, 39, 34),
         {{6, -31}, {6, -10}, {6, 11}, {6, 32}}, {10}},
        // Height 2 is below halfH 5: height 5, ascent fontH / 4 = 2, descent 3; the cell at -2 + 1.
        {"lower than halfH", 1, 1, {cell(10, 1, 1)}, nullptr, Box(22, 2, 3), {{6, -1}}, {10}},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        TableFixture x(plain_table(c.align), c.rows, c.cols, c.cells);
        x.f.context.child_index(42);
        std::unique_ptr<BoxTree> box(x.request());
        EXPECT_EQ(c.box, box->box());
        EXPECT_EQ(c.cells_at, offsets(box.get()));
        EXPECT_EQ(c.widths, x.col_widths());
        for (std::size_t r = 0; r < c.rows; ++r) {
            // The stored rows are the maxima of their cells.
            long a = 0;
            for (std::size_t k = r * c.cols; k < (r + 1) * c.cols && k < c.cells.size(); ++k)
                a = std::max(a, c.cells[k].a);
            EXPECT_EQ(a, x.table->row_ascent(x.f.context, r)) << r;
        }
        // Cells are measured in text style; the context comes back as it was.
        EXPECT_TRUE(x.probe->text_style);
        EXPECT_TRUE(x.f.context.displaystyle());
        EXPECT_EQ(42, x.f.context.child_index());
    }
}

TEST(LayoutTable, ShapeAndRange)
{
    struct Case
    {
        char const *name;
        long first;
        std::size_t layout_rows;
        std::size_t layout_cols;
        std::size_t node_rows;
        int children;
        Box box;
        std::vector<Point> cells_at;
    };
    Case const cases[] = {
        // The layout fixes 1 x 2: children 0 and 1 only, colW 20, 30, one row 10 high: width 50 + 12 +
        // 2 * 6 = 74. Columns at 6 and 6 + 20 + 12 = 38.
        {"fixed shape", 0, 1, 2, 2, 4, Box(74, 8, 2), {{6, 0}, {38, 0}}},
        // The range starts at child 1: cells show children 1, 2 and 3, the fourth cell none. colW 30,
        // 40; the rows as in the 2 x 2 grid. Row 1: child 3 (10 wide) centred in 30: 10 + 6.
        {"range from 1", 1, 0, 0, 2, 4, Box(94, 18, 13), {{6, -10}, {48, -10}, {16, 11}, {-1, -1}}},
        // A shape too large to hold shows nothing.
        {"absurd shape", 0, 0, 0, std::size_t(1) << 30, 4, Box(0, 0, 0), {}},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<Cell> cells(two_by_two.begin(), two_by_two.begin() + c.children);
        TableFixture x(plain_table(nullptr, c.first, c.layout_rows, c.layout_cols), c.node_rows, 2, cells);
        std::unique_ptr<BoxTree> box(x.request());
        EXPECT_EQ(c.box, box->box());
        EXPECT_EQ(c.cells_at, offsets(box.get()));
        if (c.layout_rows != 0) {
            EXPECT_EQ(c.layout_rows, x.table->n_rows());
        }
    }
}

TEST(LayoutTable, WrappingSharesTheWidth)
{
    struct Case
    {
        char const *name;
        std::size_t rows;
        std::size_t cols;
        std::vector<Cell> cells;
        long constraint;
        bool wrapchildren;
        bool wrap_lines;
        std::vector<long> widths;
        std::vector<long> descents;
        Box box;
    };
    std::vector<Cell> const four{words(20, 10), words(120, 16), words(80, 10), words(80, 10)};
    Case const cases[] = {
        // avail = 208 - 4 cs = 160, natural 300. Least widths at 2 m = 20: 20, 16, 20, 20 (sum 76);
        // extra 84, demand 224. Fair share 160 / 4 = 40: column 0 (20) keeps its width and takes
        // nothing from extra or demand (20 - 20). Shares: 16 + 104 * 84 / 224 = 55, 20 + 60 * 84 / 224
        // = 42, 42. Final: column 1 in 55 is 48 wide (three words), leaving 7: 7 / 2 = 3 each to
        // columns 2 and 3 (45). Column 2 in 45 is 40, leaving 5 to column 3 (50), which is 50.
        // Lines: 120 / 48 -> 3, 80 / 40 -> 2, 80 / 50 -> 2: descent 2 + 20. width 158 + 36 + 12 = 206.
        {"left-over goes right", 1, 4, four, 208, true, true, {20, 48, 40, 50}, {22}, Box(206, 8, 22)},
        // No room at all: avail is raised to 4 * 2 m = 80. Least sum 76, extra 4, demand 224, fair 20.
        // Shares 20, 16 + 416 / 224 = 17, 20 + 240 / 224 = 21, 21. Column 1: 16 in 17, 1 / 2 = 0;
        // column 2: 20 in 21, 1 / 1 to column 3 (22), which is 20. Lines 8, 4, 4: descent 2 + 70.
        // width 76 + 36 + 12 = 124.
        {"avail at least 2 m a column", 1, 4, four, 0, true, true, {20, 16, 20, 20}, {72}, Box(124, 8, 72)},
        // Cells of column c are cell r * cols + c. avail = 104 - 24 = 80, natural 20 + 100. Least
        // widths 20, 20; extra 40, demand 80; column 0 within 40 keeps 20; column 1 gets 20 + 80 * 40 /
        // 80 = 60. Cell 1 in 60: 60 wide, 2 lines (descent 12); cell 3 is 60. Rows 8/12 and 8/2:
        // height 30 + 6 + 5 = 41, ascent (8 + 31 + 8) / 2 = 23, descent 18; width 80 + 12 + 12.
        {"two rows", 2, 2, {words(20, 10), words(100, 20), words(10, 10), words(60, 20)}, 104, true, true, {20, 60},
         {12, 2}, Box(104, 23, 18)},
        // No wrapping: the natural widths, one line of 10: 300 + 36 + 12.
        {"wrapchildren off", 1, 4, four, 208, false, true, {20, 120, 80, 80}, {2}, Box(348, 8, 2)},
        // avail 348 - 48 = 300 is not below natural 300.
        {"fits exactly", 1, 4, four, 348, true, true, {20, 120, 80, 80}, {2}, Box(348, 8, 2)},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        TableFixture x(new LayoutTable(0, -1, 0, 0, nullptr, nullptr, nullptr, nullptr, c.wrapchildren), c.rows,
                       c.cols, c.cells);
        x.f.context.wrap_lines(c.wrap_lines);
        BoxTreeLeaf constraint(c.constraint, 0x7fffffff, 0x7fffffff);
        std::unique_ptr<BoxTree> box(x.request(constraint));
        EXPECT_EQ(c.widths, x.col_widths());
        EXPECT_EQ(c.descents, x.row_descents());
        EXPECT_EQ(c.box, box->box());
    }
}

// A cell that only line wrapping can break: six atoms of 10 in a row. Line wrapping never makes a
// line narrower than 4 m = 40; in text style it takes nothing off for the display margin. Four atoms
// fill the first line (the gaps all cost the same, 600 or so, plus a fill cost that falls as the line
// fills, so the latest candidate, before atom 4, wins); atoms 4 and 5 follow on a second line,
// indented by m: at (10, 10) and (20, 10), the line below at font ascent 8 + the first line's descent
// 2. The cell: 40 wide, 8 up, 2 + 2 + 8 = 12 down.
// The table: constraint 0 gives avail max(0 - cs, 2 m) = 20, below the natural 60. Least width 40
// (the wrapped cell); extra max(20 - 40, 0) = 0, demand 20; the one column, wider than avail / 1,
// gets 40 + 20 * 0 / 20 = 40, cut to avail 20. Wrapped again in 20: 40 wide. One row 20
// high: width 40 + 2 * 6 = 52.
TEST(LayoutTable, CellsBrokenByLineWrapping)
{
    TableFixture x(new LayoutTable(0, -1, 0, 0, nullptr, nullptr, nullptr, nullptr, true), 1, 1, {atoms(6)});
    BoxTreeLeaf constraint(0, 0x7fffffff, 0x7fffffff);
    std::unique_ptr<BoxTree> box(x.request(constraint));
    EXPECT_EQ(Box(52, 8, 12), box->box());
    EXPECT_EQ(std::vector<long>{40}, x.col_widths());
    BoxTree const *wrapped = box->child(0);
    ASSERT_NE(nullptr, wrapped);
    EXPECT_EQ(Box(40, 8, 12), wrapped->box());
    EXPECT_EQ(Point(6, 0), wrapped->offset());
    std::vector<Point> const atoms_at{{0, 0}, {10, 0}, {20, 0}, {30, 0}, {10, 10}, {20, 10}};
    EXPECT_EQ(atoms_at, offsets(wrapped));
    // Without wrapping the cell stays one line: 60 + 12.
    x.f.context.wrap_lines(false);
    std::unique_ptr<BoxTree> plain(x.request(constraint));
    EXPECT_EQ(Box(72, 8, 2), plain->box());
}

TEST(LayoutTable, LinesAndPens)
{
    // The 2 x 2 grid drawn at (100, 50): box 94 wide, 18 up, 13 down, so left 100, right 194, top 32,
    // bottom 63. Rows stand rs 6 + halfH 5 = 11 apart; row 0's cells stand at y 40 with descent 2, so
    // its line is in the middle of the gap: 40 + 2 + 11 / 2 = 47. The column gap is at 100 + 40 + cs
    // = 152. A framed top or bottom adds 11 / 2 = 5 to the box on that side.
    std::string const thick = "pen(3/#000000/solid,restart=1)";
    std::string const thin = "pen(1/#000000/solid,restart=1)";
    std::string const restore = "pen(0/#000000/solid,restart=1)";
    // Before its lines the table selects the text font, whose height gives the gap between rows.
    std::string const font = "font(Times New Roman,240,0,0,cs=1,angle=0)";
    struct Case
    {
        char const *name;
        wchar const *rowlines;
        wchar const *columnlines;
        wchar const *framelines;
        wchar const *node_rowlines;
        wchar const *node_columnlines;
        wchar const *node_framelines;
        std::vector<std::string> calls;
    };
    Case const cases[] = {
        // "S" is thick, any other character thin; the frame goes top, left, bottom, right. Framed top
        // and right: top 32 - 5 = 27, right 188 + 6 = 194.
        {"own lines", u"S", u"|", u"SxnS", nullptr, nullptr, nullptr,
         {font, thick, "line(100,47,194,47)", thin, "line(152,27,152,63)", thick, "line(100,27,194,27)", thin,
          "line(100,27,100,63)", thick, "line(194,27,194,63)", restore}},
        // With no strings of its own the layout draws the node's.
        {"node lines", nullptr, nullptr, nullptr, u"x", u"S", u"x",
         {font, thin, "line(100,47,194,47)", thick, "line(152,27,152,68)", thin, "line(100,27,194,27)", thin,
          "line(100,27,100,68)", thin, "line(100,68,194,68)", thin, "line(194,27,194,68)", restore}},
        // The layout's own strings win over the node's, even when they draw nothing.
        {"own over node", u"n", u"x", u"n", u"S", u"S", u"S", {font, thin, "line(152,32,152,63)", restore}},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        // Three children: the fourth cell stays empty and is not drawn; the sizes are those of the grid.
        TableFixture x(new LayoutTable(0, -1, 0, 0, c.rowlines, c.columnlines, c.framelines, nullptr, false), 2, 2,
                       {cell(20, 8, 2), cell(30, 8, 2), cell(40, 8, 2)});
        x.table->attribute(u"rowlines", c.node_rowlines);
        x.table->attribute(u"columnlines", c.node_columnlines);
        x.table->attribute(u"framelines", c.node_framelines);
        std::unique_ptr<BoxTree> box(x.request());
        x.f.canvas.clear();
        x.f.context.child_index(7);
        draw_as(x.f.context, x.table.get(), x.table_layout, AllocationTree(Point(100, 50), box.get()));
        EXPECT_EQ(c.calls, x.f.canvas.calls());
        // The cells at their offsets, in text style, each with its own child index.
        std::vector<std::string> const drawn{"0@116,40", "1@158,40", "2@106,61"};
        EXPECT_EQ(drawn, x.probe->drawn);
        EXPECT_TRUE(x.f.context.displaystyle());
        EXPECT_EQ(7, x.f.context.child_index());
    }
}

}  // namespace
