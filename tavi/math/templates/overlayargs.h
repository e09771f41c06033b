// Which nodes the script, accent and joined-symbol templates accept as the argument of an overlay:
// names and what stands in for one.
#pragma once

namespace Tavi {

class MathNode;

// A name, an accented name or a placeholder (told by the node's exact class).
bool is_name_like(MathNode *node);
// Those, or a name with scripts.
bool is_symbol_like(MathNode *node);

}  // namespace Tavi
