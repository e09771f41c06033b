// Typing, navigation and clicks, driven through the view exactly as a host drives it, with the
// default setup file: each row is a key script and what it must leave behind.
#include <gtest/gtest.h>

#include <vector>

#include "support/edit_session.h"
#include "tavi/editing/mathselection.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"

using namespace TaviTest;

namespace {

struct Typed
{
    char const *keys;
    char const *content;
};

// A fresh 2 by 2 table whenever a template asks for a size.
void two_by_two(EditSession &e)
{
    e.scene.array_dimensions_query([](std::size_t &rows, std::size_t &cols, char16_t const *) {
        rows = 2;
        cols = 2;
        return true;
    });
}

}  // namespace

TEST(Typing, KeyScriptsBuildFormulas)
{
    Typed const rows[] = {
        // Whole formulas, as a person types them: space walks out of a finished operand.
        {"x=/-b ±{C-R}b^2 -4{C-T}a{C-T}c{Down}2{C-T}a",
         R"(<expr tmp="eq"><ident>x</ident><expr tmp="divide"><expr tmp="plusminus"><plus sgn="-"><ident>b</ident>)"
         R"(</plus><expr tmp="sqrt"><plus sgn="+-"><expr tmp="power"><ident>b</ident><num>2</num></expr>)"
         R"(<expr tmp="implicit_times"><num>4</num><ident>a</ident><ident>c</ident></expr></plus></expr></expr>)"
         R"(<expr tmp="implicit_times"><num>2</num><ident>a</ident></expr></expr></expr>)"},
        {"e^i{C-T}π  +1 =0",
         R"(<expr tmp="eq"><plus sgn="++"><expr tmp="power"><ident>e</ident><expr tmp="implicit_times">)"
         R"(<ident>i</ident><ident>π</ident></expr></expr><num>1</num></plus><num>0</num></expr>)"},
        {"{C-M}a{Tab}b{Tab}c{Tab}d",
         R"(<tab tmp="matrix" rows="2" cols="2"><ident>a</ident><ident>b</ident><ident>c</ident><ident>d</ident></tab>)"},
        {"{C-S-S}{Tab}k=1 {Tab}n{Tab}k",
         R"(<expr tmp="sum"><ident>k</ident><expr tmp="eq"><ident>k</ident><num>1</num></expr><ident>n</ident></expr>)"},
        // Operators typed again extend the node they form; a minus works the signs.
        {"x+y+", R"(<plus sgn="+++"><ident>x</ident><ident>y</ident><plh /></plus>)"},
        {"x+y{Left}{Left}+", R"(<plus sgn="+++"><ident>x</ident><plh /><ident>y</ident></plus>)"},
        {"x+y-", R"(<plus sgn="++-"><ident>x</ident><ident>y</ident><plh /></plus>)"},
        {"x+y -", R"(<plus sgn="++-"><ident>x</ident><ident>y</ident><plh /></plus>)"},
        {"-", R"(<plus sgn="-"><plh /></plus>)"},
        {"a=b=", R"(<expr tmp="eq"><ident>a</ident><ident>b</ident><plh /></expr>)"},
        {"(x,y", R"(<expr tmp="fenced"><ident>x</ident><ident>y</ident></expr>)"},
        {"f(x", R"(<expr tmp="fenced"><ident>fx</ident></expr>)"},
        // Ctrl+N toggles the signs of a sum, or of one term, and takes a negation away.
        {"x+y {C-N}", R"(<plus sgn="--"><ident>x</ident><ident>y</ident></plus>)"},
        {"x+y{C-N}", R"(<plus sgn="+-"><ident>x</ident><ident>y</ident></plus>)"},
        {"-x{C-N}", "<ident>x</ident>"},
        {"-x {C-N}", "<ident>x</ident>"},
        {"x{C-N}", R"(<plus sgn="-"><ident>x</ident></plus>)"},
        // Atoms: the caret edits text; numbers take digits and one decimal point only.
        {"12{Left}3", "<num>132</num>"},
        {"1.5.", "<num>1.5</num>"},
        {"1x", "<num>1</num>"},
        {".5", "<num>0.5</num>"},
        {"ab{Left}{Left}{Del}", "<ident>b</ident>"},
        {"a{Del}", "<ident>a</ident>"},
        {"a{Left}{Del}", "<plh />"},
        {"ab{BS}", "<ident>a</ident>"},
        {"a{BS}", "<plh />"},
        {"a{Left}{BS}", "<ident>a</ident>"},
        {"x+y {Del}", "<plh />"},
        {"x+{Del}", R"(<ident>x</ident>)"},
        {"x+y {BS}", "<plh />"},
        {"\"ab c", "<str>ab c</str>"},
        {"x+\"q+", R"(<plus sgn="+++"><ident>x</ident><str>q</str><plh /></plus>)"},
        // Scripts of identifiers hold identifiers: a digit at the base is refused, in the index it
        // is identifier text.
        {"x_1", "<isub><ident>x</ident><ident>1</ident></isub>"},
        {"x_1{Left}{Left}2", "<isub><ident>x2</ident><ident>1</ident></isub>"},
        {"_{Tab}1", "<isub><plh /><ident>1</ident></isub>"},
        // Typed Unicode: letters become identifiers, operators enter their templates.
        {"α+∞", R"(<plus sgn="++"><ident>α</ident><ident>∞</ident></plus>)"},
        {"𝔸+a𝔹", R"(<plus sgn="++"><ident>𝔸</ident><ident>a𝔹</ident></plus>)"},
        {"x≤y≤z", R"(<expr tmp="leq"><ident>x</ident><ident>y</ident><ident>z</ident></expr>)"},
        {"a±b", R"(<expr tmp="plusminus"><ident>a</ident><ident>b</ident></expr>)"},
        {"a≠b", R"(<expr tmp="neq"><ident>a</ident><ident>b</ident></expr>)"},
        {"a≥b", R"(<expr tmp="geq"><ident>a</ident><ident>b</ident></expr>)"},
        {"a×b", R"(<expr tmp="vectorproduct"><ident>a</ident><ident>b</ident></expr>)"},
        {"x→0", R"(<expr tmp="tendsto"><ident>x</ident><num>0</num></expr>)"},
        {"|x", R"(<expr tmp="abs"><ident>x</ident></expr>)"},
        {"a/b", R"(<expr tmp="divide"><ident>a</ident><ident>b</ident></expr>)"},
        {"{C-S-R}x{Tab}3", R"(<expr tmp="root"><ident>x</ident><num>3</num></expr>)"},
        {"{C-I}f{Tab}x", R"(<expr tmp="int"><ident>f</ident><ident>x</ident></expr>)"},
        {"n!", R"(<expr tmp="factorial"><ident>n</ident></expr>)"},
        {"{{}a", R"(<expr tmp="set"><ident>a</ident></expr>)"},
        {"[a{Tab}b", R"(<expr tmp="interval"><ident>a</ident><ident>b</ident></expr>)"},
        {"{C-S-P}k", R"(<expr tmp="product"><ident>k</ident><plh /><plh /></expr>)"},
    };
    for (Typed const &row : rows) {
        EditSession e;
        two_by_two(e);
        e.type(row.keys);
        EXPECT_EQ(e.content(), row.content) << row.keys;
        EXPECT_TRUE(e.selection()->path_valid()) << row.keys;
    }
}

TEST(Typing, RefusedCharactersAreNotUsed)
{
    struct Refused
    {
        char const *keys;
        char16_t c;
    };
    Refused const rows[] = {
        {"12", u'x'},        // a number takes no letters
        {"1.5", u'.'},       // nor a second decimal point
        {"_", u'1'},         // the base of a script is no number
        {"", 0xdc00},        // a second surrogate half without a first means nothing
        {"", 0xffff},        // nor a non-character
        {"", 7},             // nor a control character
    };
    for (Refused const &row : rows) {
        EditSession e;
        e.type(row.keys);
        std::string const before = e.content();
        EXPECT_FALSE(e.character(row.c)) << row.keys << " + " << int(row.c);
        EXPECT_EQ(e.content(), before) << row.keys;
    }
}

// Where the selection and the caret stand after keys: arrows, Tab, shift+Tab and space.
TEST(Typing, NavigationLandsOnTheNeighbour)
{
    struct Moved
    {
        char const *start;
        char const *keys;
        std::vector<long> path;
        long caret;
    };
    Moved const rows[] = {
        // Inside an atom the caret moves; at its end the neighbour is entered at its near end.
        {"xy+ab", "{Left}", {1}, 1},
        {"xy+ab", "{Left}{Left}{Left}", {0}, 2},
        {"xy+ab", "{Left}{Left}{Left}{Left}{Left}{Right}{Right}{Right}", {1}, 0},
        // At the end of the formula an arrow goes nowhere and the selection stays.
        {"xy+ab", "{Right}{Right}", {1}, 2},
        // Up and down between numerator and denominator, from deep inside.
        {"a+b/c", "{Up}", {1, 0}, 1},
        {"a/b+c", "{Up}", {0}, 1},
        {"a/b+c{Up}", "{Down}", {1}, -1},
        // Tab and shift+Tab go round the siblings.
        {"a+b+c", "{Tab}", {0}, 1},
        {"a+b+c", "{S-Tab}{S-Tab}{S-Tab}", {2}, 1},
        // Space selects outward, shift+space inward; ctrl+space the whole expression.
        {"a+b/c", " ", {1}, -1},
        {"a+b/c", "  {S-Space}", {0}, 1},
        {"a+b/c", "{C-Space}", {}, -1},
        {"a+b/c", "{C-Space}{Tab}", {}, -1},
    };
    for (Moved const &row : rows) {
        EditSession e;
        e.type(row.start);
        e.type(row.keys);
        EXPECT_EQ(e.path(), row.path) << row.start << " then " << row.keys;
        EXPECT_EQ(e.caret(), row.caret) << row.start << " then " << row.keys;
    }
}

// A click selects the atom under the point, and puts its caret at the nearer character boundary.
TEST(Typing, ClicksSelectWhatIsUnderThePoint)
{
    EditSession e;
    e.type("x=/-b ±{C-R}b^2 -4{C-T}a{C-T}c{Down}2{C-T}a");
    std::vector<std::vector<long>> const leaves = {
        {0}, {1, 0, 0, 0}, {1, 0, 1, 0, 0, 0}, {1, 0, 1, 0, 0, 1}, {1, 0, 1, 0, 1, 2}, {1, 1, 0}, {1, 1, 1},
    };
    for (auto const &leaf : leaves) {
        Tavi::Rect const r = e.box_of(leaf);
        ASSERT_GT(r.right(), r.left());
        e.click(Tavi::Point((r.left() + r.right()) / 2, (r.top() + r.bottom()) / 2));
        EXPECT_EQ(e.path(), leaf);
    }
    // Outside the formula nothing changes.
    e.click(Tavi::Point(600, 400));
    EXPECT_EQ(e.path(), leaves.back());

    EditSession word;
    word.type("abcd");
    Tavi::Rect const r = word.box_of({});
    word.click(Tavi::Point(r.left() + 1, (r.top() + r.bottom()) / 2));
    EXPECT_EQ(word.caret(), 0);
    word.click(Tavi::Point(r.right() - 1, (r.top() + r.bottom()) / 2));
    EXPECT_EQ(word.caret(), 4);
}

// A read-only formula refuses every change without a word; navigation and copy go on.
TEST(Typing, ReadOnlyFormulaRefusesChanges)
{
    MemoryFrame frame;
    EditSession e;
    two_by_two(e);
    e.type("a+b/c");
    e.scene.formula()->read_only(true);
    std::string const before = e.content();
    for (char const *keys : {"x", "+", "-", "{C-N}", "{Del}", "{BS}", "{C-M}", "{C-R}", "{Left}{Del}"}) {
        e.type(keys);
        EXPECT_EQ(e.content(), before) << keys;
    }
    EXPECT_TRUE(e.character(u'q'));  // swallowed, not handed back to the host
    EXPECT_FALSE(e.scene.can_insert_overlay());
    EXPECT_FALSE(e.scene.can_insert_symbol_overlay(u"divide"));
    EXPECT_FALSE(e.scene.can_insert_number());
    EXPECT_FALSE(e.scene.can_delete());
    EXPECT_FALSE(e.scene.can_paste());
    e.scene.do_insert_overlay(u"sqrt");
    e.scene.do_insert_number(u"42");
    e.scene.do_insert_char_by_name(u"alpha");
    e.scene.do_insert_apply_overlay(u"sin");
    EXPECT_EQ(e.content(), before);
    EXPECT_EQ(frame.messages, 0);

    e.type("{Up}");
    EXPECT_EQ(e.path(), (std::vector<long>{1, 0}));
    EXPECT_TRUE(e.scene.can_copy());
    e.scene.do_copy();
    EXPECT_TRUE(Tavi::MathNode::is_on_clipboard());
}

// The scene's do_ and can_ calls, as a host's menus use them.
TEST(Typing, SceneCallsReachTheSelection)
{
    MemoryFrame frame;
    EditSession e;
    EXPECT_TRUE(e.scene.can_insert_overlay());
    EXPECT_FALSE(e.scene.can_insert_symbol_overlay(u""));
    EXPECT_FALSE(e.scene.can_insert_symbol_overlay(nullptr));
    EXPECT_TRUE(e.scene.can_insert_symbol_overlay(u"divide"));
    EXPECT_FALSE(e.scene.can_insert_symbol_overlay(u"missingTemplate"));
    EXPECT_FALSE(e.scene.can_select_expression());

    e.type("x");
    e.scene.do_insert_apply_overlay(u"sin");
    EXPECT_EQ(e.content(), R"(<expr tmp="apply"><ident>sin</ident><ident>x</ident></expr>)");
    EXPECT_EQ(e.path(), std::vector<long>{0});

    EditSession n;
    n.type("12");
    EXPECT_FALSE(n.scene.can_insert_char_by_name());
    n.scene.do_insert_char_by_name(u"alpha");
    EXPECT_EQ(n.content(), "<num>12</num>");
    n.scene.do_insert_number(u"1e3");
    EXPECT_EQ(n.content(),
              R"(<expr tmp="times"><num>1</num><expr tmp="power"><num>10</num><num>3</num></expr></expr>)");

    EditSession c;
    c.type("ab{Left}");
    c.scene.do_insert_char_by_name(u"&alpha;");
    EXPECT_EQ(c.content(), R"(<ident>a<chr nm="alpha"/>b</ident>)");
    EXPECT_EQ(c.caret(), 2);

    // The read-only toggle is open once the formula has a setting of its own.
    bool state = true;
    EXPECT_FALSE(c.scene.can_toggle_read_only(state));
    EXPECT_FALSE(state);
    EXPECT_TRUE(c.scene.can_toggle_inherit_read_only(state));
    EXPECT_TRUE(state);
    c.scene.do_toggle_inherit_read_only();
    c.scene.do_toggle_read_only();
    EXPECT_TRUE(c.scene.can_toggle_read_only(state));
    EXPECT_TRUE(state);
    EXPECT_TRUE(c.scene.formula()->read_only());

    // Copy and paste within the process: what arrives is what was copied.
    EditSession p;
    p.type("a+b/c {C-Space}");
    p.scene.do_copy();
    EditSession q;
    q.type("x=y");
    ASSERT_TRUE(q.scene.can_paste());
    q.scene.do_paste();
    EXPECT_EQ(q.content(), R"(<expr tmp="eq"><ident>x</ident><plus sgn="++"><ident>a</ident><expr tmp="divide">)"
                           R"(<ident>b</ident><ident>c</ident></expr></plus></expr>)");
    // The whole expression is not a slot of a parent: paste there is not offered.
    q.type("{C-Space}");
    EXPECT_FALSE(q.scene.can_paste());
}
