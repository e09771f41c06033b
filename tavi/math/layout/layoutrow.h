// LayoutRow: the template's own layouts side by side on one baseline, operators measured last with
// the size of the operands around them. A row made of operators alone counts as an operator.
#pragma once

#include "tavi/math/layout/layoutstretchrow.h"

namespace Tavi {

class LayoutRow : public LayoutStretchRow
{
public:
    LayoutRow() = default;
    ~LayoutRow() override;

    // Each child with the box child of the same index.
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    // Null without children or when any child has none; otherwise the first child's.
    LayoutOp *core_operator() override;

    using LayoutStretchRow::request;
    using LayoutStretchRow::request_stretch;

protected:
    // Operators get a leaf of the node's width, at least 3/2 ex high above the baseline and as deep as
    // the operands; a stretchy operator's box grows to that leaf's height.
    void request_ops(MathNodeContext &context, BoxTree const &constraint, Box const &along,
                     BoxTreeNode &node) override;
    // A slot per child; only the children that are not operators are measured.
    BoxTreeNode *request_non_ops(MathNodeContext &context, BoxTree const &constraint) override;
    // Left and right move to the next child layout that shows a node child.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;
};

}  // namespace Tavi
