// GlyphScene: the scene that shows a tree of glyphs and keeps its selection. A glyph finds it
// through its parents (Glyph::scene) and calls deselect before it leaves the tree, so that no
// selection is left pointing into a removed branch. The scene's other operations (drawing, changes,
// commands, the selection itself) come with the scene.
#pragma once

namespace Tavi {

class Glyph;

class GlyphScene
{
public:
    virtual ~GlyphScene() = default;

    // Moves the selection out of the glyph when the selection lies in or on it. The answer is
    // always false.
    virtual bool deselect(Glyph *glyph) = 0;
};

}  // namespace Tavi
