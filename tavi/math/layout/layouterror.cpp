// LayoutError: construction and copying.
#include "tavi/math/layout/layouterror.h"

namespace Tavi {

LayoutError::LayoutError(wchar const *text) : LayoutToken(text) {}
LayoutError::~LayoutError() = default;

Glyph *LayoutError::clone(bool) const { return new LayoutError(*this); }

}  // namespace Tavi
