// LayoutString: a string literal of the template, shown between quotation marks.
#pragma once

#include "tavi/math/layout/layouttoken.h"

namespace Tavi {

class LayoutString : public LayoutToken
{
public:
    explicit LayoutString(wchar const *text);
    LayoutString(LayoutString const &) = default;
    ~LayoutString() override;

    Glyph *clone(bool deep) const override;

    // The text measured on one line, with a quotation mark on either side.
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    using LayoutAtom::draw;
    using LayoutAtom::request;
};

}  // namespace Tavi
