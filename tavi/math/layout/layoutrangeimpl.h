// LayoutRangeImpl: a run of node children, first to last, for the layouts that show a variable number
// of them (operator rows, lists, tables, running placeholders). A negative bound counts from the end
// of the current node's child list: -1 is the last child, so (0, -1) means all of them. The bounds are
// resolved against the node of the context at every call, since one layout serves nodes of any size.
#pragma once

namespace Tavi {

class MathNodeContext;

class LayoutRangeImpl
{
public:
    LayoutRangeImpl(long first, long last);

    long first() const { return first_; }
    long last() const { return last_; }

    // True when `index` lies between the resolved bounds, both included.
    bool has_child_node_impl(MathNodeContext &context, long index) const;
    // The resolved first bound, when the range is not empty.
    bool get_child_node_impl(MathNodeContext &context, long &index) const;
    // Both resolved bounds, stored whatever they are; true when the range is not empty.
    bool child_range_impl(MathNodeContext &context, long &first, long &last) const;

private:
    // A negative bound plus the child count of the context's node (0 without a node).
    static long resolve(MathNodeContext &context, long bound);

    int first_;
    int last_;
};

}  // namespace Tavi
