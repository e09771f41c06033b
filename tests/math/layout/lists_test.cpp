// Tests of lists: a table node shown row after row on one baseline with a separator between rows, the
// row layout seeing one row of cells at a time in text style, the shape taken from the node or fixed
// by the layout, and moving through the grid with the arrow keys.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/math_fixture.h"
#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/layout/layoutlists.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutoperatorrow.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathtablenode.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

// A row layout that writes down what it sees at each request: display style, how many cells the node
// shows and the text of the first, and answers a box 10 wide per cell, 5 up and 1 down. Drawing walks
// the same rows (seen through the painted separators below).
class RowSpy : public MathLayout
{
public:
    BoxTree *request(GlyphContext &glyph_context, BoxTree const &) override
    {
        MathNodeContext &context = math_context(glyph_context);
        MathNode *node = context.math_node();
        long const n = node->count();
        wstring const first = n > 0 ? node->child(0)->cat_text().str() : wstring(u"-");
        seen.push_back(std::string(context.displaystyle() ? "D" : "T") + std::to_string(n) +
                       std::string(first.begin(), first.end()));
        return new BoxTreeLeaf(10 * n, 5, 1);
    }
    std::vector<std::string> seen;
};

// A table node of `rows` x `cols` holding identifiers from "a" on, `cells` of them.
struct ListsFixture
{
    ListsFixture(MathLayout *lists, std::size_t rows, std::size_t cols, int cells)
        : idents(layout_template(new LayoutIdentNode)), tables(layout_template(lists)),
          table(new MathTableNode(tables.get(), rows, cols))
    {
        for (int i = 0; i < cells; ++i) {
            wchar const text[] = {static_cast<wchar>(u'a' + i), 0};
            table->append(ident_node(idents.get(), text));
        }
    }
    MathFixture f;
    Held<MathTemplate> idents;
    Held<MathTemplate> tables;
    Held<MathTableNode> table;
};

LayoutLists *spy_lists(RowSpy *&spy, long first, std::size_t rows, std::size_t cols)
{
    LayoutLists *lists = new LayoutLists(first, -1, rows, cols);
    spy = new RowSpy;
    lists->append(spy);
    lists->append(new LayoutOp(u";", LayoutOp::infix, false, false, false, false, 0, 0));
    return lists;
}

TEST(LayoutLists, EachRowSeesItsOwnCellsInTextStyle)
{
    struct Case
    {
        long first;
        std::size_t layout_rows;
        std::size_t layout_cols;
        int cells;
        std::vector<std::string> seen;
        long width;
    };
    Case const cases[] = {
        // Fewer cells than the 2 x 3 grid of the node: the last row shows what there is; 30 + ";" 10 + 20.
        {0, 0, 0, 5, {"T3a", "T2d"}, 60},
        // The layout fixes 3 columns of 2: rows "ab", "cd", "ef".
        {0, 3, 2, 6, {"T2a", "T2c", "T2e"}, 80},
        // More rows than cells: the third row shows none.
        {0, 3, 3, 6, {"T3a", "T3d", "T0-"}, 80},
    };
    for (Case const &c : cases) {
        RowSpy *spy = nullptr;
        LayoutLists *lists = spy_lists(spy, c.first, c.layout_rows, c.layout_cols);
        ListsFixture x(lists, 2, 3, c.cells);
        x.f.context.child_index(42);
        std::unique_ptr<BoxTree> box(request_as(x.f.context, x.table.get(), lists));
        EXPECT_EQ(c.seen, spy->seen) << c.first << c.layout_rows << c.cells;
        EXPECT_EQ(c.width, box->width());
        // Everything is restored: display style, the child index, all children shown.
        EXPECT_TRUE(x.f.context.displaystyle());
        EXPECT_EQ(42, x.f.context.child_index());
        EXPECT_EQ(c.cells, x.table->count());
        // The node was told the shape in force.
        std::size_t const rows = c.layout_rows != 0 ? c.layout_rows : 2;
        std::size_t const cols = c.layout_cols != 0 ? c.layout_cols : 3;
        EXPECT_EQ(rows, x.table->n_rows());
        EXPECT_EQ(cols, x.table->n_cols());
        ASSERT_EQ(static_cast<long>(2 * rows - 1), box->count());
    }
}

TEST(LayoutLists, RowsAndSeparatorsOnOneBaseline)
{
    // Rows of identifiers with "," between cells and ";" between rows, no operator spacing: every
    // character 10 wide, one after another.
    LayoutOperatorRow *row = new LayoutOperatorRow(0, -1, false);
    row->append(new LayoutRunningPlaceholder(nullptr, 0, 0, -1, LayoutPlaceholder::inherit));
    row->append(new LayoutOp(u",", LayoutOp::infix, false, false, false, false, 0, 0));
    LayoutLists *lists = new LayoutLists(0, -1, 0, 0);
    lists->append(row);
    lists->append(new LayoutOp(u";", LayoutOp::infix, false, false, false, false, 0, 0));
    ListsFixture x(lists, 2, 3, 6);

    std::unique_ptr<BoxTree> box(request_as(x.f.context, x.table.get(), lists));
    // "a,b,c" 50, ";" 10, "d,e,f" 50; the text line 8 up and 2 down.
    EXPECT_EQ(Box(110, 8, 2), box->box());
    ASSERT_EQ(3, box->count());
    EXPECT_EQ(60, box->child(2)->xOffset());

    x.f.canvas.clear();
    draw_as(x.f.context, x.table.get(), lists, AllocationTree(Point(5, 20), box.get()));
    std::vector<Painted> const painted{{"a", 5, 20},  {",", 15, 20}, {"b", 25, 20}, {",", 35, 20},
                                       {"c", 45, 20}, {";", 55, 20}, {"d", 65, 20}, {",", 75, 20},
                                       {"e", 85, 20}, {",", 95, 20}, {"f", 105, 20}};
    EXPECT_EQ(painted, painted_texts(x.f.canvas));
    EXPECT_EQ(6, x.table->count());
}

TEST(LayoutLists, NothingToShowGivesAZeroLeaf)
{
    RowSpy *spy = nullptr;
    // A node of no shape.
    LayoutLists *lists = spy_lists(spy, 0, 0, 0);
    ListsFixture x(lists, 0, 0, 3);
    std::unique_ptr<BoxTree> box(request_as(x.f.context, x.table.get(), lists));
    EXPECT_EQ(Box(0, 0, 0), box->box());
    EXPECT_EQ(0, box->count());
    // A node that is no table.
    Held<MathNode> plain(expr_node(x.tables.get(), {ident_node(x.idents.get(), u"q")}));
    box.reset(request_as(x.f.context, plain.get(), lists));
    EXPECT_EQ(Box(0, 0, 0), box->box());
    EXPECT_TRUE(spy->seen.empty());
}

TEST(LayoutLists, ArrowsMoveThroughTheGrid)
{
    struct Case
    {
        long first;
        long from;
        Input::Key key;
        bool found;
        long to;
    };
    // A 2 x 3 grid: positions 0 1 2 over 3 4 5, counted from first; with first 1, index 4 is position
    // 3, the start of the second row.
    Case const cases[] = {
        {0, 3, Input::key_left, false, 0}, {0, 4, Input::key_up, true, 1},    {0, 2, Input::key_right, false, 0},
        {0, 1, Input::key_down, true, 4},  {0, 4, Input::key_down, false, 0}, {1, 2, Input::key_down, true, 5},
        {1, 4, Input::key_left, false, 0},
    };
    for (Case const &c : cases) {
        RowSpy *spy = nullptr;
        LayoutLists *lists = spy_lists(spy, c.first, 0, 0);
        ListsFixture x(lists, 2, 3, 7);
        x.f.context.math_node(x.table.get());
        long result = -9;
        EXPECT_EQ(c.found, lists->get_neighbour_child(x.f.context, c.from, c.key, result))
            << c.first << "/" << c.from << "/" << c.key;
        if (c.found) {
            EXPECT_EQ(c.to, result);
        }
        x.f.context.math_node(nullptr);
    }
}

}  // namespace
