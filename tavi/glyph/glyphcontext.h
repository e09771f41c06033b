// GlyphContext: the state handed down every measuring, placing and drawing call of a glyph tree.
// It owns nothing. A context that carries a canvas is the sign that painting is wanted; one with only
// a gauge is enough to measure.
#pragma once

namespace Tavi {

class Scene;
class View;
class Glyph;
class Gauge;
class Canvas;

class GlyphContext
{
public:
    GlyphContext(Scene *scene, Glyph *root)
        : scene_(scene), root_(root), view_(nullptr), gauge_(nullptr), canvas_(nullptr)
    {
    }
    GlyphContext(Scene *scene, View *view, Gauge *gauge, Glyph *root)
        : scene_(scene), root_(root), view_(view), gauge_(gauge), canvas_(nullptr)
    {
    }
    GlyphContext(Scene *scene, View *view, Canvas *canvas, Glyph *root);
    GlyphContext(GlyphContext const &) = default;
    GlyphContext &operator=(GlyphContext const &) = default;
    virtual ~GlyphContext() = default;

    Scene *scene() const { return scene_; }
    Glyph *root() const { return root_; }
    View *view() const { return view_; }
    Gauge *gauge() const { return gauge_; }
    Canvas *canvas() const { return canvas_; }
    // Draws (and measures) on another canvas from now on.
    void canvas(Canvas *canvas);

private:
    Scene *scene_;
    Glyph *root_;
    View *view_;
    Gauge *gauge_;
    Canvas *canvas_;
};

}  // namespace Tavi
