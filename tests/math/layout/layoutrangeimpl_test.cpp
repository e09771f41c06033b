// LayoutRangeImpl: bounds that count from the end of the current node's children, resolved against
// each node anew, and the empty range of a node without children.
#include "support/recording_canvas.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/math/layout/layoutrangeimpl.h"
#include "tavi/math/mathexprnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/templates/mathtemplate.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Tavi;

namespace {

struct Fixture
{
    Fixture()
        : templ(new MathTemplate(nullptr, u"list", true, u"List", TemplateAccelerator(), 0, true, 0, false, false,
                                 false, 0, 0, 1.0))
    {
        templ->ref();
    }
    ~Fixture()
    {
        for (MathNode *n : nodes)
            n->unref();
        templ->unref();
    }
    // A node with n children, made the context's node.
    void use_node_of(long n)
    {
        auto *node = new MathExprNode(templ);
        node->ref();
        for (long i = 0; i < n; ++i)
            node->append(new MathExprNode(templ));
        nodes.push_back(node);
        context.math_node(node);
    }

    TaviTest::RecordingCanvas canvas;
    GlyphContext glyph_context{nullptr, nullptr, &canvas, nullptr};
    MathNodeContext context{glyph_context, nullptr};
    MathTemplate *templ;
    std::vector<MathNode *> nodes;
};

}  // namespace

TEST(LayoutRangeImpl, NegativeBoundsCountFromTheEndOfTheNodesChildren)
{
    struct Case
    {
        long first, last;
        long children;
        bool has_range;
        long resolved_first, resolved_last;
        std::vector<long> shown;  // the indices -1 .. children for which has_child_node holds
    } const cases[] = {
        {0, -1, 3, true, 0, 2, {0, 1, 2}},    // all children: -1 + 3 = 2
        {0, -1, 1, true, 0, 0, {0}},
        // No children: 0 .. -1 + 0 = -1, an empty range.
        {0, -1, 0, false, 0, -1, {}},
        {1, -1, 3, true, 1, 2, {1, 2}},
        {-2, -1, 4, true, 2, 3, {2, 3}},      // -2 + 4 = 2
        {1, -2, 3, true, 1, 1, {1}},          // -2 + 3 = 1
        {2, -2, 3, false, 2, 1, {}},
        {0, 5, 2, true, 0, 5, {0, 1, 2}},     // non-negative bounds stand as written
        {-3, -1, 2, true, -1, 1, {-1, 0, 1}}, // -3 + 2 = -1
    };
    for (Case const &c : cases) {
        Fixture f;
        f.use_node_of(c.children);
        LayoutRangeImpl const range(c.first, c.last);
        EXPECT_EQ(range.first(), c.first);
        EXPECT_EQ(range.last(), c.last);

        long first = 99, last = 99;
        EXPECT_EQ(range.child_range_impl(f.context, first, last), c.has_range) << c.first << "," << c.last;
        // Both ends are stored even when the range is empty.
        EXPECT_EQ(first, c.resolved_first);
        EXPECT_EQ(last, c.resolved_last);

        long index = 99;
        EXPECT_EQ(range.get_child_node_impl(f.context, index), c.has_range);
        EXPECT_EQ(index, c.has_range ? c.resolved_first : 99);

        std::vector<long> shown;
        for (long i = -1; i <= c.children; ++i)
            if (range.has_child_node_impl(f.context, i))
                shown.push_back(i);
        EXPECT_EQ(shown, c.shown) << c.first << "," << c.last << " on " << c.children;
    }
}

TEST(LayoutRangeImpl, OneRangeServesNodesOfAnySize)
{
    Fixture f;
    LayoutRangeImpl const all(0, -1);
    long first = 0, last = 0;
    f.use_node_of(2);
    EXPECT_TRUE(all.child_range_impl(f.context, first, last));
    EXPECT_EQ(last, 1);
    f.use_node_of(5);
    EXPECT_TRUE(all.child_range_impl(f.context, first, last));
    EXPECT_EQ(last, 4);
    // Without a node there are no children to count.
    f.context.math_node(nullptr);
    EXPECT_FALSE(all.child_range_impl(f.context, first, last));
    EXPECT_EQ(last, -1);
}
