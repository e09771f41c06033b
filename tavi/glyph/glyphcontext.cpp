// GlyphContext: the operations that need to know that a Canvas is a Gauge.
#include "tavi/glyph/glyphcontext.h"

#include "tavi/canvas/canvas.h"

namespace Tavi {

GlyphContext::GlyphContext(Scene *scene, View *view, Canvas *canvas, Glyph *root)
    : scene_(scene), root_(root), view_(view), gauge_(canvas), canvas_(canvas)
{
}

void GlyphContext::canvas(Canvas *canvas)
{
    canvas_ = canvas;
    gauge_ = canvas;
}

}  // namespace Tavi
