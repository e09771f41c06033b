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

    void margins(GlyphContext &, long &left, long &top, long &right, long &bottom) override
    {
        note("margins");
        left = 1, top = 2, right = 3, bottom = 4;
    }
    BoxTree *request(GlyphContext &, BoxTree const &constraint) override
    {
        note(&constraint == &BoxTree::unconstrained ? "request:free" : "request:other");
        return new BoxTreeLeaf(5, 6, 7);
    }
    AllocationTree *allocate(long index, GlyphContext &, AllocationTree const &a) override
    {
        note("allocate:", index);
        return new AllocationTree(Point(index, a.point().y), nullptr);
    }
    AllocationTree *allocate(GlyphContext &, AllocationTree const &) override
    {
        note("allocate");
        return new AllocationTree(Point(99, 98), nullptr);
    }
    void draw(GlyphContext &, AllocationTree const &a) override
    {
        note("draw@" + std::to_string(a.point().x) + ",", a.point().y);
    }
    void print(GlyphContext &, AllocationTree const &) override { note("print"); }
    void undraw() override { note("undraw"); }
    bool is_allocated() override { return note("is_allocated"), false; }
    void invalidate_allocation() override { note("invalidate"); }
    void append(Glyph *) override { note("append"); }
    void prepend(Glyph *) override { note("prepend"); }
    void insert(long index, Glyph *) override { note("insert:", index); }
    void replace(long index, Glyph *) override { note("replace:", index); }
    void remove(long index) override { note("remove:", index); }
    long count() override { return note("count"), 7; }
    Glyph *component(long index) override { return note("component:", index), sentinel; }
    void change(long index) override { note("change:", index); }

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
    {"margins",
     [](MonoGlyph &m, GlyphContext &c, Glyph *) {
         long l = 9, t = 9, r = 9, b = 9;
         m.margins(c, l, t, r, b);
         return std::to_string(l) + std::to_string(t) + std::to_string(r) + std::to_string(b);
     },
     "margins", "1234", "0000"},
    {"request",
     [](MonoGlyph &m, GlyphContext &c, Glyph *) {
         std::unique_ptr<BoxTree> t(m.request(c, BoxTree::unconstrained));
         return t ? std::to_string(t->width()) + "/" + std::to_string(t->ascent()) + "/" + std::to_string(t->descent())
                  : std::string("null");
     },
     "request:free", "5/6/7", "null"},
    {"allocate(index)", [](MonoGlyph &m, GlyphContext &c, Glyph *) { return text(m.allocate(2, c, where)); },
     "allocate:2", "(2,4)", "null"},
    {"allocate", [](MonoGlyph &m, GlyphContext &c, Glyph *) { return text(m.allocate(c, where)); }, "allocate",
     "(99,98)", "(3,4)"},
    {"draw", [](MonoGlyph &m, GlyphContext &c, Glyph *) { return m.draw(c, where), std::string(); }, "draw@3,4",
     "", ""},
    {"print", [](MonoGlyph &m, GlyphContext &c, Glyph *) { return m.print(c, where), std::string(); }, "print", "",
     ""},
    {"undraw", [](MonoGlyph &m, GlyphContext &, Glyph *) { return m.undraw(), std::string(); }, "undraw", "", ""},
    {"is_allocated", [](MonoGlyph &m, GlyphContext &, Glyph *) { return std::to_string(m.is_allocated()); },
     "is_allocated", "0", "1"},
    {"invalidate_allocation",
     [](MonoGlyph &m, GlyphContext &, Glyph *) { return m.invalidate_allocation(), std::string(); }, "invalidate",
     "", ""},
    {"append", [](MonoGlyph &m, GlyphContext &, Glyph *g) { return m.append(g), std::string(); }, "append", "", ""},
    {"prepend", [](MonoGlyph &m, GlyphContext &, Glyph *g) { return m.prepend(g), std::string(); }, "prepend", "",
     ""},
    {"insert", [](MonoGlyph &m, GlyphContext &, Glyph *g) { return m.insert(3, g), std::string(); }, "insert:3", "",
     ""},
    {"replace", [](MonoGlyph &m, GlyphContext &, Glyph *g) { return m.replace(4, g), std::string(); }, "replace:4",
     "", ""},
    {"remove", [](MonoGlyph &m, GlyphContext &, Glyph *) { return m.remove(5), std::string(); }, "remove:5", "", ""},
    {"count", [](MonoGlyph &m, GlyphContext &, Glyph *) { return std::to_string(m.count()); }, "count", "7", "0"},
    {"component",
     [](MonoGlyph &m, GlyphContext &, Glyph *) {
         Glyph *g = m.component(6);
         return std::string(g == sentinel ? "sentinel" : g ? "other" : "null");
     },
     "component:6", "sentinel", "null"},
    {"change", [](MonoGlyph &m, GlyphContext &, Glyph *) { return m.change(8), std::string(); }, "change:8", "", ""},
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

TEST(MonoGlyph, BodyIntoAnEmptyMonoGlyphAndCopies)
{
    int deaths = 0;
    auto *body = new Probe("b", nullptr, &deaths);
    {
        MonoGlyph mono;
        EXPECT_EQ(mono.body(), nullptr);
        mono.body(body);
        EXPECT_EQ(body->parent(), &mono);
        EXPECT_EQ(body->ref_count(), 1);
        {
            MonoGlyph copy(mono);  // shares the body
            EXPECT_EQ(copy.body(), body);
            EXPECT_EQ(body->ref_count(), 2);
            EXPECT_EQ(copy.ref_count(), 0);
        }
        EXPECT_EQ(body->ref_count(), 1);
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 1);
}

}  // namespace
