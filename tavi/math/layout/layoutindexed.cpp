// LayoutIndexed: script style, base measuring and the script shifts shared by the script layouts.
#include "tavi/math/layout/layoutindexed.h"

#include <algorithm>

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

LayoutIndexed::ScriptStyle::ScriptStyle(MathNodeContext &context, bool active)
    : context_(context), active_(active), display_(context.displaystyle())
{
    if (active_) {
        context_.add_scriptlevel(1);
        context_.displaystyle(false);
    }
}

LayoutIndexed::ScriptStyle::~ScriptStyle()
{
    if (active_) {
        context_.add_scriptlevel(-1);
        context_.displaystyle(display_);
    }
}

bool LayoutIndexed::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    if (count() < 2)
        return false;
    if (key == Input::key_left && child(1)->has_child_node(context, index))
        return child(0)->get_child_node(context, result);
    if (key == Input::key_right && child(0)->has_child_node(context, index))
        return child(1)->get_child_node(context, result);
    return false;
}

BoxTree *LayoutIndexed::base_and_script(BoxTree *base, BoxTree *script, Point at, long width, long ascent,
                                        long descent)
{
    BoxTreeAtomicNode *node = new BoxTreeAtomicNode(2);
    node->setChild(1, at, script);
    node->setChild(0, Point(0, 0), base);
    node->width(width);
    node->ascent(ascent);
    node->descent(descent);
    return node;
}

LayoutOp *LayoutIndexed::core_operator()
{
    MathLayout *base = count() > 0 ? child(0) : nullptr;
    return base != nullptr ? base->core_operator() : nullptr;
}

bool LayoutIndexed::pick(long index, MathSelection *selection, MathNodeContext &context,
                         AllocationTree const &allocation, Point point)
{
    if (count() > 0 && child(0)->has_child_node(context, index))
        return MathLayout::pick(index, selection, context, allocation, point);
    ScriptStyle style(context);
    return MathLayout::pick(index, selection, context, allocation, point);
}

AllocationTree *LayoutIndexed::allocate_selection(long, MathSelection *, std::size_t, MathNodeContext &,
                                                  AllocationTree const &)
{
    return nullptr;
}

// The base in its own style, then every script in script style, each at its box child.
void LayoutIndexed::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(gc);
    BoxTree const *box = allocation.boxtree();
    child(0)->draw(context, AllocationTree(allocation.point() + box->child(0)->offset(), box->child(0)));
    ScriptStyle style(context);
    for (long i = 1, n = count(); i < n; ++i) {
        BoxTree const *part = box->child(i);
        child(i)->draw(context, AllocationTree(allocation.point() + part->offset(), part));
    }
}

BoxTree *LayoutIndexed::request_base(MathNodeContext &context, BoxTree const &constraint, bool asLeaf,
                                     long &subSlant, long &supSlant)
{
    MathLayout *base = child(0);
    LayoutOp *op = base->core_operator();
    if (op == nullptr) {
        subSlant = 0;
        supSlant = 0;
        if (asLeaf) {
            BoxTreeLeaf free(Box::unconstrained);
            return base->request(context, free);
        }
        return base->request(context, BoxTree::unconstrained);
    }
    Box const box = constraint.box();
    op->subsup_slant(context, box, subSlant, supSlant);
    if (asLeaf) {
        BoxTreeLeaf leaf(box);
        return base->request(context, leaf);
    }
    return base->request(context, constraint);
}

long LayoutIndexed::x_descent(MathNodeContext &context)
{
    MathString x;
    MathString::from_char(u'x', x);
    context.select_real_font(x.empty() ? MathString::f_text : x.run_font(0));
    Gauge *gauge = context.gauge();
    return gauge != nullptr ? gauge->font_descent() : 0;
}

void LayoutIndexed::raise_to_x_height(MathNodeContext &context, BoxTree &sub)
{
    long const xHeight = context.real_X_height();
    if (xHeight > sub.ascent())
        sub.ascent(xHeight);
}

long LayoutIndexed::sub_shift(BoxTree const &base, BoxTree const &sub, long ex)
{
    return std::min(2 * ex / 3, sub.ascent() - base.descent());
}

long LayoutIndexed::sup_shift(BoxTree const &base, BoxTree const &sup, long D, long ex)
{
    long const m = std::max(sup.descent(), D);
    long t = base.ascent() - sup.ascent() - m;
    if (t < ex)
        t = ex;
    return t + m;
}

}  // namespace Tavi
