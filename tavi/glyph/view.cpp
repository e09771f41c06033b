// View: what a view does itself, chiefly the scrolling arithmetic; the rest is passed to the
// implementation. A view without an implementation shows nothing: its viewport is empty, and
// requests to the window system are dropped.
#include "tavi/glyph/view.h"

#include "tavi/canvas/canvas.h"
#include "tavi/glyph/scene.h"
#include "tavi/glyph/viewimp.h"

namespace Tavi {

View::~View() = default;

bool View::do_command(Command *)
{
    return false;
}

bool View::command_state(Command *)
{
    return false;
}

// Keys that scroll, with the scroll command each one gives.
namespace {

struct ScrollKey
{
    Input::Key key;
    Input::ScrollCmd command;
};

constexpr ScrollKey scroll_keys[] = {
    {Input::key_page_up, Input::scroll_page_back},
    {Input::key_page_down, Input::scroll_page_forward},
    {Input::key_end, Input::scroll_to_end},
    {Input::key_home, Input::scroll_to_start},
};

}  // namespace

bool View::key_down(Input::Key key, int modifiers)
{
    if (modifiers == 0) {
        for (ScrollKey const &k : scroll_keys) {
            if (k.key == key) {
                if (implementation_)
                    implementation_->do_scroll(k.command);
                return true;
            }
        }
    }
    Scene *s = scene();
    return s ? s->key_down(key, modifiers) : false;
}

bool View::key_up(Input::Key key, int modifiers)
{
    Scene *s = scene();
    return s ? s->key_up(key, modifiers) : false;
}

bool View::enter_char(wchar character)
{
    Scene *s = scene();
    return s ? s->enter_char(character) : false;
}

int View::modifier_state() const
{
    Scene *s = scene();
    return s ? s->modifier_state() : 0;
}

void View::final_construct() {}

Scene *View::scene() const
{
    return implementation_ ? implementation_->scene() : nullptr;
}

Extension const &View::viewport() const
{
    static Extension const none;
    return implementation_ ? implementation_->viewport() : none;
}

void View::on_viewport_changed() {}

void View::set_scene_extension(Extension const &extension)
{
    if (extension == scene_extension_)
        return;
    scene_extension_ = extension;
    if (implementation_)
        implementation_->scene_extension_changed();
}

Extension View::scene_scroll_extension() const
{
    return scroll_extension(scene_extension_);
}

bool View::active() const
{
    return implementation_ ? implementation_->active() : false;
}

bool View::focus() const
{
    return implementation_ ? implementation_->focus() : false;
}

void View::background(Color color, bool no_erase)
{
    background_ = color;
    no_erase_ = no_erase;
}

void View::cursor(Cursor cursor)
{
    if (implementation_)
        implementation_->cursor(cursor);
}

View::Cursor View::adjust_cursor()
{
    Scene *s = scene();
    return s && s->busy() ? cursor_wait : cursor_default;
}

void View::damage(Extension const &extension)
{
    if (implementation_)
        implementation_->damage(extension);
}

void View::damage_all()
{
    if (implementation_)
        implementation_->damage_all();
}

void View::damage_content(DamageAspect const &)
{
    damage_all();
}

// On each axis: a target entirely before the viewport brings its near edge to the viewport's near
// edge; one entirely past it brings its far edge, plus the scroll margin, to the viewport's far edge.
// A target inside the viewport, or one that covers it, leaves that axis alone.
void View::scroll_to(Extension const &target)
{
    Extension const vp = viewport();
    Extension const wanted = scroll_extension(target);
    Point corner(vp.left(), vp.top());
    if (target.left() < vp.left() && target.right() < vp.right())
        corner.x = wanted.left();
    else if (target.left() > vp.left() && target.right() > vp.right())
        corner.x += wanted.right() - vp.right();
    if (target.top() < vp.top() && target.bottom() < vp.bottom())
        corner.y = wanted.top();
    else if (target.top() > vp.top() && target.bottom() > vp.bottom())
        corner.y += wanted.bottom() - vp.bottom();
    if (corner != Point(vp.left(), vp.top()))
        scroll_to(corner);
}

void View::scroll_to(Point corner)
{
    if (implementation_)
        implementation_->scroll_to(corner);
}

void View::redraw_all()
{
    if (implementation_)
        implementation_->redraw_all();
}

void View::on_draw(Canvas *canvas, bool)
{
    erase(canvas);
}

void View::on_print(Canvas *canvas)
{
    on_draw(canvas, true);
}

// The range is the scroll extension; "end" is the position that shows its far edge at the far edge
// of the viewport. Whatever the command, the result is brought back into the range, the far edge
// first, so that a range smaller than the viewport lands on its near edge.
bool View::on_scroll(Input::ScrollDir direction, Input::ScrollCmd command, long position)
{
    Extension const vp = viewport();
    Extension const range = scene_scroll_extension();
    bool const horizontal = direction == Input::scroll_horizontal;
    long const near_edge = horizontal ? range.left() : range.top();
    long const far_edge = horizontal ? range.right() : range.bottom();
    long const present = horizontal ? vp.left() : vp.top();
    long const size = horizontal ? vp.right() - vp.left() : vp.bottom() - vp.top();
    long const end = far_edge - size;

    long next = present;
    switch (command) {
    case Input::scroll_none:
    case Input::scroll_finished:
        return true;
    case Input::scroll_to_start:
        next = near_edge;
        break;
    case Input::scroll_to_end:
        next = end;
        break;
    case Input::scroll_line_back:
        next = present - scroll_line;
        break;
    case Input::scroll_line_forward:
        next = present + scroll_line;
        break;
    case Input::scroll_page_back:
        next = present - size / 2;
        break;
    case Input::scroll_page_forward:
        next = present + size / 2;
        break;
    case Input::scroll_to_position:
        next = position;
        break;
    default:
        break;
    }
    if (next + size > far_edge)
        next = end;
    if (next < near_edge)
        next = near_edge;
    scroll_to(horizontal ? Point(next, vp.top()) : Point(vp.left(), next));
    return true;
}

void View::on_focus(bool) {}

void View::on_activate(bool) {}

bool View::mouse_down(Point, int, bool)
{
    return false;
}

bool View::mouse_up(Point, int)
{
    return false;
}

// Each started notch of 120 scrolls one line: toward the top for a positive delta, toward the
// bottom for a negative one. A scene that fits the viewport's height doesn't take the wheel.
bool View::mouse_wheel(Point, int, int delta)
{
    Extension const range = scene_scroll_extension();
    Extension const &vp = viewport();
    if (range.bottom() - range.top() <= vp.bottom() - vp.top())
        return false;
    if (delta == 0)
        return true;
    Input::ScrollCmd const command = delta > 0 ? Input::scroll_line_back : Input::scroll_line_forward;
    long const amount = delta > 0 ? static_cast<long>(delta) : -static_cast<long>(delta);
    long const steps = (amount - 1) / 120 + 1;
    for (long i = 0; i < steps && implementation_; ++i)
        implementation_->do_scroll(command);
    return true;
}

bool View::mouse_move(Point, bool, int)
{
    return false;
}

int View::start_timer(std::size_t milliseconds)
{
    return implementation_ ? implementation_->start_timer(milliseconds) : 0;
}

void View::stop_timer(int id)
{
    if (implementation_)
        implementation_->stop_timer(id);
}

void View::on_timeout(int) {}

void View::capture_mouse()
{
    if (implementation_)
        implementation_->capture_mouse();
}

void View::release_mouse()
{
    if (implementation_)
        implementation_->release_mouse();
}

void View::implementation(ViewImp *implementation)
{
    implementation_ = implementation;
    if (implementation_)
        implementation_->view(this);
}

void View::erase(Canvas *canvas)
{
    if (no_erase_ || !canvas)
        return;
    canvas->erase(background_);
}

Extension View::scroll_extension(Extension const &extension) const
{
    return Extension(extension.top(), extension.left(), extension.bottom() + scroll_margin,
                     extension.right() + scroll_margin);
}

}  // namespace Tavi
