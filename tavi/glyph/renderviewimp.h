// RenderViewImp: the view implementation for drawing with no window. Its viewport is one unit square
// at the origin; it never has focus, never scrolls and never starts a timer. Messages go to the
// process-wide message hook.
#pragma once

#include "tavi/glyph/viewimp.h"

namespace Tavi {

class RenderViewImp : public ViewImp
{
public:
    RenderViewImp() = default;
    ~RenderViewImp() override;

    Scene *scene() const override;
    // (top 0, left 0, bottom 1, right 1), shared by every render view.
    Extension const &viewport() const override;
    bool active() const override;
    bool focus() const override;
    void cursor(View::Cursor cursor) override;
    void damage(Extension const &extension) override;
    void damage_all() override;
    void redraw_all() override;
    void scene_extension_changed() override;
    void scroll_to(Point corner) override;
    void do_scroll(Input::ScrollCmd command) override;
    void show_message(wchar const *text, wchar const *caption, MessageType type) override;
    // 0: there is no timer.
    int start_timer(std::size_t milliseconds) override;
    void stop_timer(int id) override;
    void capture_mouse() override;
    void release_mouse() override;
    bool silent_scroll_to(Point corner) override;

    // The scene is not owned.
    void scene(Scene *scene) { scene_ = scene; }

private:
    Scene *scene_ = nullptr;
};

}  // namespace Tavi
