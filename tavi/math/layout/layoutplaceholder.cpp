// LayoutPlaceholder: forwarding to the node's child, with parentheses and a change of slant.
#include "tavi/math/layout/layoutplaceholder.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutrow.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

LayoutPlaceholder::LayoutPlaceholder(TemplateTable *, int priority, Slanting slanting)
    : priority_(priority), slanting_(slanting), parens_(nullptr)
{
}

LayoutPlaceholder::~LayoutPlaceholder()
{
    if (parens_)
        parens_->unref();
}

// The parentheses are the table's own fence operators, stretched to the child. A placeholder made
// without a table (in isolation) gets plain fence operators without space.
LayoutOp *LayoutPlaceholder::paren_op(TemplateTable *table, wchar const *text, LayoutOp::Form form)
{
    if (table)
        return table->get_layout_op(text, form, 0, 0);
    return new LayoutOp(text, form, true, false, false, false, 0, 0);
}

void LayoutPlaceholder::make_parens(TemplateTable *table, LayoutPlaceholder *inner)
{
    LayoutRow *row = new LayoutRow;
    row->append(paren_op(table, u"(", LayoutOp::prefix));
    row->append(inner);
    row->append(paren_op(table, u")", LayoutOp::postfix));
    row->ref();
    if (parens_)
        parens_->unref();
    parens_ = row;
    if (templ() != nullptr)
        parens_->templ(templ());
}

void LayoutPlaceholder::templ(MathTemplate *owner)
{
    MathLayout::templ(owner);
    if (parens_)
        parens_->templ(owner);
}

MathNode *LayoutPlaceholder::child_node(MathNodeContext &context, long i)
{
    MathNode *node = context.math_node();
    if (node == nullptr || i < 0 || i >= node->count())
        return nullptr;
    return node->child(static_cast<int>(i));
}

// A child whose template binds no tighter than the position demands gets parentheses.
bool LayoutPlaceholder::use_parens(MathNodeContext &context, long i)
{
    return parens_ != nullptr && templ() != nullptr && templ()->set_parens(context, priority_, i);
}

void LayoutPlaceholder::set_slant_state(MathNodeContext &context, bool &italic, bool &slanted_identifiers)
{
    italic = context.italic_fontstyle();
    slanted_identifiers = context.slanted_identifiers();
    switch (slanting_) {
    case inherit:
        break;
    case slanted:
        context.slanted_identifiers(false);
        context.italic_fontstyle(true);
        break;
    case unslanted:
        context.slanted_identifiers(false);
        context.italic_fontstyle(false);
        break;
    case noslantedidents:
        context.slanted_identifiers(false);
        break;
    }
}

void LayoutPlaceholder::restore_slant_state(MathNodeContext &context, bool italic, bool slanted_identifiers)
{
    context.italic_fontstyle(italic);
    context.slanted_identifiers(slanted_identifiers);
}

BoxTree *LayoutPlaceholder::request(GlyphContext &glyph_context, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(glyph_context);
    long const i = index(context);
    if (use_parens(context, i))
        return parens_->request(context, constraint);
    MathNode *child = child_node(context, i);
    // A slot without a child takes no room, so that the row around it still closes.
    if (child == nullptr)
        return new BoxTreeLeaf(0, 0, 0);
    bool italic = false;
    bool slanted_identifiers = false;
    set_slant_state(context, italic, slanted_identifiers);
    BoxTree *box = child->request(context, constraint);
    restore_slant_state(context, italic, slanted_identifiers);
    return box != nullptr ? box : new BoxTreeLeaf(0, 0, 0);
}

void LayoutPlaceholder::draw(GlyphContext &glyph_context, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(glyph_context);
    long const i = index(context);
    if (use_parens(context, i)) {
        parens_->draw(context, allocation);
        return;
    }
    MathNode *child = child_node(context, i);
    if (child == nullptr)
        return;
    bool italic = false;
    bool slanted_identifiers = false;
    set_slant_state(context, italic, slanted_identifiers);
    child->draw(context, allocation);
    restore_slant_state(context, italic, slanted_identifiers);
}

bool LayoutPlaceholder::pick(long index, MathSelection *selection, MathNodeContext &context,
                             AllocationTree const &allocation, Point point)
{
    if (use_parens(context, index))
        return parens_->pick(index, selection, context, allocation, point);
    if (!has_child_node(context, index))
        return false;
    MathNode *child = child_node(context, index);
    if (child == nullptr)
        return false;
    bool italic = false;
    bool slanted_identifiers = false;
    set_slant_state(context, italic, slanted_identifiers);
    child->pick(selection, context, allocation, point);
    restore_slant_state(context, italic, slanted_identifiers);
    return true;
}

LayoutTable *LayoutPlaceholder::table() { return nullptr; }

AllocationTree *LayoutPlaceholder::allocate_placeholder(long, MathNodeContext &, AllocationTree const &)
{
    return nullptr;
}

AllocationTree *LayoutPlaceholder::allocate_selection(long, MathSelection *, std::size_t, MathNodeContext &,
                                                      AllocationTree const &)
{
    return nullptr;
}

}  // namespace Tavi
