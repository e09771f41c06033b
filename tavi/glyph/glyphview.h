// GlyphView: the view of a GlyphScene. A click and a scroll to the selection both need measured
// glyphs, which only a draw has at hand, so each is noted here and carried out by the next on_draw.
#pragma once

#include "tavi/geometry/point.h"
#include "tavi/glyph/view.h"

namespace Tavi {

class GlyphScene;

class GlyphView : public View
{
public:
    GlyphView() = default;
    ~GlyphView() override;

    void on_focus(bool focus) override;
    void on_activate(bool active) override;
    // A plain click (no modifier) notes the point for selection at the next draw and redraws.
    bool mouse_down(Point point, int modifiers, bool double_click) override;
    // Both drop a pending scroll to the selection: the caller has chosen where to look.
    void scroll_to(Extension const &target) override;
    void scroll_to(Point corner) override;
    void on_draw(Canvas *canvas, bool invalidate) override;
    void on_print(Canvas *canvas) override;

    // The scene, when it is a glyph scene.
    virtual GlyphScene *glyph_scene() const;
    // Scrolls to where the selection stood at the last draw, or, when that is not known yet,
    // redraws and scrolls after the draw.
    virtual void scroll_to_selection();

    bool scroll_pending() const { return scroll_pending_; }
    bool select_pending() const { return select_pending_; }

private:
    bool scroll_pending_ = false;
    bool select_pending_ = false;
    Point pending_point_;
};

}  // namespace Tavi
