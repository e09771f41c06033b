// LayoutIdentNode: the text of an identifier node, shown in the slant that the context carries.
#pragma once

#include "tavi/math/layout/layoutnode.h"

namespace Tavi {

class LayoutIdentNode : public LayoutNode
{
public:
    LayoutIdentNode() = default;
    LayoutIdentNode(LayoutIdentNode const &) = default;
    ~LayoutIdentNode() override;

    Glyph *clone(bool deep) const override;

protected:
    // Saves the italic flag and leaves it as it is.
    void set_italic_style(MathNodeContext &context, bool &saved) override;
};

}  // namespace Tavi
