// GlyphSelection: a selection that stands for one component of its owner's glyph, found by index, so
// that it stays right when the component object is replaced. Scene, changes and the modifier word
// come from the owner.
#pragma once

#include "tavi/glyph/selection.h"

namespace Tavi {

class GlyphSelection : public Selection
{
public:
    // The owner must outlive the selection.
    GlyphSelection(Selection *owner, long glyph_index);
    ~GlyphSelection() override;

    int modifier_state() const override;
    Selection *owner() override;
    void attach() override;
    void detach() override;
    bool attached() override;
    // The owner's glyph's component at glyph_index; null while the owner has no glyph.
    Glyph *glyph() override;
    GlyphScene *scene() override;
    void changed(ChangedAspect const &aspect) override;
    long glyph_index() override;

private:
    Selection *owner_;
    long glyph_index_;
    bool attached_;
};

}  // namespace Tavi
