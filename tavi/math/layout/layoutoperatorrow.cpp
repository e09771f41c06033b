// LayoutOperatorRow: a run of operands with one operator repeated between them.
#include "tavi/math/layout/layoutoperatorrow.h"

#include <algorithm>
#include <memory>

#include "tavi/canvas/gauge.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

namespace {

// Breaking after an operator costs this much more than breaking before it.
double const after_operator_penalty = 2000.0;

}  // namespace

LayoutOperatorRow::ChildIndexScope::ChildIndexScope(MathNodeContext &context)
    : context_(context), saved_(context.child_index())
{
}

LayoutOperatorRow::ChildIndexScope::~ChildIndexScope() { context_.child_index(saved_); }

void LayoutOperatorRow::ChildIndexScope::set(long index) { context_.child_index(index); }

LayoutOperatorRow::LayoutOperatorRow(long first, long last, bool atomic)
    : LayoutRangeImpl(first, last), atomic_(atomic)
{
}

LayoutOperatorRow::~LayoutOperatorRow() = default;

bool LayoutOperatorRow::has_child_node(MathNodeContext &context, long index)
{
    return has_child_node_impl(context, index);
}

bool LayoutOperatorRow::get_child_node(MathNodeContext &context, long &index)
{
    return get_child_node_impl(context, index);
}

bool LayoutOperatorRow::child_range(MathNodeContext &context, long &first, long &last)
{
    return child_range_impl(context, first, last);
}

// Without a range the row is empty, and as high as an ex for anything that stretches to it.
BoxTreeNode *LayoutOperatorRow::request_non_ops(MathNodeContext &context, BoxTree const &constraint)
{
    long first = 0;
    long last = -1;
    if (!child_range(context, first, last) || child(0) == nullptr) {
        BoxTreeNode *empty = new BoxTreeNode;
        Gauge *gauge = context.gauge();
        empty->ascent(gauge != nullptr ? gauge->font_ex() : 0);
        empty->descent(0);
        return empty;
    }
    long const n = last - first;
    BoxTreeNode *node = atomic_ ? new BoxTreeAtomicNode(2 * n + 1) : new BoxTreeNode(2 * n + 1);
    ChildIndexScope index(context);
    for (long i = first; i <= last; ++i) {
        index.set(i);
        node->setChild(2 * (i - first), child(0)->request(context, constraint));
    }
    return node;
}

void LayoutOperatorRow::request_ops(MathNodeContext &context, BoxTree const &, Box const &along, BoxTreeNode &node)
{
    long first = 0;
    long last = -1;
    if (!child_range(context, first, last) || last - first < 1 || child(1) == nullptr)
        return;
    long const n = last - first;
    BoxTreeLeaf const wanted(node.width(), along.ascent(), along.descent());
    BoxTree *box = child(1)->request(context, wanted);
    if (box == nullptr)
        box = new BoxTreeLeaf(0, 0, 0);

    // The binding strength of the node's kind fills the costs the operator leaves open.
    double prio = 0.0;
    MathNode *math_node = context.math_node();
    if (math_node != nullptr && math_node->templ() != nullptr)
        prio = math_node->templ()->priority();
    if (prio == MathTemplate::no_parens_priority)
        prio = 0.0;
    if (box->leftBadness() == 0.0)
        box->leftBadness(prio);
    if (box->rightBadness() == 0.0)
        box->rightBadness(prio + after_operator_penalty);

    node.setChild(1, box);
    for (long k = 1; k < n; ++k) {
        BoxTree *copy = box->clone();
        if (copy == nullptr)
            copy = new BoxTreeLeaf(box->box(), box->leftBadness(), box->rightBadness());
        node.setChild(2 * k + 1, copy);
    }
}

void LayoutOperatorRow::draw(GlyphContext &glyph_context, AllocationTree const &allocation)
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
    long const slots = box->count();
    ChildIndexScope index(context);
    index.set(first);
    if (slots > 0)
        child(0)->draw(context, at(0));
    for (long i = first + 1; i <= last; ++i) {
        long const k = 2 * (i - first) - 1;
        if (k + 1 >= slots)
            break;
        if (child(1) != nullptr)
            child(1)->draw(context, at(k));
        index.set(i);
        child(0)->draw(context, at(k + 1));
    }
}

bool LayoutOperatorRow::pick(long index, MathSelection *selection, MathNodeContext &context,
                             AllocationTree const &allocation, Point point)
{
    if (!has_child_node(context, index) || child(0) == nullptr)
        return false;
    ChildIndexScope scope(context);
    scope.set(index);
    return child(0)->pick(index, selection, context, allocation, point);
}

AllocationTree *LayoutOperatorRow::allocate_selection(long index, MathSelection *selection, std::size_t size,
                                                      MathNodeContext &context, AllocationTree const &allocation)
{
    if (!has_child_node(context, index) || child(0) == nullptr)
        return nullptr;
    ChildIndexScope scope(context);
    scope.set(index);
    return child(0)->allocate_selection(index, selection, size, context, allocation);
}

bool LayoutOperatorRow::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    long first = 0;
    long last = -1;
    child_range(context, first, last);
    if (key == Input::key_left && first < index && index <= last) {
        result = index - 1;
        return true;
    }
    if (key == Input::key_right && first <= index && index < last) {
        result = index + 1;
        return true;
    }
    return false;
}

}  // namespace Tavi
