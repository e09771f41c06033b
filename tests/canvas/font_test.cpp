// FontSpec and Font: hashing, ordering, sharing and copy on write.
#include "tavi/canvas/font.h"
#include "tavi/canvas/fontimpl.h"

#include <gtest/gtest.h>

using namespace Tavi;

namespace {

// Holds one counted reference for the length of a test.
struct Held
{
    explicit Held(FontSpec *s) : spec(s) { spec->ref(); }
    ~Held() { spec->unref(); }
    FontSpec *spec;
};

}  // namespace

// "Arial": 0x41 ^ 0x72 ^ 0x69 ^ 0x61 ^ 0x6c = 0x57; times 4 = 0x15c; bold XOR 1, italic XOR 2.
TEST(FontSpec, HashAndDefaults)
{
    Held d(new FontSpec);
    Held arial(new FontSpec(u"Arial", 240, false, false));
    EXPECT_TRUE(d.spec->equal(*arial.spec));
    struct Case
    {
        bool bold, italic;
        unsigned long hash;
    } const cases[] = {{false, false, 0x15c}, {true, false, 0x15d}, {false, true, 0x15e}, {true, true, 0x15f}};
    for (auto const &c : cases) {
        Held s(new FontSpec(u"Arial", 500, c.bold, c.italic));
        EXPECT_EQ(s.spec->hash(), c.hash);
    }
    // "ab": 0x61 ^ 0x62 = 0x03, times 4 = 0x0c; "ba" hashes the same.
    Held ab(new FontSpec(u"ab", 240, false, false));
    EXPECT_EQ(ab.spec->hash(), 0x0cu);
    // A high unit: 0xffff * 4 = 0x3fffc, inside 30 bits.
    Held high(new FontSpec(u"\xffff", 240, false, true));
    EXPECT_EQ(high.spec->hash(), 0x3fffeu);
}

TEST(FontSpec, EqualLooksAtEverythingButHashAlone)
{
    Held a(new FontSpec(u"ab", 240, false, false));
    Held sizeOnly(new FontSpec(u"ab", 250, false, false));
    Held anagram(new FontSpec(u"ba", 240, false, false));
    Held same(new FontSpec(u"ab", 240, false, false));
    EXPECT_EQ(a.spec->hash(), sizeOnly.spec->hash());
    EXPECT_FALSE(a.spec->equal(*sizeOnly.spec));
    EXPECT_EQ(a.spec->hash(), anagram.spec->hash());
    EXPECT_FALSE(a.spec->equal(*anagram.spec));
    EXPECT_TRUE(a.spec->equal(*same.spec));
}

TEST(FontSpec, LessOrdersBySizeBoldItalicThenName)
{
    struct Case
    {
        FontSpec *a, *b;
        bool less;
    } const cases[] = {
        {new FontSpec(u"z", 100, true, true), new FontSpec(u"a", 200, false, false), true},     // size
        {new FontSpec(u"z", 200, false, true), new FontSpec(u"a", 200, true, false), true},     // bold
        {new FontSpec(u"a", 200, true, false), new FontSpec(u"z", 200, false, true), false},
        {new FontSpec(u"z", 200, false, false), new FontSpec(u"a", 200, false, true), true},    // italic
        {new FontSpec(u"a", 200, false, false), new FontSpec(u"b", 200, false, false), true},   // name
        {new FontSpec(u"a", 200, false, false), new FontSpec(u"\xff00", 200, false, false), true},  // unsigned
        {new FontSpec(u"ab", 200, false, false), new FontSpec(u"a", 200, false, false), false},
        {new FontSpec(u"a", 200, false, false), new FontSpec(u"a", 200, false, false), false},
    };
    for (auto const &c : cases) {
        Held a(c.a), b(c.b);
        EXPECT_EQ(a.spec->less(*b.spec), c.less) << &c - cases;
    }
}

TEST(FontSpec, SettersCopyOnWrite)
{
    FontSpec *s = new FontSpec(u"Arial", 240, false, false);
    s->ref();
    // The present value answers the object itself.
    EXPECT_EQ(s->size(240), s);
    EXPECT_EQ(s->name(u"Arial"), s);
    EXPECT_EQ(s->bold(false), s);
    EXPECT_EQ(s->italic(false), s);

    // Held once: changed in place and rehashed.
    EXPECT_FALSE(s->is_shared());
    EXPECT_EQ(s->bold(true), s);
    EXPECT_TRUE(s->bold());
    EXPECT_EQ(s->hash(), 0x15du);

    // Held twice: a new object with the change; the old one keeps its value.
    s->ref();
    ASSERT_TRUE(s->is_shared());
    struct Change
    {
        FontSpec *(*apply)(FontSpec *);
        bool (*check)(FontSpec const *);
    } const changes[] = {
        {[](FontSpec *f) { return f->size(250); }, [](FontSpec const *f) { return f->size() == 250; }},
        {[](FontSpec *f) { return f->name(u"Times"); },
         [](FontSpec const *f) { return std::u16string(f->name()) == u"Times"; }},
        {[](FontSpec *f) { return f->bold(false); }, [](FontSpec const *f) { return !f->bold(); }},
        {[](FontSpec *f) { return f->italic(true); }, [](FontSpec const *f) { return f->italic(); }},
    };
    for (auto const &c : changes) {
        FontSpec *n = c.apply(s);
        ASSERT_NE(n, s);
        n->ref();
        EXPECT_TRUE(c.check(n));
        EXPECT_FALSE(n->is_shared());
        EXPECT_EQ(s->size(), 240);
        EXPECT_EQ(std::u16string(s->name()), u"Arial");
        EXPECT_TRUE(s->bold());
        EXPECT_FALSE(s->italic());
        EXPECT_EQ(s->hash(), 0x15du);
        n->unref();
    }
    // The rehash follows a change of name: "Times" 0x54^0x69^0x6d^0x65^0x73 = 0x46, * 4 = 0x118, bold 0x119.
    FontSpec *t = s->name(u"Times");
    t->ref();
    EXPECT_EQ(t->hash(), 0x119u);
    t->unref();
    s->unref();
    s->unref();
}

TEST(Font, CopiesShareAndSettersDetach)
{
    Font a(u"Times New Roman", 240, false, false);
    Font b = a;
    EXPECT_EQ(a.spec(), b.spec());
    EXPECT_TRUE(a.spec()->is_shared());

    b.size(250);
    EXPECT_NE(a.spec(), b.spec());
    EXPECT_EQ(a.size(), 240);
    EXPECT_EQ(b.size(), 250);
    EXPECT_FALSE(a.spec()->is_shared());

    // Sole holder: changed in place.
    FontSpec const *before = b.spec();
    b.italic(true);
    EXPECT_EQ(b.spec(), before);
    EXPECT_TRUE(b.italic());

    // Equality: the same spec, or equal specs; sizes differ -> same hash, not equal.
    Font c(u"Times New Roman", 240, false, false);
    EXPECT_TRUE(a == c);
    EXPECT_NE(a.spec(), c.spec());
    Font d(u"Times New Roman", 250, false, false);
    EXPECT_EQ(a.hash(), d.hash());
    EXPECT_FALSE(a == d);
    EXPECT_TRUE(a < d);
    EXPECT_FALSE(d < a);

    Font e;
    e = a;
    EXPECT_EQ(e.spec(), a.spec());
    e.name(u"Symbol");
    EXPECT_EQ(std::u16string(a.name()), u"Times New Roman");
    EXPECT_EQ(std::u16string(e.name()), u"Symbol");
}
