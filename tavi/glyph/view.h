// View: one window onto a scene. It reaches the window system only through a ViewImp that the host
// supplies; it keeps the size of what it shows (the scene extension) and does the scrolling
// arithmetic, asking the implementation to move.
#pragma once

#include <cstddef>

#include "tavi/canvas/color.h"
#include "tavi/geometry/extension.h"
#include "tavi/geometry/point.h"
#include "tavi/glyph/inputhandler.h"

namespace Tavi {

class Canvas;
class DamageAspect;
class Scene;
class ViewImp;

class View : public IInputHandler
{
public:
    // Only the values count: 0 the default arrow, 2 the wait cursor, 3 the cross.
    enum Cursor : int {
        cursor_default = 0,
        cursor_wait = 2,
        cursor_cross = 3,
    };

    // The space kept scrollable past the content, right and below, in device units.
    static constexpr long scroll_margin = 20;
    // One line of scrolling, in device units.
    static constexpr long scroll_line = 12;

    View() = default;
    View(View const &) = delete;
    View &operator=(View const &) = delete;

    // The plain view knows no command.
    bool do_command(Command *command) override;
    bool command_state(Command *command) override;
    ~View() override;
    // Page Up, Page Down, End and Home without modifiers scroll; every other key goes to the scene.
    bool key_down(Input::Key key, int modifiers) override;
    bool key_up(Input::Key key, int modifiers) override;
    bool enter_char(wchar character) override;
    int modifier_state() const override;
    // The subclass's hook, called by the host once the implementation is joined.
    virtual void final_construct();
    virtual Scene *scene() const;
    // The visible part of the scene, in the scene's coordinates.
    virtual Extension const &viewport() const;
    virtual void on_viewport_changed();
    // Stores the extension and tells the implementation, but only when it changed.
    virtual void set_scene_extension(Extension const &extension);
    // The scene extension with the scroll margin.
    virtual Extension scene_scroll_extension() const;
    virtual bool active() const;
    virtual bool focus() const;
    // The colour that erase paints, and whether erasing is off.
    virtual void background(Color color, bool no_erase);
    virtual void cursor(Cursor cursor);
    virtual Cursor adjust_cursor();
    virtual void damage(Extension const &extension);
    virtual void damage_all();
    // Damages everything, whatever the aspect.
    virtual void damage_content(DamageAspect const &aspect);
    // Makes the target visible, moving as little as possible.
    virtual void scroll_to(Extension const &target);
    // Moves the viewport's top left corner to the point.
    virtual void scroll_to(Point corner);
    virtual void redraw_all();
    virtual void on_draw(Canvas *canvas, bool invalidate);
    // Draws for a printing canvas, which always measures again.
    virtual void on_print(Canvas *canvas);
    // One scroll request on one axis (Input::ScrollDir, Input::ScrollCmd); position serves
    // Input::scroll_to_position only. Answers true.
    virtual bool on_scroll(Input::ScrollDir direction, Input::ScrollCmd command, long position);
    virtual void on_focus(bool focus);
    virtual void on_activate(bool active);
    virtual bool mouse_down(Point point, int modifiers, bool double_click);
    virtual bool mouse_up(Point point, int modifiers);
    // delta in the window system's units, 120 a notch, positive away from the user.
    virtual bool mouse_wheel(Point point, int modifiers, int delta);
    virtual bool mouse_move(Point point, bool button_down, int modifiers);
    // A timer of the host that calls on_timeout with the returned id.
    virtual int start_timer(std::size_t milliseconds);
    virtual void stop_timer(int id);
    virtual void on_timeout(int id);
    virtual void capture_mouse();
    virtual void release_mouse();

    Color background() const { return background_; }
    bool no_erase() const { return no_erase_; }
    Extension const &scene_extension() const { return scene_extension_; }
    // Joins the view to its implementation, which it does not own, and sets the implementation's view.
    void implementation(ViewImp *implementation);
    ViewImp *implementation() const { return implementation_; }

protected:
    // Paints the background colour over the canvas, unless erasing is off.
    virtual void erase(Canvas *canvas);
    // The extension grown by the scroll margin at the right and the bottom.
    virtual Extension scroll_extension(Extension const &extension) const;

private:
    Color background_ = Color::white;
    bool no_erase_ = false;
    Extension scene_extension_;
    ViewImp *implementation_ = nullptr;
};

}  // namespace Tavi
