// The Qt widget layer with a probe view that writes down every call it gets: keys and text, mouse
// buttons, scroll bar ranges, pixel scrolling against redrawing, resizing at the scene's end, paint on
// real pixels, and the requests a view makes of its widget.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>
#include <QtTest/QTest>

#include <memory>
#include <string>
#include <vector>

#include "support/external_tools.h"
#include "tavi/canvas/brush.h"
#include "tavi/canvas/canvas.h"
#include "tavi/glyph/rendersceneimp.h"
#include "tavi/glyph/scene.h"
#include "tavi/glyph/view.h"
#include "tavi/qt/qt_hostingframe.h"
#include "tavi/qt/qtaviscrollview.h"
#include "tavi/qt/qtaviwidget.h"

namespace {

using namespace Tavi;
using Journal = std::vector<std::string>;

std::string hex(unsigned unit)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%04X", unit);
    return text;
}

// A view that notes its input, takes what `take` says, and paints `ink` black over its background.
class ProbeView : public View
{
public:
    bool key_down(Input::Key key, int modifiers) override
    {
        note("key_down(" + std::to_string(key) + "," + std::to_string(modifiers) + ")");
        return View::key_down(key, modifiers) || take;
    }
    bool key_up(Input::Key key, int modifiers) override
    {
        note("key_up(" + std::to_string(key) + "," + std::to_string(modifiers) + ")");
        return take;
    }
    bool enter_char(wchar c) override
    {
        note("enter_char(" + hex(c) + ")");
        return take;
    }
    // Like a glyph view, a click with a modifier is refused.
    bool mouse_down(Point p, int modifiers, bool twice) override
    {
        note("mouse_down" + where(p, modifiers) + (twice ? ",twice" : ""));
        return modifiers == 0;
    }
    bool mouse_up(Point p, int modifiers) override { return note("mouse_up" + where(p, modifiers)); }
    bool mouse_move(Point p, bool down, int modifiers) override
    {
        return note("mouse_move" + where(p, modifiers) + (down ? ",down" : ""));
    }
    bool mouse_wheel(Point p, int modifiers, int delta) override
    {
        return note("mouse_wheel" + where(p, modifiers) + "," + std::to_string(delta));
    }
    void on_timeout(int id) override { note("timeout(" + std::to_string(id) + ")"); }
    void on_draw(Canvas *canvas, bool invalidate) override
    {
        View::on_draw(canvas, invalidate);
        for (Rect const &r : ink)
            canvas->fill_rect(r, Brush(Color::black));
    }

    Journal journal;
    bool take = true;
    std::vector<Rect> ink;

private:
    bool note(std::string s)
    {
        journal.push_back(std::move(s));
        return true;
    }
    static std::string where(Point p, int m)
    {
        return "(" + std::to_string(p.x) + "," + std::to_string(p.y) + "," + std::to_string(m) + ")";
    }
};

// A scene and a probe view brought up in the order a host uses.
struct Stage
{
    Stage()
    {
        scene.implementation(&scene_imp);
        scene_imp.view(&view);
    }
    Scene scene;
    RenderSceneImp scene_imp;
    ProbeView view;
};

// A QTaviScrollView on screen with the focus, or a bare widget with two free bars.
struct Shown : Stage
{
    explicit Shown(QSize size)
    {
        window.resize(size);
        widget()->setupStage(&scene, &view);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        window.setFocus();
    }
    QTaviWidget *widget() { return window.widget(); }
    QScrollBar *bar(Qt::Orientation o) { return window.findChildren<QScrollBar *>()[o == Qt::Horizontal ? 0 : 1]; }
    QTaviScrollView window;
};

Extension viewport_of(QTaviWidget *w) { return w->getView()->viewport(); }

// Notes the area of every paint event the widget gets.
struct PaintSpy : QObject
{
    bool eventFilter(QObject *, QEvent *e) override
    {
        if (e->type() == QEvent::Paint)
            rects.push_back(static_cast<QPaintEvent *>(e)->rect());
        return false;
    }
    std::vector<QRect> rects;
};

}  // namespace

TEST(QtWidget, KeysReachTheViewAsKeyNumbersAndTextUnits)
{
    struct Row
    {
        char const *what;
        QEvent::Type type;
        int key;
        Qt::KeyboardModifiers modifiers;
        QString text;
        int count;
        bool take;
        Journal expected;
        bool accepted;
    };
    auto const shift = Qt::ShiftModifier, none = Qt::NoModifier;
    auto const all = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    Row const rows[] = {
        {"shift A", QEvent::KeyPress, Qt::Key_A, shift, "A", 1, true, {"key_down(65,1)", "enter_char(0x0041)"}, true},
        {"delete brings no text", QEvent::KeyPress, Qt::Key_Delete, none, "\x7f", 1, true, {"key_down(46,0)"}, true},
        {"alpha is one unit", QEvent::KeyPress, Qt::Key_unknown, none, "α", 1, true, {"enter_char(0x03B1)"}, true},
        {"beyond 16 bits: two units", QEvent::KeyPress, Qt::Key_unknown, none, "𝑥", 1, true,
         {"enter_char(0xD835)", "enter_char(0xDC65)"}, true},
        {"auto-repeat 3", QEvent::KeyPress, Qt::Key_Left, none, "", 3, true,
         {"key_down(37,0)", "key_down(37,0)", "key_down(37,0)"}, true},
        {"alt and meta unseen", QEvent::KeyPress, Qt::Key_F5, all, "", 1, true, {"key_down(116,3)"}, true},
        {"star on the pad", QEvent::KeyPress, Qt::Key_Asterisk, Qt::KeypadModifier, "*", 1, true,
         {"key_down(106,0)", "enter_char(0x002A)"}, true},
        {"menu stands for alt", QEvent::KeyPress, Qt::Key_Menu, none, "", 1, true, {"key_down(18,0)"}, true},
        {"enter", QEvent::KeyPress, Qt::Key_Enter, none, "\r", 1, true, {"key_down(13,0)", "enter_char(0x000D)"}, true},
        {"declined", QEvent::KeyPress, Qt::Key_Z, none, "z", 1, false, {"key_down(90,0)", "enter_char(0x007A)"}, false},
        {"no number, no text", QEvent::KeyPress, Qt::Key_CapsLock, none, "", 1, true, {}, false},
        {"release repeated", QEvent::KeyRelease, Qt::Key_9, none, "9", 2, true, {"key_up(57,0)", "key_up(57,0)"}, true},
    };
    Shown s(QSize(300, 200));
    // Keys go where the window's focus is: the scroll view lends it to its drawing widget.
    ASSERT_EQ(s.widget(), QApplication::focusWidget());
    for (Row const &row : rows) {
        s.view.journal.clear();
        s.view.take = row.take;
        QKeyEvent event(row.type, row.key, row.modifiers, row.text, false, static_cast<quint16>(row.count));
        QApplication::sendEvent(QApplication::focusWidget(), &event);
        EXPECT_EQ(row.expected, s.view.journal) << row.what;
        EXPECT_EQ(row.accepted, event.isAccepted()) << row.what;
    }
    // And as typed: shift goes down first, and Qt counts it among the modifiers while it is down.
    s.view.journal.clear();
    s.view.take = true;
    QTest::keyClick(QApplication::focusWidget(), 'A', Qt::ShiftModifier);
    Journal const typed = {"key_down(16,1)", "key_down(65,1)", "enter_char(0x0041)", "key_up(65,1)", "key_up(16,0)"};
    EXPECT_EQ(typed, s.view.journal);
}

TEST(QtWidget, OnlyTheLeftButtonEditsAtScenePositions)
{
    struct Row
    {
        char const *what;
        QEvent::Type type;
        Qt::MouseButton button;
        Qt::MouseButtons buttons;
        Qt::KeyboardModifiers modifiers;
        bool captured;
        Journal expected;
        bool accepted;
    };
    auto const left = Qt::LeftButton, right = Qt::RightButton, none = Qt::NoButton;
    auto const shift = Qt::ShiftModifier;
    Row const rows[] = {
        {"press", QEvent::MouseButtonPress, left, left, {}, false, {"mouse_down(35,46,0)"}, true},
        {"press refused", QEvent::MouseButtonPress, left, left, shift, false, {"mouse_down(35,46,1)"}, false},
        {"right press", QEvent::MouseButtonPress, right, right, {}, false, {}, false},
        {"double click", QEvent::MouseButtonDblClick, left, left, {}, false, {"mouse_down(35,46,0),twice"}, true},
        {"release", QEvent::MouseButtonRelease, left, none, Qt::ControlModifier, false, {"mouse_up(35,46,2)"}, true},
        {"right release", QEvent::MouseButtonRelease, right, none, {}, false, {}, false},
        {"drag", QEvent::MouseMove, none, left, {}, false, {"mouse_move(35,46,0),down"}, true},
        {"move, not captured: Qt keeps it", QEvent::MouseMove, none, none, {}, false, {}, true},
        {"move, captured", QEvent::MouseMove, none, none, {}, true, {"mouse_move(35,46,0)"}, true},
    };
    Shown s(QSize(300, 200));
    s.view.set_scene_extension(Extension(0, 0, 1000, 1000));
    s.widget()->setContentsX(30);
    s.widget()->setContentsY(40);
    for (Row const &row : rows) {
        s.view.journal.clear();
        if (row.captured)
            s.view.capture_mouse();
        QMouseEvent event(row.type, QPointF(5, 6), QPointF(5, 6), row.button, row.buttons, row.modifiers);
        QApplication::sendEvent(s.widget(), &event);
        EXPECT_EQ(row.expected, s.view.journal) << row.what;
        EXPECT_EQ(row.accepted, event.isAccepted()) << row.what;
    }
    s.view.journal.clear();
    QWheelEvent wheel(QPointF(5, 6), QPointF(5, 6), QPoint(), QPoint(0, -240), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(s.widget(), &wheel);
    EXPECT_EQ(Journal{"mouse_wheel(35,46,0),-240"}, s.view.journal);
}

TEST(QtWidget, ScrollBarsFollowTheSceneAndTheViewport)
{
    struct Bar
    {
        int minimum, maximum, page, value;
        bool operator==(Bar const &o) const
        {
            return minimum == o.minimum && maximum == o.maximum && page == o.page && value == o.value;
        }
    };
    struct Row
    {
        char const *what;
        int scroll_x;  // where the viewport stands before the scene changes
        Extension scene;
        Bar horizontal, vertical;
        long viewport_left;
    };
    // A 300 by 200 viewport; the scroll range is the scene with 20 to spare right and below.
    Row const rows[] = {
        {"narrower and lower than the viewport", 0, Extension(0, 0, 150, 100), {0, 0, 0, 0}, {0, 0, 0, 0}, 0},
        {"larger", 0, Extension(0, 0, 800, 1000), {0, 720, 300, 0}, {0, 620, 200, 0}, 0},
        {"starting before the origin", 0, Extension(-50, -40, 800, 1000), {-40, 720, 300, 0}, {-50, 620, 200, 0}, 0},
        {"shrunk under a scrolled viewport: the bar doesn't move it", 700, Extension(0, 0, 800, 500),
         {0, 220, 300, 220}, {0, 620, 200, 0}, 700},
    };
    for (Row const &row : rows) {
        Stage stage;
        QScrollBar horizontal(Qt::Horizontal), vertical(Qt::Vertical);
        QTaviWidget widget(&horizontal, &vertical);
        widget.setupStage(&stage.scene, &stage.view);
        widget.resize(300, 200);
        widget.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
        stage.view.set_scene_extension(Extension(0, 0, 2000, 2000));
        horizontal.setValue(row.scroll_x);
        stage.view.set_scene_extension(row.scene);
        auto const bar = [](QScrollBar const &b) { return Bar{b.minimum(), b.maximum(), b.pageStep(), b.value()}; };
        EXPECT_EQ(row.horizontal, bar(horizontal)) << row.what;
        EXPECT_EQ(row.vertical, bar(vertical)) << row.what;
        EXPECT_EQ(row.viewport_left, stage.view.viewport().left()) << row.what;
        EXPECT_EQ(12, horizontal.singleStep());
    }
}

TEST(QtWidget, SmallScrollsMovePixelsLargeOnesRedrawAll)
{
    Shown s(QSize(300, 200));
    s.view.set_scene_extension(Extension(0, 0, 2000, 2000));
    PaintSpy spy;
    s.widget()->installEventFilter(&spy);
    int const width = s.widget()->width(), height = s.widget()->height();
    struct Row
    {
        int to_x;
        QRect painted;
    };
    Row const rows[] = {
        {10, QRect(width - 10, 0, 10, height)},     // a band comes into view at the right
        {4, QRect(0, 0, 6, height)},                // and at the left
        {4 + width, QRect(0, 0, width, height)},    // touching the old view: nothing to keep
        {4 + 3 * width, QRect(0, 0, width, height)},
    };
    for (Row const &row : rows) {
        QApplication::processEvents();
        spy.rects.clear();
        s.bar(Qt::Horizontal)->setValue(row.to_x);
        EXPECT_EQ(row.to_x, viewport_of(s.widget()).left());
        QTRY_VERIFY(!spy.rects.empty());
        EXPECT_EQ(row.painted, spy.rects.back()) << row.to_x;
    }
    // Page Down scrolls by half a viewport through the vertical bar.
    QKeyEvent page(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
    QApplication::sendEvent(s.widget(), &page);
    EXPECT_EQ(height / 2, viewport_of(s.widget()).top());
    EXPECT_EQ(height / 2, s.bar(Qt::Vertical)->value());
    // Damage in scene coordinates lands where the scene shows.
    QApplication::processEvents();
    spy.rects.clear();
    Extension const v = viewport_of(s.widget());
    s.view.damage(Extension(v.top() + 20, v.left() + 30, v.top() + 40, v.left() + 70));
    QTRY_VERIFY(!spy.rects.empty());
    EXPECT_TRUE(spy.rects.back().contains(QRect(30, 20, 40, 20)));
    EXPECT_LT(spy.rects.back().width(), width);
}

TEST(QtWidget, WideningAtTheRightEndLeavesNoEmptyBand)
{
    Shown s(QSize(300, 200));
    s.view.ink = {Rect(0, 0, 150, 1000)};
    s.view.set_scene_extension(Extension(0, 0, 150, 1000));
    QScrollBar *bar = s.bar(Qt::Horizontal);
    bar->setValue(bar->maximum());
    ASSERT_EQ(1020, viewport_of(s.widget()).right());
    s.window.resize(400, 200);
    QTRY_COMPARE(s.widget()->width(), 400 - s.bar(Qt::Vertical)->width());
    int const width = s.widget()->width();
    EXPECT_EQ(1000, viewport_of(s.widget()).right());
    EXPECT_EQ(1000 - width, bar->value());
    EXPECT_EQ(1020 - width, bar->maximum());
    EXPECT_EQ(width, bar->pageStep());
    QImage const image = s.widget()->grab().toImage();
    EXPECT_EQ(10, TaviTest::count_ink(image, width - 1, 50, width, 60)) << "the last column shows the scene";
}

TEST(QtWidget, PaintsTheSceneAtItsScrolledPlace)
{
    Shown s(QSize(300, 200));
    s.view.ink = {Rect(50, 60, 70, 80)};  // top, left, bottom, right in the scene
    s.view.set_scene_extension(Extension(0, 0, 1000, 1000));
    s.widget()->setContentsX(40);
    s.widget()->setContentsY(30);
    QImage const image = s.widget()->grab().toImage();
    EXPECT_EQ(400, TaviTest::count_ink(image, 20, 20, 40, 40));
    EXPECT_EQ(400, TaviTest::count_ink(image, 0, 0, image.width(), image.height()));
}

TEST(QtWidget, RequestsOfTheView)
{
    Shown s(QSize(300, 200));
    struct Row
    {
        View::Cursor cursor;
        Qt::CursorShape shape;
    };
    Row const rows[] = {{View::cursor_wait, Qt::WaitCursor}, {View::cursor_cross, Qt::CrossCursor},
                        {View::cursor_default, Qt::ArrowCursor}, {static_cast<View::Cursor>(7), Qt::ArrowCursor}};
    for (Row const &row : rows) {
        s.view.cursor(row.cursor);
        EXPECT_EQ(row.shape, s.widget()->cursor().shape()) << row.cursor;
    }
    s.view.capture_mouse();
    EXPECT_TRUE(s.widget()->hasMouseTracking());
    s.view.release_mouse();
    EXPECT_FALSE(s.widget()->hasMouseTracking());
    EXPECT_TRUE(s.view.focus());

    int const id = s.view.start_timer(5);
    ASSERT_NE(0, id);
    QTRY_VERIFY(!s.view.journal.empty());
    EXPECT_EQ("timeout(" + std::to_string(id) + ")", s.view.journal.front());
    s.view.stop_timer(id);
    QApplication::processEvents();
    s.view.journal.clear();
    QTest::qWait(30);
    EXPECT_TRUE(s.view.journal.empty());
}

TEST(QtWidget, MessagesInBoxes)
{
    struct Row
    {
        MessageType type;
        bool with_view;
        QMessageBox::Icon icon;
    };
    Row const rows[] = {{message_warning, true, QMessageBox::Warning},
                        {message_information, true, QMessageBox::Information},
                        {message_warning, false, QMessageBox::Warning}};
    Shown s(QSize(300, 200));
    for (Row const &row : rows) {
        QString title, text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QWidget *parent = nullptr;
        QTimer::singleShot(0, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ASSERT_NE(nullptr, box);
            title = box->windowTitle(), text = box->text(), icon = box->icon(), parent = box->parentWidget();
            box->accept();
        });
        if (row.with_view)
            Message(&s.view, u"Division by zero", u"Tavi", row.type);
        else
            Qt_HostingFrame::instance().message(u"Division by zero", u"Tavi", row.type);
        EXPECT_EQ("Tavi", title);
        EXPECT_EQ("Division by zero", text);
        EXPECT_EQ(row.icon, icon);
        EXPECT_EQ(row.with_view ? static_cast<QWidget *>(s.widget()) : nullptr, parent);
    }
}

TEST(QtWidget, ClassNamesSlotsAndFocus)
{
    QTaviScrollView scroll_view;
    QTaviWidget bare;
    EXPECT_STREQ("QTaviScrollView", scroll_view.metaObject()->className());
    EXPECT_STREQ("QTaviWidget", bare.metaObject()->className());
    EXPECT_GE(bare.metaObject()->indexOfSlot("setContentsX(int)"), 0);
    EXPECT_GE(bare.metaObject()->indexOfSlot("setContentsY(int)"), 0);
    EXPECT_EQ(scroll_view.widget(), scroll_view.focusProxy());
    EXPECT_EQ(Qt::StrongFocus, bare.focusPolicy());
    EXPECT_EQ(Qt::NoFocus, QTaviWidget(static_cast<QScrollBar *>(nullptr), nullptr).focusPolicy());
    EXPECT_TRUE(bare.testAttribute(Qt::WA_OpaquePaintEvent));
}
