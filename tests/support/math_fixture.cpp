// Scaffolding for layout and template tests: contexts, templates, nodes and painted text.
#include "support/math_fixture.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <ostream>
#include <sstream>

#include "tavi/math/layout/mathlayout.h"
#include "tavi/math/mathexprnode.h"
#include "tavi/math/mathidentnode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathstringnode.h"
#include "tavi/math/templates/templateaccelerator.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/kxt/stream.h"

namespace TaviTest {

using namespace Tavi;

std::string read_whole_file(std::string const &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

bool read_default_setup(TemplateTable &table)
{
    std::string const text = read_whole_file(TAVI_SOURCE_DIR "/data/mathsetup.xml");
    Kxt::KTmemoryStream stream(text.data(), text.size());
    return !text.empty() && table.init(stream);
}

MathInfo::Settings math_settings(long size)
{
    MathInfo::Settings s;
    s.font.size(size);
    s.slanted_identifiers = false;
    s.displaystyle = true;
    return s;
}

MathFixture::MathFixture(MathInfo::Settings const &settings, Extent const &dpi)
    : canvas(dpi), glyph_context(nullptr, nullptr, &canvas, nullptr), context(glyph_context, nullptr, settings)
{
}

MathTemplate *layout_template(MathLayout *layout, double priority, wchar const *name)
{
    MathTemplate *t = new MathTemplate(nullptr, name, true, u"", TemplateAccelerator(), 0, true, 0, false, false,
                                       false, 0, -1, priority);
    t->layout(layout);
    return t;
}

namespace {

template <class N>
MathNode *atom(MathTemplate *templ, wchar const *text)
{
    N *node = new N(templ);
    MathString s;
    if (!MathString::decode(text, s))
        s = MathString(text, MathString::f_text);
    node->text(s, -1);
    return node;
}

}  // namespace

MathNode *ident_node(MathTemplate *templ, wchar const *text) { return atom<MathIdentNode>(templ, text); }

MathNode *number_node(MathTemplate *templ, wchar const *text) { return atom<MathNumberNode>(templ, text); }

MathNode *string_node(MathTemplate *templ, wchar const *text) { return atom<MathStringNode>(templ, text); }

MathNode *expr_node(MathTemplate *templ, std::vector<MathNode *> const &children)
{
    MathExprNode *node = new MathExprNode(templ);
    for (MathNode *c : children)
        node->append(c);
    return node;
}

BoxTree *request_as(MathNodeContext &context, MathNode *node, MathLayout *layout, BoxTree const &constraint)
{
    MathNode *old = context.math_node();
    context.math_node(node);
    BoxTree *box = layout->request(context, constraint);
    context.math_node(old);
    return box;
}

void draw_as(MathNodeContext &context, MathNode *node, MathLayout *layout, AllocationTree const &allocation)
{
    MathNode *old = context.math_node();
    context.math_node(node);
    layout->draw(context, allocation);
    context.math_node(old);
}

namespace {

// text("<utf-8>",x,y); the text itself may hold commas and quotes, so the numbers are read from the end.
bool read_text(std::string const &call, Painted &p)
{
    if (call.compare(0, 6, "text(\"") != 0)
        return false;
    std::size_t const close = call.rfind(')');
    std::size_t const comma_y = call.rfind(',', close);
    std::size_t const comma_x = call.rfind(',', comma_y - 1);
    p.text = call.substr(6, comma_x - 1 - 6);
    p.x = std::stol(call.substr(comma_x + 1, comma_y - comma_x - 1));
    p.y = std::stol(call.substr(comma_y + 1, close - comma_y - 1));
    return true;
}

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

}  // namespace

std::vector<Painted> painted_texts(RecordingCanvas const &canvas)
{
    std::vector<Painted> out;
    Painted p;
    for (std::string const &call : canvas.calls())
        if (read_text(call, p))
            out.push_back(p);
    return out;
}

std::vector<Painted> painted_texts_in(RecordingCanvas const &canvas, std::string const &font_name)
{
    std::vector<Painted> out;
    std::string font = "Arial";
    long size = 0;
    Painted p;
    for (std::string const &call : canvas.calls())
        if (!read_font(call, font, size) && font == font_name && read_text(call, p))
            out.push_back(p);
    return out;
}

std::vector<std::string> painted_outside(RecordingCanvas const &canvas, std::size_t first, Point origin,
                                         BoxTree const &box, Font const &start)
{
    long const left = origin.x, right = origin.x + box.width();
    long const top = origin.y - box.ascent(), bottom = origin.y + box.descent();
    std::string font = utf8(start.name(), static_cast<long>(std::u16string(start.name()).size()));
    long size = start.size();
    std::vector<std::string> faults;
    auto const &calls = canvas.calls();
    for (std::size_t i = first; i < calls.size(); ++i) {
        Painted p;
        long l[4];
        bool inside = true;
        if (read_font(calls[i], font, size))
            continue;
        if (read_text(calls[i], p)) {
            long const n = static_cast<long>(std::count_if(p.text.begin(), p.text.end(),
                                                           [](char c) { return (c & 0xC0) != 0x80; }));
            if (font == "KMT Math Ext")
                inside = left <= p.x && p.x < right && top <= p.y && p.y <= bottom;
            else
                inside = left <= p.x && p.x + n * (10 * size / 240) <= right && top <= p.y - 7 * size / 240 &&
                         p.y + size / 240 <= bottom;
        } else if (std::sscanf(calls[i].c_str(), "line(%ld,%ld,%ld,%ld", &l[0], &l[1], &l[2], &l[3]) == 4) {
            inside = std::min(l[0], l[2]) >= left && std::max(l[0], l[2]) <= right && std::min(l[1], l[3]) >= top &&
                     std::max(l[1], l[3]) <= bottom;
        }
        if (!inside)
            faults.push_back(calls[i] + " in " + font + " " + std::to_string(size));
    }
    return faults;
}

std::vector<std::string> calls_starting(RecordingCanvas const &canvas, std::string const &prefix)
{
    std::vector<std::string> out;
    for (std::string const &call : canvas.calls())
        if (call.compare(0, prefix.size(), prefix) == 0)
            out.push_back(call);
    return out;
}

std::ostream &operator<<(std::ostream &out, Painted const &p)
{
    return out << "text(\"" << p.text << "\"," << p.x << "," << p.y << ")";
}

}  // namespace TaviTest
