// MathAtomNode: a node that holds text and has no children, with a caret inside the text. The base of
// identifiers, numbers, strings and the placeholder.
#pragma once

#include "tavi/math/mathnode.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

class MathAtomNode : public MathNode
{
public:
    // Empty text, caret at 0.
    explicit MathAtomNode(MathTemplate *templ);
    MathAtomNode(MathAtomNode const &other) = default;

    using Glyph::allocate;
    // An atom has no components.
    AllocationTree *allocate(long index, GlyphContext &context, AllocationTree const &allocation) override;
    // The template's answer first, then that of a glyph without components.
    bool is_allocated() override;
    void invalidate_allocation() override;

    // Asks the template for the text position at the point and puts the caret there; true.
    bool pick(MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation,
              Point point) override;

    // Replaces the text with one run of plain text; null empties it. The caret goes to the end.
    void text(wchar const *text) override;
    // Replaces the text. A caret of 0 or more is kept (but not beyond the end); a negative one means
    // the end of the text.
    void text(MathString const &text, long caret) override;
    MathString const &text() const override;

    // The base comparison, then the texts.
    bool is_equal(MathNode *other) override;
    unsigned long cat_childs() const override;
    // Nothing takes the place of a child: there are none.
    bool may_replace(long index, MathNode *node) override;

    long caret_pos() override;
    // One whole character forward or back; false at the end of the text in that direction.
    bool increment_caret_pos(bool forward) override;
    void set_caret_pos(bool at_end) override;

private:
    MathString text_;
    long caret_pos_;
};

}  // namespace Tavi
