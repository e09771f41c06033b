// Styles: names and numbers of the attributes, typed access that answers only for the right type,
// the font merge of single parts, the fallback forms, the shared font description, and the settings
// that MathInfo takes from a style.
#include "tavi/math/mathinfo.h"
#include "tavi/math/mathstyle.h"

#include <gtest/gtest.h>

#include <string>

using namespace Tavi;

TEST(MathStyle, NamesAndNumbers)
{
    MathStyle style;
    struct Case
    {
        long id;
        char16_t const *name;
    } const table[] = {
        {1, u"font"},
        {2, u"font-family"},
        {3, u"font-italic"},
        {4, u"font-bold"},
        {5, u"font-size"},
        {6, u"text-color"},
        {101, u"scriptlevel"},
        {102, u"displaystyle"},
        {103, u"scriptsizemultiplier"},
        {104, u"scriptminsize"},
        {105, u"transparent-bgnd"},
        {106, u"background"},
        {107, u"slanted-identifiers"},
        {108, u"wrap-lines"},
    };
    for (Case const &c : table) {
        EXPECT_EQ(style.id(c.name), c.id) << c.id;
        EXPECT_EQ(std::u16string(style.attribute_name(c.id)), c.name) << c.id;
    }
    // Exact comparison: no prefix, no case folding, no trailing blank.
    for (char16_t const *name : {u"", u"Font", u"font-", u"fontsize", u"wrap-lines ", u"scriptlevelx"})
        EXPECT_EQ(style.id(name), -1);
    EXPECT_EQ(style.id(nullptr), -1);
    for (long id : {0L, 7L, 100L, 109L, -1L})
        EXPECT_EQ(std::u16string(style.attribute_name(id)), u"") << id;

    // A text style knows only its own six.
    TextStyle text;
    EXPECT_EQ(text.id(u"font-size"), 5);
    EXPECT_EQ(text.id(u"scriptlevel"), -1);
    EXPECT_EQ(std::u16string(text.attribute_name(106)), u"");
}

TEST(MathStyle, Defaults)
{
    MathStyle style;
    long n = 0;
    bool b = false;
    Color c;
    Font f;

    ASSERT_TRUE(style.font(1, f));
    EXPECT_EQ(f, Font(u"Times New Roman", 240, false, false));
    ASSERT_TRUE(style.color(6, c));
    EXPECT_EQ(c, Color::black);

    struct NumberCase
    {
        long id;
        long value;
    } const numbers[] = {{101, 0}, {103, 71}};
    for (NumberCase const &k : numbers) {
        ASSERT_TRUE(style.number(k.id, n)) << k.id;
        EXPECT_EQ(n, k.value) << k.id;
    }
    ASSERT_TRUE(style.size(104, n));
    EXPECT_EQ(n, 160);

    struct BoolCase
    {
        long id;
        bool value;
    } const booleans[] = {{102, true}, {105, true}, {107, true}, {108, true}, {3, false}, {4, false}};
    for (BoolCase const &k : booleans) {
        b = !k.value;
        ASSERT_TRUE(style.boolean(k.id, b)) << k.id;
        EXPECT_EQ(b, k.value) << k.id;
    }
    ASSERT_TRUE(style.color(106, c));
    EXPECT_EQ(c, Color::white);
}

// Each attribute answers exactly the getters of its own type; every other getter says false and
// leaves its output alone.
TEST(MathStyle, TypedAccessAnswersOnlyForTheRightType)
{
    MathStyle style;
    enum Kind : unsigned { k_font = 1, k_string = 2, k_boolean = 4, k_size = 8, k_number = 16, k_color = 32 };
    struct Row
    {
        long id;
        unsigned kinds;
    };
    Row const rows[] = {
        {1, k_font},
        {2, k_font | k_string},
        {3, k_font | k_boolean},
        {4, k_font | k_boolean},
        {5, k_font | k_size},
        {6, k_color},
        {101, k_number},
        {102, k_boolean},
        {103, k_number},
        {104, k_size},
        {105, k_boolean},
        {106, k_color},
        {107, k_boolean},
        {108, k_boolean},
        {0, 0},
        {999, 0},
    };
    for (Row const &row : rows) {
        auto has = [&](Kind k) { return (row.kinds & k) != 0; };
        Font f(u"Marker", 999, true, true);
        std::u16string s = u"marker";
        bool b = true;
        long n = -5;
        Color c(9, 9, 9);
        EXPECT_EQ(style.font(row.id, f), has(k_font)) << row.id;
        EXPECT_EQ(style.string(row.id, s), has(k_string)) << row.id;
        EXPECT_EQ(style.size(row.id, n), has(k_size)) << row.id;
        long m = -5;
        EXPECT_EQ(style.number(row.id, m), has(k_number)) << row.id;
        EXPECT_EQ(style.color(row.id, c), has(k_color)) << row.id;
        EXPECT_EQ(style.boolean(row.id, b), has(k_boolean)) << row.id;
        long coord = -5;
        Rect r(1, 1, 1, 1);
        EXPECT_FALSE(style.coord(row.id, coord));
        EXPECT_FALSE(style.rect(row.id, r));
        EXPECT_EQ(coord, -5);
        if (!has(k_string)) {
            EXPECT_EQ(s, u"marker") << row.id;
        }
        if (!has(k_size)) {
            EXPECT_EQ(n, -5) << row.id;
        }
        if (!has(k_number)) {
            EXPECT_EQ(m, -5) << row.id;
        }
        if (!has(k_color)) {
            EXPECT_EQ(c, Color(9, 9, 9)) << row.id;
        }
        if (!has(k_font)) {
            EXPECT_EQ(f, Font(u"Marker", 999, true, true)) << row.id;
        }
    }

    // The setters follow the same table.
    EXPECT_FALSE(style.set_number(104, 200));  // a size, not a number
    EXPECT_FALSE(style.set_size(101, 2));      // a number, not a size
    EXPECT_FALSE(style.set_boolean(6, true));
    EXPECT_FALSE(style.set_color(102, Color::white));
    EXPECT_FALSE(style.set_string(1, u"Arial"));
    EXPECT_FALSE(style.set_font(6, Font()));
    EXPECT_FALSE(style.set_coord(1, 1));
    EXPECT_FALSE(style.set_rect(1, Rect()));
}

// What a setter stores, the typed getter and the named accessor both read.
TEST(MathStyle, SettersStoreWhatGettersRead)
{
    MathStyle style;
    long n = 0;
    EXPECT_TRUE(style.set_number(101, -2));
    EXPECT_EQ(style.scriptlevel(), -2);
    EXPECT_TRUE(style.set_number(103, 80));
    EXPECT_TRUE(style.number(103, n));
    EXPECT_EQ(n, 80);
    EXPECT_TRUE(style.set_size(104, 100));
    EXPECT_TRUE(style.size(104, n));
    EXPECT_EQ(n, 100);
    for (long id : {102L, 105L, 107L, 108L})
        EXPECT_TRUE(style.set_boolean(id, false)) << id;
    EXPECT_FALSE(style.displaystyle() || style.transparent_bgnd() || style.slanted_identifiers() ||
                 style.wrap_lines());
    // The background is not the text colour.
    EXPECT_TRUE(style.set_color(106, Color(10, 20, 30)));
    EXPECT_TRUE(style.set_color(6, Color(1, 2, 3)));
    EXPECT_EQ(style.background(), Color(10, 20, 30));
    EXPECT_EQ(style.text_color(), Color(1, 2, 3));
}

TEST(MathStyle, RefusesValuesThatBreakTheArithmetic)
{
    MathStyle style;
    long n = 0;
    // A multiplier of 0 or less would make a negative script level divide by it.
    EXPECT_FALSE(style.set_number(103, 0));
    EXPECT_FALSE(style.set_number(103, -50));
    EXPECT_TRUE(style.number(103, n));
    EXPECT_EQ(n, 71);
    EXPECT_TRUE(style.set_number(103, 1));

    EXPECT_FALSE(style.set_size(104, -1));
    EXPECT_TRUE(style.set_size(104, 0));

    EXPECT_FALSE(style.set_size(5, 0));
    EXPECT_FALSE(style.set_size(5, -240));
    EXPECT_TRUE(style.size(5, n));
    EXPECT_EQ(n, 240);

    EXPECT_FALSE(style.set_string(2, nullptr));
    std::u16string s;
    EXPECT_TRUE(style.string(2, s));
    EXPECT_EQ(s, u"Times New Roman");
}

// "font" replaces the whole output; the four parts copy one property each and leave the rest of the
// output as it was.
TEST(TextStyle, FontIsAMergeBothWays)
{
    MathStyle style;
    ASSERT_TRUE(style.set_font(1, Font(u"Georgia", 300, true, true)));
    Font stored;
    ASSERT_TRUE(style.font(1, stored));
    EXPECT_EQ(stored, Font(u"Georgia", 300, true, true));

    Font const start(u"Arial", 100, false, false);
    struct Case
    {
        long id;
        Font expected;
    } const reads[] = {
        {1, Font(u"Georgia", 300, true, true)},
        {2, Font(u"Georgia", 100, false, false)},
        {3, Font(u"Arial", 100, false, true)},
        {4, Font(u"Arial", 100, true, false)},
        {5, Font(u"Arial", 300, false, false)},
    };
    for (Case const &c : reads) {
        Font out(start);
        ASSERT_TRUE(style.font(c.id, out)) << c.id;
        EXPECT_EQ(out, c.expected) << c.id;
        EXPECT_EQ(start, Font(u"Arial", 100, false, false)) << c.id;
    }

    // The other way: each write changes one property of the stored font.
    struct Write
    {
        long id;
        Font given;
        Font expected;
    } const writes[] = {
        {5, Font(u"Ignored", 180, false, false), Font(u"Georgia", 180, true, true)},
        {3, Font(u"Ignored", 1, false, false), Font(u"Georgia", 180, true, false)},
        {4, Font(u"Ignored", 1, false, false), Font(u"Georgia", 180, false, false)},
        {2, Font(u"Palatino", 1, true, true), Font(u"Palatino", 180, false, false)},
        {1, Font(u"Arial", 200, true, false), Font(u"Arial", 200, true, false)},
    };
    for (Write const &w : writes) {
        ASSERT_TRUE(style.set_font(w.id, w.given)) << w.id;
        Font now;
        ASSERT_TRUE(style.font(1, now));
        EXPECT_EQ(now, w.expected) << w.id;
    }

    // The parts are also plain attributes of their own types.
    long size = 0;
    bool bold = false;
    std::u16string family;
    EXPECT_TRUE(style.size(5, size));
    EXPECT_EQ(size, 200);
    EXPECT_TRUE(style.boolean(4, bold));
    EXPECT_TRUE(bold);
    EXPECT_TRUE(style.string(2, family));
    EXPECT_EQ(family, u"Arial");
    EXPECT_TRUE(style.set_boolean(3, true));
    EXPECT_TRUE(style.set_size(5, 260));
    EXPECT_TRUE(style.set_string(2, u"Verdana"));
    EXPECT_EQ(style.text_font(), Font(u"Verdana", 260, true, true));
}

// A font read from a style shares its description; a later change of the style's font makes a new
// one, and what was read stays as it was.
TEST(TextStyle, FontDescriptionsAreShared)
{
    TextStyle style;
    Font read;
    ASSERT_TRUE(style.font(1, read));
    EXPECT_EQ(read.spec(), style.text_font().spec());

    ASSERT_TRUE(style.set_size(5, 480));
    EXPECT_EQ(read.size(), 240);
    EXPECT_EQ(style.text_font().size(), 480);
    EXPECT_NE(read.spec(), style.text_font().spec());

    Font given(u"Courier", 100, false, false);
    ASSERT_TRUE(style.set_font(1, given));
    given.size(999);
    EXPECT_EQ(style.text_font().size(), 100);
}

// The forms with a fallback: the fallback goes in when the getter doesn't answer, and the answer is
// the getter's.
TEST(Style, FallbackForms)
{
    MathStyle style;
    long n = 0;
    EXPECT_FALSE(style.number(104, n, 33));  // a size, so the number getter says no
    EXPECT_EQ(n, 33);
    EXPECT_TRUE(style.size(104, n, 33));
    EXPECT_EQ(n, 160);
    EXPECT_FALSE(style.coord(1, n, -7));
    EXPECT_EQ(n, -7);

    bool b = true;
    EXPECT_FALSE(style.boolean(999, b, false));
    EXPECT_FALSE(b);
    EXPECT_TRUE(style.boolean(102, b, false));
    EXPECT_TRUE(b);

    Color c;
    EXPECT_FALSE(style.color(5, c, Color(7, 7, 7)));
    EXPECT_EQ(c, Color(7, 7, 7));
    EXPECT_TRUE(style.color(106, c, Color(7, 7, 7)));
    EXPECT_EQ(c, Color::white);

    Font f;
    EXPECT_FALSE(style.font(6, f, Font(u"Fallback", 100, false, false)));
    EXPECT_EQ(f, Font(u"Fallback", 100, false, false));
    // A merge with a fallback: the fallback is not used when the part answers.
    EXPECT_TRUE(style.font(5, f, Font(u"Other", 1, true, true)));
    EXPECT_EQ(f, Font(u"Fallback", 240, false, false));

    Rect r;
    EXPECT_FALSE(style.rect(1, r, Rect(1, 2, 3, 4)));
    EXPECT_EQ(r, Rect(1, 2, 3, 4));

    std::u16string s = u"x";
    EXPECT_FALSE(style.string(1, s, u"none"));
    EXPECT_EQ(s, u"none");
    EXPECT_FALSE(style.string(1, s, nullptr));
    EXPECT_EQ(s, u"");
    EXPECT_TRUE(style.string(2, s, u"none"));
    EXPECT_EQ(s, u"Times New Roman");
}

// ---- MathInfo reads its settings from the style ----

// The script-size arithmetic itself is MathInfo's (see mathinfo_test); here only that every setting
// comes from the style.
TEST(MathInfoFromStyle, TakesEveryAttributeFromTheStyle)
{
    MathStyle style;
    ASSERT_TRUE(style.set_font(MathStyle::a_font, Font(u"Georgia", 300, true, false)));
    ASSERT_TRUE(style.set_color(MathStyle::a_text_color, Color(10, 20, 30)));
    ASSERT_TRUE(style.set_number(MathStyle::a_scriptlevel, 1));
    ASSERT_TRUE(style.set_boolean(MathStyle::a_displaystyle, false));
    ASSERT_TRUE(style.set_boolean(MathStyle::a_slanted_identifiers, false));
    ASSERT_TRUE(style.set_boolean(MathStyle::a_wrap_lines, false));
    ASSERT_TRUE(style.set_size(MathStyle::a_scriptminsize, 50));
    ASSERT_TRUE(style.set_number(MathStyle::a_scriptsizemultiplier, 50));
    // Not read by MathInfo: the background.
    ASSERT_TRUE(style.set_color(MathStyle::a_background, Color(1, 1, 1)));

    MathInfo info(&style);
    EXPECT_EQ(info.style(), &style);
    EXPECT_EQ(info.font(MathString::f_text), Font(u"Georgia", 300, true, false));
    EXPECT_EQ(info.font(MathString::f_upright), Font(u"Georgia", 300, true, false));
    // The symbol font takes the text font's weight; symbol, extension and open face its size.
    EXPECT_EQ(info.font(MathString::f_symbol), Font(u"Symbol", 300, true, false));
    EXPECT_EQ(info.font(MathString::f_extension), Font(u"KMT Math Ext", 300, false, false));
    EXPECT_EQ(info.font(MathString::f_open_face), Font(u"KMT Math Open Face", 300, false, false));
    EXPECT_EQ(info.color(), Color(10, 20, 30));
    EXPECT_EQ(info.scriptlevel(), 1);
    EXPECT_FALSE(info.displaystyle());
    EXPECT_FALSE(info.slanted_identifiers());
    EXPECT_FALSE(info.wrap_lines());
    EXPECT_EQ(info.scriptminsize(), 50);
    // Level 1 at 50 percent: 300*50/100 = 150, above the minimum of 50.
    EXPECT_EQ(info.real_font_size(MathString::f_text), 150);
    EXPECT_EQ(info.real_font(MathString::f_symbol), Font(u"Symbol", 150, true, false));
}

// A style class with attributes of its own names and numbers is read through its own names.
TEST(MathInfoFromStyle, AttributesAreFoundByName)
{
    class Renumbered : public MathStyle
    {
    public:
        long id(wchar const *name) const override
        {
            long const id = MathStyle::id(name);
            return id == a_scriptminsize ? 900 : id;
        }
        bool size(long id, long &out) const override
        {
            if (id == 900)
                return MathStyle::size(a_scriptminsize, out);
            if (id == a_scriptminsize)
                return false;
            return MathStyle::size(id, out);
        }
    };
    Renumbered style;
    style.set_size(MathStyle::a_scriptminsize, 10);
    MathInfo info(&style);
    EXPECT_EQ(info.scriptminsize(), 10);
}
