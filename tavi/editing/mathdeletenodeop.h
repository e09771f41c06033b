// MathDeleteNodeOp: takes the selected node out of its parent, as far as the parent's template allows:
// the parent stays with one child fewer, or collapses when its template flattens it (a sum of two
// becomes the other term, a negation gives way to its child).
#pragma once

#include "tavi/editing/matheditop.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class MathDeleteNodeOp : public MathEditOp
{
public:
    explicit MathDeleteNodeOp(MathEditScene *scene);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;

private:
    NodeRef deleted;
    NodeRef flattened_parent;
    long index = 0;
    bool kept_child = false;
    // The signs of a sum the node was deleted from: taking a term out and putting it back would
    // otherwise sign it plus again.
    wstring signs;
    bool had_signs = false;
};

}  // namespace Tavi
