// LayoutFixedPlaceholder: the child at a fixed index.
#include "tavi/math/layout/layoutfixedplaceholder.h"

#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutFixedPlaceholder::LayoutFixedPlaceholder(TemplateTable *table, int priority, long index, Slanting slanting)
    : LayoutPlaceholder(table, priority, slanting), index_(static_cast<int>(index))
{
    if (priority > 0)
        make_parens(table, new LayoutFixedPlaceholder(table, 0, index, slanting));
}

LayoutFixedPlaceholder::~LayoutFixedPlaceholder() = default;

long LayoutFixedPlaceholder::index(MathNodeContext &context)
{
    if (index_ >= 0)
        return index_;
    MathNode *node = context.math_node();
    return index_ + (node != nullptr ? node->count() : 0);
}

bool LayoutFixedPlaceholder::has_child_node(MathNodeContext &context, long i) { return i == index(context); }

bool LayoutFixedPlaceholder::get_child_node(MathNodeContext &context, long &i)
{
    i = index(context);
    return true;
}

bool LayoutFixedPlaceholder::child_range(MathNodeContext &context, long &first, long &last)
{
    first = last = index(context);
    return true;
}

}  // namespace Tavi
