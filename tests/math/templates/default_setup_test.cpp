// The host's default setup file, data/mathsetup.xml: it reads without fault; the kinds it defines
// have the operand rules, priorities and keys that editing relies on; every template of the table
// makes a node that typesets to a box holding all of its drawing; and the priorities put
// parentheses exactly where a reader expects them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/math_fixture.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/kxt/stream.h"
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

std::string read_text(std::string const &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

wstring wide(std::string const &s) { return Kxt::to_ustring(s); }
std::string narrow(wchar const *text) { return Kxt::to_string(text); }

// A table of no scene with the default setup read into it.
struct SetupTable
{
    SetupTable() : table(nullptr)
    {
        std::string const text = read_text(setup_path);
        Kxt::KTmemoryStream stream(text.data(), text.size());
        read = !text.empty() && table.init(stream);
    }
    TemplateTable table;
    bool read = false;
};

// The type names that the file's content elements define, in file order.
std::vector<std::string> defined_names()
{
    std::string const text = read_text(setup_path);
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
        names.push_back(narrow(info.name));
    }
    return names;
}

// ---- what a drawing painted, read back from the recording canvas ----

// font(<name>,<size>,<bold>,<italic>,cs=..,angle=..): the name holds no comma; the rest is read from
// the end.
bool read_font(std::string const &call, std::string &name, long &size)
{
    if (call.compare(0, 5, "font(") != 0)
        return false;
    std::vector<std::size_t> commas;
    for (std::size_t i = call.size(); i-- > 5 && commas.size() < 5;)
        if (call[i] == ',')
            commas.push_back(i);
    if (commas.size() < 5)
        return false;
    name = call.substr(5, commas[4] - 5);
    size = std::stol(call.substr(commas[4] + 1, commas[3] - commas[4] - 1));
    return true;
}

// text("<utf-8>",x,y), the numbers read from the end.
bool read_text_call(std::string const &call, std::string &text, long &x, long &y)
{
    if (call.compare(0, 6, "text(\"") != 0)
        return false;
    std::size_t const close = call.rfind(')');
    std::size_t const comma_y = call.rfind(',', close);
    std::size_t const comma_x = call.rfind(',', comma_y - 1);
    text = call.substr(6, comma_x - 1 - 6);
    x = std::stol(call.substr(comma_x + 1, comma_y - comma_x - 1));
    y = std::stol(call.substr(comma_y + 1, close - comma_y - 1));
    return true;
}

// line(x1,y1,x2,y2...): the four numbers after the parenthesis.
bool read_line(std::string const &call, long p[4])
{
    return std::sscanf(call.c_str(), "line(%ld,%ld,%ld,%ld", &p[0], &p[1], &p[2], &p[3]) == 4;
}

long characters(std::string const &utf8)
{
    return static_cast<long>(std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

// Everything painted lies in the box at `origin`. A run of the text fonts of size s spans its advance,
// n * (10s/240), from its point, and its ink 7s/240 above and s/240 below it (the recording canvas's
// metrics). A glyph of the extension font hangs from its point, with heights the canvas does not know,
// so only the point is held to the box. Lines must have both ends in the box, edges included.
std::vector<std::string> outside(RecordingCanvas const &canvas, Point const &origin, BoxTree const &box)
{
    long const left = origin.x, right = origin.x + box.width();
    long const top = origin.y - box.ascent(), bottom = origin.y + box.descent();
    std::vector<std::string> faults;
    std::string font = "Arial";
    long size = 240;
    for (std::string const &call : canvas.calls()) {
        std::string text;
        long x = 0, y = 0, p[4];
        bool inside = true;
        if (read_font(call, font, size))
            continue;
        if (read_text_call(call, text, x, y)) {
            if (font == "KMT Math Ext")
                inside = left <= x && x < right && top <= y && y <= bottom;
            else
                inside = left <= x && x + characters(text) * (10 * size / 240) <= right &&
                         top <= y - 7 * size / 240 && y + size / 240 <= bottom;
        } else if (read_line(call, p)) {
            inside = std::min(p[0], p[2]) >= left && std::max(p[0], p[2]) <= right && std::min(p[1], p[3]) >= top &&
                     std::max(p[1], p[3]) <= bottom;
        }
        if (!inside)
            faults.push_back(call + " in " + font + ", box from " + std::to_string(left) + "," +
                             std::to_string(top) + " to " + std::to_string(right) + "," + std::to_string(bottom));
    }
    return faults;
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
    t.faults = outside(f.canvas, t.origin, *t.box);
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
        texts.insert("text(\"" + utf8(&c, 1) + "\"");
    std::string font, text;
    long size = 0, x = 0, y = 0;
    long n = 0;
    for (std::string const &call : canvas.calls()) {
        if (read_font(call, font, size))
            continue;
        if (font == "KMT Math Ext" && read_text_call(call, text, x, y) &&
            texts.count(call.substr(0, call.find('"', 6) + 1)) > 0)
            ++n;
    }
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
    SetupTable s;
    ASSERT_TRUE(s.read);
    std::vector<std::string> const walked = walk(s.table);
    std::set<std::string> const known(walked.begin(), walked.end());
    EXPECT_EQ(known.size(), walked.size()) << "a type name stands twice";
    for (char const *name : {"seq", "times", "power", "apply", "fenced", "missingTemplate", "divide", "root", "sum",
                             "int", "limit", "sin", "matrix", "piecewise", "dot_accent"})
        EXPECT_EQ(1u, known.count(name)) << name;
    // The stand-in for unknown kinds is for the reader only.
    EXPECT_FALSE(s.table.get_template(u"missingTemplate")->can_enter());
    std::vector<std::string> const names = defined_names();
    EXPECT_GE(names.size(), 60u);
    MathFixture f;
    for (std::string const &name : names) {
        SCOPED_TRACE(name);
        EXPECT_EQ(1u, known.count(name));
        MathTemplate *t = s.table.get_template(wide(name).c_str());
        ASSERT_NE(nullptr, t);
        Grid const *grid = nullptr;
        for (Grid const &g : grids)
            if (narrow(g.name) == name)
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
    SetupTable s;
    ASSERT_TRUE(s.read);
    MathFixture f;
    for (Case const &c : cases) {
        SCOPED_TRACE(narrow(c.outer) + " over " + narrow(c.inner));
        MathTemplate *outer = s.table.get_template(c.outer);
        MathTemplate *inner = s.table.get_template(c.inner);
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
