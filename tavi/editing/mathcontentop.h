// MathContentOp: the whole formula changed at once from outside the selection, as a host does when
// it sets a formula's content. The root's top node is swapped for another; undo and redo swap back
// and forth. The selection can't follow such a change, so it starts again on the whole formula.
#pragma once

#include "tavi/kxt/operation.h"

namespace Tavi {

class MathNode;
class MathRootNode;

class MathContentOp : public Kxt::Operation
{
public:
    // Holds a reference on both; the node is what the root shows after doit.
    MathContentOp(MathRootNode *root, MathNode *node);
    ~MathContentOp() override;
    MathContentOp(MathContentOp const &) = delete;
    MathContentOp &operator=(MathContentOp const &) = delete;

    // Each is one swap; false when the root is in no scene.
    bool doit() override;
    bool undo() override;
    bool redo() override;

private:
    bool swap();

    MathRootNode *root_;
    // The node that is not in the formula: the new one before doit, the old one after.
    MathNode *node_;
};

}  // namespace Tavi
