// FormulaBuilder: the table of kinds of node and the templates made from it.
#include "support/formula_builder.h"

#include "tavi/math/layout/layoutbigop.h"
#include "tavi/math/layout/layoutbraceop.h"
#include "tavi/math/layout/layoutdisplayop.h"
#include "tavi/math/layout/layoutfenceop.h"
#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutfraction.h"
#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/layout/layoutintegralop.h"
#include "tavi/math/layout/layoutnumber.h"
#include "tavi/math/layout/layoutnumbernode.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutoperatorrow.h"
#include "tavi/math/layout/layoutover.h"
#include "tavi/math/layout/layoutoverbarop.h"
#include "tavi/math/layout/layoutroot.h"
#include "tavi/math/layout/layoutrow.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/layout/layoutsqrt.h"
#include "tavi/math/layout/layoutstackop.h"
#include "tavi/math/layout/layoutstring.h"
#include "tavi/math/layout/layoutstringnode.h"
#include "tavi/math/layout/layoutsub.h"
#include "tavi/math/layout/layoutsubsup.h"
#include "tavi/math/layout/layoutsup.h"
#include "tavi/math/layout/layouttext.h"
#include "tavi/math/layout/layoutunder.h"
#include "tavi/math/layout/layoutunderover.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/templates/mathtemplate.h"

namespace TaviTest {

using namespace Tavi;

namespace {

std::string text8(wchar const *text)
{
    return text == nullptr ? std::string() : utf8(text, static_cast<long>(std::u16string(text).size()));
}

LayoutFixedPlaceholder *ph(long index, int priority = 0,
                           LayoutPlaceholder::Slanting slanting = LayoutPlaceholder::inherit)
{
    return new LayoutFixedPlaceholder(nullptr, priority, index, slanting);
}

LayoutOp *op(wchar const *text, LayoutOp::Form form, long lspace = 0, long rspace = 0)
{
    return new LayoutOp(text, form, false, false, false, false, lspace, rspace);
}

template <class Op>
Op *ext(wchar const *text, LayoutOp::Form form, bool movablelimits = false)
{
    return new Op(text, form, true, false, movablelimits, false, 0, 0);
}

MathLayout *row(std::vector<MathLayout *> const &children)
{
    LayoutRow *r = new LayoutRow;
    for (MathLayout *c : children)
        r->append(c);
    return r;
}

template <class L>
MathLayout *with(L *layout, std::vector<MathLayout *> const &children)
{
    for (MathLayout *c : children)
        layout->append(c);
    return layout;
}

MathLayout *operator_row(LayoutOp *o, bool atomic, int priority)
{
    LayoutOperatorRow *r = new LayoutOperatorRow(0, -1, atomic);
    r->append(new LayoutRunningPlaceholder(nullptr, priority, 0, -1, LayoutPlaceholder::inherit));
    r->append(o);
    return r;
}

double const none = MathTemplate::no_parens_priority;

// One row a kind of node: name, how many children, the template's priority, its layout.
std::vector<FormulaKind> const kinds = {
    {"plus", 2, 2, 3, [] { return row({ph(0, 3), op(u"+", LayoutOp::infix, 4, 4), ph(1, 3)}); }},
    {"times", 1, 3, 4, [] { return operator_row(op(u"&InvisibleTimes;", LayoutOp::infix), false, 4); }},
    {"minus", 2, 3, 3, [] { return operator_row(op(u"-", LayoutOp::infix, 4, 4), true, 3); }},
    {"frac", 2, 2, none, [] { return with(new LayoutFraction(1), {ph(0), ph(1)}); }},
    {"binom", 2, 2, none, [] { return with(new LayoutFraction(0), {ph(0), ph(1)}); }},
    {"sqrt", 1, 1, none, [] { return with(new LayoutSqrt, {ph(0)}); }},
    {"root", 2, 2, none, [] { return with(new LayoutRoot, {ph(0), ph(1)}); }},
    {"sub", 2, 2, 6, [] { return with(new LayoutSub, {ph(0, 6), ph(1)}); }},
    {"sup", 2, 2, 6, [] { return with(new LayoutSup, {ph(0, 6), ph(1)}); }},
    {"subsup", 3, 3, 6, [] { return with(new LayoutSubSup, {ph(0, 6), ph(1), ph(2)}); }},
    {"paren", 1, 1, none,
     [] { return row({ext<LayoutFenceOp>(u"(", LayoutOp::prefix), ph(0), ext<LayoutFenceOp>(u")", LayoutOp::postfix)}); }},
    {"bracket", 1, 1, none,
     [] { return row({ext<LayoutFenceOp>(u"[", LayoutOp::prefix), ph(0), ext<LayoutFenceOp>(u"]", LayoutOp::postfix)}); }},
    {"brace", 1, 1, none,
     [] { return row({ext<LayoutBraceOp>(u"{", LayoutOp::prefix), ph(0), ext<LayoutBraceOp>(u"}", LayoutOp::postfix)}); }},
    {"ceiling", 1, 1, none,
     [] {
         return row({ext<LayoutFenceOp>(u"&LeftCeiling;", LayoutOp::prefix), ph(0),
                     ext<LayoutFenceOp>(u"&RightCeiling;", LayoutOp::postfix)});
     }},
    {"angle", 1, 1, none,
     [] {
         return row({ext<LayoutBigOp>(u"&LeftAngleBracket;", LayoutOp::prefix), ph(0),
                     ext<LayoutBigOp>(u"&RightAngleBracket;", LayoutOp::postfix)});
     }},
    {"abs", 1, 1, none,
     [] { return row({ext<LayoutStackOp>(u"|", LayoutOp::prefix), ph(0), ext<LayoutStackOp>(u"|", LayoutOp::postfix)}); }},
    {"sum", 3, 3, 3,
     [] {
         return row({with(new LayoutUnderOver(false, 'c'), {ext<LayoutDisplayOp>(u"&Sum;", LayoutOp::prefix, true), ph(0), ph(1)}),
                     ph(2, 3)});
     }},
    {"prod", 2, 2, 3,
     [] { return row({with(new LayoutUnder(false), {ext<LayoutDisplayOp>(u"&prod;", LayoutOp::prefix, true), ph(0)}), ph(1, 3)}); }},
    {"int", 3, 3, 3,
     [] { return row({with(new LayoutSubSup, {ext<LayoutIntegralOp>(u"&Integral;", LayoutOp::prefix), ph(0), ph(1)}), ph(2, 3)}); }},
    {"intlim", 3, 3, 3,
     [] {
         return row({with(new LayoutUnderOver(false, 'c'), {ext<LayoutIntegralOp>(u"&Integral;", LayoutOp::prefix), ph(0), ph(1)}),
                     ph(2, 3)});
     }},
    {"overbar", 1, 1, none, [] { return with(new LayoutOver(false), {ph(0), new LayoutOverBarOp}); }},
    {"accentbar", 1, 1, none, [] { return with(new LayoutOver(true), {ph(0), new LayoutOverBarOp}); }},
    {"stackleft", 3, 3, none, [] { return with(new LayoutUnderOver(false, 'l'), {ph(0), ph(1), ph(2)}); }},
    {"stackright", 3, 3, none, [] { return with(new LayoutUnderOver(true, 'r'), {ph(0), ph(1), ph(2)}); }},
    {"under", 2, 2, none, [] { return with(new LayoutUnder(false), {ph(0), ph(1)}); }},
    {"apply", 1, 1, 5, [] { return row({new LayoutText(u"sin"), op(u"&ApplyFunction;", LayoutOp::infix), ph(0, 5)}); }},
    {"italic", 1, 1, none, [] { return row({ph(0, 0, LayoutPlaceholder::slanted)}); }},
    {"upright", 1, 1, none, [] { return row({ph(0, 0, LayoutPlaceholder::unslanted)}); }},
    {"equals", 2, 2, 2, [] { return row({ph(0, 2), op(u"=", LayoutOp::infix, 5, 5), ph(-1, 2)}); }},
    {"label", 1, 1, 2, [] { return row({new LayoutNumber(u"2"), op(u"=", LayoutOp::infix, 5, 5), ph(-1, 2)}); }},
    {"quoted", 1, 1, none, [] { return row({new LayoutString(u"q"), ph(0)}); }},
};

}  // namespace

std::vector<FormulaKind> const &formula_kinds() { return kinds; }

FormulaBuilder::FormulaBuilder(Wrap const &wrap)
{
    auto install = [&wrap](MathLayout *layout, double priority, wchar const *name) {
        return new Held<MathTemplate>(layout_template(wrap ? wrap(layout) : layout, priority, name));
    };
    ident_.reset(install(new LayoutIdentNode, none, u"ident"));
    number_.reset(install(new LayoutNumberNode, none, u"number"));
    string_.reset(install(new LayoutStringNode, none, u"string"));
    for (FormulaKind const &k : kinds)
        templates_.emplace_back(install(k.make(), k.priority, u"test"));
}

FormulaBuilder::~FormulaBuilder() = default;

MathNode *FormulaBuilder::ident(wchar const *text)
{
    MathNode *node = ident_node(ident_->get(), text);
    names_[node] = text8(text);
    return node;
}

MathNode *FormulaBuilder::number(wchar const *text)
{
    MathNode *node = number_node(number_->get(), text);
    names_[node] = text8(text);
    return node;
}

MathNode *FormulaBuilder::string(wchar const *text)
{
    MathNode *node = string_node(string_->get(), text);
    names_[node] = "\"" + text8(text) + "\"";
    return node;
}

MathNode *FormulaBuilder::node(std::string const &kind, std::vector<MathNode *> const &children)
{
    for (std::size_t k = 0; k < kinds.size(); ++k)
        if (kind == kinds[k].name)
            return node(k, children);
    return nullptr;
}

MathNode *FormulaBuilder::node(std::size_t kind, std::vector<MathNode *> const &children)
{
    if (kind >= kinds.size())
        return nullptr;
    std::string name = std::string(kinds[kind].name) + "(";
    for (std::size_t i = 0; i < children.size(); ++i)
        name += (i ? ", " : "") + name_of(children[i]);
    MathNode *n = expr_node(templates_[kind]->get(), children);
    names_[n] = name + ")";
    return n;
}

std::string FormulaBuilder::name_of(MathNode const *node) const
{
    auto it = names_.find(node);
    return it == names_.end() ? "?" : it->second;
}

}  // namespace TaviTest
