// LayoutNode: an atom that shows the text of the current math node (an identifier, a number, a
// string typed by the user) rather than a text of its own.
#pragma once

#include "tavi/math/layout/layoutatom.h"

namespace Tavi {

class LayoutNode : public LayoutAtom
{
public:
    LayoutNode() = default;
    LayoutNode(LayoutNode const &) = default;
    ~LayoutNode() override;

    Glyph *clone(bool deep) const override;

    // The text of the context's math node; empty without one.
    MathString const &text(MathInfo const &info) override;
};

}  // namespace Tavi
