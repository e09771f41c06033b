// MathIdentMapping: holding the copy of a decorated identifier under its made-up name.
#include "tavi/math/templates/mathidentmapping.h"

#include <utility>

#include "tavi/math/mathnode.h"

namespace Tavi {

MathIdentMapping::MathIdentMapping(MathNode *node_, std::string name_) : node(node_), name(std::move(name_))
{
    if (node)
        node->ref();
}

MathIdentMapping::~MathIdentMapping()
{
    if (node)
        node->unref();
}

}  // namespace Tavi
