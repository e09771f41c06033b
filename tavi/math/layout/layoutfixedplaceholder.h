// LayoutFixedPlaceholder: a placeholder for one child of the node, named by its index; a negative
// index counts from the end, so -1 is always the last child.
#pragma once

#include "tavi/math/layout/layoutplaceholder.h"

namespace Tavi {

class LayoutFixedPlaceholder : public LayoutPlaceholder
{
public:
    // A priority above 0 also builds the parenthesised form.
    LayoutFixedPlaceholder(TemplateTable *table, int priority, long index, Slanting slanting);
    ~LayoutFixedPlaceholder() override;

    bool has_child_node(MathNodeContext &context, long index) override;
    bool get_child_node(MathNodeContext &context, long &index) override;
    bool child_range(MathNodeContext &context, long &first, long &last) override;

    long fixed_index() const { return index_; }

protected:
    // The index, resolved against the node's child count.
    long index(MathNodeContext &context) override;

private:
    int index_;
};

}  // namespace Tavi
