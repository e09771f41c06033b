// Glyph: the way a glyph finds its scene through its parents, and loses it out of the tree.
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
