// LayoutRoot: the root with its degree in the radical's notch.
#include "tavi/math/layout/layoutroot.h"

#include <algorithm>

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutradicalop.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

AllocationTree child_allocation(AllocationTree const &allocation, long index)
{
    BoxTree const *child = allocation.boxtree()->child(index);
    return AllocationTree(allocation.point() + child->offset(), child);
}

// The degree is set two script levels down and out of display style.
class DegreeStyle
{
public:
    explicit DegreeStyle(MathNodeContext &context) : context_(context), display_(context.displaystyle(false))
    {
        context_.add_scriptlevel(2);
    }
    ~DegreeStyle()
    {
        context_.add_scriptlevel(-2);
        context_.displaystyle(display_);
    }
    DegreeStyle(DegreeStyle const &) = delete;
    DegreeStyle &operator=(DegreeStyle const &) = delete;

private:
    MathNodeContext &context_;
    bool display_;
};

}  // namespace

LayoutRoot::LayoutRoot() = default;

// The degree is centred on the place the sign gives, unless it is wider than twice the notch r: then
// its right edge keeps an overlap of r with the sign, and it reaches left of the sign's origin. Its
// bottom sits as far above the place as the sign reaches below the baseline. Merging the two boxes
// moves the sign right by whatever the degree reaches left of it.
BoxTree *LayoutRoot::request(GlyphContext &gc, BoxTree const &)
{
    MathNodeContext &context = math_context(gc);
    Parts const p = request_parts(context);
    BoxTreeLeaf wanted(p.wanted);
    Point pos(0, 0);
    long r = 0;
    radical_->degree_pos(context, wanted, pos, r);

    BoxTree *degree = nullptr;
    {
        DegreeStyle style(context);
        degree = child(1)->request(context, BoxTree::unconstrained);
    }
    long const half = degree->width() / 2;
    pos.x -= half;
    if (half > r)
        pos.x += r - half;
    pos.y += p.radical->descent() - degree->descent();

    Box merged = p.radical->box();
    Point a;
    Point b;
    merged.merge(degree->box(), pos, a, b);

    long const signWidth = p.radical->width();
    long const signAscent = p.radical->ascent();
    long const width = std::max(p.radicand->width(), p.bar->width()) + merged.width();
    long const ascent = std::max(p.radicand->ascent(), merged.ascent());
    long const descent = std::max(p.radicand->descent(), merged.descent());

    BoxTreeAtomicNode *node = new BoxTreeAtomicNode(4);
    node->setChild(0, Point(signWidth + a.x, 0), p.radicand);
    node->setChild(1, Point(signWidth, -signAscent) + a, p.bar);
    node->setChild(2, a, p.radical);
    node->setChild(3, b, degree);
    node->width(width);
    node->ascent(ascent);
    node->descent(descent);
    return node;
}

void LayoutRoot::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(gc);
    draw_parts(context, allocation);
    DegreeStyle style(context);
    child(1)->draw(context, child_allocation(allocation, 3));
}

bool LayoutRoot::pick(long index, MathSelection *selection, MathNodeContext &context,
                      AllocationTree const &allocation, Point point)
{
    if (child(0)->has_child_node(context, index))
        return MathLayout::pick(index, selection, context, allocation, point);
    DegreeStyle style(context);
    return MathLayout::pick(index, selection, context, allocation, point);
}

AllocationTree *LayoutRoot::allocate_selection(long index, MathSelection *selection, std::size_t size,
                                               MathNodeContext &context, AllocationTree const &allocation)
{
    if (child(0)->has_child_node(context, index))
        return MathLayout::allocate_selection(index, selection, size, context, allocation);
    DegreeStyle style(context);
    return MathLayout::allocate_selection(index, selection, size, context, allocation);
}

bool LayoutRoot::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    if (count() < 2)
        return false;
    if (key == Input::key_left && child(0)->has_child_node(context, index))
        return child(1)->get_child_node(context, result);
    if (key == Input::key_right && child(1)->has_child_node(context, index))
        return child(0)->get_child_node(context, result);
    return false;
}

}  // namespace Tavi
