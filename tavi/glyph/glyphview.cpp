// GlyphView.
#include "tavi/glyph/glyphview.h"

#include "tavi/canvas/canvas.h"
#include "tavi/glyph/glyphscene.h"

namespace Tavi {

GlyphView::~GlyphView() = default;

void GlyphView::on_focus(bool)
{
    damage_all();
}

void GlyphView::on_activate(bool)
{
    damage_all();
}

bool GlyphView::mouse_down(Point point, int modifiers, bool)
{
    if (modifiers != 0)
        return false;
    pending_point_ = point;
    select_pending_ = true;
    scroll_pending_ = false;
    damage_all();
    return true;
}

void GlyphView::scroll_to(Extension const &target)
{
    scroll_pending_ = false;
    View::scroll_to(target);
}

void GlyphView::scroll_to(Point corner)
{
    scroll_pending_ = false;
    View::scroll_to(corner);
}

// The click is resolved before drawing, so that the new selection is drawn at once; the scroll after,
// since the draw is what measures where the selection stands.
void GlyphView::on_draw(Canvas *canvas, bool invalidate)
{
    GlyphScene *scene = glyph_scene();
    if (select_pending_) {
        select_pending_ = false;
        if (scene && canvas)
            scene->select_at(this, canvas, pending_point_);
    }
    erase(canvas);
    if (scene)
        scene->draw(this, canvas, invalidate);
    if (scroll_pending_) {
        scroll_pending_ = false;
        Extension target;
        if (scene && scene->selection_extension(this, target))
            scroll_to(target);
    }
}

void GlyphView::on_print(Canvas *canvas)
{
    erase(canvas);
    if (GlyphScene *scene = glyph_scene())
        scene->draw(this, canvas, true);
}

GlyphScene *GlyphView::glyph_scene() const
{
    return dynamic_cast<GlyphScene *>(scene());
}

void GlyphView::scroll_to_selection()
{
    scroll_pending_ = false;
    GlyphScene *scene = glyph_scene();
    if (!scene)
        return;
    Extension target;
    if (scene->selection_extension(this, target)) {
        scroll_to(target);
    } else {
        scroll_pending_ = true;
        damage_all();
    }
}

}  // namespace Tavi
