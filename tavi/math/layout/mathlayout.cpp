// MathLayout: the generic behaviour of a composite layout, which looks for the child layout that
// shows a given node child and hands the question on to it.
#include "tavi/math/layout/mathlayout.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

MathLayout::~MathLayout() = default;

LayoutOp *MathLayout::core_operator() { return nullptr; }

LayoutTable *MathLayout::table()
{
    for (long i = 0, n = count(); i < n; ++i)
        if (MathLayout *c = child(i))
            if (LayoutTable *t = c->table())
                return t;
    return nullptr;
}

bool MathLayout::has_child_node(MathNodeContext &context, long index)
{
    for (long i = 0, n = count(); i < n; ++i)
        if (MathLayout *c = child(i))
            if (c->has_child_node(context, index))
                return true;
    return false;
}

bool MathLayout::get_child_node(MathNodeContext &context, long &index)
{
    for (long i = 0, n = count(); i < n; ++i)
        if (MathLayout *c = child(i))
            if (c->get_child_node(context, index))
                return true;
    return false;
}

bool MathLayout::child_range(MathNodeContext &context, long &first, long &last)
{
    for (long i = 0, n = count(); i < n; ++i)
        if (MathLayout *c = child(i))
            if (c->child_range(context, first, last))
                return true;
    return false;
}

void MathLayout::attribute(wchar const *, wchar const *) {}

AllocationTree *MathLayout::allocate_placeholder(long, MathNodeContext &, AllocationTree const &)
{
    return nullptr;
}

// The first child that shows the node child decides; it gets the allocation as it stands, since the
// generic composite has no geometry of its own to add.
bool MathLayout::pick(long index, MathSelection *selection, MathNodeContext &context,
                      AllocationTree const &allocation, Point point)
{
    for (long i = 0, n = count(); i < n; ++i) {
        MathLayout *c = child(i);
        if (c && c->has_child_node(context, index))
            return c->pick(index, selection, context, allocation, point);
    }
    return false;
}

AllocationTree *MathLayout::allocate_selection(long index, MathSelection *selection, std::size_t size,
                                               MathNodeContext &context, AllocationTree const &allocation)
{
    for (long i = 0, n = count(); i < n; ++i) {
        MathLayout *c = child(i);
        if (c && c->has_child_node(context, index))
            return c->allocate_selection(index, selection, size, context, allocation);
    }
    return nullptr;
}

long MathLayout::caret_pos(MathNodeContext &, AllocationTree const &, Point) { return 0; }

void MathLayout::templ(MathTemplate *owner)
{
    templ_ = owner;
    for (long i = 0, n = count(); i < n; ++i)
        if (MathLayout *c = child(i))
            c->templ(owner);
}

MathTemplate *MathLayout::templ() { return templ_; }

// Every component of a layout is a layout: composites are built of nothing else.
MathLayout *MathLayout::child(long index) { return static_cast<MathLayout *>(component(index)); }

bool MathLayout::get_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    for (long i = 0, n = count(); i < n; ++i)
        if (MathLayout *c = child(i))
            if (c->get_neighbour_child(context, index, key, result))
                return true;
    return get_my_neighbour_child(context, index, key, result);
}

bool MathLayout::get_my_neighbour_child(MathNodeContext &, long, Input::Key, long &) { return false; }

MathNodeContext &MathLayout::math_context(GlyphContext &context) { return static_cast<MathNodeContext &>(context); }

}  // namespace Tavi
