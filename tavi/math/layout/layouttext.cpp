// LayoutText: construction and copying.
#include "tavi/math/layout/layouttext.h"

namespace Tavi {

LayoutText::LayoutText(wchar const *text) : LayoutToken(text) {}
LayoutText::~LayoutText() = default;

Glyph *LayoutText::clone(bool) const { return new LayoutText(*this); }

}  // namespace Tavi
