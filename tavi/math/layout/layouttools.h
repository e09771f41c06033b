// LayoutTools: the x offset that centers one width inside another. Both sizes may come as a box
// (measured, relative) or as an allocation (placed, absolute); when the outer one is placed, the
// result is absolute as well. Halving truncates toward zero, as all layout arithmetic does.
#pragma once

namespace Tavi {

class AllocationTree;
class BoxTree;

namespace LayoutTools {

// (outer - inner) / 2.
long hcenter(long outer, long inner);
// The same on the two widths.
long hcenter(BoxTree const &outer, BoxTree const &inner);
long hcenter(BoxTree const &outer, AllocationTree const &inner);
// (outer width - inner width) / 2, plus the x of the outer allocation's point.
long hcenter(AllocationTree const &outer, BoxTree const &inner);
long hcenter(AllocationTree const &outer, AllocationTree const &inner);

}  // namespace LayoutTools
}  // namespace Tavi
