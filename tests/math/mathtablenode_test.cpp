// Tests of the table node: its attributes and their refusals, the child range that shows one run of
// cells, the sizes of the last layout and when they count as valid, copying, equality, and the table
// node that a template with a table layout makes.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "math/layout/layout_probe.h"
#include "support/math_fixture.h"
#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/mathattribute.h"
#include "tavi/math/mathattriblist.h"
#include "tavi/math/mathexprnode.h"
#include "tavi/math/mathtablenode.h"
#include "tavi/kxt/utf.h"

namespace {

using namespace Tavi;
using namespace TaviTest;
using LayoutTest::LayoutProbe;

wstring text_of(wchar const *s) { return s != nullptr ? wstring(s) : wstring(u"<null>"); }

// A 2 x 3 table of the identifiers a to f.
struct TableFixture
{
    TableFixture()
        : idents(layout_template(new LayoutIdentNode)),
          tables(layout_template(new LayoutProbe("t"))),
          table(new MathTableNode(tables.get(), 2, 3))
    {
        for (wchar const *s : {u"a", u"b", u"c", u"d", u"e", u"f"})
            table->append(ident_node(idents.get(), s));
    }
    MathFixture f;
    Held<MathTemplate> idents;
    Held<MathTemplate> tables;
    Held<MathTableNode> table;
};

TEST(MathTableNode, ShapeAttributesRefuseWhatIsNoPositiveCount)
{
    struct Case
    {
        wchar const *key;
        wchar const *value;
        std::size_t rows;
        std::size_t cols;
    };
    Case const cases[] = {
        {u"Rows", u"0", 2, 3},   {u"Rows", u"-4", 2, 3}, {u"Rows", u"abc", 2, 3}, {u"Rows", nullptr, 2, 3},
        {u"Rows", u"5", 5, 3},   {u"Cols", u"7", 2, 7},  {u"Cols", u"0", 2, 3},   {u"rows", u"9", 2, 3},
        {u"Cols", u"12", 2, 12},
    };
    for (Case const &c : cases) {
        TableFixture x;
        x.table->dimension(2, 3);
        x.table->row_ascent(1, 17);
        x.table->col_width(2, 23);
        x.table->attribute(c.key, c.value);
        EXPECT_EQ(c.rows, x.table->n_rows()) << Kxt::to_string(c.key) << "=" << Kxt::to_string(text_of(c.value));
        EXPECT_EQ(c.cols, x.table->n_cols());
        // The sizes of the old shape survive a refused or unchanged attribute.
        if (c.rows == 2) {
            EXPECT_EQ(17, x.table->row_ascent(x.f.context, 1));
        }
        if (c.cols == 3) {
            EXPECT_EQ(23, x.table->col_width(x.f.context, 2));
        }
    }
}

TEST(MathTableNode, LineStringsThatShowNoLineAreNull)
{
    struct Case
    {
        wchar const *key;
        wchar const *value;
        wstring rows;
        wstring cols;
        wstring frame;
    };
    Case const cases[] = {
        {u"rowlines", u"nnn", u"<null>", u"<null>", u"<null>"},
        {u"framelines", u"", u"<null>", u"<null>", u"<null>"},
        {u"rowlines", u"nsn", u"nsn", u"<null>", u"<null>"},
        {u"columnlines", u"S", u"<null>", u"S", u"<null>"},
        {u"framelines", u"nnnS", u"<null>", u"<null>", u"nnnS"},
        {u"framelines", nullptr, u"<null>", u"<null>", u"<null>"},
    };
    for (Case const &c : cases) {
        TableFixture x;
        x.table->attribute(c.key, c.value);
        EXPECT_EQ(c.rows, text_of(x.table->row_lines()));
        EXPECT_EQ(c.cols, text_of(x.table->col_lines()));
        EXPECT_EQ(c.frame, text_of(x.table->frame_lines()));
    }
    // A string that shows lines is replaced by one that shows none.
    TableFixture x;
    x.table->attribute(u"rowlines", u"s");
    x.table->attribute(u"rowlines", u"n");
    EXPECT_EQ(nullptr, x.table->row_lines());
}

TEST(MathTableNode, AttributeListHoldsTheShapeThenTheLines)
{
    TableFixture x;
    x.table->attribute(u"Rows", u"12");
    x.table->attribute(u"framelines", u"sss");
    std::unique_ptr<MathAttribList> list(x.table->attribute_list());
    ASSERT_NE(nullptr, list);
    std::vector<std::pair<wstring, wstring>> seen;
    for (MathAttribute *a : *list)
        seen.emplace_back(a->key(), a->value());
    std::vector<std::pair<wstring, wstring>> const expected{{u"Rows", u"12"}, {u"Cols", u"3"}, {u"framelines", u"sss"}};
    EXPECT_EQ(expected, seen);
}

TEST(MathTableNode, ChildRangeShowsOneRunOfCells)
{
    TableFixture x;
    MathNode *third = x.table->child(2);
    x.table->set_child_range(2, 5);
    EXPECT_EQ(4, x.table->count());
    EXPECT_EQ(third, x.table->child(0));
    EXPECT_EQ(u"f", x.table->child(3)->cat_text().str());
    // An empty run.
    x.table->set_child_range(4, 3);
    EXPECT_EQ(0, x.table->count());
    x.table->reset_child_range();
    EXPECT_EQ(6, x.table->count());
    EXPECT_EQ(third, x.table->child(2));
}

TEST(MathTableNode, LayoutSizesAndTheirValidity)
{
    TableFixture x;
    x.table->dimension(2, 3);
    for (std::size_t r = 0; r < 2; ++r) {
        x.table->row_ascent(r, 10 + static_cast<long>(r));
        x.table->row_descent(r, 20 + static_cast<long>(r));
    }
    for (std::size_t c = 0; c < 3; ++c)
        x.table->col_width(c, 30 + static_cast<long>(c));
    EXPECT_EQ(11, x.table->row_ascent(x.f.context, 1));
    EXPECT_EQ(20, x.table->row_descent(x.f.context, 0));
    EXPECT_EQ(32, x.table->col_width(x.f.context, 2));
    // The same shape keeps the arrays; a new shape gives new ones of its size.
    x.table->dimension(2, 3);
    EXPECT_EQ(32, x.table->col_width(x.f.context, 2));
    x.table->dimension(4, 1);
    EXPECT_EQ(4u, x.table->n_rows());
    EXPECT_EQ(1u, x.table->n_cols());
    x.table->row_ascent(3, 5);
    x.table->col_width(0, 6);
    EXPECT_EQ(5, x.table->row_ascent(x.f.context, 3));
    x.table->dimension(0, 0);
    EXPECT_EQ(0u, x.table->n_rows());

    // Valid from a request until the children change or the allocation is dropped.
    EXPECT_FALSE(x.table->dimensions_valid());
    std::unique_ptr<BoxTree> box(x.table->request(x.f.context, BoxTree::unconstrained));
    EXPECT_TRUE(x.table->dimensions_valid());
    x.table->invalidate_allocation();
    EXPECT_FALSE(x.table->dimensions_valid());
    EXPECT_FALSE(x.table->is_allocated());
    box.reset(x.table->request(x.f.context, BoxTree::unconstrained));
    EXPECT_TRUE(x.table->dimensions_valid());
    x.table->append(ident_node(x.idents.get(), u"g"));
    EXPECT_FALSE(x.table->dimensions_valid());
    box.reset(x.table->request(x.f.context, BoxTree::unconstrained));
    x.table->dimension(2, 3);
    EXPECT_FALSE(x.table->dimensions_valid());
}

TEST(MathTableNode, CopiesKeepLinesAndSizes)
{
    TableFixture x;
    x.table->attribute(u"rowlines", u"s");
    x.table->dimension(2, 3);
    x.table->row_ascent(0, 4);
    x.table->row_descent(1, 5);
    x.table->col_width(2, 6);
    for (bool deep : {false, true}) {
        Held<MathTableNode> copy(static_cast<MathTableNode *>(x.table->clone(deep)));
        ASSERT_NE(nullptr, dynamic_cast<MathTableNode *>(copy.get()));
        EXPECT_EQ(2u, copy->n_rows());
        EXPECT_EQ(3u, copy->n_cols());
        EXPECT_EQ(wstring(u"s"), copy->row_lines());
        EXPECT_NE(x.table->row_lines(), copy->row_lines());
        EXPECT_EQ(4, copy->row_ascent(x.f.context, 0));
        EXPECT_EQ(5, copy->row_descent(x.f.context, 1));
        EXPECT_EQ(6, copy->col_width(x.f.context, 2));
        EXPECT_EQ(6, copy->count());
        EXPECT_EQ(deep, copy->child(0) != x.table->child(0));
        EXPECT_TRUE(copy->is_equal(x.table.get()));
    }
}

TEST(MathTableNode, EqualityIgnoresLinesButNotShape)
{
    TableFixture x;
    TableFixture y;
    // Equal content needs the same template.
    Held<MathTableNode> twin(static_cast<MathTableNode *>(x.table->clone(true)));
    twin->attribute(u"rowlines", u"s");
    EXPECT_TRUE(x.table->is_equal(twin.get()));
    twin->attribute(u"Cols", u"2");
    EXPECT_FALSE(x.table->is_equal(twin.get()));
    twin->attribute(u"Cols", u"3");
    twin->attribute(u"Rows", u"3");
    EXPECT_FALSE(x.table->is_equal(twin.get()));
    // Another template.
    EXPECT_FALSE(x.table->is_equal(y.table.get()));
    // An expression node of the same template and children is no table.
    Held<MathNode> plain(expr_node(x.tables.get(), {}));
    for (long i = 0; i < 6; ++i)
        plain->append(x.table->child(static_cast<int>(i))->clone(true));
    EXPECT_FALSE(x.table->is_equal(plain.get()));
}

char table_mark;

TEST(MathTableNode, ATemplateWithATableLayoutMakesTableNodes)
{
    Held<MathTemplate> grid(
        layout_template((new LayoutProbe("g"))->with_table(reinterpret_cast<LayoutTable *>(&table_mark))));
    Held<MathNode> node(grid->create_node());
    MathTableNode *table = dynamic_cast<MathTableNode *>(node.get());
    ASSERT_NE(nullptr, table);
    EXPECT_EQ(0u, table->n_rows());
    EXPECT_EQ(0u, table->n_cols());
    EXPECT_EQ(0, table->count());
    EXPECT_EQ(grid.get(), table->templ());

    Held<MathTemplate> plain(layout_template(new LayoutProbe("p")));
    Held<MathNode> other(plain->create_node());
    EXPECT_EQ(nullptr, dynamic_cast<MathTableNode *>(other.get()));
    EXPECT_NE(nullptr, dynamic_cast<MathExprNode *>(other.get()));
}

}  // namespace
