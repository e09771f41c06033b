// LayoutTemplateOperatorRow: operators asked of the template, one per operand.
#include "tavi/math/layout/layouttemplateoperatorrow.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

LayoutTemplateOperatorRow::LayoutTemplateOperatorRow(long first, long last) : LayoutOperatorRow(first, last, false)
{
}

LayoutTemplateOperatorRow::~LayoutTemplateOperatorRow() = default;

void LayoutTemplateOperatorRow::request_ops(MathNodeContext &context, BoxTree const &, Box const &along,
                                            BoxTreeNode &node)
{
    long first = 0;
    long last = -1;
    if (!child_range(context, first, last))
        return;
    BoxTreeLeaf const wanted(node.width(), along.ascent(), along.descent());
    for (long i = first; i <= last; ++i) {
        BoxTree *box = templ() != nullptr ? templ()->request_operator(i, context, wanted) : nullptr;
        // No operator takes no room.
        if (box == nullptr)
            box = new BoxTreeLeaf(0, 0, 0);
        if (i == first) {
            // The operand slots move one place to the right.
            node.prepend(box);
        } else {
            node.setChild(2 * (i - first), box);
        }
    }
}

void LayoutTemplateOperatorRow::draw(GlyphContext &glyph_context, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(glyph_context);
    BoxTree const *box = allocation.boxtree();
    long first = 0;
    long last = -1;
    if (box == nullptr || !child_range(context, first, last) || child(0) == nullptr)
        return;
    auto at = [&](long k) {
        BoxTree const *b = box->child(k);
        return AllocationTree(allocation.point() + (b != nullptr ? b->offset() : Point()), b);
    };
    ChildIndexScope index(context);
    for (long i = first; i <= last; ++i) {
        long const k = 2 * (i - first);
        if (k + 1 >= box->count())
            break;
        BoxTree const *op = box->child(k);
        if (op != nullptr && op->width() != 0 && templ() != nullptr)
            templ()->draw_operator(i, context, at(k));
        index.set(i);
        child(0)->draw(context, at(k + 1));
    }
}

}  // namespace Tavi
