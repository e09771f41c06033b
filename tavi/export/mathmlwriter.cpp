// Presentation MathML: atoms become token elements, and every other node is written by its
// template's layout, whose expression elements (mrow, mfrac, msub, munderover, mtable, mo, ...) are
// presentation MathML already; a node's children go where its placeholders stand.
#include "tavi/export/mathmlwriter.h"

#include <cstddef>
#include <typeinfo>

#include "tavi/export/exportpattern.h"
#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutfraction.h"
#include "tavi/math/layout/layoutlists.h"
#include "tavi/math/layout/layoutnumber.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutoperatorrow.h"
#include "tavi/math/layout/layoutover.h"
#include "tavi/math/layout/layoutroot.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/layout/layoutstring.h"
#include "tavi/math/layout/layoutsub.h"
#include "tavi/math/layout/layoutsubsup.h"
#include "tavi/math/layout/layoutsup.h"
#include "tavi/math/layout/layouttable.h"
#include "tavi/math/layout/layouttemplateoperatorrow.h"
#include "tavi/math/layout/layouttext.h"
#include "tavi/math/layout/layoutunder.h"
#include "tavi/math/layout/layoutunderover.h"
#include "tavi/math/mathatomnode.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathstringnode.h"
#include "tavi/math/mathtablenode.h"
#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

namespace {

constexpr char math_open[] = "<math xmlns=\"http://www.w3.org/1998/Math/MathML\" display=\"block\">";

// Layouts with one MathML element each and a fixed number of children, in the order of the setup
// grammar's elements. A derived class comes before its base.
struct Element
{
    std::type_info const &layout;
    char const *name;
};

Element const fixed_elements[] = {
    // layout                    element
    {typeid(LayoutFraction),     "mfrac"},
    {typeid(LayoutRoot),         "mroot"},
    {typeid(LayoutSqrt),         "msqrt"},
    {typeid(LayoutSub),          "msub"},
    {typeid(LayoutSup),          "msup"},
    {typeid(LayoutSubSup),       "msubsup"},
    {typeid(LayoutUnder),        "munder"},
    {typeid(LayoutOver),         "mover"},
    {typeid(LayoutUnderOver),    "munderover"},
};

std::string element(char const *name, std::string const &content, std::string const &attributes = "")
{
    return std::string("<") + name + attributes + ">" + content + "</" + name + ">";
}

// A piece that must be one element (an argument of msub and its kin): an empty one becomes <mrow/>.
std::string one_element(std::string const &content) { return content.empty() ? "<mrow/>" : content; }

// The MathML value of a line character of the table grammar: "n" is none, anything else solid.
std::string lines(wchar const *text, std::size_t gaps)
{
    if (text == nullptr || *text == 0 || gaps == 0)
        return "";
    std::string out;
    for (std::size_t i = 0; i < gaps; ++i) {
        wchar const c = i < wstring(text).size() ? text[i] : wstring(text).back();
        out += (i > 0 ? " " : "") + std::string(c == u'n' ? "none" : "solid");
    }
    return out;
}

wchar const *either(wchar const *own, wchar const *fallback) { return own != nullptr ? own : fallback; }

class MathMLWriter : public PatternWriter
{
public:
    std::string node(MathNode *node);
    std::string child(MathNode *parent, long index) override;

private:
    std::string atom(MathNode *node);
    std::string layout(MathLayout *layout, MathNode *node, long running);
    std::string children(MathLayout *layout, MathNode *node, long running);
    std::string operator_row(LayoutOperatorRow *row, MathNode *node);
    std::string sum(MathLayout *row, MathNode *node);
    std::string table(MathLayout *layout, MathNode *node);
    std::string token(LayoutToken *token);
    std::string call(MathNode *node);
};

std::string MathMLWriter::child(MathNode *parent, long index)
{
    std::string const text = node(child_at(parent, index));
    if (!child_in_parens(parent, index))
        return text;
    return "<mrow><mo>(</mo>" + text + "<mo>)</mo></mrow>";
}

std::string MathMLWriter::atom(MathNode *node)
{
    if (typeid(*node) == typeid(MathDummyNode))
        return "<mi mathvariant=\"normal\">&#x25A1;</mi>";
    std::string const text = xml_text(atom_unicode(node));
    if (typeid(*node) == typeid(MathNumberNode))
        return element("mn", text);
    if (typeid(*node) == typeid(MathStringNode))
        return element("ms", text);
    // An identifier set wholly in the upright class keeps that look.
    MathString const &string = node->text();
    bool upright = string.run_count() > 0;
    for (std::size_t run = 0; run < string.run_count(); ++run)
        upright = upright && string.run_font(run) == MathString::f_upright;
    return element("mi", text, upright ? " mathvariant=\"normal\"" : "");
}

std::string MathMLWriter::node(MathNode *node)
{
    if (node == nullptr)
        return "<mrow/>";
    if (dynamic_cast<MathAtomNode *>(node) != nullptr)
        return atom(node);
    MathTemplate *templ = node->templ();
    if (templ == nullptr)
        return call(node);
    std::string out;
    wstring const &pattern = templ->export_pattern(MathTemplate::export_mathml);
    if (!pattern.empty() && expand_pattern(pattern, node, *this, out))
        return element("mrow", out);
    if (templ->layout() == nullptr)
        return call(node);
    return one_element(layout(templ->layout(), node, 0));
}

// A kind without a layout: its name applied to its operands.
std::string MathMLWriter::call(MathNode *node)
{
    std::string out = "<mi>" + xml_text(node->content_type_name()) + "</mi><mo>&#x2061;</mo><mrow><mo>(</mo>";
    for (long i = 0; i < node->count(); ++i)
        out += (i > 0 ? "<mo>,</mo>" : "") + child(node, i);
    return element("mrow", out + "<mo>)</mo></mrow>");
}

std::string MathMLWriter::token(LayoutToken *token)
{
    wstring text = export_unicode(token->text());
    if (text.empty())
        return "";  // the invisible operators
    if (dynamic_cast<LayoutOp *>(token) != nullptr) {
        if (text == u"-")
            text = u"\u2212";
        return element("mo", xml_text(text));
    }
    if (dynamic_cast<LayoutNumber *>(token) != nullptr)
        return element("mn", xml_text(text));
    if (dynamic_cast<LayoutText *>(token) != nullptr)
        return element("mtext", xml_text(text));
    if (dynamic_cast<LayoutString *>(token) != nullptr)
        return element("ms", xml_text(text));
    return element("mi", xml_text(text));
}

std::string MathMLWriter::children(MathLayout *layout, MathNode *node, long running)
{
    std::string out;
    for (long i = 0; i < layout->count(); ++i)
        out += this->layout(layout->child(i), node, running);
    return out;
}

// Child 0 of the row for each operand of its range, child 1 between each two.
std::string MathMLWriter::operator_row(LayoutOperatorRow *row, MathNode *node)
{
    long const count = node->count();
    long const first = row->first() < 0 ? row->first() + count : row->first();
    long const last = row->last() < 0 ? row->last() + count : row->last();
    std::string out;
    for (long i = first; i <= last && i < count; ++i) {
        if (i > first && row->count() > 1)
            out += layout(row->child(1), node, i);
        out += layout(row->child(0), node, i);
    }
    return element("mrow", out);
}

// A sum shows its own sign before each operand; a leading plus shows nothing.
std::string MathMLWriter::sum(MathLayout *row, MathNode *node)
{
    auto *plus = static_cast<MathPlusNode *>(node);
    std::string out;
    for (long i = 0; i < node->count(); ++i) {
        bool const positive = plus->plus_sign(static_cast<std::size_t>(i));
        if (i > 0 || !positive)
            out += positive ? "<mo>+</mo>" : "<mo>&#x2212;</mo>";
        out += layout(row->child(0), node, i);
    }
    return element("mrow", out);
}

std::string MathMLWriter::table(MathLayout *layout, MathNode *node)
{
    auto *grid = dynamic_cast<MathTableNode *>(node);
    auto *cells = dynamic_cast<LayoutTable *>(layout);
    std::size_t rows = 0;
    std::size_t cols = 0;
    if (cells != nullptr)
        cells->dimension(rows, cols);
    if (grid != nullptr && cols == 0)
        cols = grid->n_cols();
    if (cols == 0)
        cols = 1;
    long const count = node->count();
    rows = static_cast<std::size_t>((count + static_cast<long>(cols) - 1) / static_cast<long>(cols));

    std::string attributes;
    if (cells != nullptr) {
        wchar const *row_lines = either(grid ? grid->row_lines() : nullptr, cells->row_lines());
        wchar const *col_lines = either(grid ? grid->col_lines() : nullptr, cells->col_lines());
        wchar const *frame = either(grid ? grid->frame_lines() : nullptr, cells->frame_lines());
        if (std::string const r = lines(row_lines, rows - (rows > 0 ? 1 : 0)); !r.empty())
            attributes += " rowlines=\"" + r + "\"";
        if (std::string const c = lines(col_lines, cols - 1); !c.empty())
            attributes += " columnlines=\"" + c + "\"";
        if (lines(frame, 1) == "solid")
            attributes += " frame=\"solid\"";
        if (wchar const *align = cells->column_align(); align != nullptr && *align != 0) {
            attributes += " columnalign=\"";
            for (std::size_t i = 0; i < cols; ++i) {
                wchar const c = i < wstring(align).size() ? align[i] : wstring(align).back();
                attributes += std::string(i > 0 ? " " : "") + (c == u'l' ? "left" : c == u'r' ? "right" : "center");
            }
            attributes += "\"";
        }
    }
    std::string out;
    for (long i = 0; i < count; ++i) {
        std::size_t const column = static_cast<std::size_t>(i) % cols;
        MathLayout *cell = cells != nullptr ? cells->cell_layout(column) : layout->child(0);
        if (column == 0)
            out += i == 0 ? "<mtr>" : "</mtr><mtr>";
        out += element("mtd", cell != nullptr ? this->layout(cell, node, i) : child(node, i));
    }
    return element("mtable", out + (count > 0 ? "</mtr>" : ""), attributes);
}

std::string MathMLWriter::layout(MathLayout *layout, MathNode *node, long running)
{
    if (layout == nullptr)
        return "";
    if (auto *fixed = dynamic_cast<LayoutFixedPlaceholder *>(layout)) {
        long const i = fixed->fixed_index() < 0 ? fixed->fixed_index() + node->count() : fixed->fixed_index();
        return child_at(node, i) != nullptr ? child(node, i) : "";
    }
    if (dynamic_cast<LayoutRunningPlaceholder *>(layout) != nullptr)
        return child_at(node, running) != nullptr ? child(node, running) : "";
    if (dynamic_cast<LayoutTemplateOperatorRow *>(layout) != nullptr && dynamic_cast<MathPlusNode *>(node))
        return sum(layout, node);
    if (auto *row = dynamic_cast<LayoutOperatorRow *>(layout))
        return operator_row(row, node);
    if (dynamic_cast<LayoutTable *>(layout) != nullptr || dynamic_cast<LayoutLists *>(layout) != nullptr)
        return table(layout, node);
    if (auto *text = dynamic_cast<LayoutToken *>(layout))
        return token(text);
    for (Element const &e : fixed_elements) {
        if (typeid(*layout) != e.layout)
            continue;
        std::string out;
        for (long i = 0; i < layout->count(); ++i)
            out += one_element(this->layout(layout->child(i), node, running));
        std::string attributes;
        if (typeid(*layout) == typeid(LayoutFraction) && static_cast<LayoutFraction *>(layout)->linethickness() == 0)
            attributes = " linethickness=\"0\"";
        // An accent operator over or under its base is set as an accent.
        auto *script = layout->count() > 1 ? dynamic_cast<LayoutOp *>(layout->child(1)) : nullptr;
        std::string const name = e.name;
        if (script != nullptr && script->accent() && name == "mover")
            attributes = " accent=\"true\"";
        if (script != nullptr && script->accent() && name == "munder")
            attributes = " accentunder=\"true\"";
        return element(e.name, out, attributes);
    }
    return element("mrow", children(layout, node, running));
}

}  // namespace

std::string write_mathml(MathNode *node)
{
    if (node == nullptr)
        return std::string(math_open) + "</math>";
    return math_open + MathMLWriter().node(node) + "</math>";
}

std::string write_mathml(MathRootNode &root) { return write_mathml(root.child()); }

}  // namespace Tavi
