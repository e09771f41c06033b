// LayoutRow: operands first, operators last, then one baseline.
#include "tavi/math/layout/layoutrow.h"

#include <algorithm>

#include "tavi/canvas/gauge.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutRow::~LayoutRow() = default;

LayoutOp *LayoutRow::core_operator()
{
    if (count() == 0)
        return nullptr;
    for (long i = 0; i < count(); ++i)
        if (child(i) == nullptr || child(i)->core_operator() == nullptr)
            return nullptr;
    return child(0)->core_operator();
}

BoxTreeNode *LayoutRow::request_non_ops(MathNodeContext &context, BoxTree const &constraint)
{
    BoxTreeNode *node = new BoxTreeNode(count());
    for (long i = 0; i < count(); ++i) {
        MathLayout *c = child(i);
        if (c != nullptr && c->core_operator() == nullptr)
            node->setChild(i, c->request(context, constraint));
    }
    return node;
}

void LayoutRow::request_ops(MathNodeContext &context, BoxTree const &, Box const &along, BoxTreeNode &node)
{
    if (count() == 0)
        return;
    // An operator is never asked to be lower than 3/2 ex above the baseline.
    Gauge *gauge = context.gauge();
    long const min_ascent = gauge != nullptr ? 3 * gauge->font_ex() / 2 : 0;
    BoxTreeLeaf const wanted(node.width(), std::max(min_ascent, along.ascent()), along.descent());

    long start = 0;
    if (core_operator() != nullptr) {
        node.setChild(0, child(0)->request(context, wanted));
        start = 1;
    }
    for (long i = start; i < count(); ++i) {
        MathLayout *c = child(i);
        if (c == nullptr || c->core_operator() == nullptr)
            continue;
        BoxTree *box = c->request(context, wanted);
        LayoutOp *op = dynamic_cast<LayoutOp *>(c);
        if (box != nullptr && op != nullptr && op->stretchy()) {
            box->ascent(std::max(box->ascent(), wanted.ascent()));
            box->descent(std::max(box->descent(), wanted.descent()));
        }
        node.setChild(i, box);
    }
}

void LayoutRow::draw(GlyphContext &context, AllocationTree const &allocation)
{
    BoxTree const *box = allocation.boxtree();
    if (box == nullptr)
        return;
    long const n = std::min(count(), box->count());
    for (long i = 0; i < n; ++i) {
        BoxTree const *b = box->child(i);
        if (b == nullptr || child(i) == nullptr)
            continue;
        child(i)->draw(context, AllocationTree(allocation.point() + b->offset(), b));
    }
}

bool LayoutRow::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    long const n = count();
    if (n < 2)
        return false;
    if (key == Input::key_right) {
        for (long k = 0; k < n - 1; ++k) {
            if (!child(k)->has_child_node(context, index))
                continue;
            for (long j = k + 1; j < n; ++j)
                if (child(j)->get_child_node(context, result))
                    return true;
            return false;
        }
    } else if (key == Input::key_left) {
        for (long k = n - 1; k > 0; --k) {
            if (!child(k)->has_child_node(context, index))
                continue;
            for (long j = k - 1; j >= 0; --j)
                if (child(j)->get_child_node(context, result))
                    return true;
            return false;
        }
    }
    return false;
}

}  // namespace Tavi
