// MathLayout: the shared description of how one kind of math node is shown. A layout belongs to a
// template and serves every node of it, so it keeps nothing about a node between calls: what varies
// (the node, the running child index, script level, display style, fonts) arrives in the
// MathNodeContext of each pass. Layouts form a tree inside the template; placeholders at its leaves
// stand for the node's children, and are the only way a layout reaches them.
#pragma once

#include <cstddef>

#include "tavi/geometry/point.h"
#include "tavi/glyph/glyph.h"
#include "tavi/glyph/input.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class AllocationTree;
class GlyphContext;
class LayoutOp;
class LayoutTable;
class MathNodeContext;
class MathSelection;
class MathTemplate;

class MathLayout : public Glyph
{
public:
    MathLayout() = default;
    MathLayout(MathLayout const &) = default;
    MathLayout &operator=(MathLayout const &) = default;
    ~MathLayout() override;

    // The operator at the core of this layout, if it is one or is built around one; null here.
    virtual LayoutOp *core_operator();
    // The first table found among the children, in order; null when there is none.
    virtual LayoutTable *table();

    // The child queries translate between node child indices and the placeholders of this subtree.
    // Whether some placeholder below shows the node's child `index`: true when any child says so.
    virtual bool has_child_node(MathNodeContext &context, long index);
    // A node child index shown in this subtree: the answer of the first child that has one.
    virtual bool get_child_node(MathNodeContext &context, long &index);
    // The range of node children shown in this subtree: the answer of the first child that has one.
    virtual bool child_range(MathNodeContext &context, long &first, long &last);

    // A setting from the setup file; ignored here.
    virtual void attribute(wchar const *name, wchar const *value);
    // The allocation of a node child; null here and in every layout of the family.
    virtual AllocationTree *allocate_placeholder(long index, MathNodeContext &context,
                                                 AllocationTree const &allocation);

    // Hit test for the node child `index`: handed, with the same allocation, to the first child whose
    // has_child_node accepts the index; false when none does.
    virtual bool pick(long index, MathSelection *selection, MathNodeContext &context,
                      AllocationTree const &allocation, Point point);
    // The allocation of the selected node child `index`, searched as in pick; null when none accepts.
    virtual AllocationTree *allocate_selection(long index, MathSelection *selection, std::size_t size,
                                               MathNodeContext &context, AllocationTree const &allocation);
    // The text position at the point; 0 here.
    virtual long caret_pos(MathNodeContext &context, AllocationTree const &allocation, Point point);

    // Stores the owning template (not owned) and tells every child layout, at any depth.
    virtual void templ(MathTemplate *owner);
    virtual MathTemplate *templ();

    // The child layout at a position in this composite (not a node child index), or null.
    MathLayout *child(long index);

    // The node child to move to from `index` with an arrow key (left, up, right, down). Every child
    // layout is asked first, in order, so the innermost layout that knows an answer wins; only when
    // none does is this layout's own rule consulted.
    bool get_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result);

protected:
    // This layout's own neighbour rule; none here.
    virtual bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result);

    // Every layout is handed a MathNodeContext wherever the protocol says GlyphContext.
    static MathNodeContext &math_context(GlyphContext &context);

private:
    MathTemplate *templ_ = nullptr;
};

}  // namespace Tavi
