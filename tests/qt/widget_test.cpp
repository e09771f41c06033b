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

#include <cstdio>
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

// A view that notes its input as "name(arguments)", takes what `take` says, and paints `ink` black.
class ProbeView : public View
{
public:
    bool key_down(Input::Key k, int m) override { return note("key_down", {k, m}) && (View::key_down(k, m) || take); }
    bool key_up(Input::Key k, int m) override { return note("key_up", {k, m}) && take; }
    bool enter_char(wchar c) override
    {
        char unit[8];
        std::snprintf(unit, sizeof unit, "%04X", static_cast<unsigned>(c));
        journal.push_back("enter_char(" + std::string(unit) + ")");
        return take;
    }
    // Like a glyph view, a click with a modifier is refused.
    bool mouse_down(Point p, int m, bool twice) override
    {
        return note(twice ? "twice" : "down", {p.x, p.y, m}) && m == 0;
    }
    bool mouse_up(Point p, int m) override { return note("up", {p.x, p.y, m}); }
    bool mouse_move(Point p, bool held, int m) override { return note(held ? "drag" : "move", {p.x, p.y, m}); }
    bool mouse_wheel(Point p, int m, int delta) override { return note("wheel", {p.x, p.y, m, delta}); }
    void on_timeout(int id) override { note("timeout", {id}); }
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
    bool note(std::string call, std::initializer_list<long> arguments)
    {
        char separator = '(';
        for (long a : arguments)
            call += separator + std::to_string(a), separator = ',';
        journal.push_back(call + ")");
        return true;
    }
};

// A scene and a probe view, brought up in the order a host uses, in a QTaviScrollView of 300 by 200
// on screen with the focus.
struct Shown
{
    Shown()
    {
        scene.implementation(&scene_imp);
        scene_imp.view(&view);
        window.resize(300, 200);
        widget()->setupStage(&scene, &view);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        window.setFocus();
    }
    QTaviWidget *widget() { return window.widget(); }
    QScrollBar *bar(Qt::Orientation o) { return window.findChildren<QScrollBar *>()[o == Qt::Horizontal ? 0 : 1]; }
    Extension viewport() { return view.viewport(); }

    Scene scene;
    RenderSceneImp scene_imp;
    ProbeView view;
    QTaviScrollView window;
};

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
        QEvent::Type type;
        int key;
        Qt::KeyboardModifiers modifiers;
        QString text;
        int count;
        bool take;
        Journal expected;
        bool accepted;
    };
    auto const press = QEvent::KeyPress;
    auto const none = Qt::NoModifier;
    auto const all = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    Row const rows[] = {
        {press, Qt::Key_A, Qt::ShiftModifier, "A", 1, true, {"key_down(65,1)", "enter_char(0041)"}, true},
        {press, Qt::Key_Delete, none, "\x7f", 1, true, {"key_down(46,0)"}, true},  // no text for delete
        {press, Qt::Key_unknown, none, "α", 1, true, {"enter_char(03B1)"}, true},
        {press, Qt::Key_unknown, none, "𝑥", 1, true, {"enter_char(D835)", "enter_char(DC65)"}, true},
        {press, Qt::Key_Left, none, "", 3, true, {"key_down(37,0)", "key_down(37,0)", "key_down(37,0)"}, true},
        {press, Qt::Key_F5, all, "", 1, true, {"key_down(116,3)"}, true},  // alt and meta unseen
        {press, Qt::Key_Asterisk, Qt::KeypadModifier, "*", 1, true, {"key_down(106,0)", "enter_char(002A)"}, true},
        {press, Qt::Key_Menu, none, "", 1, true, {"key_down(18,0)"}, true},
        {press, Qt::Key_Enter, none, "\r", 1, true, {"key_down(13,0)", "enter_char(000D)"}, true},
        {press, Qt::Key_Z, none, "z", 1, false, {"key_down(90,0)", "enter_char(007A)"}, false},
        {press, Qt::Key_CapsLock, none, "", 1, true, {}, false},
        {QEvent::KeyRelease, Qt::Key_9, none, "9", 2, true, {"key_up(57,0)", "key_up(57,0)"}, true},
    };
    Shown s;
    // Keys go where the window's focus is: the scroll view lends it to its drawing widget.
    ASSERT_EQ(s.widget(), QApplication::focusWidget());
    for (Row const &row : rows) {
        s.view.journal.clear();
        s.view.take = row.take;
        QKeyEvent event(row.type, row.key, row.modifiers, row.text, false, static_cast<quint16>(row.count));
        QApplication::sendEvent(QApplication::focusWidget(), &event);
        EXPECT_EQ(row.expected, s.view.journal) << row.key;
        EXPECT_EQ(row.accepted, event.isAccepted()) << row.key;
    }
    // As typed: shift goes down first, and Qt counts it among the modifiers while it is down.
    s.view.journal.clear();
    s.view.take = true;
    QTest::keyClick(QApplication::focusWidget(), 'A', Qt::ShiftModifier);
    Journal const typed = {"key_down(16,1)", "key_down(65,1)", "enter_char(0041)", "key_up(65,1)", "key_up(16,0)"};
    EXPECT_EQ(typed, s.view.journal);
}

TEST(QtWidget, OnlyTheLeftButtonEditsAtScenePositions)
{
    struct Row
    {
        QEvent::Type type;
        Qt::MouseButton button;
        Qt::MouseButtons buttons;
        Qt::KeyboardModifiers modifiers;
        bool captured;
        Journal expected;
        bool accepted;
    };
    auto const left = Qt::LeftButton, right = Qt::RightButton, no = Qt::NoButton;
    auto const press = QEvent::MouseButtonPress, release = QEvent::MouseButtonRelease, move = QEvent::MouseMove;
    Row const rows[] = {
        {press, left, left, {}, false, {"down(35,46,0)"}, true},
        {press, left, left, Qt::ShiftModifier, false, {"down(35,46,1)"}, false},
        {press, right, right, {}, false, {}, false},
        {QEvent::MouseButtonDblClick, left, left, {}, false, {"twice(35,46,0)"}, true},
        {release, left, no, Qt::ControlModifier, false, {"up(35,46,2)"}, true},
        {release, right, no, {}, false, {}, false},
        {move, no, left, {}, false, {"drag(35,46,0)"}, true},
        {move, no, no, {}, false, {}, true},  // not captured: Qt keeps the move
        {move, no, no, {}, true, {"move(35,46,0)"}, true},
    };
    Shown s;
    s.view.set_scene_extension(Extension(0, 0, 1000, 1000));
    s.widget()->setContentsX(30);
    s.widget()->setContentsY(40);
    for (Row const &row : rows) {
        s.view.journal.clear();
        if (row.captured)
            s.view.capture_mouse();
        QMouseEvent event(row.type, QPointF(5, 6), QPointF(5, 6), row.button, row.buttons, row.modifiers);
        QApplication::sendEvent(s.widget(), &event);
        EXPECT_EQ(row.expected, s.view.journal) << row.type << " " << row.button;
        EXPECT_EQ(row.accepted, event.isAccepted()) << row.type << " " << row.button;
    }
    s.view.journal.clear();
    QWheelEvent wheel(QPointF(5, 6), QPointF(5, 6), QPoint(), QPoint(0, -240), no, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(s.widget(), &wheel);
    EXPECT_EQ(Journal{"wheel(35,46,0,-240)"}, s.view.journal);
}

TEST(QtWidget, ScrollBarsFollowTheSceneAndTheViewport)
{
    struct Row
    {
        int scroll_x;  // where the viewport stands before the scene changes
        Extension scene;
        std::vector<int> horizontal, vertical;  // minimum, maximum, page step, value
        long viewport_left;
    };
    // A 300 by 200 viewport; the scroll range is the scene with 20 to spare right and below.
    Row const rows[] = {
        {0, Extension(0, 0, 150, 100), {0, 0, 0, 0}, {0, 0, 0, 0}, 0},  // the scene fits
        {0, Extension(0, 0, 800, 1000), {0, 720, 300, 0}, {0, 620, 200, 0}, 0},
        {0, Extension(-50, -40, 800, 1000), {-40, 720, 300, 0}, {-50, 620, 200, 0}, 0},
        // Shrunk under a scrolled viewport: the bar's clamped value doesn't move the viewport.
        {700, Extension(0, 0, 800, 500), {0, 220, 300, 220}, {0, 620, 200, 0}, 700},
    };
    auto const state = [](QScrollBar const &b) {
        return std::vector<int>{b.minimum(), b.maximum(), b.pageStep(), b.value()};
    };
    for (Row const &row : rows) {
        Scene scene;
        ProbeView view;
        QScrollBar horizontal(Qt::Horizontal), vertical(Qt::Vertical);
        QTaviWidget widget(&horizontal, &vertical);
        widget.setupStage(&scene, &view);
        widget.resize(300, 200);
        widget.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
        view.set_scene_extension(Extension(0, 0, 2000, 2000));
        horizontal.setValue(row.scroll_x);
        view.set_scene_extension(row.scene);
        EXPECT_EQ(row.horizontal, state(horizontal)) << row.scroll_x << " " << row.scene.right();
        EXPECT_EQ(row.vertical, state(vertical)) << row.scroll_x << " " << row.scene.right();
        EXPECT_EQ(row.viewport_left, view.viewport().left());
        EXPECT_EQ(12, horizontal.singleStep());
    }
}

TEST(QtWidget, SmallScrollsMovePixelsLargeOnesRedrawAll)
{
    Shown s;
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
        {10, QRect(width - 10, 0, 10, height)},   // a band comes into view at the right
        {4, QRect(0, 0, 6, height)},              // and at the left
        {4 + width, QRect(0, 0, width, height)},  // touching the old view: nothing to keep
    };
    for (Row const &row : rows) {
        QApplication::processEvents();
        spy.rects.clear();
        s.bar(Qt::Horizontal)->setValue(row.to_x);
        EXPECT_EQ(row.to_x, s.viewport().left());
        ASSERT_TRUE(QTest::qWaitFor([&] { return !spy.rects.empty(); }));
        EXPECT_EQ(row.painted, spy.rects.back()) << row.to_x;
    }
    // Page Down scrolls by half a viewport through the vertical bar.
    QKeyEvent page(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
    QApplication::sendEvent(s.widget(), &page);
    EXPECT_EQ(height / 2, s.viewport().top());
    EXPECT_EQ(height / 2, s.bar(Qt::Vertical)->value());
    // Damage in scene coordinates lands where the scene shows.
    QApplication::processEvents();
    spy.rects.clear();
    Extension const v = s.viewport();
    s.view.damage(Extension(v.top() + 20, v.left() + 30, v.top() + 40, v.left() + 70));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !spy.rects.empty(); }));
    EXPECT_TRUE(spy.rects.back().contains(QRect(30, 20, 40, 20)));
    EXPECT_LT(spy.rects.back().width(), width);
}

TEST(QtWidget, WideningAtTheRightEndLeavesNoEmptyBand)
{
    Shown s;
    s.view.ink = {Rect(0, 0, 150, 1000)};
    s.view.set_scene_extension(Extension(0, 0, 150, 1000));
    QScrollBar *bar = s.bar(Qt::Horizontal);
    bar->setValue(bar->maximum());
    ASSERT_EQ(1020, s.viewport().right());
    s.window.resize(400, 200);
    ASSERT_TRUE(QTest::qWaitFor([&] { return s.widget()->width() == 400 - s.bar(Qt::Vertical)->width(); }));
    int const width = s.widget()->width();
    EXPECT_EQ(1000, s.viewport().right());
    EXPECT_EQ((std::vector<int>{1000 - width, 1020 - width, width}),
              (std::vector<int>{bar->value(), bar->maximum(), bar->pageStep()}));
    QImage const image = s.widget()->grab().toImage();
    EXPECT_EQ(10, TaviTest::count_ink(image, width - 1, 50, width, 60)) << "the last column shows the scene";
}

TEST(QtWidget, PaintsTheSceneAtItsScrolledPlace)
{
    Shown s;
    s.view.ink = {Rect(50, 60, 70, 80)};  // top, left, bottom, right in the scene
    s.view.set_scene_extension(Extension(0, 0, 1000, 1000));
    s.widget()->setContentsX(40);
    s.widget()->setContentsY(30);
    QImage const image = s.widget()->grab().toImage();
    EXPECT_EQ(400, TaviTest::count_ink(image, 20, 20, 40, 40));
    EXPECT_EQ(400, TaviTest::count_ink(image, 0, 0, image.width(), image.height()));
}

// Cursors by shape, timers that call back until stopped, and messages in boxes: over the widget for
// a view, without a parent for the hosting frame.
TEST(QtWidget, RequestsOfTheView)
{
    Shown s;
    std::pair<int, Qt::CursorShape> const cursors[] = {{2, Qt::WaitCursor}, {3, Qt::CrossCursor}, {7, Qt::ArrowCursor}};
    for (auto const &c : cursors) {
        s.view.cursor(static_cast<View::Cursor>(c.first));
        EXPECT_EQ(c.second, s.widget()->cursor().shape()) << c.first;
    }
    int const id = s.view.start_timer(5);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !s.view.journal.empty(); }));
    EXPECT_EQ("timeout(" + std::to_string(id) + ")", s.view.journal.front());
    s.view.stop_timer(id);
    QApplication::processEvents();
    s.view.journal.clear();
    QTest::qWait(30);
    EXPECT_TRUE(s.view.journal.empty());

    for (bool const with_view : {true, false}) {
        QString shown;
        QTimer::singleShot(0, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            shown = box->windowTitle() + "|" + box->text() + "|" + QString::number(box->icon()) + "|" +
                    (box->parentWidget() == s.widget() ? "widget" : box->parentWidget() ? "other" : "none");
            box->accept();
        });
        HostingFrame *old = HostingFrame::install(&Qt_HostingFrame::instance());
        if (with_view)
            Message(&s.view, u"Division by zero", u"Tavi", message_warning);
        else
            Message(u"Division by zero", nullptr, message_information);
        HostingFrame::install(old);
        EXPECT_EQ(with_view ? "Tavi|Division by zero|2|widget" : "Error|Division by zero|1|none", shown);
    }
}
