// MathExprNode: a node with children and no text, the node of every template that a setup file
// defines. Each child comes with its position relative to this node; the positions are worked out
// once per layout and reused until the children or the layout change, so moving the node costs
// nothing.
#pragma once

#include "tavi/glyph/allocglyph.h"
#include "tavi/math/mathnode.h"

namespace Tavi {

class MathExprNode : public AllocGlyph<MathNode>
{
public:
    explicit MathExprNode(MathTemplate *templ);
    // Shares the children (one more reference each) and their positions; their parent stays.
    MathExprNode(MathExprNode const &other);

    // A new node on the same template with both flags; the children are cloned for a deep copy and
    // shared otherwise.
    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;

    using Glyph::allocate;
    // The allocation of a child: the template's, moved by the child's stored position. The positions
    // are placed first when they are not valid.
    AllocationTree *allocate(long index, GlyphContext &context, AllocationTree const &allocation) override;
    // Valid positions, then the template's answer, then every child's.
    bool is_allocated() override;
    void invalidate_allocation() override;

    // No text: the setters do nothing, the getter gives one shared empty string.
    void text(wchar const *text) override;
    void text(MathString const &text, long caret) override;
    MathString const &text() const override;

    long cat_type() const override;
    // The template's operand count.
    unsigned long cat_childs() const override;
    bool may_replace(long index, MathNode *node) override;

    bool positions_valid() const { return positions_valid_; }

protected:
    // For clone: a node of the same template and flags, without children.
    struct WithoutChildren
    {
    };
    MathExprNode(MathExprNode const &other, WithoutChildren);
    // Appends a deep clone of each child of `other`, in order.
    void append_clones_of(MathExprNode const &other);
    // The cat_text of the child at `index`; empty when there is no such child.
    wstring child_text(long index);

    // A change of the children: their positions must be placed again.
    void modified() override;

private:
    bool positions_valid_;
};

}  // namespace Tavi
