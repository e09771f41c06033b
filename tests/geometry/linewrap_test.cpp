// Line wrapping of box trees built by hand: the choice of breaks by cost, forced and forbidden breaks,
// joining a short tail to the line before, indents, the least line width, display style, and atoms
// that are (or are not) laid out again in pieces.
//
// Recording canvas at the text font of 240 twips: font ascent 8, descent 2, ex 5, every character 10
// wide, so the indent ("m") is 10 and the least line width 40. A row of leaves 8 up and 2 down is one
// text line high, so there is no gap between lines. Leaves directly under the root of the wrap are at
// depth 2, so a gap between two of them costs 2 * 200 = 400 before the fill cost,
// 5000 * (1 - w / W)^3 for a line of width w in a line width W.
#include "support/math_fixture.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutnumbernode.h"
#include "tavi/math/mathnode.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Tavi;
using TaviTest::Held;
using TaviTest::MathFixture;

namespace {

double const forced = -50000.0;
double const forbidden = 50000.0;

struct Atom
{
    long width;
    double left = 0.0;
    double right = 0.0;
    long ascent = 8;
    long descent = 2;
};

Atom atom(long width, double left = 0.0, double right = 0.0, long ascent = 8) { return Atom{width, left, right, ascent}; }

BoxTreeLeaf *leaf_of(Atom const &a) { return new BoxTreeLeaf(a.width, a.ascent, a.descent, a.left, a.right); }

// Wraps `tree` to the line width `width` in a fresh context.
bool wrap(BoxTree &tree, long width, bool display = false)
{
    MathInfo::Settings settings = TaviTest::math_settings();
    settings.displaystyle = display;
    MathFixture f(settings);
    return tree.doLineWrap(f.context, BoxTreeLeaf(width, 0x7fffffff, 0x7fffffff));
}

std::string expected_text(std::vector<Point> const &points)
{
    std::string s;
    for (Point const &p : points)
        s += "(" + std::to_string(p.x) + "," + std::to_string(p.y) + ")";
    return s;
}

std::string offsets_text(std::vector<BoxTree *> const &boxes)
{
    std::vector<Point> points;
    for (BoxTree const *b : boxes)
        points.push_back(b->offset());
    return expected_text(points);
}

}  // namespace

TEST(LineWrap, RowsOfLeaves)
{
    struct Case
    {
        char const *name;
        std::vector<Atom> atoms;
        long width;
        bool display;
        long rootAscent;  // set on the root before wrapping when not -1, to force a gap
        std::vector<Point> offsets;
        Box box;
    };
    Case const cases[] = {
        // Costs after 30, 60, 90: 400 + 1715, 400 + 320, 400 + 5 (5000 * 0.1^3); the last is lowest.
        // The fourth atom overflows (120): break before it. Line 2 at y 2 + 8 = 10, x indent 10.
        {"cheapest is last", {atom(30), atom(30), atom(30), atom(30)}, 100, false, -1,
         {{0, 0}, {30, 0}, {60, 0}, {10, 10}}, Box(90, 8, 12)},
        // A right badness of -1000 makes the gap after B cost -1000 + 400 + 320 = -280, below
        // 400 + 5 = 405 after C. Line 2: C at 10, D at 40, width 10 + 30 + 30 = 70.
        {"cheapest is earlier", {atom(30), atom(30, 0, -1000), atom(30), atom(30)}, 100, false, -1,
         {{0, 0}, {30, 0}, {10, 10}, {40, 10}}, Box(70, 8, 12)},
        // After A (50 of 100): 400 + 5000 * 0.5^3 = 1025. After B (100): 400 + 625 + 0 = 1025. Equal:
        // the later gap wins, C alone on line 2.
        {"tie goes to the later gap", {atom(50), atom(50, 0, 625), atom(10)}, 100, false, -1,
         {{0, 0}, {50, 0}, {10, 10}}, Box(100, 8, 12)},
        // With 626 the later gap costs 1026 > 1025: break after A; B, C at 10 and 60.
        {"one more and the earlier wins", {atom(50), atom(50, 0, 626), atom(10)}, 100, false, -1,
         {{0, 0}, {10, 10}, {60, 10}}, Box(70, 8, 12)},
        // A break forced before C wins over B's forbidding one, though everything fits.
        {"forced wins over forbidden", {atom(10), atom(10, 0, forbidden), atom(10, forced)}, 100, false, -1,
         {{0, 0}, {10, 0}, {10, 10}}, Box(20, 8, 12)},
        // A prefix operator (right badness 50000) after A: the only candidate is before it (after A,
        // 400 + 625 = 1025), so at B (40 + 50 > 80) the operator goes down with B: 10 and 20.
        {"prefix operator kept with its operand", {atom(40), atom(10, 0, forbidden), atom(40)}, 80, false, -1,
         {{0, 0}, {10, 10}, {20, 10}}, Box(60, 8, 12)},
        // No candidate before A (120 > 100): it stays on line 1 and overflows; the gap after it costs
        // the cap 49999 (fill 49999 + 400), which still is a candidate.
        {"an atom wider than the line", {atom(120), atom(10)}, 100, false, -1, {{0, 0}, {10, 10}}, Box(120, 8, 12)},
        // Break forced after A (ends at 30). B's line would be 10 + 50 = 60 wide; 60 + 30 <= 100 and
        // not taller, so B goes behind A at x 30 on y 0. C overflows the line, and starts line 2 at
        // y 2 + 8 = 10. Widest 60 + 30 = 90.
        {"short tail joins the line before", {atom(30, 0, forced), atom(50), atom(60)}, 100, false, -1,
         {{0, 0}, {30, 0}, {10, 10}}, Box(90, 8, 12)},
        // The same with a root 20 + 2 high: gap 8 + 2 = 10, which the joining adds to the height as
        // well: 2 + 0 + 10 = 12; C at 12 + 8 + 10 = 30, descent 12 + 2 + 8 + 10 = 32.
        {"joining counts the gap", {atom(30, 0, forced), atom(50), atom(60)}, 100, false, 20,
         {{0, 0}, {30, 0}, {10, 30}}, Box(90, 8, 32)},
        // Widths below 4 "m" are 40: 20 + 21 does not fit in 0.
        {"41 in 40", {atom(20), atom(21)}, 0, false, -1, {{0, 0}, {10, 10}}, Box(31, 8, 12)},
        // Display style keeps 2 ex = 10 off the width: 100 does not fit in 105 - 10.
        {"display style 105", {atom(50), atom(50)}, 105, true, -1, {{0, 0}, {10, 10}}, Box(60, 8, 12)},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        BoxTreeNode root;
        std::vector<BoxTree *> leaves;
        for (Atom const &a : c.atoms) {
            leaves.push_back(leaf_of(a));
            root.append(leaves.back());
        }
        if (c.rootAscent != -1)
            root.ascent(c.rootAscent);
        EXPECT_TRUE(wrap(root, c.width, c.display));
        EXPECT_EQ(expected_text(c.offsets), offsets_text(leaves));
        EXPECT_EQ(c.box, root.box());
    }
}

// A gap inside a nested row is dearer by 200 per level of the shallower atom. D has a left badness
// of 150.
TEST(LineWrap, DeeperGapsCostMore)
{
    enum Shape { flat, nested };
    struct Case
    {
        Shape shape;
        std::vector<Point> offsets;  // A, B, C, D
        Box box;
    };
    Case const cases[] = {
        // Flat: after B (75): 400 + 5000 * 0.25^3 = 478.125; after C (100): 400 + 150 = 550. Break
        // after B; C, D at 10, 35; widest 75.
        {flat, {{0, 0}, {50, 0}, {10, 10}, {35, 10}}, Box(75, 8, 12)},
        // Nested (B, C at depth 3): between them 600 + 78.125 = 678.125 > 550: break after C.
        {nested, {{0, 0}, {50, 0}, {75, 0}, {10, 10}}, Box(100, 8, 12)},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(static_cast<int>(c.shape));
        BoxTreeNode root;
        BoxTree *a = leaf_of(atom(50));
        BoxTree *b = leaf_of(atom(25));
        BoxTree *cc = leaf_of(atom(25));
        BoxTree *d = leaf_of(atom(10, 150));
        root.append(a);
        BoxTreeNode *inner = nullptr;
        if (c.shape == flat) {
            root.append(b);
            root.append(cc);
        } else {
            inner = new BoxTreeNode;
            inner->append(b);
            inner->append(cc);
            root.append(inner);
        }
        root.append(d);
        ASSERT_TRUE(wrap(root, 100));
        EXPECT_EQ(expected_text(c.offsets), offsets_text({a, b, cc, d}));
        EXPECT_EQ(c.box, root.box());
        if (c.shape == nested) {
            EXPECT_EQ(3, b->level());
            EXPECT_EQ(0, inner->xOffset());  // a node between the root and its atoms stands at x 0
        }
    }
}

TEST(LineWrap, AtomsAreNotWrappedAndEmptyTreesFail)
{
    BoxTreeAtomicNode atomic;
    atomic.append(new BoxTreeLeaf(500, 8, 2));
    EXPECT_FALSE(wrap(atomic, 100));
    EXPECT_EQ(500, atomic.width());

    BoxTreeNode hollow;
    hollow.append(new BoxTreeNode);
    BoxTreeNode unset(2);
    for (BoxTreeNode *tree : {&hollow, &unset}) {
        try {
            wrap(*tree, 100);
            ADD_FAILURE() << "no exception";
        } catch (std::out_of_range const &e) {
            EXPECT_STREQ("invalid vector<T> subscript", e.what());
        }
    }
}

namespace {

// Number nodes on a template around the number layout; their leaves store the context they were
// measured in, which makes them wrapable. Text style, so the line width is the constraint's.
struct NumberFixture
{
    NumberFixture() : f(text_style()), templ(TaviTest::layout_template(new LayoutNumberNode)) {}
    static MathInfo::Settings text_style()
    {
        MathInfo::Settings s = TaviTest::math_settings();
        s.displaystyle = false;
        return s;
    }
    MathFixture f;
    Held<MathTemplate> templ;
};

}  // namespace

// A leaf that claims to be wrapable, but whose node ("7", one character) cannot be broken: its
// request with two lines of room answers a leaf. The leaf loses its context and is placed whole:
// A on line 1; the 500 wide leaf overflows line 2 at (10, 10); the gap after it costs the cap, and C
// starts line 3 at (10, 20).
TEST(LineWrap, ALeafThatWillNotSplitIsKeptWhole)
{
    NumberFixture n;
    Held<MathNode> seven(TaviTest::number_node(n.templ.get(), u"7"));
    MathNodeContext stored(n.f.context);
    stored.math_node(seven.get());

    BoxTreeNode root;
    BoxTreeLeaf *a = leaf_of(atom(30));
    BoxTreeLeaf *claims = new BoxTreeLeaf(500, 8, 2);
    claims->setMathNodeContext(&stored);
    BoxTreeLeaf *c = leaf_of(atom(30));
    root.append(a);
    root.append(claims);
    root.append(c);
    ASSERT_TRUE(root.doLineWrap(n.f.context, BoxTreeLeaf(100, 0x7fffffff, 0x7fffffff)));
    EXPECT_FALSE(claims->isWrapable());
    EXPECT_EQ(claims, root.child(1));
    EXPECT_EQ("(0,0)(10,10)(10,20)", offsets_text({a, claims, c}));
    EXPECT_EQ(Box(510, 8, 22), root.box());
}

// A number of 25 digits (250 wide, ink 7 up and 1 down) in a line width of 100 is asked for lines:
// the room left on the present line, then 100 - 10 on each new line. A line of k digits that is not
// the last measures 10k plus 10 for the "\" that ends it, and a line ends when the next digit would
// make it reach the room; each piece is at least the text line (8, 2) high.
TEST(LineWrap, ALongNumberIsReplacedByItsPieces)
{
    struct Piece
    {
        long start;
        long end;
        long width;
        Point offset;
    };
    struct Case
    {
        char const *name;
        bool leading;  // A (30) before the number
        std::vector<Piece> pieces;
        std::vector<Point> others;  // A if leading, then C
        Box box;
    };
    Case const cases[] = {
        // After A the room is 70: 6 digits would need 70, so 5 (60) end line 1 at x 30. Middle lines
        // of 7 digits (80) at y 10 and 20, indented. The last 6 digits (60, no mark) start line 4 at
        // y 30; C (30) joins them: 10 + 60 + 30 = 100. Widest 30 + 60 = 90, then 100.
        {"after an atom", true,
         {{0, 5, 60, {30, 0}}, {5, 12, 80, {10, 10}}, {12, 19, 80, {10, 20}}, {19, 25, 60, {10, 30}}},
         {{0, 0}, {70, 30}},
         Box(100, 8, 32)},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        NumberFixture n;
        Held<MathNode> number(TaviTest::number_node(n.templ.get(), u"1234567890123456789012345"));
        BoxTree *digits = number->request(n.f.context, BoxTree::unconstrained);
        BoxTreeLeaf const *digitsLeaf = dynamic_cast<BoxTreeLeaf const *>(digits);
        ASSERT_NE(nullptr, digitsLeaf);
        ASSERT_TRUE(digitsLeaf->isWrapable());
        ASSERT_EQ(Box(250, 7, 1), digits->box());

        BoxTreeNode root;
        std::vector<BoxTree *> others;
        if (c.leading) {
            others.push_back(leaf_of(atom(30)));
            root.append(others.back());
        }
        long const at = root.count();
        root.append(digits);
        others.push_back(leaf_of(atom(30)));
        root.append(others.back());

        ASSERT_TRUE(root.doLineWrap(n.f.context, BoxTreeLeaf(100, 0x7fffffff, 0x7fffffff)));
        BoxTreeNode const *pieces = dynamic_cast<BoxTreeNode const *>(root.child(at));
        ASSERT_NE(nullptr, pieces);
        EXPECT_EQ(0, pieces->xOffset());
        ASSERT_EQ(static_cast<long>(c.pieces.size()), pieces->count());
        for (std::size_t k = 0; k < c.pieces.size(); ++k) {
            SCOPED_TRACE(k);
            BoxTreeLeaf const *piece = dynamic_cast<BoxTreeLeaf const *>(pieces->child(static_cast<long>(k)));
            ASSERT_NE(nullptr, piece);
            EXPECT_EQ(c.pieces[k].start, piece->startIdx());
            EXPECT_EQ(c.pieces[k].end, piece->endIdx());
            EXPECT_EQ(Box(c.pieces[k].width, 8, 2), piece->box());
            EXPECT_EQ(c.pieces[k].offset, piece->offset());
            EXPECT_FALSE(piece->isWrapable());
        }
        EXPECT_EQ(expected_text(c.others), offsets_text(others));
        EXPECT_EQ(c.box, root.box());
    }
}
