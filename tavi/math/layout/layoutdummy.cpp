// LayoutDummy: construction and copying.
#include "tavi/math/layout/layoutdummy.h"

namespace Tavi {

LayoutDummy::LayoutDummy() : LayoutToken(u"?") {}

LayoutDummy::~LayoutDummy() = default;

Glyph *LayoutDummy::clone(bool) const { return new LayoutDummy(*this); }

}  // namespace Tavi
