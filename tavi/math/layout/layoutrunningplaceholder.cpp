// LayoutRunningPlaceholder: the child that the enclosing walk has reached.
#include "tavi/math/layout/layoutrunningplaceholder.h"

#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutRunningPlaceholder::LayoutRunningPlaceholder(TemplateTable *table, int priority, long first, long last,
                                                   Slanting slanting)
    : LayoutPlaceholder(table, priority, slanting), LayoutRangeImpl(first, last)
{
    if (priority > 0)
        make_parens(table, new LayoutRunningPlaceholder(table, 0, first, last, slanting));
}

LayoutRunningPlaceholder::~LayoutRunningPlaceholder() = default;

long LayoutRunningPlaceholder::index(MathNodeContext &context) { return context.child_index(); }

bool LayoutRunningPlaceholder::has_child_node(MathNodeContext &context, long i)
{
    return has_child_node_impl(context, i);
}

bool LayoutRunningPlaceholder::get_child_node(MathNodeContext &context, long &i)
{
    return get_child_node_impl(context, i);
}

bool LayoutRunningPlaceholder::child_range(MathNodeContext &context, long &first, long &last)
{
    return child_range_impl(context, first, last);
}

}  // namespace Tavi
