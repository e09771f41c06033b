// ViewImp: the host's side of a view: the window, its visible part, its cursor, its timers and its
// way of showing a message.
#pragma once

#include <cstddef>

#include "tavi/geometry/extension.h"
#include "tavi/geometry/point.h"
#include "tavi/glyph/input.h"
#include "tavi/glyph/message.h"
#include "tavi/glyph/view.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class Scene;

class ViewImp
{
public:
    ViewImp() = default;
    ViewImp(ViewImp const &) = delete;
    ViewImp &operator=(ViewImp const &) = delete;

    virtual ~ViewImp();
    virtual Scene *scene() const = 0;
    virtual Extension const &viewport() const = 0;
    virtual bool active() const = 0;
    virtual bool focus() const = 0;
    virtual void cursor(View::Cursor cursor) = 0;
    virtual void damage(Extension const &extension) = 0;
    virtual void damage_all() = 0;
    virtual void redraw_all() = 0;
    // The view's scene extension changed: scroll ranges need setting up again.
    virtual void scene_extension_changed() = 0;
    // Moves the viewport's top left corner to the point.
    virtual void scroll_to(Point corner) = 0;
    // One scroll command on the vertical axis.
    virtual void do_scroll(Input::ScrollCmd command) = 0;
    virtual void show_message(wchar const *text, wchar const *caption, MessageType type) = 0;
    virtual int start_timer(std::size_t milliseconds) = 0;
    virtual void stop_timer(int id) = 0;
    virtual void capture_mouse() = 0;
    virtual void release_mouse() = 0;
    // Moves the viewport without going through scroll bars; false when it stays where it is.
    virtual bool silent_scroll_to(Point corner) = 0;

    View *view() const { return view_; }
    // Set by View::implementation; the view is not owned.
    void view(View *view) { view_ = view; }

private:
    View *view_ = nullptr;
};

}  // namespace Tavi
