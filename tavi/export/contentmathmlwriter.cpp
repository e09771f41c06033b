// Content MathML: atoms become ci, cn and cs; a sum is written with plus and minus; every other node
// applies its kind to its operands, as the setup file's cmml pattern or the default says.
#include "tavi/export/contentmathmlwriter.h"

#include <cstddef>
#include <typeinfo>

#include "tavi/export/exportpattern.h"
#include "tavi/math/mathatomnode.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstringnode.h"
#include "tavi/math/mathtablenode.h"
#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

namespace {

constexpr char math_open[] = "<math xmlns=\"http://www.w3.org/1998/Math/MathML\">";

// The operators of content MathML that a template's name may be; any other name is written as a
// csymbol of that name.
constexpr char const *content_operators[] = {
    "abs", "and", "approx", "arccos", "arcsin", "arctan", "arg", "card", "cartesianproduct",
    "ceiling", "codomain", "compose", "conjugate", "cos", "cosh", "cot", "coth", "csc", "curl",
    "determinant", "diff", "divergence", "divide", "domain", "eq", "equivalent", "exists", "exp",
    "factorial", "factorof", "floor", "forall", "gcd", "geq", "grad", "gt", "ident", "image",
    "imaginary", "implies", "in", "int", "intersect", "inverse", "laplacian", "lcm", "leq", "limit",
    "ln", "log", "lt", "max", "mean", "median", "min", "minus", "mode", "neq", "not", "notin",
    "notprsubset", "notsubset", "or", "outerproduct", "partialdiff", "plus", "power", "product",
    "prsubset", "quotient", "real", "rem", "root", "scalarproduct", "sdev", "sec", "selector",
    "setdiff", "sin", "sinh", "subset", "sum", "tan", "tanh", "tendsto", "times", "transpose",
    "union", "variance", "vectorproduct", "xor",
};

// A table node of a template without a pattern: a matrix of its rows.
constexpr char16_t table_pattern[] = u"<matrix>#R{<matrixrow>#1*</matrixrow>}</matrix>";

class ContentWriter : public PatternWriter
{
public:
    std::string node(MathNode *node);
    std::string child(MathNode *parent, long index) override { return node(child_at(parent, index)); }

private:
    std::string sum(MathPlusNode *node);
    std::string apply(MathNode *node);
};

std::string apply_of(std::string const &op, std::string const &operands)
{
    return "<apply>" + op + operands + "</apply>";
}

std::string ContentWriter::sum(MathPlusNode *node)
{
    long const count = node->count();
    auto positive = [node](long i) { return node->plus_sign(static_cast<std::size_t>(i)); };
    // a - b is a binary minus; -a and +a are unary.
    if (count == 2 && positive(0) && !positive(1))
        return apply_of("<minus/>", child(node, 0) + child(node, 1));
    if (count == 1)
        return apply_of(positive(0) ? "<plus/>" : "<minus/>", child(node, 0));
    std::string terms;
    for (long i = 0; i < count; ++i)
        terms += positive(i) ? child(node, i) : apply_of("<minus/>", child(node, i));
    return apply_of("<plus/>", terms);
}

std::string ContentWriter::apply(MathNode *node)
{
    std::string const name = xml_text(node->content_type_name());
    bool known = false;
    for (char const *op : content_operators)
        known = known || name == op;
    std::string operands;
    for (long i = 0; i < node->count(); ++i)
        operands += child(node, i);
    return apply_of(known ? "<" + name + "/>" : "<csymbol>" + name + "</csymbol>", operands);
}

std::string ContentWriter::node(MathNode *node)
{
    if (node == nullptr)
        return "";
    if (typeid(*node) == typeid(MathDummyNode))
        return "<csymbol>placeholder</csymbol>";
    if (dynamic_cast<MathAtomNode *>(node) != nullptr) {
        char const *name = typeid(*node) == typeid(MathNumberNode) ? "cn"
                           : typeid(*node) == typeid(MathStringNode) ? "cs"
                                                                     : "ci";
        return std::string("<") + name + ">" + xml_text(atom_unicode(node)) + "</" + name + ">";
    }
    if (auto *plus = dynamic_cast<MathPlusNode *>(node))
        return sum(plus);
    std::string out;
    MathTemplate *templ = node->templ();
    if (templ != nullptr && !templ->export_pattern(MathTemplate::export_cmml).empty() &&
        expand_pattern(templ->export_pattern(MathTemplate::export_cmml), node, *this, out))
        return out;
    out.clear();
    if (dynamic_cast<MathTableNode *>(node) != nullptr && expand_pattern(table_pattern, node, *this, out))
        return out;
    return apply(node);
}

}  // namespace

std::string write_content_mathml(MathNode *node)
{
    return math_open + ContentWriter().node(node) + "</math>";
}

std::string write_content_mathml(MathRootNode &root) { return write_content_mathml(root.child()); }

}  // namespace Tavi
