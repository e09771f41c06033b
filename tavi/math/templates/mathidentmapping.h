// MathIdentMapping: a name the table made up for a decorated identifier (a subscripted or accented
// one) when it handed that identifier to a host that knows plain names only. The mapping keeps its own
// copy of the expression, so the host's name can be turned back into it later.
#pragma once

#include <string>

namespace Tavi {

class MathNode;

struct MathIdentMapping
{
    // Takes a reference on `node`.
    MathIdentMapping(MathNode *node, std::string name);
    MathIdentMapping(MathIdentMapping const &) = delete;
    MathIdentMapping &operator=(MathIdentMapping const &) = delete;
    ~MathIdentMapping();

    MathNode *node;    // counted
    std::string name;  // "-1", "-2", ...
};

}  // namespace Tavi
