// RenderHost: scene and view brought up in the host's order, and printing through the view.
#include "tavi/qt/renderhost.h"

#include <cmath>
#include <memory>

#include "tavi/canvas/canvas.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"

namespace Tavi {

AllocationTree RenderScene::root_allocation(GlyphContext &context)
{
    if (wrap_width_ <= 0.0 || !root_ || !context.gauge())
        return GlyphScene::root_allocation(context);
    // The width in the gauge's own units: points times its dots per point.
    long const width = std::lround(wrap_width_ * static_cast<double>(context.gauge()->dpi().width()) / 72.0);
    BoxTreeLeaf const limits(width < 1 ? 1 : width, 0x7fffffff, 0x7fffffff);
    BoxTree const *tree = root_->request(context, limits);
    if (!tree)
        return AllocationTree();
    return AllocationTree(Point(0, tree->ascent()), tree);
}

RenderHost::RenderHost(MathRootNode *root) : root_(root)
{
    root_->ref();
    // Scene, then its implementation; view, then its implementation; then final_construct.
    scene_.root(root_);
    scene_.implementation(&scene_imp_);
    view_imp_.scene(&scene_);
    view_.implementation(&view_imp_);
    scene_imp_.view(&view_);
    view_.final_construct();
    wrap_width(0.0);
}

RenderHost::~RenderHost()
{
    scene_.root(nullptr);
    root_->unref();
}

void RenderHost::font_size(double points)
{
    scene_.style().set_size(MathStyle::a_font_size, std::lround(points * 20.0));
    root_->invalidate_allocation();
}

void RenderHost::wrap_width(double points)
{
    scene_.wrap_width(points);
    scene_.style().set_boolean(MathStyle::a_wrap_lines, points > 0.0);
    root_->invalidate_allocation();
}

Extension RenderHost::print(Canvas *canvas)
{
    view_.on_print(canvas);
    return view_.scene_extension();
}

Extension RenderHost::draw(Canvas *canvas)
{
    view_.on_draw(canvas, false);
    return view_.scene_extension();
}

void RenderHost::typeset(Canvas *canvas)
{
    root_->invalidate_allocation();
    GlyphContext context(&scene_, &view_, canvas, root_);
    AllocationTree const allocation = scene_.measure(context);
    if (allocation.boxtree())
        std::unique_ptr<AllocationTree> const placed(root_->allocate(0, context, allocation));
}

}  // namespace Tavi
