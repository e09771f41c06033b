// Insertion, appending, replacement and unwrapping at the selection.
#include "tavi/editing/mathchildops.h"

#include "tavi/editing/mathselection.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathplusnode.h"

namespace Tavi {

MathInsertSiblingOp::MathInsertSiblingOp(MathEditScene *scene, MathNode *n) : MathEditOp(scene), node(n) {}

bool MathInsertSiblingOp::on_doit(MathSelection *selection)
{
    if (!node || selection->path_length() == 0)
        return false;
    long const i = selection->path_pop_back();
    selection->selected_node()->insert(i + 1, node.get());
    node.reset(nullptr);
    selection->path_push_back(i + 1);
    return true;
}

bool MathInsertSiblingOp::on_undo(MathSelection *selection)
{
    if (selection->path_length() == 0)
        return false;
    long const i = selection->path_pop_back();
    MathNode *parent = selection->selected_node();
    node.reset(parent->child(static_cast<int>(i)));
    parent->remove(i);
    selection->path_push_back(i - 1);
    return true;
}

bool MathInsertNegativeSiblingOp::on_doit(MathSelection *selection)
{
    if (!MathInsertSiblingOp::on_doit(selection))
        return false;
    if (auto *sum = dynamic_cast<MathPlusNode *>(selection->selected_parent()))
        sum->toggle_sign(static_cast<std::size_t>(selection->path().back()));
    return true;
}

MathAppendChildOp::MathAppendChildOp(MathEditScene *scene, MathNode *n) : MathEditOp(scene), node(n) {}

bool MathAppendChildOp::on_doit(MathSelection *selection)
{
    if (!node)
        return false;
    MathNode *parent = selection->selected_node();
    parent->append(node.get());
    node.reset(nullptr);
    selection->path_push_back(parent->count() - 1);
    return true;
}

bool MathAppendChildOp::on_undo(MathSelection *selection)
{
    if (selection->path_length() == 0)
        return false;
    selection->path_pop_back();
    MathNode *parent = selection->selected_node();
    long const last = parent->count() - 1;
    node.reset(parent->child(static_cast<int>(last)));
    parent->remove(last);
    return true;
}

bool MathAppendNegativeChildOp::on_doit(MathSelection *selection)
{
    if (!MathAppendChildOp::on_doit(selection))
        return false;
    if (auto *sum = dynamic_cast<MathPlusNode *>(selection->selected_parent()))
        sum->toggle_sign(static_cast<std::size_t>(sum->count() - 1));
    return true;
}

MathReplaceNodeOp::MathReplaceNodeOp(MathEditScene *scene, MathNode *n) : MathEditOp(scene), node(n) {}

bool MathReplaceNodeOp::swap(MathSelection *selection)
{
    if (!node)
        return false;
    NodeRef incoming(node.get());
    node.reset(selection->selected_node());
    put_in_place(selection, incoming.get());
    return true;
}

bool MathReplaceNodeOp::on_doit(MathSelection *selection) { return swap(selection); }

bool MathReplaceNodeOp::on_undo(MathSelection *selection) { return swap(selection); }

MathFlattenUnaryOp::MathFlattenUnaryOp(MathEditScene *scene) : MathEditOp(scene) {}

// The child leaves the unwrapped node for a placeholder before it takes the node's place, so that no
// node is ever listed by two parents: the one that dies would take the other's parent link with it.
bool MathFlattenUnaryOp::on_doit(MathSelection *selection)
{
    MathNode *unary = selection->selected_node();
    if (unary->count() < 1)
        return false;
    MathNode *filler = selection->new_placeholder();
    if (filler == nullptr)
        return false;
    node.reset(unary);
    NodeRef child(unary->child(0));
    unary->replace(0, filler);
    put_in_place(selection, child.get());
    return true;
}

bool MathFlattenUnaryOp::on_undo(MathSelection *selection)
{
    if (!node)
        return false;
    NodeRef child(selection->selected_node());
    put_in_place(selection, node.get());
    node->replace(0, child.get());
    node.reset(nullptr);
    return true;
}

bool MathFlattenUnaryParentOp::on_doit(MathSelection *selection)
{
    if (selection->path_length() == 0)
        return false;
    long const index = selection->path_pop_back();
    if (MathFlattenUnaryOp::on_doit(selection))
        return true;
    selection->path_push_back(index);
    return false;
}

bool MathFlattenUnaryParentOp::on_undo(MathSelection *selection)
{
    if (!MathFlattenUnaryOp::on_undo(selection))
        return false;
    selection->path_push_back(0);
    return true;
}

}  // namespace Tavi
