// LayoutError: the text shown in place of something that could not be read.
#pragma once

#include "tavi/math/layout/layouttoken.h"

namespace Tavi {

class LayoutError : public LayoutToken
{
public:
    explicit LayoutError(wchar const *text);
    LayoutError(LayoutError const &) = default;
    ~LayoutError() override;

    Glyph *clone(bool deep) const override;

};

}  // namespace Tavi
