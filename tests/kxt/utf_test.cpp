// UTF-8 <-> UTF-16 conversion: every plane, the edges of the encoding forms, and what becomes
// of ill-formed input in each direction.
#include "tavi/kxt/codecvt.h"
#include "tavi/kxt/utf.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using Kxt::wstring;

struct Encoded {
    char32_t code;
    std::string utf8;
    wstring utf16;
};

// Worked out by hand. UTF-8 of a supplementary code point p * 0x10000 + x (plane p):
// byte 1 = F0 | p >> 2, byte 2 = 80 | (p & 3) << 4 | x >> 12, then 80 | six bits each.
// UTF-16: high = D800 + ((p - 1) << 6) + (x >> 10), low = DC00 + (x & 3FF).
// So the first code point of plane p is high D800 + 0x40 * (p - 1), low DC00, and the last
// is that high + 3F, low DFFF.
std::vector<Encoded> const encodings = {
    // the BMP edges: the one-, two- and three-byte limits, and around the surrogate block
    {0x0080, "\xC2\x80", u"\x0080"},
    {0x07FF, "\xDF\xBF", u"\x07FF"},
    {0xFFFF, "\xEF\xBF\xBF", u"\xFFFF"},
    // the first and the last code point of planes where a bit of the lead bytes changes
    {0x10000, "\xF0\x90\x80\x80", {0xD800, 0xDC00}},
    {0x40000, "\xF1\x80\x80\x80", {0xD8C0, 0xDC00}},
    {0x10FFFF, "\xF4\x8F\xBF\xBF", {0xDBFF, 0xDFFF}},
    // inside a plane: 1F600 - 10000 = F600, high D800 + 3D, low DC00 + 200
    {0x1F600, "\xF0\x9F\x98\x80", {0xD83D, 0xDE00}},
};

TEST(Utf, PlaneEdgesBothWays)
{
    std::string all_utf8;
    wstring all_utf16;
    Kxt::codecvt_string_to_ustring const widen("UTF-8", true);
    Kxt::codecvt_ustring_to_string const narrow("UTF-8", true);
    for (Encoded const &e : encodings) {
        SCOPED_TRACE(testing::Message() << "U+" << std::hex << static_cast<unsigned long>(e.code));
        EXPECT_EQ(Kxt::to_ustring(e.utf8), e.utf16);
        EXPECT_EQ(Kxt::to_string(e.utf16), e.utf8);
        EXPECT_EQ(widen(e.utf8), e.utf16);
        EXPECT_FALSE(widen.failed());
        EXPECT_EQ(narrow(e.utf16), e.utf8);
        EXPECT_FALSE(narrow.failed());

        std::string one;
        Kxt::append_utf8(one, e.code);
        EXPECT_EQ(one, e.utf8);
        Kxt::wchar const *position = e.utf16.data();
        EXPECT_EQ(Kxt::next_code_point(position, e.utf16.data() + e.utf16.size()), e.code);
        EXPECT_EQ(position, e.utf16.data() + e.utf16.size());

        all_utf8 += e.utf8;
        all_utf16 += e.utf16;
    }
    // One long string: no character disturbs its neighbours.
    EXPECT_EQ(Kxt::to_ustring(all_utf8), all_utf16);
    EXPECT_EQ(Kxt::to_string(all_utf16), all_utf8);
}

struct BadUtf8 {
    char const *name;
    std::string input;
    wstring expected;
};

// Each maximal ill-formed piece becomes one U+FFFD, and the byte that broke a sequence starts
// the next one.
std::vector<BadUtf8> const bad_utf8 = {
    {"encoded high surrogate D800", "\xED\xA0\x80", u"\xFFFD\xFFFD\xFFFD"},
    {"F4 90 is U+110000", "\xF4\x90\x80\x80", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
    {"cut off before ASCII", "\xE2\x82" "A", u"\xFFFD" "A"},
    // the example of the Unicode standard (U+FFFD substitution of maximal subparts)
    {"Unicode example", "a\xF1\x80\x80\xE1\x80\xC2" "b\x80" "c\x80\xBF" "d",
     u"a\xFFFD\xFFFD\xFFFD" "b\xFFFD" "c\xFFFD\xFFFD" "d"},
};

TEST(Utf, IllFormedUtf8BecomesReplacementCharacters)
{
    Kxt::codecvt_string_to_ustring const lenient("UTF-8", false);
    Kxt::codecvt_string_to_ustring const strict("UTF-8", true);
    for (BadUtf8 const &c : bad_utf8) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Kxt::to_ustring(c.input), c.expected);
        EXPECT_EQ(lenient(c.input), c.expected);
        EXPECT_TRUE(lenient.failed());
        // Strict conversion keeps what came before the first ill-formed piece: the expected
        // text up to its first U+FFFD.
        EXPECT_EQ(strict(c.input), c.expected.substr(0, c.expected.find(u'\xFFFD')));
        EXPECT_TRUE(strict.failed());
    }
}

struct BadUtf16 {
    char const *name;
    wstring input;
    std::string expected;
};

std::vector<BadUtf16> const bad_utf16 = {
    {"high before ASCII", {0xDBFF, u'a'}, "\xEF\xBF\xBD" "a"},
    {"two highs, then a low", {0xD83D, 0xD83D, 0xDE00}, "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
};

TEST(Utf, LoneSurrogatesBecomeReplacementCharacters)
{
    Kxt::codecvt_ustring_to_string const lenient("utf-8", false);
    Kxt::codecvt_ustring_to_string const strict("UTF8", true);
    for (BadUtf16 const &c : bad_utf16) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Kxt::to_string(c.input), c.expected);
        EXPECT_EQ(lenient(c.input), c.expected);
        EXPECT_TRUE(lenient.failed());
        EXPECT_EQ(strict(c.input), c.expected.substr(0, c.expected.find("\xEF\xBF\xBD")));
        EXPECT_TRUE(strict.failed());
    }
    // Surrogates can't be asked for as code points either.
    std::string out;
    Kxt::append_utf8(out, 0xDFFF);
    Kxt::append_utf8(out, 0x110000);
    EXPECT_EQ(out, "\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
