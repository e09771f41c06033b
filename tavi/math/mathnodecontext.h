// MathNodeContext: the context every math node and layout receives, a GlyphContext and a MathInfo in
// one object, with measures of the present text font.
#pragma once

#include "tavi/glyph/glyphcontext.h"
#include "tavi/math/mathinfo.h"

namespace Tavi {

class MathNodeContext : public GlyphContext, public MathInfo
{
public:
    MathNodeContext(GlyphContext const &context, MathStyle *style);
    // With the given values instead of those of the style (see MathInfo::Settings).
    MathNodeContext(GlyphContext const &context, MathStyle *style, Settings const &settings);
    MathNodeContext(MathNodeContext const &) = default;
    MathNodeContext &operator=(MathNodeContext const &) = default;
    ~MathNodeContext() override;

    virtual MathNodeContext *clone() const;

    // Selects real_font(cls) with char_set(cls) and angle 0 on the gauge (nothing without a gauge).
    void select_real_font(MathString::Font cls) const;

    // Each selects the class 1 font at the present level, char set cs_unicode, and asks the gauge.
    // Without a gauge they answer 0 (real_leading 1).
    long real_ex() const;
    long real_X_height() const;
    // font_ascent / 5, truncated, at least 1.
    long real_leading() const;
    // real_font_size of class 1: the em in twips, no gauge involved.
    long real_em_twips() const;
};

}  // namespace Tavi
