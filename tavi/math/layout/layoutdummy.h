// LayoutDummy: the question mark that stands for an operand still to be entered.
#pragma once

#include "tavi/math/layout/layouttoken.h"

namespace Tavi {

class LayoutDummy : public LayoutToken
{
public:
    LayoutDummy();
    LayoutDummy(LayoutDummy const &) = default;
    ~LayoutDummy() override;

    Glyph *clone(bool deep) const override;
};

}  // namespace Tavi
