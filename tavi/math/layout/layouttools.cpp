// LayoutTools: centering offsets.
#include "tavi/math/layout/layouttools.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"

namespace Tavi {
namespace LayoutTools {

// Integer division truncates toward zero, so an inner box wider than the outer one by an odd amount
// sticks out one unit more on the left than on the right.
long hcenter(long outer, long inner) { return (outer - inner) / 2; }

long hcenter(BoxTree const &outer, BoxTree const &inner) { return hcenter(outer.width(), inner.width()); }

long hcenter(BoxTree const &outer, AllocationTree const &inner) { return hcenter(outer.width(), inner.width()); }

long hcenter(AllocationTree const &outer, BoxTree const &inner)
{
    return hcenter(outer.width(), inner.width()) + outer.point().x;
}

long hcenter(AllocationTree const &outer, AllocationTree const &inner)
{
    return hcenter(outer.width(), inner.width()) + outer.point().x;
}

}  // namespace LayoutTools
}  // namespace Tavi
