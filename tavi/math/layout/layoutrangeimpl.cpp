// LayoutRangeImpl: resolving a range of node children against the node at hand.
#include "tavi/math/layout/layoutrangeimpl.h"

#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutRangeImpl::LayoutRangeImpl(long first, long last)
    : first_(static_cast<int>(first)), last_(static_cast<int>(last))
{
}

// The node's count is asked at every call: a node that shows only part of its children (a table row)
// counts only those.
long LayoutRangeImpl::resolve(MathNodeContext &context, long bound)
{
    if (bound >= 0)
        return bound;
    MathNode *node = context.math_node();
    return bound + (node != nullptr ? node->count() : 0);
}

bool LayoutRangeImpl::has_child_node_impl(MathNodeContext &context, long index) const
{
    return resolve(context, first_) <= index && index <= resolve(context, last_);
}

bool LayoutRangeImpl::get_child_node_impl(MathNodeContext &context, long &index) const
{
    long const first = resolve(context, first_);
    if (first > resolve(context, last_))
        return false;
    index = first;
    return true;
}

bool LayoutRangeImpl::child_range_impl(MathNodeContext &context, long &first, long &last) const
{
    first = resolve(context, first_);
    last = resolve(context, last_);
    return first <= last;
}

}  // namespace Tavi
