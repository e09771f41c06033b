// Tests of the formula root: the cache of one measured tree per width and its invalidation, the room
// for the caret and the text line the root adds, replacing the top node, the read-only rules
// and the path to the insertion point's operand.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "math/layout/layout_probe.h"
#include "support/math_fixture.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/glyph/hint.h"
#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstyle.h"

namespace {

using namespace Tavi;
using namespace TaviTest;
using LayoutTest::Journal;
using LayoutTest::LayoutProbe;

// A glyph above the root that belongs to a scene and has a read-only answer of its own.
class Holder : public Glyph
{
public:
    GlyphScene *scene() override { return scene_; }
    bool read_only() const override { return locked; }
    GlyphScene *scene_ = nullptr;
    bool locked = false;
};

// A formula of one node whose layout is a probe with a fixed box.
struct ProbeFormula
{
    explicit ProbeFormula(long width, long ascent, long descent)
        : probe((new LayoutProbe("p", &journal))->box(width, ascent, descent)),
          templ(layout_template(probe)),
          root(new MathRootNode(expr_node(templ.get(), {})))
    {
    }
    Journal journal;
    LayoutProbe *probe;
    Held<MathTemplate> templ;
    Held<MathRootNode> root;
};

std::size_t count_of(Journal const &journal, std::string const &prefix)
{
    std::size_t n = 0;
    for (std::string const &s : journal)
        n += s.compare(0, prefix.size(), prefix) == 0 ? 1 : 0;
    return n;
}

TEST(MathRootNode, OneTreePerWidthWithRoomForTheCaretAndATextLine)
{
    RecordingCanvas canvas;
    StyledScene scene;
    // The box is at least the text line (8, 2) high; the width is the formula's own.
    ProbeFormula deep(5, 1, 6);
    GlyphContext deep_context(&scene, nullptr, &canvas, deep.root.get());
    EXPECT_EQ(Box(5, 8, 6), deep.root->request(deep_context, BoxTreeLeaf(500, 0, 0))->box());

    ProbeFormula x(30, 3, 1);
    GlyphContext context(&scene, nullptr, &canvas, x.root.get());
    // No width before any width measures nothing.
    EXPECT_EQ(nullptr, x.root->request(context, BoxTreeLeaf(-1, 0, 0)));
    EXPECT_FALSE(x.root->cacheValid());
    EXPECT_TRUE(x.journal.empty());
    EXPECT_FALSE(x.root->is_allocated());

    BoxTreeLeaf const at500(500, 100, 50);
    BoxTree *first = x.root->request(context, at500);
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(Box(30, 8, 2), first->box());
    EXPECT_TRUE(x.root->cacheValid());
    // The formula is set in 500 less the width of "m".
    EXPECT_EQ((Journal{"request:p/490"}), x.journal);
    // The same width: the same tree, nothing measured; no width of its own: the last one holds.
    EXPECT_EQ(first, x.root->request(context, at500));
    EXPECT_EQ(first, x.root->request(context, BoxTreeLeaf(-1, 0, 0)));
    EXPECT_EQ(1u, count_of(x.journal, "request:"));

    // Another width measures again.
    ASSERT_NE(nullptr, x.root->request(context, BoxTreeLeaf(300, 0, 0)));
    EXPECT_EQ((Journal{"request:p/490", "request:p/290"}), x.journal);
}

// The scene's drawing measures once; a repaint at the same width measures nothing, and an edit makes
// the next repaint measure again. The probe formula's layout measures nothing itself, so a layout pass
// makes four measures: the root's text line ascent and descent and its box of "m", and the template's
// box of "m" for its choice of layout. Line wrapping, which measures on its own, is switched off here.
TEST(MathRootNode, TheSceneRepaintsFromTheCacheUntilAnEdit)
{
    RecordingCanvas canvas;
    StyledScene scene;
    ASSERT_TRUE(scene.style.set_boolean(MathStyle::a_wrap_lines, false));
    ProbeFormula x(30, 3, 1);
    scene.root = x.root.get();

    scene.draw(nullptr, &canvas, false);
    EXPECT_EQ(4u, canvas.measure_count());
    EXPECT_EQ(2u, canvas.measure_count("text_box"));
    // The top of the formula at 0: the baseline at the text line's ascent, 8.
    EXPECT_EQ("draw:p@0,8", x.journal.back());

    canvas.clear();
    scene.draw(nullptr, &canvas, false);
    EXPECT_EQ(0u, canvas.measure_count());
    EXPECT_EQ(1u, count_of(x.journal, "request:"));
    EXPECT_EQ(2u, count_of(x.journal, "draw:"));

    scene.changed(EditChange::object());
    EXPECT_FALSE(x.root->cacheValid());
    canvas.clear();
    scene.draw(nullptr, &canvas, false);
    EXPECT_EQ(4u, canvas.measure_count());
    EXPECT_EQ(2u, count_of(x.journal, "request:"));

    // A selection move damages only the highlight.
    scene.changed(SelectionChange::object());
    EXPECT_TRUE(x.root->cacheValid());
}

TEST(MathRootNode, ReadOnlyRules)
{
    struct Case
    {
        bool scene_locked;
        bool own_set;
        bool own;
        bool parent_locked;
        bool expected;
    };
    Case const cases[] = {
        // A read-only scene wins over the root's own false.
        {true, true, false, false, true},
        // The root's own setting, either way, over the parent's.
        {false, true, true, false, true},
        {false, true, false, true, false},
        // Inherited: the parent's answer.
        {false, false, false, true, true},
    };
    for (Case const &c : cases) {
        StyledScene scene;
        scene.locked = c.scene_locked;
        Holder holder;
        holder.scene_ = &scene;
        holder.locked = c.parent_locked;
        ProbeFormula x(1, 1, 1);
        x.root->parent(&holder);
        if (c.own_set)
            x.root->read_only(c.own);
        EXPECT_EQ(c.expected, x.root->read_only())
            << c.scene_locked << c.own_set << c.own << c.parent_locked;
        EXPECT_EQ(!c.own_set, x.root->inherit_read_only());
        // The nodes below ask the root.
        EXPECT_EQ(c.expected, x.root->child()->read_only());
        x.root->parent(nullptr);
    }
}

TEST(MathRootNode, PathToTheInsertionOperand)
{
    Held<MathTemplate> idents(layout_template(new LayoutIdentNode));
    Held<MathTemplate> exprs(layout_template(new LayoutProbe("e")));
    MathNode *b = ident_node(idents.get(), u"b");
    MathNode *inner = expr_node(exprs.get(), {b, ident_node(idents.get(), u"c")});
    Held<MathRootNode> root(new MathRootNode(expr_node(exprs.get(), {ident_node(idents.get(), u"a"), inner})));

    struct Case
    {
        std::vector<long> path;
        MathNode *flagged;
        std::vector<long> read_back;
    };
    Case const cases[] = {
        {{0, 1, 0}, b, {0, 1, 0}},
        {{0, 1}, inner, {0, 1}},
        // A step out of the tree stops at the node reached.
        {{0, 1, 7}, inner, {0, 1}},
        {{0, 2, 0}, root->child(), {0}},
    };
    for (Case const &c : cases) {
        root->set_ip_operand(c.path);
        EXPECT_TRUE(c.flagged->ip_operand());
        EXPECT_TRUE(root->has_ip_operand());
        std::vector<long> path{99};
        EXPECT_TRUE(root->get_ip_operand_path(path));
        EXPECT_EQ(c.read_back, path);
    }
    // An empty path clears every flag.
    root->set_ip_operand({0, 1, 0});
    root->set_ip_operand({});
    EXPECT_FALSE(b->ip_operand());
    EXPECT_FALSE(root->has_ip_operand());
    std::vector<long> path{4, 5};
    EXPECT_FALSE(root->get_ip_operand_path(path));
    EXPECT_TRUE(path.empty());
}

}  // namespace
