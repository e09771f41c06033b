// LayoutSqrt: radicand, radical sign and bar.
#include "tavi/math/layout/layoutsqrt.h"

#include <algorithm>

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutoverbarop.h"
#include "tavi/math/layout/layoutradicalop.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

long const free_size = 0x7fffffff;

AllocationTree child_allocation(AllocationTree const &allocation, long index)
{
    BoxTree const *child = allocation.boxtree()->child(index);
    return AllocationTree(allocation.point() + child->offset(), child);
}

}  // namespace

LayoutSqrt::LayoutSqrt() : radical_(new LayoutRadicalOp), bar_(new LayoutOverBarOp)
{
    radical_->ref();
    bar_->ref();
}

LayoutSqrt::~LayoutSqrt()
{
    bar_->unref();
    radical_->unref();
}

// The bar is as wide as the radicand; the sign is asked to reach a leading above the radicand's top
// and down to its bottom.
LayoutSqrt::Parts LayoutSqrt::request_parts(MathNodeContext &context)
{
    Parts parts;
    parts.radicand = child(0)->request(context, BoxTree::unconstrained);
    BoxTreeLeaf barConstraint(parts.radicand->width(), free_size, free_size);
    parts.bar = bar_->request(context, barConstraint);
    long const gap = context.real_leading();
    parts.wanted = Box(free_size, parts.radicand->ascent() + gap, parts.radicand->descent());
    BoxTreeLeaf radicalConstraint(parts.wanted);
    parts.radical = radical_->request(context, radicalConstraint);
    return parts;
}

// The sign at the origin, the radicand after it, the bar from the sign's top over the radicand.
BoxTree *LayoutSqrt::request(GlyphContext &gc, BoxTree const &)
{
    MathNodeContext &context = math_context(gc);
    Parts const p = request_parts(context);
    long const gap = context.real_leading();
    long const signWidth = p.radical->width();
    long const width = signWidth + std::max(p.bar->width(), p.radicand->width());
    long const ascent = std::max(p.radicand->ascent() + gap, p.radical->ascent());
    long const descent = std::max(p.radicand->descent(), p.radical->descent());
    long const signAscent = p.radical->ascent();

    BoxTreeAtomicNode *node = new BoxTreeAtomicNode(3);
    node->setChild(0, Point(signWidth, 0), p.radicand);
    node->setChild(1, Point(signWidth, -signAscent), p.bar);
    node->setChild(2, Point(0, 0), p.radical);
    node->width(width);
    node->ascent(ascent);
    node->descent(descent);
    return node;
}

void LayoutSqrt::draw_parts(MathNodeContext &context, AllocationTree const &allocation)
{
    child(0)->draw(context, child_allocation(allocation, 0));
    bar_->draw(context, child_allocation(allocation, 1));
    radical_->draw(context, child_allocation(allocation, 2));
}

void LayoutSqrt::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    draw_parts(math_context(gc), allocation);
}

}  // namespace Tavi
