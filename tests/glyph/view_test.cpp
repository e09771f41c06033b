// Tests of View: the scrolling arithmetic (scroll_to an extension, on_scroll with the scene's margin,
// the wheel).
#include <gtest/gtest.h>

#include "scene_fixtures.h"
#include "support/recording_canvas.h"
#include "tavi/glyph/hint.h"
#include "tavi/glyph/scene.h"
#include "tavi/glyph/view.h"

namespace {

using namespace Tavi;
using SceneTest::FakeViewImp;

struct Rig
{
    Rig(Extension const &viewport, Extension const &scene_extension)
    {
        imp.set_scene(&scene);
        view.implementation(&imp);
        imp.set_viewport(viewport);
        view.set_scene_extension(scene_extension);
    }
    Scene scene;
    FakeViewImp imp;
    View view;
};

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
        // Partly out to the right: x grows by (450 + 20) - 400 = 70, to 170.
        {"half right", Extension(150, 350, 200, 450), true, Point(170, 100)},
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
        EXPECT_EQ(rig.imp.scrolls, c.moves ? std::vector<Point>{c.corner} : std::vector<Point>{}) << c.what;
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
        Point corner;
    };
    Input::ScrollDir const v = Input::scroll_vertical;
    Input::ScrollDir const h = Input::scroll_horizontal;
    Case const cases[] = {
        {"end", v, 2, 0, Point(0, 820)},
        {"line back", v, 3, 0, Point(0, 88)},
        {"page forward", v, 6, 0, Point(0, 200)},
        // 2000 + 200 passes 1020: the end.
        {"position past the end", v, 8, 2000, Point(0, 820)},
        // An unknown command keeps the present 100, which is in range, and still scrolls there.
        {"unknown", v, 9, 700, Point(0, 100)},
        // Horizontally 0 - 12 is before the near edge 0.
        {"horizontal line back", h, 3, 0, Point(0, 100)},
    };
    for (Case const &c : cases) {
        Rig rig(viewport, scene);
        EXPECT_TRUE(rig.view.on_scroll(c.direction, static_cast<Input::ScrollCmd>(c.command), c.position)) << c.what;
        EXPECT_EQ(rig.imp.scrolls, std::vector<Point>{c.corner}) << c.what;
    }
}

TEST(View, OnScrollOverASmallRangeLandsOnTheNearEdge)
{
    // Scene 50 high: range bottom 70, viewport 200 high, end 70 - 200 = -130. Position 10 passes the
    // far edge (210 > 70) and becomes -130, which is before 0: the near edge wins.
    Rig rig(Extension(0, 0, 200, 300), Extension(0, 0, 50, 50));
    rig.view.on_scroll(Input::scroll_vertical, Input::scroll_to_position, 10);
    rig.view.on_scroll(Input::scroll_vertical, Input::scroll_to_end, 0);
    EXPECT_EQ(rig.imp.scrolls, std::vector<Point>(2, Point(0, 0)));
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
        {120, {up}},                // 119 / 120 + 1 = 1
        {121, {up, up}},            // 120 / 120 + 1 = 2
        {-360, {down, down, down}}, // 359 / 120 + 1 = 3
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

}  // namespace
