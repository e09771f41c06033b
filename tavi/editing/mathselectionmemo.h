// MathSelectionMemo: the place of a math selection, its formula's index in the scene and its path,
// kept across changes of the tree. Reviving does not check that the path still fits: it does as long
// as operations are undone in the order they were done.
#pragma once

#include <vector>

#include "tavi/glyph/selectionmemo.h"

namespace Tavi {

class MathSelectionMemo : public SelectionMemo
{
public:
    MathSelectionMemo(long glyph_index, std::vector<long> path);
    ~MathSelectionMemo() override;

    // A new MathSelection for the owner at the stored place; the caller owns it.
    Selection *revive(Selection *owner) override;

    std::vector<long> const &path() const { return path_; }

private:
    std::vector<long> path_;
};

}  // namespace Tavi
