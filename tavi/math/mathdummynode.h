// MathDummyNode: the placeholder, the empty slot of an operand not yet entered. It has no text of its
// own and ignores any that it is given, so that typing over it always replaces it with a real node.
#pragma once

#include "tavi/math/mathatomnode.h"

namespace Tavi {

class MathDummyNode : public MathAtomNode
{
public:
    explicit MathDummyNode(MathTemplate *templ);
    MathDummyNode(MathDummyNode const &other) = default;

    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;
    long cat_type() const override;

    // Both setters do nothing; the text is one shared empty string.
    void text(wchar const *text) override;
    void text(MathString const &text, long caret) override;
    MathString const &text() const override;

    // Nothing to pick inside a placeholder.
    bool pick(MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation,
              Point point) override;
    // The caret stands at 0 and doesn't move.
    long caret_pos() override;
    bool increment_caret_pos(bool forward) override;
    void set_caret_pos(bool at_end) override;
};

}  // namespace Tavi
