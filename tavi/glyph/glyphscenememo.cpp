// GlyphSceneMemo.
#include "tavi/glyph/glyphscenememo.h"

#include "tavi/glyph/glyphscene.h"

namespace Tavi {

GlyphSceneMemo::GlyphSceneMemo(GlyphScene *scene, SelectionMemo *selection_memo)
    : SelectionMemo(0), scene_(scene), selection_memo_(selection_memo)
{
}

GlyphSceneMemo::~GlyphSceneMemo()
{
    delete selection_memo_;
}

Selection *GlyphSceneMemo::revive(Selection *)
{
    revive();
    return scene_;
}

void GlyphSceneMemo::revive()
{
    if (!scene_)
        return;
    scene_->selection(selection_memo_ ? selection_memo_->revive(scene_) : nullptr);
}

GlyphScene *GlyphSceneMemo::scene()
{
    return scene_;
}

}  // namespace Tavi
