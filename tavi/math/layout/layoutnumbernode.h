// LayoutNumberNode: the text of a number node, shown upright.
#pragma once

#include "tavi/math/layout/layoutnode.h"

namespace Tavi {

class LayoutNumberNode : public LayoutNode
{
public:
    LayoutNumberNode() = default;
    LayoutNumberNode(LayoutNumberNode const &) = default;
    ~LayoutNumberNode() override;

    Glyph *clone(bool deep) const override;
};

}  // namespace Tavi
