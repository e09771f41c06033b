// LayoutIdent: construction and copying, and the slant left alone.
#include "tavi/math/layout/layoutident.h"

#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutIdent::LayoutIdent(wchar const *text) : LayoutToken(text) {}
LayoutIdent::~LayoutIdent() = default;

Glyph *LayoutIdent::clone(bool) const { return new LayoutIdent(*this); }

void LayoutIdent::set_italic_style(MathNodeContext &context, bool &saved) { saved = context.italic_fontstyle(); }

}  // namespace Tavi
