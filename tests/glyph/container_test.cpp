// The child-list rules shared by PolyGlyph<Glyph>, Row, AllocGlyph<Glyph> and Placement: order,
// references, parents, undraw before release, out-of-range errors, positions.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "probe.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/glyph/allocglyph.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/placement.h"
#include "tavi/glyph/polyglyph.h"
#include "tavi/glyph/row.h"

namespace {

using namespace Tavi;
using GlyphTest::Journal;
using GlyphTest::Probe;

// Each container with a counter of modified calls.
template <class Base>
class Counted : public Base
{
public:
    int modified_calls = 0;

protected:
    void modified() override
    {
        ++modified_calls;
        Base::modified();
    }
};

using CountedPoly = Counted<PolyGlyph<Glyph>>;
using CountedRow = Counted<Row>;
using CountedAlloc = Counted<AllocGlyph<Glyph>>;
using CountedPlacement = Counted<Placement>;

template <class C>
class ContainerTest : public ::testing::Test
{
protected:
    // A probe that the test holds with one reference of its own, so that it can be looked at after
    // the container has let go of it.
    Probe *probe(std::string const &name)
    {
        auto *p = new Probe(name, &journal, &deaths);
        p->ref();
        held.push_back(p);
        return p;
    }
    Probe *find(char name)
    {
        for (Probe *p : held)
            if (p->name() == std::string(1, name))
                return p;
        return nullptr;
    }
    void TearDown() override
    {
        int const n = static_cast<int>(held.size());
        for (Probe *p : held) {
            EXPECT_EQ(p->ref_count(), 1) << p->name() << " still held by someone";
            p->unref();
        }
        EXPECT_EQ(deaths, n);
    }
    static std::string order(Glyph &g)
    {
        std::string s;
        for (long i = 0; i < g.count(); ++i)
            s += GlyphTest::name_of(g.component(i));
        return s;
    }

    Journal journal;
    int deaths = 0;
    std::vector<Probe *> held;
};

using Containers = ::testing::Types<CountedPoly, CountedRow, CountedAlloc, CountedPlacement>;
TYPED_TEST_SUITE(ContainerTest, Containers);

// One step of a script: 'a'ppend, 'p'repend, 'i'nsert, 'r'eplace or 'x' (remove) of index.
struct Step
{
    char op;
    long index;
    char glyph;
};

struct Script
{
    char const *what;
    std::vector<Step> steps;
    char const *order;
};

Script const scripts[] = {
    {"insert goes in front of the index", {{'a', 0, 'a'}, {'a', 0, 'b'}, {'i', 1, 'c'}}, "acb"},
    {"insert at the size appends", {{'a', 0, 'a'}, {'a', 0, 'b'}, {'i', 2, 'c'}}, "abc"},
    {"remove the last", {{'a', 0, 'a'}, {'a', 0, 'b'}, {'a', 0, 'c'}, {'x', 2, 0}}, "ab"},
    {"mixed", {{'a', 0, 'a'}, {'p', 0, 'b'}, {'i', 1, 'c'}, {'x', 2, 0}, {'r', 0, 'd'}, {'a', 0, 'e'}}, "dce"},
};

TYPED_TEST(ContainerTest, ScriptsGiveOrderReferencesAndParents)
{
    for (Script const &script : scripts) {
        SCOPED_TRACE(script.what);
        {
            TypeParam c;
            for (Step const &s : script.steps) {
                Probe *g = s.glyph ? this->probe(std::string(1, s.glyph)) : nullptr;
                switch (s.op) {
                case 'a': c.append(g); break;
                case 'p': c.prepend(g); break;
                case 'i': c.insert(s.index, g); break;
                case 'r': c.replace(s.index, g); break;
                case 'x': c.remove(s.index); break;
                }
            }
            EXPECT_EQ(this->order(c), script.order);
            EXPECT_EQ(c.modified_calls, static_cast<int>(script.steps.size()));
            // Children in the list: one reference from the container and one from the test.
            // Children gone: the test's reference only, and no parent.
            std::string const kept = script.order;
            for (Probe *p : this->held) {
                bool const in = kept.find(p->name()) != std::string::npos;
                EXPECT_EQ(p->ref_count(), in ? 2 : 1) << p->name();
                EXPECT_EQ(p->parent(), in ? static_cast<Glyph *>(&c) : nullptr) << p->name();
            }
        }
        // The container is gone: every child is held by the test alone (checked by TearDown).
        this->TearDown();
        this->held.clear();
        this->deaths = 0;
        this->journal.clear();
    }
}

TYPED_TEST(ContainerTest, RemoveAndReplaceUndrawWhileStillHeld)
{
    int dead = 0;  // a, b and n: held by the container alone
    TypeParam c;
    c.append(new Probe("a", &this->journal, &dead));
    c.append(new Probe("b", &this->journal, &dead));
    Probe *kept = this->probe("k");
    c.append(kept);

    c.remove(0);
    // undraw came first, with the parent still set and the one reference still there.
    EXPECT_EQ(this->journal, (Journal{"undraw:a+p/1", "die:a"}));

    this->journal.clear();
    Probe *n = new Probe("n", &this->journal, &dead);
    c.replace(0, n);
    EXPECT_EQ(this->journal, (Journal{"undraw:b+p/1", "die:b"}));
    EXPECT_EQ(n->parent(), &c);

    // A child that someone else holds lives on, parentless.
    this->journal.clear();
    c.remove(1);
    EXPECT_EQ(this->journal, (Journal{"undraw:k+p/2"}));
    EXPECT_EQ(kept->parent(), nullptr);
    EXPECT_EQ(this->order(c), "n");
    EXPECT_EQ(dead, 2);
}

// The new glyph is referenced before the old one goes, so it may be a child of the old one.
TYPED_TEST(ContainerTest, ReplaceByAGrandchildKeepsItAlive)
{
    int dead = 0;
    TypeParam c;
    auto *inner = new GlyphTest::NamedRow("R", &dead);
    Probe *x = new Probe("x", nullptr, &dead);
    inner->append(x);
    c.append(inner);
    c.replace(0, x);  // inner dies here, and x was held by inner only
    EXPECT_EQ(dead, 1);
    EXPECT_EQ(x->ref_count(), 1);
    EXPECT_EQ(x->parent(), &c);
    c.remove(0);
    EXPECT_EQ(dead, 2);
}

TYPED_TEST(ContainerTest, OutOfRangeThrowsAndChangesNothing)
{
    TypeParam c;
    c.append(this->probe("a"));
    c.append(this->probe("b"));
    Probe *g = this->probe("g");
    struct Case
    {
        char const *what;
        std::function<void()> call;
    };
    Case const cases[] = {
        {"replace(2)", [&] { c.replace(2, g); }},
        {"remove(2)", [&] { c.remove(2); }},
        {"insert(3)", [&] { c.insert(3, g); }},
    };
    for (Case const &k : cases) {
        SCOPED_TRACE(k.what);
        try {
            k.call();
            ADD_FAILURE() << "no exception";
        } catch (std::out_of_range const &e) {
            EXPECT_STREQ(e.what(), "invalid vector<T> subscript");
        }
        EXPECT_EQ(this->order(c), "ab");
        EXPECT_EQ(g->ref_count(), 1);
        EXPECT_EQ(g->parent(), nullptr);
    }
    EXPECT_TRUE(this->journal.empty());  // nothing undrawn
}

// Positions of AllocGlyph and Placement follow their children through the list operations.
template <class C>
class PositionTest : public ContainerTest<C>
{
protected:
    static std::string positions(C &c)
    {
        std::string s;
        for (long i = 0; i < c.count(); ++i) {
            Point const p = c.position(i);
            s += "(" + std::to_string(p.x) + "," + std::to_string(p.y) + ")";
        }
        return s;
    }
};

using Positioned = ::testing::Types<CountedAlloc, CountedPlacement>;
TYPED_TEST_SUITE(PositionTest, Positioned);

TYPED_TEST(PositionTest, PositionsStayAlignedAndReplaceResets)
{
    TypeParam c;
    for (char const *n : {"a", "b", "c"})
        c.append(this->probe(n));
    EXPECT_EQ(this->positions(c), "(0,0)(0,0)(0,0)");
    for (long i = 0; i < 3; ++i)
        c.position(i, Point(i + 1, 10 * (i + 1)));
    EXPECT_EQ(this->positions(c), "(1,10)(2,20)(3,30)");

    c.insert(1, this->probe("d"));  // a d b c
    EXPECT_EQ(this->positions(c), "(1,10)(0,0)(2,20)(3,30)");
    c.remove(0);  // d b c
    EXPECT_EQ(this->positions(c), "(0,0)(2,20)(3,30)");
    c.replace(2, this->probe("e"));  // d b e: the new child starts at (0, 0)
    EXPECT_EQ(this->positions(c), "(0,0)(2,20)(0,0)");
    c.replace(1, this->find('b'));  // the same glyph: its position stays
    EXPECT_EQ(this->positions(c), "(0,0)(2,20)(0,0)");
    EXPECT_THROW(c.position(3, Point(1, 1)), std::out_of_range);
}

}  // namespace
