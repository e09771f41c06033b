// LayoutToken: the fixed text of a template, decoded once.
#include "tavi/math/layout/layouttoken.h"

namespace Tavi {

MathString LayoutToken::decode_text(wchar const *text)
{
    MathString decoded;
    if (text == nullptr)
        return decoded;
    if (!MathString::decode(text, decoded))
        decoded = MathString(text, MathString::f_text);
    return decoded;
}

LayoutToken::LayoutToken(wchar const *text) : text_(decode_text(text)) {}

LayoutToken::~LayoutToken() = default;

Glyph *LayoutToken::clone(bool) const { return new LayoutToken(*this); }

MathString const &LayoutToken::text(MathInfo const &) { return text_; }

void LayoutToken::text(wchar const *text) { text_ = decode_text(text); }

}  // namespace Tavi
