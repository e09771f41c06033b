// MathEditOp: the frame that every edit operation runs in, and the two tree helpers they share.
#include "tavi/editing/matheditop.h"

#include "tavi/editing/matheditscene.h"
#include "tavi/editing/mathselection.h"
#include "tavi/glyph/hint.h"
#include "tavi/glyph/selectionmemo.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"

namespace Tavi {

void NodeRef::reset(MathNode *node)
{
    if (node)
        node->ref();
    MathNode *old = node_;
    node_ = node;
    if (old)
        old->unref();
}

MathEditOp::MathEditOp(MathEditScene *scene) : scene_(scene) {}

MathEditOp::~MathEditOp() = default;

bool MathEditOp::doit() { return run(false); }

bool MathEditOp::undo()
{
    if (!memo_ || !scene_)
        return false;
    return run(true);
}

bool MathEditOp::redo()
{
    if (!memo_ || !scene_)
        return doit();
    scene_->clear();
    scene_->detach();
    revive_memo();
    scene_->attach();
    scene_->highlight();
    return doit();
}

void MathEditOp::revive_memo()
{
    // The scene's memo rebuilds the selection and makes it the scene's one; the old selection object
    // is deleted on the way.
    memo_->revive(nullptr);
}

bool MathEditOp::run(bool undoing)
{
    if (!scene_)
        return false;
    scene_->clear();
    scene_->detach();
    if (undoing)
        revive_memo();
    MathSelection *selection = dynamic_cast<MathSelection *>(scene_->focus());
    bool const done = selection != nullptr && (undoing ? on_undo(selection) : on_doit(selection));
    scene_->attach();
    scene_->highlight();
    if (done) {
        selection->changed(UserContentChange::object());
        memo_.reset(scene_->memo());
    }
    return done;
}

void MathEditOp::put_in_place(MathSelection *selection, MathNode *node)
{
    if (selection->path_length() == 0) {
        selection->root_node()->replace(0, node);
        return;
    }
    long const index = selection->path_pop_back();
    selection->selected_node()->replace(index, node);
    selection->path_push_back(index);
}

}  // namespace Tavi
