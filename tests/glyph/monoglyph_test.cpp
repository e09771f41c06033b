// MonoGlyph: body() swaps the child in a fixed order, so that the old body is undrawn while it is
// still attached and the new one may be held by the old.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "probe.h"
#include "tavi/glyph/monoglyph.h"

namespace {

using namespace Tavi;
using GlyphTest::Journal;
using GlyphTest::Probe;

// ref the new body, undraw the old one while it is still attached, let it go; then the new one is
// attached. Putting in the body already held does nothing.
TEST(MonoGlyph, BodyReplacementOrder)
{
    Journal journal;
    int deaths = 0;
    auto *old_body = new Probe("o", &journal, &deaths);
    auto *new_body = new Probe("n", &journal, &deaths);
    old_body->trace_refs = new_body->trace_refs = true;
    {
        MonoGlyph mono(old_body);
        EXPECT_EQ(old_body->parent(), &mono);
        EXPECT_EQ(mono.body(), old_body);
        journal.clear();

        mono.body(new_body);
        EXPECT_EQ(journal, (Journal{"ref:n", "undraw:o+p/1", "unref:o", "die:o"}));
        EXPECT_EQ(mono.body(), new_body);
        EXPECT_EQ(new_body->parent(), &mono);
        EXPECT_EQ(new_body->ref_count(), 1);

        journal.clear();
        mono.body(new_body);
        EXPECT_TRUE(journal.empty());
        EXPECT_EQ(new_body->ref_count(), 1);

        new_body->ref();  // keep it past the MonoGlyph
        journal.clear();
    }
    EXPECT_EQ(journal, (Journal{"unref:n"}));
    EXPECT_EQ(new_body->parent(), nullptr);  // cleared by the destructor
    EXPECT_EQ(new_body->ref_count(), 1);
    new_body->unref();
    EXPECT_EQ(deaths, 2);
}

}  // namespace
