// Tests of GlyphScene with GlyphView: drawing (scene and selection extensions), selection by point at
// the next draw, and the reaction to change hints.
#include <gtest/gtest.h>

#include "scene_fixtures.h"
#include <algorithm>

#include "support/recording_canvas.h"
#include "tavi/glyph/glyphview.h"
#include "tavi/glyph/hint.h"
#include "tavi/glyph/message.h"

namespace {

using namespace Tavi;
using namespace SceneTest;

// The host's order: scene, its implementation, view, its implementation, final_construct.
struct Host
{
    explicit Host(Root *root) : scene(root)
    {
        scene.implementation(&scene_imp);
        scene_imp.views.push_back(&view);
        view_imp.set_scene(&scene);
        view.implementation(&view_imp);
        view.final_construct();
        // Twenty wide, ten high.
        view_imp.set_viewport(Extension(0, 0, 10, 20));
    }
    FakeSceneImp scene_imp;
    TestScene scene;
    FakeViewImp view_imp;
    GlyphView view;
};

TEST(GlyphScene, DrawSetsTheSceneAndSelectionExtensionsAndDrawsOnce)
{
    Root *root = make_strip_root();
    Host host(root);
    TaviTest::RecordingCanvas canvas;
    Extension e;
    host.view.on_draw(&canvas, false);
    // The strip is 90 wide, 8 up and 2 down; its top left corner stands at (0, 0).
    EXPECT_EQ(host.view.scene_extension(), Extension(0, 0, 10, 90));
    EXPECT_EQ(root->draws, 1);
    // No selection yet: the selection extension stays unknown.
    EXPECT_FALSE(host.scene.selection_extension(&host.view, e));

    // Select the middle cell: after the next draw its box, x 30 to 60, is the selection extension.
    ASSERT_TRUE(host.scene.select(root->child()->component(1)));
    host.view.on_draw(&canvas, false);
    ASSERT_TRUE(host.scene.selection_extension(&host.view, e));
    EXPECT_EQ(e, Extension(0, 30, 10, 60));
    // Drawing again without invalidating measures nothing again; printing does.
    EXPECT_EQ(root->measures, 1);
    host.view.on_print(&canvas);
    EXPECT_EQ(root->measures, 2);
    EXPECT_EQ(root->draws, 3);

    // A translated canvas moves both extensions.
    canvas.translation(Point(100, 50));
    host.view.on_draw(&canvas, false);
    EXPECT_EQ(host.view.scene_extension(), Extension(50, 100, 60, 190));
    ASSERT_TRUE(host.scene.selection_extension(&host.view, e));
    EXPECT_EQ(e, Extension(50, 130, 60, 160));
}

TEST(GlyphScene, ClickSelectsAtTheNextDrawAndAModifiedClickIsRefused)
{
    Root *root = make_strip_root();
    Host host(root);
    TaviTest::RecordingCanvas canvas;
    host.view.on_draw(&canvas, false);
    host.scene.journal.clear();

    // Shift-click: refused, no redraw asked.
    EXPECT_FALSE(host.view.mouse_down(Point(45, 5), Input::modifier_shift, false));
    EXPECT_EQ(host.view_imp.damage_all_count, 0);
    EXPECT_FALSE(host.view.select_pending());

    // Without a selection a click cannot select anything, even at the draw.
    EXPECT_TRUE(host.view.mouse_down(Point(45, 5), 0, false));
    EXPECT_EQ(host.view_imp.damage_all_count, 1);
    EXPECT_TRUE(host.view.select_pending());
    host.view.on_draw(&canvas, false);
    EXPECT_FALSE(host.view.select_pending());
    EXPECT_EQ(host.scene.selection(), nullptr);

    // With a selection of the strip, a click at x 45 (the middle cell, 30 to 60) selects it.
    host.scene.select(root->child());
    host.scene.damages.clear();
    host.view.mouse_down(Point(45, 5), 0, false);
    host.view.on_draw(&canvas, false);
    ASSERT_NE(host.scene.selection(), nullptr);
    EXPECT_EQ(host.scene.focus()->glyph(), root->child()->component(1));
    Extension e;
    ASSERT_TRUE(host.scene.selection_extension(&host.view, e));
    EXPECT_EQ(e, Extension(0, 30, 10, 60));
    // The click's change damaged the highlight.
    EXPECT_NE(std::find(host.scene.damages.begin(), host.scene.damages.end(), "selection"), host.scene.damages.end());

    // A click outside the formula leaves the selection where it was.
    host.view.mouse_down(Point(500, 500), 0, false);
    host.view.on_draw(&canvas, false);
    EXPECT_EQ(host.scene.focus()->glyph(), root->child());
}

TEST(GlyphScene, ChangedDistinguishesSelectionEditAndOtherHints)
{
    Root *root = make_strip_root();
    Host host(root);
    TaviTest::RecordingCanvas canvas;
    host.scene.select(root->child()->component(0));
    host.view.on_draw(&canvas, false);
    Extension e;
    ASSERT_TRUE(host.scene.selection_extension(&host.view, e));

    // Any other aspect changes nothing.
    host.scene.damages.clear();
    int const invalidations = root->invalidations;
    host.scene.changed(ChangedAspect::object());
    EXPECT_TRUE(host.scene.selection_extension(&host.view, e));
    EXPECT_TRUE(host.scene.damages.empty());

    // A selection change: the extension is forgotten, the highlight damaged, the views told to scroll.
    host.scene.changed(SelectionChange::object());
    EXPECT_FALSE(host.scene.selection_extension(&host.view, e));
    EXPECT_EQ(host.scene.damages, (std::vector<std::string>{"selection"}));
    EXPECT_EQ(root->invalidations, invalidations);

    // An edit (a UserContentChange counts as one): modified, and the root measures again.
    host.view.on_draw(&canvas, false);
    host.scene.damages.clear();
    host.scene.changed(UserContentChange::object());
    EXPECT_FALSE(host.scene.selection_extension(&host.view, e));
    EXPECT_TRUE(host.scene.modified());
    EXPECT_EQ(root->invalidations, invalidations + 1);
    int const measures = root->measures;
    host.view.on_draw(&canvas, false);
    EXPECT_EQ(root->measures, measures + 1);
}

}  // namespace
