// LayoutSubSup: a base with a subscript and a superscript, each placed by its own rule; they are not
// pushed apart when they meet.
#pragma once

#include "tavi/math/layout/layoutindexed.h"

namespace Tavi {

class LayoutSubSup : public LayoutIndexed
{
public:
    // Children: 0 the base, 1 the subscript, 2 the superscript.
    LayoutSubSup() = default;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;

protected:
    // Left from either script to the base; right from the base to the superscript (or the subscript
    // when the superscript shows nothing); up from the subscript, down from the superscript.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;
};

}  // namespace Tavi
