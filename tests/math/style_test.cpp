// Styles: names and numbers of the attributes, typed access that answers only for the right type,
// the refused values, the font merge of single parts, and the settings that MathInfo takes from a
// style.
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
        {3, u"font-italic"},
        {5, u"font-size"},
        {101, u"scriptlevel"},
        {103, u"scriptsizemultiplier"},
        {106, u"background"},
        {108, u"wrap-lines"},
    };
    for (Case const &c : table) {
        EXPECT_EQ(style.id(c.name), c.id) << c.id;
        EXPECT_EQ(std::u16string(style.attribute_name(c.id)), c.name) << c.id;
    }
    // Exact comparison: no prefix, no case folding, no trailing blank.
    for (char16_t const *name : {u"Font", u"font-", u"wrap-lines "})
        EXPECT_EQ(style.id(name), -1);
    EXPECT_EQ(style.id(nullptr), -1);

    // A text style knows only its own six.
    TextStyle text;
    EXPECT_EQ(text.id(u"font-size"), 5);
    EXPECT_EQ(text.id(u"scriptlevel"), -1);
    EXPECT_EQ(std::u16string(text.attribute_name(106)), u"");
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
        {2, k_font | k_string},
        {3, k_font | k_boolean},
        {5, k_font | k_size},
        {6, k_color},
        {101, k_number},
        {104, k_size},
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
        // A refusal leaves the output alone.
        if (!has(k_number)) {
            EXPECT_EQ(m, -5) << row.id;
        }
        if (!has(k_font)) {
            EXPECT_EQ(f, Font(u"Marker", 999, true, true)) << row.id;
        }
    }

    // The setters follow the same table.
    EXPECT_FALSE(style.set_number(104, 200));  // a size, not a number
    EXPECT_FALSE(style.set_size(101, 2));      // a number, not a size
}

TEST(MathStyle, RefusesValuesThatBreakTheArithmetic)
{
    MathStyle style;
    long n = 0;
    // A multiplier of 0 or less would make a negative script level divide by it.
    EXPECT_FALSE(style.set_number(103, 0));
    EXPECT_TRUE(style.number(103, n));
    EXPECT_EQ(n, 71);
    EXPECT_TRUE(style.set_number(103, 1));

    EXPECT_FALSE(style.set_size(104, -1));
    EXPECT_TRUE(style.set_size(104, 0));

    EXPECT_FALSE(style.set_size(5, 0));
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
        {4, Font(u"Ignored", 1, false, false), Font(u"Georgia", 300, false, true)},
        {2, Font(u"Palatino", 1, true, true), Font(u"Palatino", 300, false, true)},
        {1, Font(u"Arial", 200, true, false), Font(u"Arial", 200, true, false)},
    };
    for (Write const &w : writes) {
        ASSERT_TRUE(style.set_font(w.id, w.given)) << w.id;
        Font now;
        ASSERT_TRUE(style.font(1, now));
        EXPECT_EQ(now, w.expected) << w.id;
    }

    EXPECT_TRUE(style.set_boolean(3, true));
    EXPECT_TRUE(style.set_size(5, 260));
    EXPECT_TRUE(style.set_string(2, u"Verdana"));
    EXPECT_EQ(style.text_font(), Font(u"Verdana", 260, true, true));
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
    EXPECT_EQ(info.font(MathString::f_text), Font(u"Georgia", 300, true, false));
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
}
