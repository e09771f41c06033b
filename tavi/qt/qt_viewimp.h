// Qt_ViewImp: a view's implementation on a QWidget. It keeps the visible part of the scene (the
// viewport), turns the widget's Qt events into View calls, and turns the view's requests (damage,
// scrolling, cursor, timers, messages) into Qt calls. The free functions translate the keyboard.
#pragma once

#include <Qt>

#include "tavi/geometry/extension.h"
#include "tavi/geometry/point.h"
#include "tavi/glyph/input.h"
#include "tavi/glyph/viewimp.h"

class QKeyEvent;
class QMouseEvent;
class QPaintEvent;
class QRect;
class QResizeEvent;
class QTimerEvent;
class QWheelEvent;
class QWidget;

namespace Tavi {

// The modifier word for the keyboard as it is now: Input::modifier_shift and Input::modifier_control.
// Alt and meta never reach the library.
int modifier_state();
// The modifier word of a set of Qt modifiers.
int modifier_state(Qt::KeyboardModifiers modifiers);
// The key number of a Qt key; key_none for a key the library has no number for.
Input::Key translate_key(int qt_key);

class Qt_ViewImp : public ViewImp
{
public:
    // The widget is not owned; it must outlive this object. The viewport starts empty at the origin.
    explicit Qt_ViewImp(QWidget *widget);
    ~Qt_ViewImp() override;

    // A bare implementation knows no scene; the widget that holds one answers for it.
    Scene *scene() const override;
    Extension const &viewport() const override;
    bool active() const override;
    bool focus() const override;
    void cursor(View::Cursor cursor) override;
    void damage(Extension const &extension) override;
    void damage_all() override;
    void redraw_all() override;
    // Without scroll bars there is no range to set up.
    void scene_extension_changed() override;
    // Without scroll bars the viewport moves at once.
    void scroll_to(Point corner) override;
    // Scrolls the vertical axis: the wheel and the paging keys scroll up and down.
    void do_scroll(Input::ScrollCmd command) override;
    // A message box over the widget: a warning for message_warning, else information.
    void show_message(wchar const *text, wchar const *caption, MessageType type) override;
    int start_timer(std::size_t milliseconds) override;
    void stop_timer(int id) override;
    // Capturing means that moves arrive with no button down; nothing is grabbed.
    void capture_mouse() override;
    void release_mouse() override;
    // Moves the viewport, reusing on screen the pixels that stay in view.
    bool silent_scroll_to(Point corner) override;

    // Between scene coordinates and the widget's.
    void extension_to_client(Extension const &extension, QRect &rect) const;
    void point_to_client(Point point, int &x, int &y) const;
    Point client_to_point(int x, int y) const;

    // The widget's events. Each is accepted when the view took it and ignored otherwise; nothing
    // happens before a view is attached.
    void paintEvent(QPaintEvent *event);
    void timerEvent(QTimerEvent *event);
    void keyPressEvent(QKeyEvent *event);
    void keyReleaseEvent(QKeyEvent *event);
    void mousePressEvent(QMouseEvent *event);
    void mouseReleaseEvent(QMouseEvent *event);
    void mouseDoubleClickEvent(QMouseEvent *event);
    void mouseMoveEvent(QMouseEvent *event);
    void wheelEvent(QWheelEvent *event);
    // Keeps the viewport's corner, but pulls it back toward the scene's start when the grown
    // window would show empty space past the scene's far edge.
    void resizeEvent(QResizeEvent *event);

    QWidget *widget() const { return widget_; }

private:
    // The shared body of press and double click.
    void mouse_down(QMouseEvent *event, bool double_click);

    QWidget *widget_;
    Extension viewport_;
};

}  // namespace Tavi
