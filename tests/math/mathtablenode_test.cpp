// Tests of the table node: its attributes and their refusals, the sizes of the last layout and when
// they count as valid, and equality.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "math/layout/layout_probe.h"
#include "support/math_fixture.h"
#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/mathattribute.h"
#include "tavi/math/mathattriblist.h"
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
        {u"Rows", u"0", 2, 3}, {u"Rows", u"abc", 2, 3}, {u"rows", u"9", 2, 3}, {u"Rows", u"5", 5, 3}, {u"Cols", u"12", 2, 12},
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

TEST(MathTableNode, LineStringsThatShowNoLineAreNullAndTheAttributeList)
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
        {u"rowlines", u"nsn", u"nsn", u"<null>", u"<null>"},
        {u"columnlines", u"S", u"<null>", u"S", u"<null>"},
        {u"framelines", u"nnnS", u"<null>", u"<null>", u"nnnS"},
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

    // The attribute list holds the shape, then the lines that show.
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

    // Valid from a request until the children change or the allocation is dropped.
    EXPECT_FALSE(x.table->dimensions_valid());
    std::unique_ptr<BoxTree> box(x.table->request(x.f.context, BoxTree::unconstrained));
    EXPECT_TRUE(x.table->dimensions_valid());
    x.table->invalidate_allocation();
    EXPECT_FALSE(x.table->dimensions_valid());
    box.reset(x.table->request(x.f.context, BoxTree::unconstrained));
    EXPECT_TRUE(x.table->dimensions_valid());
    x.table->append(ident_node(x.idents.get(), u"g"));
    EXPECT_FALSE(x.table->dimensions_valid());
    box.reset(x.table->request(x.f.context, BoxTree::unconstrained));
    x.table->dimension(2, 3);
    EXPECT_FALSE(x.table->dimensions_valid());
}

}  // namespace
