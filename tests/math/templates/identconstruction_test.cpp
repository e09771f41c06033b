// Numbers and identifiers from text: the number scan and the tree a number becomes, plain
// identifiers, identifiers with accents and subscripts from a host, the made-up names of decorated
// identifiers and their way back, and the numeric scans of setup attributes.
#include "setup_support.h"

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <string>

#include "tavi/kxt/utf.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/templates/decimalpoint.h"
#include "tavi/math/templates/mathidentmapping.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/numberscan.h"
#include "tavi/math/templates/setupscan.h"
#include "tavi/math/templates/templatetable.h"

using namespace Tavi;
using namespace SetupTest;

namespace {

// The templates that numbers with an exponent are built from.
std::string const product_and_power =
    in_root(R"(<content id="times" arity="2*"/><content id="power" arity="2"/>)");

std::string number_tree(TemplateTable &table, char const *text)
{
    MathNode *node = table.number_from_string(Kxt::to_ustring(text).c_str());
    std::string const out = describe_node(node);
    discard(node);
    return out;
}

std::string cat_tree(TemplateTable &table, wstring const &text)
{
    MathNode *node = table.get_template(u"ci")->create_cat_node(text.c_str());
    std::string const out = describe_node(node);
    discard(node);
    return out;
}

}  // namespace

TEST(NumberScan, SignsPointsAndExponents)
{
    struct Case
    {
        char const *text;
        wchar point;
        bool ok;
        char const *mantissa;
        char const *exponent;
        bool negative, negative_exponent;
    };
    Case const cases[] = {
        {" -1.5e-3 ", u'.', true, "1.5", "3", true, true},
        {"+ 1", u'.', true, "1", "", false, false},
        {"1 e 5", u'.', true, "1", "5", false, false},
        {"12D+ 4", u'.', true, "12", "4", false, false},
        {"1,5", u',', true, "1,5", "", false, false},
        {"1.", u'.', false, "", "", false, false},
        {".5", u'.', false, "", "", false, false},
        {"1e+", u'.', false, "", "", false, false},
        {"1e5x", u'.', false, "", "", false, false},
        {"1.5", u',', false, "", "", false, false},  // with the comma in force, "." ends the number
        {"1,5", u'.', false, "", "", false, false},
        {"--1", u'.', false, "", "", false, false},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(std::string(c.text) + " point " + static_cast<char>(c.point));
        ScannedNumber scanned;
        ASSERT_EQ(c.ok, scan_number(Kxt::to_ustring(c.text).c_str(), c.point, scanned));
        if (!c.ok)
            continue;
        EXPECT_EQ(c.mantissa, narrow(scanned.mantissa));
        EXPECT_EQ(c.exponent, narrow(scanned.exponent));
        EXPECT_EQ(c.negative, scanned.negative);
        EXPECT_EQ(c.negative_exponent, scanned.negative_exponent);
    }
    ScannedNumber scanned;
    EXPECT_FALSE(scan_number(nullptr, u'.', scanned));
}

// A number: a sign is a sum of one operand signed minus, an exponent the product of the mantissa and a
// power of ten. An identifier: one name of letters and digits, not starting with a digit.
TEST(FromString, NumbersAndIdentifiers)
{
    TemplateTable table(nullptr);
    ASSERT_TRUE(read_setup(table, product_and_power));
    struct Case
    {
        bool number;
        char const *text;
        char const *tree;
    };
    Case const cases[] = {
        {true, "42", "cn:42"},
        {true, "+ 1", "cn:1"},
        {true, "- 7", "plus[-](cn:7)"},
        {true, "2E4", "times(cn:2,power(cn:10,cn:4))"},
        {true, "-1.5e-3", "plus[-](times(cn:1.5,power(cn:10,plus[-](cn:3))))"},
        {true, "1e5x", "null"},
        {false, " abc ", "ci:abc"}, {false, "a9", "ci:a9"}, {false, "9a", "null"}, {false, "a_b", "null"},
        {false, "-1", "null"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.text);
        wstring const text = Kxt::to_ustring(c.text);
        MathNode *node = c.number ? table.number_from_string(text.c_str()) : table.ident_from_string(text.c_str());
        EXPECT_EQ(c.tree, describe_node(node));
        discard(node);
    }

    // Without the templates of the product and the power a number with an exponent cannot be made;
    // one without still can.
    TemplateTable bare(nullptr);
    EXPECT_EQ("null", number_tree(bare, "1e5"));
    EXPECT_EQ("plus[-](cn:1)", number_tree(bare, "-1"));
}

// Trailing accent characters become accents, nested from the inside out; underscores become
// subscripts that nest to the right; leading and trailing underscores stay in the name.
TEST(IdentCatNode, AccentsAndSubscripts)
{
    TemplateTable table(nullptr);
    struct Case
    {
        wstring text;
        char const *tree;
    };
    Case const cases[] = {
        {u"x.", "dot_accent(ci:x)"},             // text class, 46
        {u"x*", "ast_accent(ci:x)"},             // "*" is set in the symbol class, 42
        {u"x&prime;", "prime_accent(ci:x)"},
        {u"x.^", "circ_accent(dot_accent(ci:x))"},
        {u"ab&prime;&prime;", "prime_accent(prime_accent(ci:ab))"},
        {u".", "ci:."},                          // one character is a name, never an accent
        {u"x&NoSuchName;", "ci"},                // text that isn't a string gives the empty name
        {u"a_b_c", "subscript(ci:a,subscript(ci:b,ci:c))"},
        {u"a_", "ci:a_"},
        {u"a__b", "subscript(ci:a,ci:_b)"},
        {u"_a_b", "subscript(ci:_a,ci:b)"},
        {u"x._y^", "subscript(dot_accent(ci:x),circ_accent(ci:y))"},
        {u"-7", "ci:-7"},                        // a made-up name that was never made
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(narrow(c.text));
        EXPECT_EQ(c.tree, cat_tree(table, c.text));
    }

    table.underline_in_ident_as_subscript(false);
    EXPECT_EQ("ci:a_b", cat_tree(table, u"a_b"));
    EXPECT_EQ("dot_accent(ci:a_b)", cat_tree(table, u"a_b."));
}

// Equal decorated identifiers share one name; plain names and other nodes get none; the name turns
// back into a copy of the expression, and a host's text that is such a name does so too.
TEST(GeneratedIdentNames, RoundTrip)
{
    TemplateTable table(nullptr);
    MathTemplate *ci = table.get_template(u"ci");
    MathNode *sub = ci->create_cat_node(u"a_b");
    MathNode *same = ci->create_cat_node(u"a_b");
    MathNode *accent = ci->create_cat_node(u"x^");
    MathNode *plain = ci->create_cat_node(u"x");
    MathNode *number = table.get_template(u"cn")->create_node(u"1");
    MathNode *dummy = table.get_dummy_template()->create_node();

    EXPECT_EQ(nullptr, table.generated_ident_name(plain));
    EXPECT_EQ(nullptr, table.generated_ident_name(dummy));
    EXPECT_EQ(0, table.generated_ident_count());

    EXPECT_STREQ("-1", table.generated_ident_name(sub));
    EXPECT_STREQ("-1", table.generated_ident_name(same));
    EXPECT_EQ(1, table.generated_ident_count());
    EXPECT_STREQ("-2", table.generated_ident_name(accent));
    EXPECT_EQ(2, table.generated_ident_count());
    ASSERT_NE(nullptr, table.find_generated_ident(same));
    EXPECT_NE(sub, table.find_generated_ident(same)->node);  // the mapping holds its own copy
    EXPECT_EQ(nullptr, table.find_generated_ident(plain));

    MathNode *back = table.decorated_ident(u"-1");
    ASSERT_NE(nullptr, back);
    EXPECT_NE(sub, back);
    EXPECT_TRUE(back->is_equal(sub));
    discard(back);
    for (wchar const *miss : {u"-3", u"1", u"-"}) {
        SCOPED_TRACE(narrow(miss));
        EXPECT_EQ(nullptr, table.decorated_ident(miss));
    }

    EXPECT_EQ("circ_accent(ci:x)", cat_tree(table, u"-2"));
    EXPECT_EQ("subscript(ci:a,ci:b)", cat_tree(table, u"-1"));
    table.map_decorated_idents(false);
    EXPECT_EQ("ci:-1", cat_tree(table, u"-1"));

    for (MathNode *node : {sub, same, accent, plain, number, dummy})
        discard(node);
}

// With the locale not asked, the point is "." whatever the locale; NumberTemplate then keeps the text.
TEST(DecimalPoint, OffByDefaultAndNumbersKeepTheirText)
{
    EXPECT_FALSE(use_locale_decimal_point());
    EXPECT_EQ(u'.', decimal_point());
    TemplateTable table(nullptr);
    MathNode *node = table.get_template(u"cn")->create_cat_node(u"1.5");
    EXPECT_EQ("cn:1.5", describe_node(node));
    discard(node);
    // Asked, the point is one of the two, and the locale in force is left as it was.
    std::string const before = std::setlocale(LC_NUMERIC, nullptr);
    use_locale_decimal_point(true);
    wchar const point = decimal_point();
    EXPECT_TRUE(point == u'.' || point == u',');
    EXPECT_EQ(before, std::setlocale(LC_NUMERIC, nullptr));
    use_locale_decimal_point(false);
    EXPECT_EQ(u'.', decimal_point());
}

// The numeric scans of setup attributes: an over-long number is clamped, not wrapped, and a pair
// without its comma is refused with the outputs left alone.
TEST(SetupScan, OverlongNumbersClampAndBadPairsAreRefused)
{
    int big = 0;
    EXPECT_TRUE(scan_setup_int(u"99999999999999", big));
    EXPECT_EQ(INT_MAX, big);
    long a = -99;
    long b = -99;
    EXPECT_FALSE(scan_setup_long_pair(u"1 2", a, b));
    EXPECT_EQ(-99, a);
    EXPECT_TRUE(scan_setup_long_pair(u" 1 , -1 ", a, b));
    EXPECT_EQ(-1, b);
}
