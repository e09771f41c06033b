// LayoutText: a piece of text of the template, shown upright.
#pragma once

#include "tavi/math/layout/layouttoken.h"

namespace Tavi {

class LayoutText : public LayoutToken
{
public:
    explicit LayoutText(wchar const *text);
    LayoutText(LayoutText const &) = default;
    ~LayoutText() override;

    Glyph *clone(bool deep) const override;

};

}  // namespace Tavi
