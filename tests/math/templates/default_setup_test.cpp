// The host's default setup file, data/mathsetup.xml: it reads without fault; the kinds it defines
// have the operand rules, priorities and keys that editing relies on; every template of the table
// makes a node that typesets to a box holding all of its drawing; and the priorities put
// parentheses exactly where a reader expects them.
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "support/math_fixture.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/templates/mathoverlaytemplateinfo.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templateaccelerator.h"
#include "tavi/math/templates/templatetable.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

std::string const setup_path = std::string(TAVI_SOURCE_DIR) + "/data/mathsetup.xml";

wstring wide(std::string const &s) { return Kxt::to_ustring(s); }

// The type names that the file's content elements define, in file order.
std::vector<std::string> defined_names()
{
    std::string const text = read_whole_file(setup_path);
    std::string const tag = "<content id=\"";
    std::vector<std::string> names;
    for (std::size_t at = text.find(tag); at != std::string::npos; at = text.find(tag, at + 1)) {
        std::size_t const start = at + tag.size();
        names.push_back(text.substr(start, text.find('"', start) - start));
    }
    return names;
}

// The type names of all templates, by the host's walk.
std::vector<std::string> walk(TemplateTable const &table)
{
    std::vector<std::string> names;
    MathOverlayTemplateInfo info;
    for (TemplatePosition *p = table.get_first_template_info_position(); p != nullptr;) {
        table.get_next_template_info(info, p);
        names.push_back(Kxt::to_string(info.name));
    }
    return names;
}

// A node measured and drawn as a root would do it: its box, placed with the baseline at its ascent.
struct Typeset
{
    std::unique_ptr<BoxTree> box;
    Point origin;
    std::vector<std::string> faults;
};

Typeset typeset(MathFixture &f, MathNode *node)
{
    Typeset t;
    f.canvas.clear();
    t.box.reset(node->request(f.context, BoxTree::unconstrained));
    if (t.box == nullptr)
        return t;
    t.origin = Point(0, t.box->ascent());
    AllocationTree const allocation(t.origin, t.box.get());
    node->draw(f.context, allocation);
    t.faults = painted_outside(f.canvas, 0, t.origin, *t.box);
    return t;
}

// How many glyphs of the parenthesis family the extension font painted: the normal size, the four
// larger ones, and the top piece of a built-up one (codes of the extension font, as painted).
long count_parens(RecordingCanvas const &canvas, bool open)
{
    static char16_t const opening[] = {40, 161, 179, 181, 195, 48};
    static char16_t const closing[] = {41, 162, 180, 182, 33, 49};
    std::set<std::string> texts;
    for (char16_t c : open ? opening : closing)
        texts.insert(utf8(&c, 1));
    long n = 0;
    for (Painted const &p : painted_texts_in(canvas, "KMT Math Ext"))
        n += static_cast<long>(texts.count(p.text));
    return n;
}

}  // namespace

// The file reads; every kind that the program asks for by name or that the vocabulary promises is
// there, once, reachable by the host's walk. One node of every template that the file defines, as the
// user enters it (a grid of 2 by 3 where the template is a table, or of the shape its layout fixes),
// measured and drawn: a box with room in it, all drawing inside the box, and each child's origin
// inside it too (the last row of a grid included).
TEST(DefaultSetup, EveryTemplateTypesets)
{
    struct Grid
    {
        wchar const *name;
        long cells;  // rows times columns; a column count fixed by the layout overrides the 3 asked for
    };
    Grid const grids[] = {{u"matrix", 6}, {u"determinant", 6}, {u"array", 6},
                          {u"vector", 2}, {u"piecewise", 4},   {u"system", 4}};
    TemplateTable table(nullptr);
    ASSERT_TRUE(read_default_setup(table));
    std::vector<std::string> const walked = walk(table);
    std::set<std::string> const known(walked.begin(), walked.end());
    EXPECT_EQ(known.size(), walked.size()) << "a type name stands twice";
    for (char const *name : {"seq", "times", "power", "apply", "fenced", "missingTemplate", "divide", "root", "sum",
                             "int", "limit", "sin", "matrix", "piecewise", "dot_accent"})
        EXPECT_EQ(1u, known.count(name)) << name;
    // The stand-in for unknown kinds is for the reader only.
    EXPECT_FALSE(table.get_template(u"missingTemplate")->can_enter());
    std::vector<std::string> const names = defined_names();
    EXPECT_GE(names.size(), 60u);
    MathFixture f;
    for (std::string const &name : names) {
        SCOPED_TRACE(name);
        EXPECT_EQ(1u, known.count(name));
        MathTemplate *t = table.get_template(wide(name).c_str());
        ASSERT_NE(nullptr, t);
        Grid const *grid = nullptr;
        for (Grid const &g : grids)
            if (Kxt::to_string(g.name) == name)
                grid = &g;
        Held<MathNode> node(grid ? t->create_tabular_edit_node(2, 3) : t->create_edit_node());
        ASSERT_NE(nullptr, node.get());
        EXPECT_TRUE(grid == nullptr || grid->cells == node->count()) << node->count();
        Typeset const out = typeset(f, node.get());
        ASSERT_NE(nullptr, out.box);
        EXPECT_GT(out.box->width(), 0);
        EXPECT_GT(out.box->ascent() + out.box->descent(), 0);
        for (std::string const &fault : out.faults)
            ADD_FAILURE() << "painted outside the box: " << fault;
        AllocationTree const allocation(out.origin, out.box.get());
        for (long i = 0; i < node->count(); ++i) {
            std::unique_ptr<AllocationTree> child(node->allocate(i, f.context, allocation));
            if (child == nullptr)
                continue;
            Point const p = child->point();
            EXPECT_TRUE(allocation.left() <= p.x && p.x <= allocation.right() && allocation.top() <= p.y &&
                        p.y <= allocation.bottom())
                << "child " << i << " at " << p.x << "," << p.y;
        }
    }
}

// Parentheses from priorities: a child gets them exactly when the position it takes binds at least as
// tightly as the child's own kind. The outer kinds here draw no parenthesis of their own, so every
// "(" painted comes from a placeholder.
TEST(DefaultSetup, ParenthesesFollowPriorities)
{
    struct Case
    {
        wchar const *outer;
        wchar const *inner;  // the kind of child 0
        long parens;
    };
    Case const cases[] = {
        {u"times", u"plus", 1},       {u"plus", u"times", 0},           {u"divide", u"plus", 0},
        {u"power", u"power", 1},      {u"power", u"sqrt", 0},           {u"sin", u"implicit_times", 1},
        {u"eq", u"eq", 1},            {u"and", u"or", 1},               {u"or", u"and", 0},
        {u"sum", u"plus", 1},         {u"times", u"sum", 0},            {u"plusminus", u"negate", 0},
    };
    TemplateTable table(nullptr);
    ASSERT_TRUE(read_default_setup(table));
    MathFixture f;
    for (Case const &c : cases) {
        SCOPED_TRACE(Kxt::to_string(c.outer) + " over " + Kxt::to_string(c.inner));
        MathTemplate *outer = table.get_template(c.outer);
        MathTemplate *inner = table.get_template(c.inner);
        ASSERT_NE(nullptr, outer);
        ASSERT_NE(nullptr, inner);
        Held<MathNode> node(outer->create_edit_node());
        ASSERT_NE(nullptr, node.get());
        ASSERT_GT(node->count(), 0);
        node->replace(0, inner->create_edit_node());
        Typeset const out = typeset(f, node.get());
        ASSERT_NE(nullptr, out.box);
        EXPECT_EQ(c.parens, count_parens(f.canvas, true));
        EXPECT_EQ(c.parens, count_parens(f.canvas, false));
    }
}
