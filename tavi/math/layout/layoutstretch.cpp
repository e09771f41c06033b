// LayoutStretch: the abstract base of composites with stretchy parts.
#include "tavi/math/layout/layoutstretch.h"

namespace Tavi {

LayoutStretch::~LayoutStretch() = default;

}  // namespace Tavi
