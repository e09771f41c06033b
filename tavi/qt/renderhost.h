// The windowless host of one formula: a scene and a view joined to RenderSceneImp and RenderViewImp
// in the host's order, set in a given text size and, if asked, wrapped to a width. It prints the
// formula on any canvas and tells how large it came out there. A program that draws formulas into
// files (tavi-render, a batch of many) needs nothing else to reach a canvas.
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

// The scene of one formula. Its style holds the text size; with a wrap width, the root is asked for
// that width instead of no limit at all.
class RenderScene : public GlyphScene, public MathStyleSource
{
public:
    Glyph *glyph() override { return root_; }
    MathStyle *math_style() override { return &style_; }

    void root(MathRootNode *root) { root_ = root; }
    MathStyle &style() { return style_; }
    // Points; 0 for no wrapping.
    void wrap_width(double points) { wrap_width_ = points; }
    double wrap_width() const { return wrap_width_; }

    // The formula measured and placed for the context's gauge, as a draw would do it.
    AllocationTree measure(GlyphContext &context) { return root_allocation(context); }

protected:
    AllocationTree root_allocation(GlyphContext &context) override;

private:
    MathRootNode *root_ = nullptr;
    MathStyle style_;
    double wrap_width_ = 0.0;
};

// Everything here belongs to the thread that made it, as the formula does: several hosts may draw
// on several threads at once when each has a formula (and a template table) of its own.
class RenderHost
{
public:
    // Takes a reference to the root, which must not be null.
    explicit RenderHost(MathRootNode *root);
    ~RenderHost();
    RenderHost(RenderHost const &) = delete;
    RenderHost &operator=(RenderHost const &) = delete;

    // The size of the text in points (rounded to twentieths).
    void font_size(double points);
    // The width lines are broken at, in points; 0 switches wrapping off.
    void wrap_width(double points);

    // Prints the formula through View::on_print, which lays it out anew for the canvas, and answers
    // the extent it covers on the canvas, the canvas's translation included.
    Extension print(Canvas *canvas);
    // Draws without laying out again when the canvas measures as the one of the last layout did.
    Extension draw(Canvas *canvas);
    // Lays the formula out for the canvas (request and allocate of the whole tree) and draws nothing.
    void typeset(Canvas *canvas);

    MathRootNode *root() const { return root_; }
    GlyphView &view() { return view_; }

private:
    MathRootNode *root_;
    RenderScene scene_;
    RenderSceneImp scene_imp_;
    RenderViewImp view_imp_;
    GlyphView view_;
};

}  // namespace Tavi
