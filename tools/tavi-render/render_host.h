// The windowless host of tavi-render: one formula in a scene and a view joined to RenderSceneImp and
// RenderViewImp in the host's order, set in a given text size and, if asked, wrapped to a width. It
// prints the formula on any canvas and tells how large it came out there.
#pragma once

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/extension.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/glyph/glyphview.h"
#include "tavi/glyph/rendersceneimp.h"
#include "tavi/glyph/renderviewimp.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstyle.h"

namespace Tavi {
class Canvas;
}

namespace TaviRender {

// The scene of one formula. Its style holds the text size; with a wrap width, the root is asked for
// that width instead of no limit at all.
class RenderScene : public Tavi::GlyphScene, public Tavi::MathStyleSource
{
public:
    Tavi::Glyph *glyph() override { return root_; }
    Tavi::MathStyle *math_style() override { return &style_; }

    void root(Tavi::MathRootNode *root) { root_ = root; }
    Tavi::MathStyle &style() { return style_; }
    // Points; 0 for no wrapping.
    void wrap_width(double points) { wrap_width_ = points; }
    double wrap_width() const { return wrap_width_; }

    // The formula measured and placed for the context's gauge, as a draw would do it.
    Tavi::AllocationTree measure(Tavi::GlyphContext &context) { return root_allocation(context); }

protected:
    Tavi::AllocationTree root_allocation(Tavi::GlyphContext &context) override;

private:
    Tavi::MathRootNode *root_ = nullptr;
    Tavi::MathStyle style_;
    double wrap_width_ = 0.0;
};

class RenderHost
{
public:
    // Takes a reference to the root, which must not be null.
    explicit RenderHost(Tavi::MathRootNode *root);
    ~RenderHost();
    RenderHost(RenderHost const &) = delete;
    RenderHost &operator=(RenderHost const &) = delete;

    // The size of the text in points (rounded to twentieths).
    void font_size(double points);
    // The width lines are broken at, in points; 0 switches wrapping off.
    void wrap_width(double points);

    // Prints the formula through View::on_print, which lays it out anew for the canvas, and answers
    // the extent it covers on the canvas, the canvas's translation included.
    Tavi::Extension print(Tavi::Canvas *canvas);
    // Draws without laying out again when the canvas measures as the one of the last layout did.
    Tavi::Extension draw(Tavi::Canvas *canvas);
    // Lays the formula out for the canvas (request and allocate of the whole tree) and draws nothing.
    void typeset(Tavi::Canvas *canvas);

    Tavi::MathRootNode *root() const { return root_; }
    Tavi::GlyphView &view() { return view_; }

private:
    Tavi::MathRootNode *root_;
    RenderScene scene_;
    Tavi::RenderSceneImp scene_imp_;
    Tavi::RenderViewImp view_imp_;
    Tavi::GlyphView view_;
};

}  // namespace TaviRender
