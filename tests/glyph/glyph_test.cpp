// Glyph: the reference count and parent of a new or copied glyph, the answers of the base
// protocol, and the way a glyph finds its scene through its parents.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <vector>

#include "probe.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/glyph/monoglyph.h"
#include "tavi/glyph/row.h"

namespace {

using namespace Tavi;
using GlyphTest::Journal;
using GlyphTest::Probe;

TEST(Glyph, CountAndParentOfNewAndCopiedGlyphs)
{
    int deaths = 0;
    auto *g = new Probe("g", nullptr, &deaths);
    EXPECT_EQ(g->ref_count(), 0);
    EXPECT_EQ(g->parent(), nullptr);

    Row row;
    row.append(g);
    ASSERT_EQ(g->ref_count(), 1);
    Probe copy(*g);  // a new object: no holders, in no container
    EXPECT_EQ(copy.ref_count(), 0);
    EXPECT_EQ(copy.parent(), nullptr);

    copy.parent(&row);
    copy = *g;  // assignment keeps the target's count and parent
    EXPECT_EQ(copy.parent(), &row);
    EXPECT_EQ(copy.ref_count(), 0);

    // The parent setter owns nothing and tells nobody.
    g->parent(nullptr);
    EXPECT_EQ(row.count(), 1);
    EXPECT_EQ(g->ref_count(), 1);
    copy.parent(nullptr);
    EXPECT_EQ(deaths, 0);
}

// The defaults that MonoGlyph without a body does not already show (see monoglyph_test).
TEST(Glyph, BaseProtocolAnswers)
{
    Glyph g;
    g.ref();
    GlyphContext context(nullptr, nullptr);
    EXPECT_EQ(g.clone(true), nullptr);
    EXPECT_EQ(g.clone(false), nullptr);
    BoxTreeLeaf box(10, 8, 2);
    AllocationTree where(Point(7, -3), &box);
    std::unique_ptr<AllocationTree> whole(g.allocate(context, where));
    ASSERT_TRUE(whole);
    EXPECT_NE(whole.get(), &where);  // a new object, equal to the argument
    EXPECT_EQ(*whole, where);
    EXPECT_FALSE(g.read_only());
    std::ostringstream out;
    EXPECT_EQ(&g.put_xml(out), &out);
    EXPECT_TRUE(out.str().empty());
    EXPECT_EQ(g.scene(), nullptr);
    g.deselect();  // no scene: nothing happens
}

// print is draw unless overridden.
TEST(Glyph, PrintCallsDraw)
{
    struct Drawer : Glyph
    {
        std::vector<Point> drawn;
        void draw(GlyphContext &, AllocationTree const &a) override { drawn.push_back(a.point()); }
    };
    Drawer d;
    GlyphContext context(nullptr, nullptr);
    d.print(context, AllocationTree(Point(4, 9), nullptr));
    EXPECT_EQ(d.drawn, (std::vector<Point>{Point(4, 9)}));
}

// The base undraw visits every non-null component in index order.
TEST(Glyph, UndrawVisitsComponentsInOrder)
{
    Journal journal;
    Row row;
    for (char const *n : {"a", "b", "c"})
        row.append(new Probe(n, &journal));
    auto *outer = new Row;
    outer->append(new Probe("d", &journal));
    row.append(outer);
    row.Glyph::undraw();
    EXPECT_EQ(journal, (Journal{"undraw:a+p/1", "undraw:b+p/1", "undraw:c+p/1", "undraw:d+p/1"}));
}

class TestScene : public GlyphScene
{
public:
    bool deselect(Glyph *g) override
    {
        deselected.push_back(g);
        return false;
    }
    std::vector<Glyph *> deselected;
};

// The root of a shown tree knows its scene; everything below finds it through the parents.
class SceneRoot : public MonoGlyph
{
public:
    SceneRoot(Glyph *body, GlyphScene *s) : MonoGlyph(body), scene_(s) {}
    GlyphScene *scene() override { return scene_; }

private:
    GlyphScene *scene_;
};

TEST(Glyph, SceneThroughParentsAndDeselect)
{
    TestScene scene;
    auto *leaf = new Probe("x");
    auto *inner = new Row;
    inner->append(leaf);
    auto *middle = new Row;
    middle->append(inner);
    SceneRoot root(middle, &scene);

    for (Glyph *g : std::vector<Glyph *>{leaf, inner, middle, &root})
        EXPECT_EQ(g->scene(), &scene);
    leaf->deselect();
    inner->deselect();
    EXPECT_EQ(scene.deselected, (std::vector<Glyph *>{leaf, inner}));

    // Out of the tree, the glyph has no scene and deselect reaches nobody.
    leaf->ref();
    inner->remove(0);
    EXPECT_EQ(leaf->scene(), nullptr);
    leaf->deselect();
    EXPECT_EQ(scene.deselected.size(), 2u);
    leaf->unref();
}

}  // namespace
