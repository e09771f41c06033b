// LayoutIdent: an identifier of the template. It is shown in the slant that the context carries, where
// other text atoms are upright.
#pragma once

#include "tavi/math/layout/layouttoken.h"

namespace Tavi {

class LayoutIdent : public LayoutToken
{
public:
    explicit LayoutIdent(wchar const *text);
    LayoutIdent(LayoutIdent const &) = default;
    ~LayoutIdent() override;

    Glyph *clone(bool deep) const override;

protected:
    // Saves the italic flag and leaves it as it is.
    void set_italic_style(MathNodeContext &context, bool &saved) override;
};

}  // namespace Tavi
