// RenderViewImp.
#include "tavi/glyph/renderviewimp.h"

namespace Tavi {

RenderViewImp::~RenderViewImp() = default;

Scene *RenderViewImp::scene() const
{
    return scene_;
}

Extension const &RenderViewImp::viewport() const
{
    static Extension const unit(0, 0, 1, 1);
    return unit;
}

bool RenderViewImp::active() const
{
    return false;
}

bool RenderViewImp::focus() const
{
    return false;
}

void RenderViewImp::cursor(View::Cursor) {}

void RenderViewImp::damage(Extension const &) {}

void RenderViewImp::damage_all() {}

void RenderViewImp::redraw_all() {}

void RenderViewImp::scene_extension_changed() {}

void RenderViewImp::scroll_to(Point) {}

void RenderViewImp::do_scroll(Input::ScrollCmd) {}

void RenderViewImp::show_message(wchar const *text, wchar const *caption, MessageType type)
{
    Message(text, caption, type);
}

int RenderViewImp::start_timer(std::size_t)
{
    return 0;
}

void RenderViewImp::stop_timer(int) {}

void RenderViewImp::capture_mouse() {}

void RenderViewImp::release_mouse() {}

bool RenderViewImp::silent_scroll_to(Point)
{
    return false;
}

}  // namespace Tavi
