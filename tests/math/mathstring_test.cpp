// MathString: the one canonical form (no empty runs, neighbours of different classes), editing
// across runs, character boundaries, and the text form (named characters) that decodes back to the
// same string.
#include "tavi/math/mathstring.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

using namespace Tavi;

namespace {

// The runs of a string as (class, text) pairs, for comparing whole strings at a glance.
struct Piece
{
    int font;
    std::u16string text;
    bool operator==(Piece const &o) const { return font == o.font && text == o.text; }
};

std::vector<Piece> runs(MathString const &s)
{
    std::vector<Piece> out;
    for (std::size_t r = 0; r < s.run_count(); ++r)
        out.push_back({s.run_font(r), s.chars().substr(s.run_start(r), s.run_end(r) - s.run_start(r))});
    return out;
}

std::ostream &operator<<(std::ostream &o, Piece const &r)
{
    o << r.font << ":";
    for (char16_t c : r.text)
        o << (c < 128 ? static_cast<char>(c) : '?');
    return o;
}

}  // namespace

TEST(MathString, KeepsOneCanonicalForm)
{
    MathString s;
    s.append(u"", 0, MathString::f_symbol);
    EXPECT_EQ(s.run_count(), 0u);

    // The same class next to a run extends it.
    s.append(u"12", 2, MathString::f_text);
    s.append(u'3', MathString::f_text);
    EXPECT_EQ(runs(s), (std::vector<Piece>{{1, u"123"}}));
    s.append(u'+', MathString::f_symbol);
    s.append(u"45", 2, MathString::f_text);
    EXPECT_EQ(runs(s), (std::vector<Piece>{{1, u"123"}, {2, u"+"}, {1, u"45"}}));

    // Strings built in different steps compare equal when their runs agree.
    MathString t(u"123", MathString::f_text);
    t.append(MathString(u"+", MathString::f_symbol));
    t.append(MathString(u"45", MathString::f_text));
    EXPECT_EQ(s, t);
    // Same characters, other classes: not equal.
    EXPECT_NE(MathString(u"a", MathString::f_text), MathString(u"a", MathString::f_symbol));

    // Appending a string to itself doubles it.
    MathString twice(u"x", MathString::f_text);
    twice.append(u'y', MathString::f_symbol);
    twice.append(twice);
    EXPECT_EQ(runs(twice), (std::vector<Piece>{{1, u"x"}, {2, u"y"}, {1, u"x"}, {2, u"y"}}));
}

// Inserting and erasing split runs where a different class goes in, and join them again where the
// classes on both sides of a seam agree.
TEST(MathString, EditingAcrossRuns)
{
    MathString base(u"abcd", MathString::f_text);

    struct InsertCase
    {
        std::size_t position;
        MathString piece;
        std::vector<Piece> expected;
    } const inserts[] = {
        {2, MathString(u"+", MathString::f_symbol), {{1, u"ab"}, {2, u"+"}, {1, u"cd"}}},
        {4, MathString(u"+", MathString::f_symbol), {{1, u"abcd"}, {2, u"+"}}},
        {2, MathString(u"xy", MathString::f_text), {{1, u"abxycd"}}},
    };
    for (InsertCase const &c : inserts) {
        MathString s(base);
        s.insert(c.position, c.piece);
        EXPECT_EQ(runs(s), c.expected) << c.position;
    }
    MathString s(base);
    EXPECT_THROW(s.insert(5, MathString(u"x", MathString::f_text)), std::out_of_range);
    EXPECT_EQ(s, base);

    // Taking out the only symbol joins the two text runs around it into one.
    MathString mixed(u"ab", MathString::f_text);
    mixed.append(u'+', MathString::f_symbol);
    mixed.append(u"cd", 2, MathString::f_text);
    MathString joined(mixed);
    joined.erase(2, 1);
    EXPECT_EQ(runs(joined), (std::vector<Piece>{{1, u"abcd"}}));
    // An erase across a seam, and one that runs past the end.
    MathString cut(mixed);
    cut.erase(1, 2);
    EXPECT_EQ(runs(cut), (std::vector<Piece>{{1, u"acd"}}));
    MathString tail(mixed);
    tail.erase(3, 100);
    EXPECT_EQ(runs(tail), (std::vector<Piece>{{1, u"ab"}, {2, u"+"}}));

    EXPECT_EQ(runs(mixed.substr(1, 3)), (std::vector<Piece>{{1, u"b"}, {2, u"+"}, {1, u"c"}}));
    EXPECT_THROW(mixed.substr(6, 1), std::out_of_range);
}

// One character is one unit, but for a surrogate pair in a text run, which is one character of two
// units; a pair split across runs is two characters.
TEST(MathString, CharacterBoundaries)
{
    // "a", U+1D400 as the pair D835 DC00, "b", then a symbol run "cd".
    MathString s(u"a\xD835\xDC00" u"b", MathString::f_text);
    s.append(u"cd", 2, MathString::f_symbol);
    std::size_t const next[] = {1, 3, 3, 4, 5, 6, 6};
    for (std::size_t p = 0; p <= 6; ++p)
        EXPECT_EQ(s.next_char(p), next[p]) << p;
    // From inside the pair (2) the character before is the pair's high half at 1.
    std::size_t const prev[] = {0, 0, 1, 1, 3, 4, 5};
    for (std::size_t p = 0; p <= 6; ++p)
        EXPECT_EQ(s.prev_char(p), prev[p]) << p;
    EXPECT_EQ(s.char_count(), 5u);

    // Symbol codes are 8-bit: no pairing there.
    MathString sym(u"\xD835\xDC00", MathString::f_symbol);
    EXPECT_EQ(sym.next_char(0), 1u);
    EXPECT_EQ(sym.prev_char(2), 1u);
    EXPECT_EQ(sym.char_count(), 2u);
}

TEST(MathString, DecodeTypedText)
{
    struct Case
    {
        char16_t const *text;
        std::vector<Piece> expected;
    } const cases[] = {
        // Operator characters go to the symbol class, fences to the extension class.
        {u"a+b", {{1, u"a"}, {2, u"+"}, {1, u"b"}}},
        {u"(x)", {{3, u"("}, {1, u"x"}, {3, u")"}}},
        {u"&alpha;&Alpha;", {{2, u"a"}, {1, u"\x0391"}}},
        {u"x&InvisibleTimes;y", {{1, u"xy"}}},
        // An ampersand that opens no name is itself, in the class plain_char gives it.
        {u"a&", {{1, u"a"}, {2, u"&"}}},
        {u"& b;", {{2, u"&"}, {1, u" b"}, {2, u";"}}},
    };
    for (Case const &c : cases) {
        MathString out(u"old", MathString::f_text);
        ASSERT_TRUE(MathString::decode(c.text, out)) << std::string(c.text, c.text + std::char_traits<char16_t>::length(c.text));
        EXPECT_EQ(runs(out), c.expected);
    }

    MathString kept(u"kept", MathString::f_text);
    for (char16_t const *bad : {u"a&nosuch;b", u"tab\there", u"\x01"}) {
        EXPECT_FALSE(MathString::decode(bad, kept));
        EXPECT_EQ(runs(kept), (std::vector<Piece>{{1, u"kept"}}));
    }
    std::u16string too_long = u"&" + std::u16string(128, u'a') + u";";
    EXPECT_FALSE(MathString::decode(too_long.c_str(), kept));

    MathString one;
    EXPECT_TRUE(MathString::from_char(u'7', one));
    EXPECT_EQ(runs(one), (std::vector<Piece>{{1, u"7"}}));
    EXPECT_TRUE(MathString::from_char(u'=', one));
    EXPECT_EQ(runs(one), (std::vector<Piece>{{2, u"="}}));
    EXPECT_FALSE(MathString::from_char(u'\n', one));
    EXPECT_EQ(runs(one), (std::vector<Piece>{{2, u"="}}));
}

// The text form spells a character of a non-text class by name unless it reads back as itself, and
// decoding the text form gives the same string again.
TEST(MathString, TextFormReadsBack)
{
    MathString s(u"x", MathString::f_text);
    s.append_name(u"alpha");                  // symbol 97: would read back as a text "a"
    s.append(u'+', MathString::f_symbol);     // reads back as a symbol by itself
    s.append(u'(', MathString::f_extension);  // a fence of the extension font, itself
    s.append_name(u"Ropf");                   // open face
    s.append(u"\x0391", 1, MathString::f_text);
    std::u16string const form = s.text_form();
    EXPECT_EQ(form, u"x&alpha;+(&Ropf;\x0391");
    MathString back;
    ASSERT_TRUE(MathString::decode(form.c_str(), back));
    EXPECT_EQ(back, s);

    // A code that has no name and isn't its class's own plain character stays a bare unit.
    MathString odd(u"\x0001", MathString::f_symbol);
    EXPECT_EQ(odd.text_form(), u"\x0001");
}
