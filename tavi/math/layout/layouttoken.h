// LayoutToken: an atom that shows a fixed text of the template, such as an operator, a keyword or a
// constant. The text may name characters ("&Sum;"), which are decoded once when it is given.
#pragma once

#include "tavi/math/layout/layoutatom.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

class LayoutToken : public LayoutAtom
{
public:
    // A null text gives the empty string.
    explicit LayoutToken(wchar const *text);
    LayoutToken(LayoutToken const &) = default;
    ~LayoutToken() override;

    Glyph *clone(bool deep) const override;

    MathString const &text(MathInfo const &info) override;
    MathString const &text() const { return text_; }
    // A null text empties the string.
    virtual void text(wchar const *text);

    // The string a template's text stands for: named characters decoded; a text that does not decode
    // is taken as it stands, in the text class.
    static MathString decode_text(wchar const *text);

private:
    MathString text_;
};

}  // namespace Tavi
