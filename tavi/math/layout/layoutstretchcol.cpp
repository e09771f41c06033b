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
