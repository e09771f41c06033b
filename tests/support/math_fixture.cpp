// Scaffolding for layout and template tests: contexts, templates, nodes and painted text.
#include "support/math_fixture.h"

#include <ostream>

#include "tavi/math/layout/mathlayout.h"
#include "tavi/math/mathexprnode.h"
#include "tavi/math/mathidentnode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathstringnode.h"
#include "tavi/math/templates/templateaccelerator.h"

namespace TaviTest {

using namespace Tavi;

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

std::vector<Painted> painted_texts(RecordingCanvas const &canvas)
{
    // The record is text("<utf-8>",x,y); the text itself may hold commas and quotes, so the numbers are
    // read from the end.
    std::vector<Painted> out;
    for (std::string const &call : canvas.calls()) {
        if (call.compare(0, 6, "text(\"") != 0)
            continue;
        std::size_t const close = call.rfind(')');
        std::size_t const comma_y = call.rfind(',', close);
        std::size_t const comma_x = call.rfind(',', comma_y - 1);
        Painted p;
        p.text = call.substr(6, comma_x - 1 - 6);
        p.x = std::stol(call.substr(comma_x + 1, comma_y - comma_x - 1));
        p.y = std::stol(call.substr(comma_y + 1, close - comma_y - 1));
        out.push_back(p);
    }
    return out;
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
