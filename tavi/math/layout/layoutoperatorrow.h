// LayoutOperatorRow: a run of the node's children, first to last, shown one after another through
// layout child 0, with layout child 1 as the operator between each two. The operator is measured
// once and copied into every gap; its line-break costs default to the binding strength of the node's
// template, so that looser operators are cheaper places to break, and breaking before an operator
// cheaper than after it.
#pragma once

#include "tavi/math/layout/layoutrangeimpl.h"
#include "tavi/math/layout/layoutstretchrow.h"

namespace Tavi {

class LayoutOperatorRow : public LayoutStretchRow, public LayoutRangeImpl
{
public:
    // atomic makes a box that line wrapping keeps whole.
    LayoutOperatorRow(long first, long last, bool atomic);
    ~LayoutOperatorRow() override;

    // Operands with their child index set in the context, operators between them.
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    bool has_child_node(MathNodeContext &context, long index) override;
    bool get_child_node(MathNodeContext &context, long &index) override;
    bool child_range(MathNodeContext &context, long &first, long &last) override;

    // Both go to layout child 0 with the child index set to `index`, when it is in the range.
    bool pick(long index, MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation,
              Point point) override;
    AllocationTree *allocate_selection(long index, MathSelection *selection, std::size_t size,
                                       MathNodeContext &context, AllocationTree const &allocation) override;

    bool atomic() const { return atomic_; }

    using LayoutStretchRow::request;
    using LayoutStretchRow::request_stretch;

protected:
    // The operator measured once and put into every gap, with its badnesses filled in.
    void request_ops(MathNodeContext &context, BoxTree const &constraint, Box const &along,
                     BoxTreeNode &node) override;
    // Operands at the even slots, operators' slots empty.
    BoxTreeNode *request_non_ops(MathNodeContext &context, BoxTree const &constraint) override;
    // Left and right step through the range.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;

    // Sets the context's child index for as long as it lives.
    class ChildIndexScope
    {
    public:
        explicit ChildIndexScope(MathNodeContext &context);
        ~ChildIndexScope();
        ChildIndexScope(ChildIndexScope const &) = delete;
        ChildIndexScope &operator=(ChildIndexScope const &) = delete;
        void set(long index);

    private:
        MathNodeContext &context_;
        long saved_;
    };

private:
    bool atomic_;
};

}  // namespace Tavi
