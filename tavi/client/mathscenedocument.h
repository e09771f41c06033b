// MathSceneDocument: the document of a scene of formulas, as a host's script sees it. Its children
// are the components of the scene's root glyph (the formulas), and it makes new formulas for
// createElement("math"). The scene owns it: ref and unref leave it alone.
#pragma once

#include "tavi/client/glyphdocumentmixin.h"

namespace Tavi {

class MathEditScene;

class MathSceneDocument : public GlyphDocumentMixin
{
public:
    explicit MathSceneDocument(MathEditScene *scene) : scene_(scene) {}

    void ref() const override {}
    void unref() const override {}

    // "math" gives a new formula of one placeholder, in no tree and with no reference yet; any other
    // name gives null.
    IElement *createElement(wchar const *tag_name) override;

protected:
    Glyph *this_glyph() override;

private:
    MathEditScene *scene_;
};

}  // namespace Tavi
