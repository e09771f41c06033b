// LayoutTemplateOperatorRow: a run of operands where the template itself supplies the operator before
// each one (a sum shows "+" or "-" by the sign of each term, and nothing before a leading plus).
#pragma once

#include "tavi/math/layout/layoutoperatorrow.h"

namespace Tavi {

class LayoutTemplateOperatorRow : public LayoutOperatorRow
{
public:
    LayoutTemplateOperatorRow(long first, long last);
    ~LayoutTemplateOperatorRow() override;

    // Before each operand its operator, where the operator's box is not empty.
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

protected:
    // The template's operator before each operand: the first goes in front of everything, the others
    // into the gaps.
    void request_ops(MathNodeContext &context, BoxTree const &constraint, Box const &along,
                     BoxTreeNode &node) override;
};

}  // namespace Tavi
