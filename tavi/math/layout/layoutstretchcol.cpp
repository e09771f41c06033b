// LayoutStretchCol: stretching across a column, moved limits, and the script style of the column.
#include "tavi/math/layout/layoutstretchcol.h"

#include <algorithm>

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutindexed.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

long const free_size = 0x7fffffff;

}  // namespace

LayoutStretchCol::LayoutStretchCol(bool accent) : limits_(nullptr), accent_(accent) {}

LayoutStretchCol::~LayoutStretchCol()
{
    if (limits_ != nullptr)
        limits_->unref();
}

LayoutOp *LayoutStretchCol::core_operator()
{
    MathLayout *base = count() > 0 ? child(0) : nullptr;
    return base != nullptr ? base->core_operator() : nullptr;
}

void LayoutStretchCol::templ(MathTemplate *owner)
{
    LayoutStretch::templ(owner);
    if (limits_ != nullptr)
        limits_->templ(owner);
}

void LayoutStretchCol::request_stretch(MathNodeContext &context, BoxTree const &constraint, Box &along,
                                       Box &across)
{
    long w = 0;
    for (long i = 0, n = count(); i < n; ++i) {
        MathLayout *c = child(i);
        if (c == nullptr || c->core_operator() != nullptr)
            continue;
        LayoutIndexed::ScriptStyle style(context, i != 0 && !accent_);
        BoxTree *box = c->request(context, BoxTree::unconstrained);
        w = std::max(w, box->width());
        delete box;
    }
    request_stretch(Box(w, 0, 0), constraint, along, across);
}

void LayoutStretchCol::request_stretch(Box const &content, BoxTree const &constraint, Box &along, Box &across)
{
    long const w = content.width() != 0 ? content.width() : free_size;
    along = Box(w, constraint.ascent(), constraint.descent());
    across = Box(w, free_size, free_size);
}

bool LayoutStretchCol::move_limits(MathNodeContext &context)
{
    if (context.displaystyle() || count() == 0)
        return false;
    LayoutOp *op = child(0)->core_operator();
    return op != nullptr && op->movablelimits();
}

MathLayout *LayoutStretchCol::keep_limits(MathLayout *made)
{
    if (limits_ != nullptr)
        return limits_;
    made->ref();
    for (long i = 0, n = count(); i < n; ++i)
        made->append(child(i));
    made->templ(templ());
    limits_ = made;
    return limits_;
}

AllocationTree LayoutStretchCol::child_allocation(AllocationTree const &allocation, long index)
{
    BoxTree const *c = allocation.boxtree()->child(index);
    return AllocationTree(allocation.point() + c->offset(), c);
}

// An operator base stretches along the column, an operator script across it; anything else is free.
// The script is centred on the base, moved by the slant of an operator base.
BoxTree *LayoutStretchCol::request_script(GlyphContext &gc, BoxTree const &constraint, bool over)
{
    MathNodeContext &context = math_context(gc);
    if (move_limits(context))
        return limits_layout()->request(context, constraint);

    Box along;
    Box across;
    request_stretch(context, constraint, along, across);
    LayoutOp *op = child(0)->core_operator();
    if (op == nullptr)
        along = Box::unconstrained;
    if (child(1)->core_operator() == nullptr)
        across = Box::unconstrained;

    BoxTreeLeaf baseConstraint(along);
    BoxTree *base = child(0)->request(context, baseConstraint);
    long underX = 0;
    long overX = 0;
    if (op != nullptr)
        op->underover_slant(context, along, underX, overX);
    long const gap = context.real_leading();
    BoxTree *script = nullptr;
    {
        LayoutIndexed::ScriptStyle style(context, !accent_);
        BoxTreeLeaf scriptConstraint(across);
        script = child(1)->request(context, scriptConstraint);
    }
    if (over)
        return stack('c', gap, base, nullptr, 0, script, overX);
    return stack('c', gap, base, script, underX, nullptr, 0);
}

// Aligned left, every part starts at the alignment line (slants dropped); aligned right, every part
// ends at it; centred, every part's centre is on it, a script's moved by its slant. The column then
// starts at its leftmost part. An over script's bottom stands a leading above the base's top, an
// under script's top a leading below the base's bottom.
BoxTree *LayoutStretchCol::stack(char align, long gap, BoxTree *base, BoxTree *under, long underX, BoxTree *over,
                                 long overX)
{
    auto const line_up = [align](BoxTree const *box, long &x) {
        if (align == 'l')
            x = 0;
        else if (align == 'r')
            x -= box->width();
        else
            x -= box->width() / 2;
    };
    long baseX = 0;
    line_up(base, baseX);
    long left = baseX;
    if (under != nullptr) {
        line_up(under, underX);
        left = std::min(left, underX);
    }
    if (over != nullptr) {
        line_up(over, overX);
        left = std::min(left, overX);
    }
    baseX -= left;
    underX -= left;
    overX -= left;

    long width = baseX + base->width();
    long const parts = 1 + (under != nullptr ? 1 : 0) + (over != nullptr ? 1 : 0);
    BoxTreeAtomicNode *node = new BoxTreeAtomicNode(parts);
    long i = 0;
    node->setChild(i++, Point(baseX, 0), base);
    if (under != nullptr) {
        width = std::max(width, underX + under->width());
        node->setChild(i++, Point(underX, under->ascent() + gap + base->descent()), under);
    }
    if (over != nullptr) {
        width = std::max(width, overX + over->width());
        node->setChild(i++, Point(overX, -(over->descent() + gap + base->ascent())), over);
    }
    // Placing a child widens the node's extents; the column's own are set once all are placed.
    if (over != nullptr)
        node->ascent(over->ascent() + over->descent() + gap + base->ascent());
    if (under != nullptr)
        node->descent(under->descent() + under->ascent() + gap + base->descent());
    node->width(width);
    return node;
}

bool LayoutStretchCol::column_neighbour(MathNodeContext &context, long index, Input::Key key, long &result,
                                        std::initializer_list<long> top_down)
{
    long const n = static_cast<long>(top_down.size());
    if (count() < n)
        return false;
    long const step = key == Input::key_down ? 1 : key == Input::key_up ? -1 : 0;
    if (step == 0)
        return false;
    long const *order = top_down.begin();
    for (long k = 0; k < n; ++k) {
        long const next = k + step;
        if (next >= 0 && next < n && child(order[k])->has_child_node(context, index))
            return child(order[next])->get_child_node(context, result);
    }
    return false;
}

bool LayoutStretchCol::pick(long index, MathSelection *selection, MathNodeContext &context,
                            AllocationTree const &allocation, Point point)
{
    if (move_limits(context))
        return limits_layout()->pick(index, selection, context, allocation, point);
    bool const script = !accent_ && count() > 0 && !child(0)->has_child_node(context, index);
    LayoutIndexed::ScriptStyle style(context, script);
    return MathLayout::pick(index, selection, context, allocation, point);
}

AllocationTree *LayoutStretchCol::allocate_selection(long index, MathSelection *selection, std::size_t size,
                                                     MathNodeContext &context, AllocationTree const &allocation)
{
    if (move_limits(context))
        return limits_layout()->allocate_selection(index, selection, size, context, allocation);
    bool const script = !accent_ && count() > 0 && !child(0)->has_child_node(context, index);
    LayoutIndexed::ScriptStyle style(context, script);
    return MathLayout::allocate_selection(index, selection, size, context, allocation);
}

void LayoutStretchCol::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(gc);
    if (move_limits(context)) {
        limits_layout()->draw(context, allocation);
        return;
    }
    child(0)->draw(context, child_allocation(allocation, 0));
    LayoutIndexed::ScriptStyle style(context, !accent_);
    for (long i = 1, n = count(); i < n; ++i)
        child(i)->draw(context, child_allocation(allocation, i));
}

}  // namespace Tavi
