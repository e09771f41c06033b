// MathSelectionMemo.
#include "tavi/editing/mathselectionmemo.h"

#include <utility>

#include "tavi/editing/mathselection.h"

namespace Tavi {

MathSelectionMemo::MathSelectionMemo(long glyph_index, std::vector<long> path)
    : SelectionMemo(glyph_index), path_(std::move(path))
{
}

MathSelectionMemo::~MathSelectionMemo() = default;

Selection *MathSelectionMemo::revive(Selection *owner)
{
    MathSelection *selection = new MathSelection(owner, glyph_index());
    for (long index : path_)
        selection->path_push_back(index);
    return selection;
}

}  // namespace Tavi
