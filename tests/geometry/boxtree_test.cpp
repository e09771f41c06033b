// Box trees: ownership, leaf cloning, atom collection and the three ways a node
// recomputes its size, worked out by hand with the recording canvas.
//
// Recording canvas at the default text font (Times New Roman, 240 twips): font ascent 8, descent 2,
// every character 10 wide, so the indent ("m") is 10. At script level 1 the font is 240 * 71 / 100 = 170
// twips: ascent 8 * 170 / 240 = 5, descent 2 * 170 / 240 = 1.
#include "support/math_fixture.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace Tavi;

namespace {

// A node that lets the test reach the atom collection and its caches.
class ProbeNode : public BoxTreeNode
{
public:
    using BoxTreeNode::BoxTreeNode;
    using BoxTree::getBoxTreeLeaves;
    std::vector<BoxTree *> const &parents() { return atomParents(); }
    std::vector<long> const &indices() { return atomIndices(); }
    bool atom() const { return isAtomForWrapping(); }
};

using Fixture = TaviTest::MathFixture;

}  // namespace

TEST(BoxTree, AppendPlacesOnTheBaselinePrependPlacesNothing)
{
    BoxTreeNode node;
    node.append(new BoxTreeLeaf(10, 8, 2));
    node.append(new BoxTreeLeaf(5, 3, 4));
    // widths: -1 turns to 0, then 0 + 10 + 5; offsets at the width so far.
    EXPECT_EQ(node.box(), Box(15, 8, 4));
    EXPECT_EQ(node.child(1)->offset(), Point(10, 0));

    BoxTreeNode front;
    front.prepend(new BoxTreeLeaf(10, 8, 2));
    EXPECT_EQ(front.box(), Box(0, -1, -1));
    EXPECT_EQ(front.child(0)->offset(), Point(-1, -1));
    front.append(new BoxTreeLeaf(4, 1, 1));  // at width 0, so it overlaps the prepended child
    EXPECT_EQ(front.child(1)->offset(), Point(0, 0));
    EXPECT_EQ(front.width(), 4);
}

TEST(BoxTree, SetChildAddsWithoutSubtractingTheOldWidth)
{
    BoxTreeNode node(3);
    node.setChild(1, new BoxTreeLeaf(10, 5, 2));
    // width -1 -> 0, + 10; ascent max(-1, 5); descent max(-1, 2)
    EXPECT_EQ(node.box(), Box(10, 5, 2));
    node.setChild(1, new BoxTreeLeaf(4, 3, 1));  // the old child is deleted, its width stays in
    EXPECT_EQ(node.box(), Box(14, 5, 2));
    node.setChild(0, Point(7, -3), new BoxTreeLeaf(6, 9, 1));
    EXPECT_EQ(node.box(), Box(20, 9, 2));
    EXPECT_EQ(node.child(0)->offset(), Point(7, -3));
    // An unmeasured child adds nothing.
    node.setChild(2, new BoxTreeLeaf());
    EXPECT_EQ(node.box(), Box(20, 9, 2));
}

TEST(BoxTree, LeafCloneKeepsSizeAndContextButNotPlace)
{
    Fixture f;
    f.context.add_scriptlevel(2);
    BoxTreeLeaf leaf(10, 5, 2, 3.0, 4.0);
    leaf.setOffset(Point(7, 8));
    leaf.setEndIdx(5);
    leaf.setMathNodeContext(&f.context);
    ASSERT_NE(leaf.mathNodeContext(), nullptr);
    EXPECT_NE(leaf.mathNodeContext(), &f.context);  // a copy, never the caller's pointer
    EXPECT_EQ(leaf.mathNodeContext()->scriptlevel(), 2);

    std::unique_ptr<BoxTreeLeaf> copy(static_cast<BoxTreeLeaf *>(leaf.clone()));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->rightBadness(), 4.0);
    EXPECT_EQ(copy->offset(), Point(-1, -1));
    EXPECT_EQ(copy->endIdx(), -1);
    ASSERT_TRUE(copy->isWrapable());
    EXPECT_NE(copy->mathNodeContext(), leaf.mathNodeContext());
    EXPECT_EQ(copy->mathNodeContext()->scriptlevel(), 2);

    leaf.setMathNodeContext(nullptr);
    EXPECT_FALSE(leaf.isWrapable());
    EXPECT_TRUE(copy->isWrapable());  // its own copy survives
    EXPECT_EQ(BoxTreeNode(1).clone(), nullptr);  // only leaves clone
}

// root: [A, N: [B, M (atomic): [C, D]], E]
// Atoms in reading order: A (depth 2), B (3), M (3), E (2); C and D are inside an atom and not visited.
TEST(BoxTree, LeavesStopAtAtomsAndRecordTheirPlace)
{
    ProbeNode root;
    BoxTreeLeaf *a = new BoxTreeLeaf(10, 5, 2);
    BoxTreeNode *n = new BoxTreeNode;
    BoxTreeLeaf *b = new BoxTreeLeaf(20, 5, 2);
    BoxTreeAtomicNode *m = new BoxTreeAtomicNode;
    BoxTreeLeaf *c = new BoxTreeLeaf(3, 1, 1);
    BoxTreeLeaf *d = new BoxTreeLeaf(4, 1, 1);
    BoxTreeLeaf *e = new BoxTreeLeaf(5, 5, 2);
    m->append(c);
    m->append(d);
    n->append(b);
    n->append(m);
    root.append(a);
    root.append(n);
    root.append(e);
    EXPECT_EQ(n->xOffset(), 10);

    std::vector<BoxTree *> const &leaves = root.getBoxTreeLeaves();
    EXPECT_EQ(leaves, (std::vector<BoxTree *>{a, b, m, e}));
    EXPECT_EQ(root.parents(), (std::vector<BoxTree *>{&root, n, n, &root}));
    EXPECT_EQ(root.indices(), (std::vector<long>{0, 0, 1, 2}));
    EXPECT_EQ((std::vector<long>{a->level(), b->level(), m->level(), e->level(), c->level(), d->level()}),
              (std::vector<long>{2, 3, 3, 2, 0, 0}));
    // Non-atoms on the way get x offset 0; atoms and the insides of atoms keep theirs.
    EXPECT_EQ(root.xOffset(), 0);
    EXPECT_EQ(n->xOffset(), 0);
    EXPECT_EQ(m->xOffset(), 20);
    EXPECT_EQ(d->xOffset(), 3);

    // The cache stands until a structural change empties it.
    a->level(99);
    root.getBoxTreeLeaves();
    EXPECT_EQ(a->level(), 99);
    root.append(new BoxTreeLeaf(1, 1, 1));
    EXPECT_EQ(root.getBoxTreeLeaves().size(), 5u);
    EXPECT_EQ(a->level(), 2);
}

// Children (10, 5, 1), (20, 12, 3), (7, 4, 6) on one baseline with a font of ascent 8, descent 2:
// offsets x 0, 10, 30; width 37; ascent max(8, 5, 12, 4) = 12; descent max(2, 1, 3, 6) = 6.
TEST(BoxTree, LinearLayout)
{
    Fixture f;
    BoxTreeNode node;
    node.append(new BoxTreeLeaf(10, 5, 1));
    node.append(new BoxTreeLeaf(20, 12, 3));
    node.append(new BoxTreeLeaf(7, 4, 6));
    ASSERT_TRUE(node.updateLinearChildrenLayout(f.context));
    EXPECT_EQ(node.box(), Box(37, 12, 6));
    EXPECT_EQ((std::vector<Point>{node.child(0)->offset(), node.child(1)->offset(), node.child(2)->offset()}),
              (std::vector<Point>{Point(0, 0), Point(10, 0), Point(30, 0)}));

    // An empty row is one font line high: at level 1, ascent 5 and descent 1.
    BoxTreeNode empty;
    f.context.add_scriptlevel(1);
    ASSERT_TRUE(empty.updateLinearChildrenLayout(f.context));
    EXPECT_EQ(empty.box(), Box(0, 5, 1));
}

namespace {

struct WrapCase
{
    char const *name;
    std::vector<Box> children;
    Box expected;
    std::vector<Point> offsets;
};

// Font ascent 8, descent 2 (line height 10); indent 10.
WrapCase const wrap_cases[] = {
    // Linear height 12 + 6 = 18 > 10, so gap 10. y: 0, 0 + 1 + 5 + 10 = 16, 16 + 3 + 12 + 10 = 41,
    // end 41 + 6 + 4 + 10 = 61. Widths 10, 10 + 20, 10 + 7: 30. Ascent 5 (first line);
    // descent 61 - 10 - 5 = 46.
    {"tall lines", {Box(10, 5, 1), Box(20, 12, 3), Box(7, 4, 6)}, Box(30, 5, 46),
     {Point(0, 0), Point(10, 16), Point(10, 41)}},
    // Plain text height: 8 + 2 = 10 is not above 10, gap 0, lines touch. y: 0, 10; end 20.
    // Widths 10, 10 + 20 = 30. Descent 20 - 0 - 8 = 12.
    {"text lines", {Box(10, 8, 2), Box(20, 8, 2)}, Box(30, 8, 12), {Point(0, 0), Point(10, 10)}},
    // A negative first ascent counts as 0. Linear ascent max(8, -3) = 8, descent 5: 13 > 10, gap 10.
    // end 0 + 5 - 3 + 10 = 12; descent 12 - 10 - 0 = 2.
    {"negative ascent", {Box(10, -3, 5)}, Box(10, 0, 2), {Point(0, 0)}},
};

}  // namespace

TEST(BoxTree, LineWrappedLayout)
{
    for (WrapCase const &c : wrap_cases) {
        Fixture f;
        BoxTreeNode node;
        for (Box const &b : c.children)
            node.append(new BoxTreeLeaf(b));
        ASSERT_TRUE(node.updateLineWrappedChildrenLayout(f.context)) << c.name;
        EXPECT_EQ(node.box(), c.expected) << c.name;
        for (std::size_t i = 0; i < c.offsets.size(); ++i)
            EXPECT_EQ(node.child(static_cast<long>(i))->offset(), c.offsets[i]) << c.name << " child " << i;
        // The indent is measured once, as the width of "m" in the text font.
        EXPECT_EQ(f.canvas.measure_count("text_box"), 1u) << c.name;
        EXPECT_EQ(f.canvas.measures().back(), "text_box(\"m\")") << c.name;
    }
}

// Children placed as the wrapped lines above: (10, 5, 1) at (0, 0), (20, 12, 3) at (10, 16),
// (7, 4, 6) at (10, 41). The y offset is added to ascent and taken from descent:
// ascent max(0, 5 + 0, 12 + 16, 4 + 41) = 45; descent max(0, 1 - 0, 3 - 16, 6 - 41) = 1;
// width max(0, 0 + 10, 10 + 20, 10 + 7) = 30. No font is involved.
TEST(BoxTree, BoundingBoxFromPlacedChildren)
{
    Fixture f;
    BoxTreeNode node(3);
    node.setChild(0, Point(0, 0), new BoxTreeLeaf(10, 5, 1));
    node.setChild(1, Point(10, 16), new BoxTreeLeaf(20, 12, 3));
    node.setChild(2, Point(10, 41), new BoxTreeLeaf(7, 4, 6));
    ASSERT_TRUE(node.updateBoundingBox(f.context));
    EXPECT_EQ(node.box(), Box(30, 45, 1));
    EXPECT_EQ(f.canvas.measure_count(), 0u);

    // Children above the baseline (negative y) lower the ascent and raise the descent.
    BoxTreeNode up(1);
    up.setChild(0, Point(-5, -4), new BoxTreeLeaf(10, 6, 2));
    ASSERT_TRUE(up.updateBoundingBox(f.context));
    // ascent max(0, 6 - 4) = 2; descent max(0, 2 + 4) = 6; width max(0, -5 + 10) = 5.
    EXPECT_EQ(up.box(), Box(5, 2, 6));
}
