// The self-inverse toggles.
#include "tavi/editing/mathtoggleops.h"

#include "tavi/editing/mathselection.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathrootnode.h"

namespace Tavi {

MathToggleSignOp::MathToggleSignOp(MathEditScene *scene) : MathEditOp(scene) {}

bool MathToggleSignOp::on_doit(MathSelection *selection)
{
    auto *sum = dynamic_cast<MathPlusNode *>(selection->selected_parent());
    if (sum == nullptr)
        return false;
    long const index = selection->path_pop_back();
    sum->toggle_sign(static_cast<std::size_t>(index));
    // The signs are no child list: the sum is told of the change so that it is placed anew.
    sum->change(index);
    selection->path_push_back(index);
    return true;
}

bool MathToggleSignOp::on_undo(MathSelection *selection) { return on_doit(selection); }

MathToggleAllSignsOp::MathToggleAllSignsOp(MathEditScene *scene) : MathEditOp(scene) {}

bool MathToggleAllSignsOp::on_doit(MathSelection *selection)
{
    auto *sum = dynamic_cast<MathPlusNode *>(selection->selected_node());
    if (sum == nullptr)
        return false;
    sum->toggle_all_signs();
    sum->change(0);
    return true;
}

bool MathToggleAllSignsOp::on_undo(MathSelection *selection) { return on_doit(selection); }

ToggleReadOnlyOp::ToggleReadOnlyOp(MathEditScene *scene) : MathEditOp(scene) {}

bool ToggleReadOnlyOp::on_doit(MathSelection *selection)
{
    MathRootNode *root = selection->root_node();
    root->read_only(!root->own_read_only());
    return true;
}

bool ToggleReadOnlyOp::on_undo(MathSelection *selection) { return on_doit(selection); }

ToggleInheritReadOnlyOp::ToggleInheritReadOnlyOp(MathEditScene *scene) : MathEditOp(scene) {}

bool ToggleInheritReadOnlyOp::on_doit(MathSelection *selection)
{
    MathRootNode *root = selection->root_node();
    root->inherit_read_only(!root->inherit_read_only());
    return true;
}

bool ToggleInheritReadOnlyOp::on_undo(MathSelection *selection) { return on_doit(selection); }

}  // namespace Tavi
