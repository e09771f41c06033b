// LayoutStretchRow: a row that asks its operators last. Operands are measured first; the size they
// make goes down to the operators as their constraint, so that a fence stretches to the content in
// one pass. The row then takes the maxima and places everything on one baseline.
#pragma once

#include "tavi/math/layout/layoutstretch.h"

namespace Tavi {

class BoxTreeNode;

class LayoutStretchRow : public LayoutStretch
{
public:
    LayoutStretchRow() = default;
    ~LayoutStretchRow() override;

    // Operands, then the stretch size, then operators; then the children side by side.
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;

    // Measures the operands alone and throws their boxes away.
    void request_stretch(MathNodeContext &context, BoxTree const &constraint, Box &along, Box &across) override;
    // `along` is as wide as the constraint and as high as the content; `across` has a free width.
    // Content of no height leaves all four heights free: with nothing to enclose, operators keep
    // their own size.
    void request_stretch(Box const &content, BoxTree const &constraint, Box &along, Box &across) override;

protected:
    // Puts the operators' boxes into the node of the operands, each measured with a leaf of the
    // node's width and the height of `along`.
    virtual void request_ops(MathNodeContext &context, BoxTree const &constraint, Box const &along,
                             BoxTreeNode &node) = 0;
    // A new node with the operands' boxes in place and the operators' slots left empty.
    virtual BoxTreeNode *request_non_ops(MathNodeContext &context, BoxTree const &constraint) = 0;
};

}  // namespace Tavi
