// HierarchicalSingleSelectionMemo: the memo of a hierarchical selection, which keeps the memo of its
// sub-selection so that the whole chain below comes back. Concrete selections supply revive.
#pragma once

#include "tavi/glyph/selectionmemo.h"

namespace Tavi {

class HierarchicalSingleSelection;

class HierarchicalSingleSelectionMemo : public SelectionMemo
{
public:
    ~HierarchicalSingleSelectionMemo() override;
    HierarchicalSingleSelectionMemo(HierarchicalSingleSelectionMemo const &) = delete;
    HierarchicalSingleSelectionMemo &operator=(HierarchicalSingleSelectionMemo const &) = delete;

    // The memo of the sub-selection at the time of the snapshot, or null.
    SelectionMemo *sub_memo() const { return sub_memo_; }

protected:
    // Takes the sub-memo over.
    HierarchicalSingleSelectionMemo(long glyph_index, SelectionMemo *sub_memo);

    // Gives the revived selection its sub-selection again, revived with it as owner.
    void revive_sub(HierarchicalSingleSelection *revived);

private:
    SelectionMemo *sub_memo_;
};

}  // namespace Tavi
