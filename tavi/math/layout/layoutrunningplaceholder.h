// LayoutRunningPlaceholder: a placeholder for each child of a run that an enclosing layout walks;
// the child shown is the context's running child index.
#pragma once

#include "tavi/math/layout/layoutplaceholder.h"
#include "tavi/math/layout/layoutrangeimpl.h"

namespace Tavi {

class LayoutRunningPlaceholder : public LayoutPlaceholder, public LayoutRangeImpl
{
public:
    // A priority above 0 also builds the parenthesised form.
    LayoutRunningPlaceholder(TemplateTable *table, int priority, long first, long last, Slanting slanting);
    ~LayoutRunningPlaceholder() override;

    bool has_child_node(MathNodeContext &context, long index) override;
    bool get_child_node(MathNodeContext &context, long &index) override;
    bool child_range(MathNodeContext &context, long &first, long &last) override;

protected:
    // The context's child index.
    long index(MathNodeContext &context) override;
};

}  // namespace Tavi
