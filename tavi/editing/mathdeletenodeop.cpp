// MathDeleteNodeOp.
#include "tavi/editing/mathdeletenodeop.h"

#include <algorithm>

#include "tavi/editing/mathselection.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathplusnode.h"

namespace Tavi {

namespace {

void restore_signs(MathNode *node, wstring const &signs)
{
    if (auto *sum = dynamic_cast<MathPlusNode *>(node))
        sum->attribute(u"Signs", signs.c_str());
}

}  // namespace

MathDeleteNodeOp::MathDeleteNodeOp(MathEditScene *scene) : MathEditOp(scene) {}

bool MathDeleteNodeOp::on_doit(MathSelection *selection)
{
    if (selection->path_length() == 0)
        return false;
    kept_child = true;
    deleted.reset(selection->selected_node());
    index = selection->path_pop_back();
    MathNode *parent = selection->selected_node();
    MathTemplate::DeleteOp const d = parent->delete_child_op(static_cast<std::size_t>(index));
    if (d == MathTemplate::delete_none) {
        deleted.reset(nullptr);
        return false;
    }
    had_signs = false;
    if (auto *sum = dynamic_cast<MathPlusNode *>(parent)) {
        signs = sum->signs();
        had_signs = true;
    }
    parent->remove(index);
    long const n = parent->count();

    if (d == MathTemplate::delete_flatten) {
        kept_child = n == 1;
        flattened_parent.reset(parent);
        // A parent left with one child gives way to that child; one left with none gives way to the
        // deleted node itself, so that deleting the child of a negation removes the negation.
        NodeRef successor(kept_child ? parent->child(0) : deleted.get());
        if (kept_child)
            parent->remove(0);
        put_in_place(selection, successor.get());
        return true;
    }
    if (n != 0)
        selection->path_push_back(std::min(index, n - 1));
    else
        kept_child = false;
    return true;
}

bool MathDeleteNodeOp::on_undo(MathSelection *selection)
{
    if (!deleted)
        return false;
    if (flattened_parent) {
        MathNode *parent = flattened_parent.get();
        NodeRef standing(selection->selected_node());
        put_in_place(selection, parent);
        if (kept_child)
            parent->append(standing.get());
        parent->insert(index, deleted.get());
        if (had_signs)
            restore_signs(parent, signs);
        selection->path_push_back(index);
        flattened_parent.reset(nullptr);
    } else {
        if (kept_child)
            selection->path_pop_back();
        MathNode *parent = selection->selected_node();
        parent->insert(index, deleted.get());
        if (had_signs)
            restore_signs(parent, signs);
        selection->path_push_back(index);
    }
    deleted.reset(nullptr);
    return true;
}

}  // namespace Tavi
