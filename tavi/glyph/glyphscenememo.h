// GlyphSceneMemo: the memo of a whole scene, which holds the memo of the scene's selection. Reviving
// it puts a selection of the same kind and place back into the scene.
#pragma once

#include "tavi/glyph/selectionmemo.h"

namespace Tavi {

class GlyphScene;

class GlyphSceneMemo : public SelectionMemo
{
public:
    // Takes the selection's memo (which may be null: the scene had no selection) over.
    GlyphSceneMemo(GlyphScene *scene, SelectionMemo *selection_memo);
    ~GlyphSceneMemo() override;
    GlyphSceneMemo(GlyphSceneMemo const &) = delete;
    GlyphSceneMemo &operator=(GlyphSceneMemo const &) = delete;

    // Does what revive() does and gives back the scene; the owner is not used.
    Selection *revive(Selection *owner) override;
    // Rebuilds the selection with the scene as owner and makes it the scene's selection, replacing
    // (and deleting) the one there.
    virtual void revive();
    virtual GlyphScene *scene();

    SelectionMemo *selection_memo() const { return selection_memo_; }

private:
    GlyphScene *scene_;
    SelectionMemo *selection_memo_;
};

}  // namespace Tavi
