// The overlay argument tests of the script, accent and joined-symbol templates.
#include "tavi/math/templates/overlayargs.h"

#include <typeinfo>

#include "tavi/math/mathaccentnode.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathidentnode.h"
#include "tavi/math/mathscriptnode.h"

namespace Tavi {

bool is_name_like(MathNode *node)
{
    if (node == nullptr)
        return false;
    std::type_info const &kind = typeid(*node);
    return kind == typeid(MathIdentNode) || kind == typeid(MathAccentNode) || kind == typeid(MathDummyNode);
}

// Every script node (subscript, superscript or both) is a MathScriptNode.
bool is_symbol_like(MathNode *node) { return is_name_like(node) || dynamic_cast<MathScriptNode *>(node) != nullptr; }

}  // namespace Tavi
