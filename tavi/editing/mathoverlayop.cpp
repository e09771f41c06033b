// MathOverlayOp.
#include "tavi/editing/mathoverlayop.h"

#include <typeinfo>

#include "tavi/editing/mathselection.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathnode.h"

namespace Tavi {

MathOverlayOp::MathOverlayOp(MathEditScene *scene, MathNode *node, long i)
    : MathEditOp(scene), overlay(node), index(i)
{
}

bool MathOverlayOp::on_doit(MathSelection *selection)
{
    if (!overlay)
        return false;
    replaced.reset(selection->selected_node());
    MathNode *in = overlay.get();
    bool const fills_slot = index >= 0 && overlay->count() > index;
    if (fills_slot) {
        in = dynamic_cast<MathNode *>(overlay->clone(true));
        if (in == nullptr) {
            replaced.reset(nullptr);
            return false;
        }
    }
    NodeRef hold(in);
    // The new node takes the place first, so that the replaced node is out of the tree before it
    // goes into its slot: it must end up with the new node as its parent.
    put_in_place(selection, in);
    if (fills_slot)
        in->replace(index, replaced.get());
    long const n = in->count();
    if (n == 0)
        return true;
    MathNode const &was = *replaced.get();
    long next = typeid(was) == typeid(MathDummyNode) ? index : index + 1;
    if (next >= n)
        next = 0;
    selection->path_push_back(next);
    return true;
}

bool MathOverlayOp::on_undo(MathSelection *selection)
{
    if (!replaced)
        return false;
    if (overlay->count() > 0 && selection->path_length() > 0)
        selection->path_pop_back();
    // The copy that went in lists the replaced node as a child: it lets go of it first, so that the
    // copy's end cannot take the node's parent link away once the node stands in the tree again.
    NodeRef in(selection->selected_node());
    if (in.get() != overlay.get() && index >= 0 && index < in->count() && in->child(static_cast<int>(index)) == replaced.get()) {
        if (MathNode *filler = selection->new_placeholder())
            in->replace(index, filler);
    }
    put_in_place(selection, replaced.get());
    replaced.reset(nullptr);
    return true;
}

}  // namespace Tavi
