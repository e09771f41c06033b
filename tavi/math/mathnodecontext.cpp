// MathNodeContext: measures of the text font at the present script level, taken from the gauge.
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

MathNodeContext::MathNodeContext(GlyphContext const &context, MathStyle *style)
    : GlyphContext(context), MathInfo(style)
{
}

MathNodeContext::MathNodeContext(GlyphContext const &context, MathStyle *style, Settings const &settings)
    : GlyphContext(context), MathInfo(style, settings)
{
}

MathNodeContext::~MathNodeContext() = default;

MathNodeContext *MathNodeContext::clone() const { return new MathNodeContext(*this); }

void MathNodeContext::select_real_font(MathString::Font cls) const
{
    if (Gauge *g = gauge())
        g->font(real_font(cls), char_set(cls), 0);
}

long MathNodeContext::real_ex() const
{
    select_real_font(MathString::f_text);
    Gauge *g = gauge();
    return g != nullptr ? g->font_ex() : 0;
}

long MathNodeContext::real_X_height() const
{
    select_real_font(MathString::f_text);
    Gauge *g = gauge();
    return g != nullptr ? g->font_X_height() : 0;
}

// A fifth of the ascent, truncated, but at least 1: an ascent of 4 gives 1, of 23 gives 4.
long MathNodeContext::real_leading() const
{
    select_real_font(MathString::f_text);
    Gauge *g = gauge();
    long const leading = g != nullptr ? g->font_ascent() / 5 : 0;
    return leading < 1 ? 1 : leading;
}

long MathNodeContext::real_em_twips() const { return real_font_size(MathString::f_text); }

}  // namespace Tavi
