// EditGlyphScene: a glyph scene whose selection can be cut, pasted and deleted, with the usual
// keys for them.
#pragma once

#include "tavi/glyph/glyphscene.h"

namespace Tavi {

class EditGlyphScene : public GlyphScene
{
public:
    EditGlyphScene() = default;
    ~EditGlyphScene() override;

    // Control+V, Control+X and Delete, then the accelerators of GlyphScene.
    bool key_down(Input::Key key, int modifiers) override;

    // Both copy and delete must be possible.
    virtual bool can_cut();
    virtual bool can_paste();
    virtual bool can_delete();
    // Copies, then deletes; nothing unless can_cut.
    virtual bool do_cut();
    virtual bool do_paste();
    virtual bool do_delete();
};

}  // namespace Tavi
