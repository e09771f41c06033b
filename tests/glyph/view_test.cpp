// Tests of View: the scrolling arithmetic (scroll_to an extension, on_scroll, the wheel, the scroll
// keys), the scene extension and its margin, erasing, the cursor, and what is passed to the
// implementation.
#include <gtest/gtest.h>

#include "scene_fixtures.h"
#include "support/recording_canvas.h"
#include "tavi/glyph/hint.h"
#include "tavi/glyph/scene.h"
#include "tavi/glyph/view.h"

namespace {

using namespace Tavi;
using SceneTest::FakeSceneImp;
using SceneTest::FakeViewImp;

// A view whose protected helpers can be reached.
class OpenView : public View
{
public:
    using View::scroll_extension;
};

// A scene that may be busy, and notes the keys that reach it.
class KeyScene : public Scene
{
public:
    bool key_down(Input::Key key, int modifiers) override
    {
        keys.push_back(static_cast<int>(key) * 10 + modifiers);
        return true;
    }
    bool busy() override { return is_busy; }
    std::vector<int> keys;
    bool is_busy = false;
};

struct Rig
{
    Rig(Extension const &viewport, Extension const &scene_extension)
    {
        imp.set_scene(&scene);
        view.implementation(&imp);
        imp.set_viewport(viewport);
        view.set_scene_extension(scene_extension);
        imp.extension_changes = 0;
    }
    KeyScene scene;
    FakeViewImp imp;
    OpenView view;
};

TEST(View, ScrollExtensionAddsTheMarginRightAndBelow)
{
    OpenView view;
    // (top 0, left 0, bottom 100, right 200) + 20 at bottom and right.
    EXPECT_EQ(view.scroll_extension(Extension(0, 0, 100, 200)), Extension(0, 0, 120, 220));
    EXPECT_EQ(view.scroll_extension(Extension(-5, 7, 3, 9)), Extension(-5, 7, 23, 29));
    view.set_scene_extension(Extension(0, 0, 100, 200));
    EXPECT_EQ(view.scene_scroll_extension(), Extension(0, 0, 120, 220));
    EXPECT_EQ(view.scene_extension(), Extension(0, 0, 100, 200));
}

TEST(View, SetSceneExtensionTellsTheImplementationOnlyOfChanges)
{
    Rig rig(Extension(0, 0, 100, 100), Extension(0, 0, 50, 60));
    rig.view.set_scene_extension(Extension(0, 0, 50, 60));
    EXPECT_EQ(rig.imp.extension_changes, 0);
    rig.view.set_scene_extension(Extension(0, 0, 50, 61));
    EXPECT_EQ(rig.imp.extension_changes, 1);
    EXPECT_EQ(rig.view.scene_extension(), Extension(0, 0, 50, 61));
    rig.view.set_scene_extension(Extension(0, 0, 50, 61));
    EXPECT_EQ(rig.imp.extension_changes, 1);
}

TEST(View, ScrollToExtensionMovesAsLittleAsPossible)
{
    // The viewport: left 100 to right 400 (300 wide), top 100 to bottom 300 (200 high).
    Extension const viewport(100, 100, 300, 400);
    struct Case
    {
        char const *what;
        Extension target;  // top, left, bottom, right
        bool moves;
        Point corner;
    };
    Case const cases[] = {
        {"inside", Extension(150, 150, 200, 200), false, Point()},
        // Both edges left of the viewport's: x becomes the target's left, 10.
        {"left", Extension(150, 10, 200, 50), true, Point(10, 100)},
        // Both right: x grows by (500 + 20) - 400 = 120, to 220.
        {"right", Extension(150, 450, 200, 500), true, Point(220, 100)},
        // Partly out to the right: x grows by (450 + 20) - 400 = 70, to 170.
        {"half right", Extension(150, 350, 200, 450), true, Point(170, 100)},
        // Both below: y grows by (380 + 20) - 300 = 100, to 200.
        {"below", Extension(350, 150, 380, 200), true, Point(100, 200)},
        // Both above and both left: the target's top left, (20, 20).
        {"above left", Extension(20, 20, 40, 40), true, Point(20, 20)},
        // Wider than the viewport on x, inside on y: no movement at all.
        {"wider", Extension(150, 50, 200, 500), false, Point()},
        // Taller on y, left on x: only x moves, to 10.
        {"taller, left", Extension(50, 10, 400, 50), true, Point(10, 100)},
        // Touching the viewport's left edge exactly is not "less than": no movement.
        {"left edge", Extension(150, 100, 200, 150), false, Point()},
    };
    for (Case const &c : cases) {
        Rig rig(viewport, Extension(0, 0, 1000, 1000));
        rig.view.scroll_to(c.target);
        if (c.moves) {
            ASSERT_EQ(rig.imp.scrolls.size(), 1u) << c.what;
            EXPECT_EQ(rig.imp.scrolls[0], c.corner) << c.what;
        } else {
            EXPECT_TRUE(rig.imp.scrolls.empty()) << c.what;
        }
    }
}

TEST(View, OnScrollComputesTheNewCornerOnEachAxis)
{
    // Viewport at left 0, top 100, 300 wide and 200 high. Scene 500 wide and 1000 high, so the
    // scroll range is right 520 and bottom 1020. Vertically the end is 1020 - 200 = 820, half the
    // size is 100; horizontally the end is 520 - 300 = 220.
    Extension const viewport(100, 0, 300, 300);
    Extension const scene(0, 0, 1000, 500);
    struct Case
    {
        char const *what;
        Input::ScrollDir direction;
        int command;
        long position;
        bool scrolls;
        Point corner;
    };
    Input::ScrollDir const v = Input::scroll_vertical;
    Input::ScrollDir const h = Input::scroll_horizontal;
    Case const cases[] = {
        {"none", v, 0, 0, false, Point()},
        {"finished", v, 7, 500, false, Point()},
        {"start", v, 1, 0, true, Point(0, 0)},
        {"end", v, 2, 0, true, Point(0, 820)},
        {"line back", v, 3, 0, true, Point(0, 88)},
        {"line forward", v, 4, 0, true, Point(0, 112)},
        {"page back", v, 5, 0, true, Point(0, 0)},
        {"page forward", v, 6, 0, true, Point(0, 200)},
        {"position", v, 8, 500, true, Point(0, 500)},
        // 2000 + 200 passes 1020: the end.
        {"position past the end", v, 8, 2000, true, Point(0, 820)},
        {"position before the start", v, 8, -5, true, Point(0, 0)},
        // An unknown command keeps the present 100, which is in range, and still scrolls there.
        {"unknown", v, 9, 700, true, Point(0, 100)},
        {"horizontal end", h, 2, 0, true, Point(220, 100)},
        {"horizontal line forward", h, 4, 0, true, Point(12, 100)},
        // 0 - 12 is before the near edge 0.
        {"horizontal line back", h, 3, 0, true, Point(0, 100)},
        // Any non-zero direction is vertical.
        {"direction 5", static_cast<Input::ScrollDir>(5), 2, 0, true, Point(0, 820)},
    };
    for (Case const &c : cases) {
        Rig rig(viewport, scene);
        EXPECT_TRUE(rig.view.on_scroll(c.direction, static_cast<Input::ScrollCmd>(c.command), c.position)) << c.what;
        if (c.scrolls) {
            ASSERT_EQ(rig.imp.scrolls.size(), 1u) << c.what;
            EXPECT_EQ(rig.imp.scrolls[0], c.corner) << c.what;
        } else {
            EXPECT_TRUE(rig.imp.scrolls.empty()) << c.what;
        }
    }
}

TEST(View, OnScrollOverASmallRangeLandsOnTheNearEdge)
{
    // Scene 50 high: range bottom 70, viewport 200 high, end 70 - 200 = -130. Position 10 passes the
    // far edge (210 > 70) and becomes -130, which is before 0: the near edge wins.
    Rig rig(Extension(0, 0, 200, 300), Extension(0, 0, 50, 50));
    rig.view.on_scroll(Input::scroll_vertical, Input::scroll_to_position, 10);
    rig.view.on_scroll(Input::scroll_vertical, Input::scroll_to_end, 0);
    ASSERT_EQ(rig.imp.scrolls.size(), 2u);
    EXPECT_EQ(rig.imp.scrolls[0], Point(0, 0));
    EXPECT_EQ(rig.imp.scrolls[1], Point(0, 0));
}

TEST(View, MouseWheelScrollsOneLineForEachStartedNotch)
{
    struct Case
    {
        int delta;
        std::vector<Input::ScrollCmd> commands;
    };
    Input::ScrollCmd const up = Input::scroll_line_back;
    Input::ScrollCmd const down = Input::scroll_line_forward;
    Case const cases[] = {
        {240, {up, up}},            // (240 - 1) / 120 + 1 = 2
        {1, {up}},                  // (1 - 1) / 120 + 1 = 1
        {120, {up}},                // 119 / 120 + 1 = 1
        {121, {up, up}},            // 120 / 120 + 1 = 2
        {-1, {down}},
        {-360, {down, down, down}}, // 359 / 120 + 1 = 3
        {0, {}},
    };
    for (Case const &c : cases) {
        // Scene 1000 high against a viewport of 200: the wheel is taken.
        Rig rig(Extension(0, 0, 200, 300), Extension(0, 0, 1000, 100));
        EXPECT_TRUE(rig.view.mouse_wheel(Point(5, 5), 0, c.delta)) << c.delta;
        EXPECT_EQ(rig.imp.scroll_commands, c.commands) << c.delta;
    }
    // Scene 180 high: its scroll height 200 is not more than the viewport's 200.
    Rig fits(Extension(0, 0, 200, 300), Extension(0, 0, 180, 100));
    EXPECT_FALSE(fits.view.mouse_wheel(Point(5, 5), 0, 240));
    EXPECT_TRUE(fits.imp.scroll_commands.empty());
}

TEST(View, ScrollKeysWithoutModifiersScrollAndOthersGoToTheScene)
{
    struct Case
    {
        Input::Key key;
        int modifiers;
        std::vector<Input::ScrollCmd> commands;
        std::vector<int> scene_keys;
    };
    Case const cases[] = {
        {Input::key_page_up, 0, {Input::scroll_page_back}, {}},
        {Input::key_page_down, 0, {Input::scroll_page_forward}, {}},
        {Input::key_end, 0, {Input::scroll_to_end}, {}},
        {Input::key_home, 0, {Input::scroll_to_start}, {}},
        {Input::key_home, 1, {}, {361}},
        {Input::key_page_up, 2, {}, {332}},
        {Input::key_left, 0, {}, {370}},
    };
    for (Case const &c : cases) {
        Rig rig(Extension(0, 0, 10, 10), Extension());
        EXPECT_TRUE(rig.view.key_down(c.key, c.modifiers)) << c.key;
        EXPECT_EQ(rig.imp.scroll_commands, c.commands) << c.key;
        EXPECT_EQ(rig.scene.keys, c.scene_keys) << c.key;
    }
}

TEST(View, EraseUsesTheBackgroundUnlessSwitchedOff)
{
    OpenView view;
    EXPECT_EQ(view.background(), Color::white);
    EXPECT_FALSE(view.no_erase());
    TaviTest::RecordingCanvas canvas;
    view.on_draw(&canvas, false);
    view.background(Color(1, 2, 3), false);
    view.on_print(&canvas);
    view.background(Color(4, 5, 6), true);
    view.on_draw(&canvas, true);
    EXPECT_EQ(canvas.calls(), (std::vector<std::string>{"erase(#ffffff)", "erase(#010203)"}));
    EXPECT_EQ(view.background(), Color(4, 5, 6));
    EXPECT_TRUE(view.no_erase());
    view.on_draw(nullptr, false);
}

TEST(View, PassesRequestsToTheImplementation)
{
    Rig rig(Extension(1, 2, 3, 4), Extension());
    EXPECT_EQ(rig.view.scene(), &rig.scene);
    EXPECT_EQ(rig.imp.view(), &rig.view);
    EXPECT_EQ(rig.view.viewport(), Extension(1, 2, 3, 4));
    EXPECT_TRUE(rig.view.active());
    EXPECT_TRUE(rig.view.focus());
    rig.view.cursor(View::cursor_cross);
    rig.view.damage(Extension(5, 6, 7, 8));
    rig.view.damage_all();
    rig.view.damage_content(DamageSelection::object());
    rig.view.damage_content(DamageAspect::object());
    rig.view.redraw_all();
    rig.view.scroll_to(Point(9, 10));
    EXPECT_EQ(rig.view.start_timer(5), 1005);
    rig.view.stop_timer(1005);
    rig.view.capture_mouse();
    EXPECT_EQ(rig.imp.captures, 1);
    rig.view.release_mouse();
    EXPECT_EQ(rig.imp.cursors, (std::vector<View::Cursor>{View::cursor_cross}));
    EXPECT_EQ(rig.imp.damaged, (std::vector<Extension>{Extension(5, 6, 7, 8)}));
    // damage_content damages all, whatever the aspect.
    EXPECT_EQ(rig.imp.damage_all_count, 3);
    EXPECT_EQ(rig.imp.redraw_count, 1);
    EXPECT_EQ(rig.imp.scrolls, (std::vector<Point>{Point(9, 10)}));
    EXPECT_EQ(rig.imp.stopped, (std::vector<int>{1005}));
    EXPECT_EQ(rig.imp.captures, 0);

    // The plain view takes no mouse and no command.
    CopyCmd copy;
    EXPECT_FALSE(rig.view.mouse_down(Point(), 0, false));
    EXPECT_FALSE(rig.view.mouse_up(Point(), 0));
    EXPECT_FALSE(rig.view.mouse_move(Point(), true, 0));
    EXPECT_FALSE(rig.view.do_command(&copy));
    EXPECT_FALSE(rig.view.command_state(&copy));
    EXPECT_FALSE(copy.enabled());
}

TEST(View, CursorIsWaitWhileTheSceneIsBusy)
{
    Rig rig{Extension(), Extension()};
    EXPECT_EQ(rig.view.adjust_cursor(), 0);
    rig.scene.is_busy = true;
    EXPECT_EQ(rig.view.adjust_cursor(), 2);
}

TEST(View, WithoutImplementationNothingHappens)
{
    OpenView view;
    EXPECT_EQ(view.scene(), nullptr);
    EXPECT_EQ(view.viewport(), Extension());
    EXPECT_FALSE(view.key_down(Input::key_a, 0));
    EXPECT_TRUE(view.key_down(Input::key_home, 0));
    EXPECT_FALSE(view.enter_char(u'a'));
    EXPECT_EQ(view.modifier_state(), 0);
    EXPECT_EQ(view.start_timer(10), 0);
    view.scroll_to(Extension(-50, -50, -40, -40));
    view.on_scroll(Input::scroll_vertical, Input::scroll_to_end, 0);
    view.damage_all();
}

TEST(View, CharactersKeysUpAndModifiersComeFromTheScene)
{
    FakeSceneImp scene_imp;
    scene_imp.modifiers = 3;
    Scene scene;
    scene.implementation(&scene_imp);
    FakeViewImp imp;
    imp.set_scene(&scene);
    View view;
    view.implementation(&imp);
    EXPECT_EQ(view.modifier_state(), 3);
    // The plain scene takes neither.
    EXPECT_FALSE(view.enter_char(u'x'));
    EXPECT_FALSE(view.key_up(Input::key_x, 0));
}

}  // namespace
