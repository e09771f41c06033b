// GlyphSelection.
#include "tavi/glyph/glyphselection.h"

#include "tavi/glyph/glyph.h"

namespace Tavi {

GlyphSelection::GlyphSelection(Selection *owner, long glyph_index)
    : owner_(owner), glyph_index_(glyph_index), attached_(false)
{
}

GlyphSelection::~GlyphSelection() = default;

int GlyphSelection::modifier_state() const
{
    return owner_ ? owner_->modifier_state() : 0;
}

Selection *GlyphSelection::owner()
{
    return owner_;
}

void GlyphSelection::attach()
{
    attached_ = true;
}

void GlyphSelection::detach()
{
    attached_ = false;
}

bool GlyphSelection::attached()
{
    return attached_;
}

Glyph *GlyphSelection::glyph()
{
    Glyph *outer = owner_ ? owner_->glyph() : nullptr;
    return outer ? outer->component(glyph_index_) : nullptr;
}

GlyphScene *GlyphSelection::scene()
{
    return owner_ ? owner_->scene() : nullptr;
}

void GlyphSelection::changed(ChangedAspect const &aspect)
{
    if (owner_)
        owner_->changed(aspect);
}

long GlyphSelection::glyph_index()
{
    return glyph_index_;
}

}  // namespace Tavi
