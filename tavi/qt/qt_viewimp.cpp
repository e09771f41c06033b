// Qt_ViewImp: the key table, the modifier word, and the traffic between a QWidget and its View.
#include "tavi/qt/qt_viewimp.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QRect>
#include <QResizeEvent>
#include <QString>
#include <QTimerEvent>
#include <QWheelEvent>
#include <QWidget>

#include "tavi/glyph/view.h"
#include "tavi/qt/qt_canvas.h"
#include "tavi/qt/qt_hostingframe.h"

namespace Tavi {

namespace {

// Qt keys and the numbers the library knows them by. A row covers the Qt keys from `first` to
// `last`, which must be consecutive in Qt and map onto consecutive numbers from `key` on.
struct KeyRow
{
    int first;
    int last;
    Input::Key key;
};

constexpr KeyRow key_table[] = {
    // first               last                key
    {Qt::Key_Escape,       Qt::Key_Escape,     Input::key_escape},
    {Qt::Key_Tab,          Qt::Key_Tab,        Input::key_tab},
    {Qt::Key_Backspace,    Qt::Key_Backspace,  Input::key_backspace},
    {Qt::Key_Return,       Qt::Key_Return,     Input::key_return},
    {Qt::Key_Enter,        Qt::Key_Enter,      Input::key_return},
    {Qt::Key_Insert,       Qt::Key_Insert,     Input::key_insert},
    {Qt::Key_Delete,       Qt::Key_Delete,     Input::key_delete},
    {Qt::Key_Home,         Qt::Key_Home,       Input::key_home},
    {Qt::Key_End,          Qt::Key_End,        Input::key_end},
    {Qt::Key_Left,         Qt::Key_Down,       Input::key_left},       // left, up, right, down
    {Qt::Key_PageUp,       Qt::Key_PageDown,   Input::key_page_up},    // page up, page down
    {Qt::Key_Shift,        Qt::Key_Shift,      Input::key_shift},
    {Qt::Key_Control,      Qt::Key_Control,    Input::key_control},
    {Qt::Key_Menu,         Qt::Key_Menu,       Input::key_alt},        // the menu key stands for alt
    {Qt::Key_F1,           Qt::Key_F12,        Input::key_f1},
    {Qt::Key_Space,        Qt::Key_Space,      Input::key_space},
    // The signs have the numeric pad's numbers, on the pad or not.
    {Qt::Key_Asterisk,     Qt::Key_Asterisk,   Input::key_multiply},
    {Qt::Key_Plus,         Qt::Key_Plus,       Input::key_add},
    {Qt::Key_Minus,        Qt::Key_Minus,      Input::key_subtract},
    {Qt::Key_Period,       Qt::Key_Period,     Input::key_decimal},
    {Qt::Key_Slash,        Qt::Key_Slash,      Input::key_divide},
    {Qt::Key_0,            Qt::Key_9,          Input::key_0},
    {Qt::Key_A,            Qt::Key_Z,          Input::key_a},
};

// The shapes of the view's cursors; any other cursor is the arrow.
Qt::CursorShape cursor_shape(View::Cursor cursor)
{
    switch (cursor) {
    case View::cursor_wait:
        return Qt::WaitCursor;
    case View::cursor_cross:
        return Qt::CrossCursor;
    default:
        return Qt::ArrowCursor;
    }
}

bool intersect(Extension const &a, Extension const &b)
{
    return a.left() < b.right() && b.left() < a.right() && a.top() < b.bottom() && b.top() < a.bottom();
}

Extension moved(Extension const &e, Point by)
{
    return Extension(e.top() + by.y, e.left() + by.x, e.bottom() + by.y, e.right() + by.x);
}

}  // namespace

int modifier_state(Qt::KeyboardModifiers modifiers)
{
    int word = 0;
    if (modifiers & Qt::ShiftModifier)
        word |= Input::modifier_shift;
    if (modifiers & Qt::ControlModifier)
        word |= Input::modifier_control;
    return word;
}

int modifier_state() { return modifier_state(QGuiApplication::keyboardModifiers()); }

Input::Key translate_key(int qt_key)
{
    for (KeyRow const &row : key_table)
        if (qt_key >= row.first && qt_key <= row.last)
            return static_cast<Input::Key>(row.key + (qt_key - row.first));
    return Input::key_none;
}

Qt_ViewImp::Qt_ViewImp(QWidget *widget) : widget_(widget) {}

Qt_ViewImp::~Qt_ViewImp() = default;

Scene *Qt_ViewImp::scene() const { return nullptr; }

Extension const &Qt_ViewImp::viewport() const { return viewport_; }

bool Qt_ViewImp::active() const { return widget_->isActiveWindow(); }

bool Qt_ViewImp::focus() const { return widget_->hasFocus(); }

void Qt_ViewImp::cursor(View::Cursor cursor) { widget_->setCursor(QCursor(cursor_shape(cursor))); }

void Qt_ViewImp::damage(Extension const &extension)
{
    QRect rect;
    extension_to_client(extension, rect);
    widget_->update(rect);
}

void Qt_ViewImp::damage_all() { widget_->update(); }

void Qt_ViewImp::redraw_all() { widget_->repaint(); }

void Qt_ViewImp::scene_extension_changed() {}

void Qt_ViewImp::scroll_to(Point corner) { silent_scroll_to(corner); }

void Qt_ViewImp::do_scroll(Input::ScrollCmd command)
{
    if (View *v = view())
        v->on_scroll(Input::scroll_vertical, command, 0);
}

void Qt_ViewImp::show_message(wchar const *text, wchar const *caption, MessageType type)
{
    show_message_box(widget_, text, caption, type);
}

int Qt_ViewImp::start_timer(std::size_t milliseconds) { return widget_->startTimer(static_cast<int>(milliseconds)); }

void Qt_ViewImp::stop_timer(int id) { widget_->killTimer(id); }

void Qt_ViewImp::capture_mouse() { widget_->setMouseTracking(true); }

void Qt_ViewImp::release_mouse() { widget_->setMouseTracking(false); }

bool Qt_ViewImp::silent_scroll_to(Point corner)
{
    Point const top_left(viewport_.left(), viewport_.top());
    if (corner == top_left)
        return false;
    Point const delta = corner - top_left;
    Extension const old = viewport_;
    viewport_ = moved(viewport_, delta);
    if (View *v = view())
        v->on_viewport_changed();
    // Nothing of the old picture stays in view: paint afresh rather than move pixels off the edge.
    if (!intersect(viewport_, old))
        damage_all();
    else
        widget_->scroll(static_cast<int>(-delta.x), static_cast<int>(-delta.y));
    return true;
}

void Qt_ViewImp::extension_to_client(Extension const &extension, QRect &rect) const
{
    rect.setLeft(static_cast<int>(extension.left() - viewport_.left()));
    rect.setTop(static_cast<int>(extension.top() - viewport_.top()));
    rect.setRight(static_cast<int>(extension.right() - viewport_.left()));
    rect.setBottom(static_cast<int>(extension.bottom() - viewport_.top()));
}

void Qt_ViewImp::point_to_client(Point point, int &x, int &y) const
{
    x = static_cast<int>(point.x - viewport_.left());
    y = static_cast<int>(point.y - viewport_.top());
}

Point Qt_ViewImp::client_to_point(int x, int y) const { return Point(x + viewport_.left(), y + viewport_.top()); }

void Qt_ViewImp::paintEvent(QPaintEvent *event)
{
    QPainter painter;
    if (!painter.begin(widget_))
        return;
    View *v = view();
    if (v == nullptr) {
        // The widget paints all its pixels itself; until a view comes it shows an empty page.
        painter.fillRect(event->rect(), widget_->palette().color(QPalette::Base));
        return;
    }
    painter.setClipRegion(event->region(), Qt::ReplaceClip);
    Qt_Canvas canvas(&painter, event, v->viewport());
    v->on_draw(&canvas, false);
}

void Qt_ViewImp::timerEvent(QTimerEvent *event)
{
    if (View *v = view())
        v->on_timeout(event->timerId());
}

void Qt_ViewImp::keyPressEvent(QKeyEvent *event)
{
    int const modifiers = modifier_state(event->modifiers());
    event->ignore();
    View *v = view();
    if (v == nullptr)
        return;
    Input::Key const key = translate_key(event->key());
    if (key != Input::key_none)
        for (int i = 0; i < event->count(); ++i)
            if (v->key_down(key, modifiers))
                event->accept();
    // Delete brings a character of its own on some systems; the key alone stands for it.
    if (key == Input::key_delete)
        return;
    QString const text = event->text();
    // The text goes on as its UTF-16 units, one call a unit, so that any character reaches the
    // library whatever the locale; a character outside the 16-bit range comes as its surrogate
    // pair. A Latin-1 character is the same number as its byte in a Latin-1 locale.
    ushort const *units = text.utf16();
    for (qsizetype i = 0; i < text.size(); ++i)
        if (v->enter_char(static_cast<wchar>(units[i])))
            event->accept();
}

void Qt_ViewImp::keyReleaseEvent(QKeyEvent *event)
{
    int const modifiers = modifier_state(event->modifiers());
    event->ignore();
    View *v = view();
    Input::Key const key = translate_key(event->key());
    if (v == nullptr || key == Input::key_none)
        return;
    for (int i = 0; i < event->count(); ++i)
        if (v->key_up(key, modifiers))
            event->accept();
}

void Qt_ViewImp::mouse_down(QMouseEvent *event, bool double_click)
{
    View *v = view();
    // Only the left button edits; the others are left to the widgets beneath, a context menu say.
    if (v == nullptr || event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    QPoint const p = event->position().toPoint();
    event->setAccepted(v->mouse_down(client_to_point(p.x(), p.y()), modifier_state(event->modifiers()), double_click));
}

void Qt_ViewImp::mousePressEvent(QMouseEvent *event) { mouse_down(event, false); }

void Qt_ViewImp::mouseDoubleClickEvent(QMouseEvent *event) { mouse_down(event, true); }

void Qt_ViewImp::mouseReleaseEvent(QMouseEvent *event)
{
    View *v = view();
    if (v == nullptr || event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    QPoint const p = event->position().toPoint();
    event->setAccepted(v->mouse_up(client_to_point(p.x(), p.y()), modifier_state(event->modifiers())));
}

void Qt_ViewImp::mouseMoveEvent(QMouseEvent *event)
{
    View *v = view();
    if (v == nullptr) {
        event->ignore();
        return;
    }
    QPoint const p = event->position().toPoint();
    bool const left_down = (event->buttons() & Qt::LeftButton) != 0;
    event->setAccepted(v->mouse_move(client_to_point(p.x(), p.y()), left_down, modifier_state(event->modifiers())));
}

void Qt_ViewImp::wheelEvent(QWheelEvent *event)
{
    View *v = view();
    if (v == nullptr) {
        event->ignore();
        return;
    }
    QPoint const p = event->position().toPoint();
    event->setAccepted(v->mouse_wheel(client_to_point(p.x(), p.y()), modifier_state(event->modifiers()),
                                      event->angleDelta().y()));
}

void Qt_ViewImp::resizeEvent(QResizeEvent *event)
{
    long const width = event->size().width();
    long const height = event->size().height();
    if (width == viewport_.right() - viewport_.left() && height == viewport_.bottom() - viewport_.top())
        return;
    viewport_.bottom(viewport_.top() + height);
    viewport_.right(viewport_.left() + width);
    View *v = view();
    if (v == nullptr)
        return;
    Extension const &scene = v->scene_extension();
    Point p(viewport_.left(), viewport_.top());
    if (scene.bottom() < viewport_.bottom()) {
        p.y = scene.bottom() - height;
        if (p.y < scene.top())
            p.y = scene.top();
    }
    if (scene.right() < viewport_.right()) {
        p.x = scene.right() - width;
        if (p.x < scene.left())
            p.x = scene.left();
    }
    viewport_ = moved(viewport_, p - Point(viewport_.left(), viewport_.top()));
    // The scroll ranges depend on the viewport's size as much as on the scene's.
    scene_extension_changed();
    v->on_viewport_changed();
}

}  // namespace Tavi
