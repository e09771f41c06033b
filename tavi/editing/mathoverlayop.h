// MathOverlayOp: a node made from a template laid over the selection. The selected node becomes the
// child at `index` of the new node, which takes its place, and the selection goes on to the slot to
// fill next.
#pragma once

#include "tavi/editing/matheditop.h"

namespace Tavi {

class MathOverlayOp : public MathEditOp
{
public:
    // Takes a reference on the prototype.
    MathOverlayOp(MathEditScene *scene, MathNode *overlay, long index);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;

private:
    // The prototype as the template made it. It keeps its placeholders: each run goes in as a fresh
    // deep copy of it, so that a redo starts from the same node.
    NodeRef overlay;
    // The node the overlay went over, while the overlay is in the tree.
    NodeRef replaced;
    long index;
};

}  // namespace Tavi
