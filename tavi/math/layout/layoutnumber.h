// LayoutNumber: a number of the template, shown upright.
#pragma once

#include "tavi/math/layout/layouttoken.h"

namespace Tavi {

class LayoutNumber : public LayoutToken
{
public:
    explicit LayoutNumber(wchar const *text);
    LayoutNumber(LayoutNumber const &) = default;
    ~LayoutNumber() override;

    Glyph *clone(bool deep) const override;

};

}  // namespace Tavi
