// HierarchicalSingleSelectionMemo.
#include "tavi/glyph/hierarchicalsingleselectionmemo.h"

#include "tavi/glyph/hierarchicalsingleselection.h"

namespace Tavi {

HierarchicalSingleSelectionMemo::HierarchicalSingleSelectionMemo(long glyph_index, SelectionMemo *sub_memo)
    : SelectionMemo(glyph_index), sub_memo_(sub_memo)
{
}

HierarchicalSingleSelectionMemo::~HierarchicalSingleSelectionMemo()
{
    delete sub_memo_;
}

void HierarchicalSingleSelectionMemo::revive_sub(HierarchicalSingleSelection *revived)
{
    if (revived && sub_memo_)
        revived->sub_selection(sub_memo_->revive(revived));
}

}  // namespace Tavi
