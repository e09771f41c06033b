// MathPolyLayout: construction of the list-holding layout.
#include "tavi/math/layout/mathpolylayout.h"

namespace Tavi {

MathPolyLayout::MathPolyLayout() : PolyGlyph<MathLayout>() {}

MathPolyLayout::MathPolyLayout(long capacity) : PolyGlyph<MathLayout>(capacity) {}

MathPolyLayout::~MathPolyLayout() = default;

}  // namespace Tavi
