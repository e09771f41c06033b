// MonoGlyph: every content operation goes to the body when there is one and falls to Glyph when
// there is none; body() swaps the child in a fixed order.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "probe.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/monoglyph.h"

namespace {

using namespace Tavi;
using GlyphTest::Journal;
using GlyphTest::Probe;

Glyph *const sentinel = reinterpret_cast<Glyph *>(0x1000);

// A body that notes every call and answers with values no default would give.
class Recorder : public Glyph
{
public:
    explicit Recorder(Journal &journal) : journal_(journal) {}

    BoxTree *request(GlyphContext &, BoxTree const &constraint) override
    {
        note(&constraint == &BoxTree::unconstrained ? "request:free" : "request:other");
        return new BoxTreeLeaf(5, 6, 7);
    }
    AllocationTree *allocate(GlyphContext &, AllocationTree const &) override
    {
        note("allocate");
        return new AllocationTree(Point(99, 98), nullptr);
    }
    long count() override { return note("count"), 7; }
    Glyph *component(long index) override { return note("component:", index), sentinel; }

private:
    void note(std::string const &what, long index) { journal_.push_back(what + std::to_string(index)); }
    void note(std::string const &what) { journal_.push_back(what); }

    Journal &journal_;
};

std::string text(AllocationTree *a)
{
    std::unique_ptr<AllocationTree> owned(a);
    return a ? "(" + std::to_string(a->point().x) + "," + std::to_string(a->point().y) + ")" : "null";
}

struct Operation
{
    char const *name;
    std::function<std::string(MonoGlyph &, GlyphContext &, Glyph *)> call;  // gives the result as text
    char const *with_body;     // the journal entry of the body
    char const *result_body;   // the result with the body
    char const *result_plain;  // the result of Glyph
};

AllocationTree const where(Point(3, 4), nullptr);

Operation const operations[] = {
    {"request",
     [](MonoGlyph &m, GlyphContext &c, Glyph *) {
         std::unique_ptr<BoxTree> t(m.request(c, BoxTree::unconstrained));
         return t ? std::to_string(t->width()) + "/" + std::to_string(t->ascent()) + "/" + std::to_string(t->descent())
                  : std::string("null");
     },
     "request:free", "5/6/7", "null"},
    {"allocate", [](MonoGlyph &m, GlyphContext &c, Glyph *) { return text(m.allocate(c, where)); }, "allocate",
     "(99,98)", "(3,4)"},
    {"count", [](MonoGlyph &m, GlyphContext &, Glyph *) { return std::to_string(m.count()); }, "count", "7", "0"},
    {"component",
     [](MonoGlyph &m, GlyphContext &, Glyph *) {
         Glyph *g = m.component(6);
         return std::string(g == sentinel ? "sentinel" : g ? "other" : "null");
     },
     "component:6", "sentinel", "null"},
};

// With a body every operation reaches it; without one the MonoGlyph is a plain Glyph. Neither keeps
// the argument.
TEST(MonoGlyph, ContentOperationsGoToTheBodyOrFallToGlyph)
{
    GlyphContext context(nullptr, nullptr);
    for (Operation const &op : operations) {
        for (bool const with_body : {true, false}) {
            SCOPED_TRACE(testing::Message() << op.name << (with_body ? " with body" : " without body"));
            Journal journal;
            MonoGlyph mono(with_body ? new Recorder(journal) : nullptr);
            Probe argument("g");
            argument.ref();
            EXPECT_EQ(op.call(mono, context, &argument), with_body ? op.result_body : op.result_plain);
            EXPECT_EQ(journal, with_body ? Journal{op.with_body} : Journal{});
            EXPECT_EQ(argument.ref_count(), 1);
            EXPECT_EQ(argument.parent(), nullptr);
        }
    }
}

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
