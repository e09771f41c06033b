// GlyphIterator: the post-order walk over hand-built trees, and the end of the walk.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "probe.h"
#include "tavi/glyph/glyphiterator.h"

namespace {

using namespace Tavi;
using GlyphTest::name_of;
using GlyphTest::TreeBuilder;

struct Walk
{
    char const *tree;
    char const *order;  // names in the order visited: every child before its parent
};

Walk const walks[] = {
    {"R(E(),a,F())", "EaFR"},
    {"R(S(a,T(b,c),d),U(e),V(W(f,g)))", "abcTdSeUfgWVR"},
};

TEST(GlyphIterator, PostOrderWalks)
{
    for (Walk const &w : walks) {
        SCOPED_TRACE(w.tree);
        int deaths = 0;
        TreeBuilder builder(w.tree, &deaths);
        Glyph *root = builder.build();
        std::string visited;
        GlyphIterator it(root);
        for (int guard = 0; !it.at_end() && guard < 100; ++guard) {
            visited += name_of(it.glyph());
            bool const more = it.next();
            EXPECT_EQ(more, !it.at_end());
        }
        EXPECT_EQ(visited, w.order);
        // Past the end it stays there.
        EXPECT_EQ(it.glyph(), nullptr);
        EXPECT_FALSE(it.next());
        EXPECT_TRUE(it.at_end());
        root->unref();
        EXPECT_EQ(deaths, builder.size());  // the walk neither kept nor dropped anything
    }
}

// A glyph whose component slots may be empty: the walk steps over them.
class Slots : public Glyph
{
public:
    explicit Slots(std::vector<Glyph *> slots) : slots_(std::move(slots)) {}
    long count() override { return static_cast<long>(slots_.size()); }
    Glyph *component(long i) override { return slots_.at(static_cast<std::size_t>(i)); }

private:
    std::vector<Glyph *> slots_;
};

TEST(GlyphIterator, NullComponentsAreSteppedOver)
{
    GlyphTest::Probe a("a"), b("b");
    struct Case
    {
        char const *what;
        std::vector<Glyph *> slots;
        char const *order;
    };
    Case const cases[] = {
        {"null between", {&a, nullptr, &b}, "ab?"},
        {"only nulls", {nullptr, nullptr}, "?"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.what);
        Slots root(c.slots);
        std::string visited;
        GlyphIterator it(&root);
        for (int guard = 0; !it.at_end() && guard < 100; ++guard, it.next())
            visited += name_of(it.glyph());
        EXPECT_EQ(visited, c.order);
    }
}

}  // namespace
