// MathContentOp: swapping a formula's top node, with the scene told of the change.
#include "tavi/editing/mathcontentop.h"

#include "tavi/glyph/glyphscene.h"
#include "tavi/glyph/hint.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"

namespace Tavi {

MathContentOp::MathContentOp(MathRootNode *root, MathNode *node) : root_(root), node_(node)
{
    root_->ref();
    node_->ref();
}

MathContentOp::~MathContentOp()
{
    node_->unref();
    root_->unref();
}

bool MathContentOp::doit() { return swap(); }
bool MathContentOp::undo() { return swap(); }
bool MathContentOp::redo() { return swap(); }

bool MathContentOp::swap()
{
    GlyphScene *scene = root_->scene();
    if (scene == nullptr)
        return false;
    root_->deselect();
    MathNode *outgoing = root_->child();
    outgoing->ref();
    root_->replace(0, node_);
    node_->unref();
    node_ = outgoing;
    scene->changed(DOMEditChange::object());
    // Deselecting the root dropped the scene's selection; without one the user could not go on.
    if (scene->focus() == scene)
        scene->select(root_);
    return true;
}

}  // namespace Tavi
