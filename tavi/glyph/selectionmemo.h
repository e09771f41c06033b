// SelectionMemo: a snapshot of a selection that outlives it. After the tree has changed (an edit, its
// undo), revive builds a new selection of the same kind and place for a given owner.
#pragma once

namespace Tavi {

class Selection;

class SelectionMemo
{
public:
    virtual ~SelectionMemo();

    long glyph_index() const { return glyph_index_; }
    // A new selection for the owner; the caller owns it.
    virtual Selection *revive(Selection *owner) = 0;

protected:
    SelectionMemo() : glyph_index_(0) {}
    explicit SelectionMemo(long glyph_index) : glyph_index_(glyph_index) {}

private:
    long glyph_index_;
};

}  // namespace Tavi
