// LayoutNumber: construction and copying.
#include "tavi/math/layout/layoutnumber.h"

namespace Tavi {

LayoutNumber::LayoutNumber(wchar const *text) : LayoutToken(text) {}
LayoutNumber::~LayoutNumber() = default;

Glyph *LayoutNumber::clone(bool) const { return new LayoutNumber(*this); }

}  // namespace Tavi
