// Tests of the selection chain: GlyphSelection's links to its owner, HierarchicalSingleSelection's
// inward-first rules (focus, keys, commands, select in and out, select and deselect by glyph), and
// the scene as the outermost selection with its accelerators.
#include <gtest/gtest.h>


#include "scene_fixtures.h"

namespace {

using namespace Tavi;
using namespace SceneTest;

// Root(Strip(Strip(cell, cell), cell)): a chain can be three deep (outer strip, inner strip, cell).
Root *make_nested_root()
{
    auto *inner = new Strip;
    inner->append(new Cell(Box(10, 5, 1)));
    inner->append(new Cell(Box(10, 5, 1)));
    auto *outer = new Strip;
    outer->append(inner);
    outer->append(new Cell(Box(10, 5, 1)));
    return new Root(outer);
}

struct Chain
{
    Chain() : root(make_nested_root()), scene(root)
    {
        outer = root->child();
        inner = outer->component(0);
        first = inner->component(0);
        second = inner->component(1);
        last = outer->component(1);
    }
    PathSelection *top() { return static_cast<PathSelection *>(scene.selection()); }
    PathSelection *middle() { return static_cast<PathSelection *>(top()->sub_selection()); }
    PathSelection *bottom() { return static_cast<PathSelection *>(middle()->sub_selection()); }

    Root *root;
    TestScene scene;
    Glyph *outer;
    Glyph *inner;
    Glyph *first;
    Glyph *second;
    Glyph *last;
};

TEST(Selection, SelectByGlyphBuildsTheChainDownToIt)
{
    Chain c;
    ASSERT_TRUE(c.scene.select(c.second));
    // The chain: outer strip, inner strip (child 0), second cell (child 1).
    EXPECT_EQ(c.top()->glyph(), c.outer);
    EXPECT_EQ(c.middle()->glyph(), c.inner);
    EXPECT_EQ(c.bottom()->glyph(), c.second);
    EXPECT_EQ(c.bottom()->glyph_index(), 1);
    // focus on a chain of three is the innermost; type_name is the innermost's.
    EXPECT_EQ(c.scene.focus(), c.bottom());
    EXPECT_EQ(std::u16string(c.scene.type_name()), u"leaf");
    // attach reached the whole chain.
    EXPECT_TRUE(c.top()->attached() && c.middle()->attached() && c.bottom()->attached());
    EXPECT_TRUE(c.scene.contains(c.inner));
    EXPECT_FALSE(c.scene.contains(c.last));
}

TEST(Selection, KeysStayWithTheFocusCommandsComeBackOut)
{
    Chain c;
    c.scene.select(c.second);
    c.scene.journal.clear();
    // The innermost selection notes the key and refuses it; the outer levels don't try it.
    EXPECT_FALSE(c.scene.key_down(Input::key_a, 0));
    EXPECT_EQ(c.scene.journal, (Journal{"key:65/0"}));
    c.bottom()->take_key = Input::key_a;
    EXPECT_TRUE(c.scene.key_down(Input::key_a, 0));

    // SelectOut: the innermost cannot (no sub), the middle can: the command comes back out to it.
    SelectOutCmd out;
    EXPECT_TRUE(c.scene.command_state(&out));
    EXPECT_TRUE(out.enabled());
    EXPECT_TRUE(c.scene.do_select_out());
    EXPECT_EQ(c.scene.focus(), c.middle());
    EXPECT_EQ(c.middle()->sub_selection(), nullptr);
    // A command nobody knows goes through and comes back false.
    UndoCmd undo;
    EXPECT_FALSE(c.scene.command_state(&undo));
    EXPECT_FALSE(undo.enabled());
}

TEST(Selection, SelectInAndOutBracketTheChangeOnTheScene)
{
    Chain c;
    c.scene.select(c.inner);
    ASSERT_EQ(c.scene.focus(), c.middle());
    c.scene.damages.clear();
    c.scene.journal.clear();
    EXPECT_TRUE(c.scene.do_select_in());
    EXPECT_EQ(c.scene.focus()->glyph(), c.first);
    EXPECT_EQ(c.scene.journal, (Journal{"select_child:0"}));
    // Highlight off (the middle, which had no sub) and on (the new cell): two damages.
    EXPECT_EQ(c.scene.damages, (std::vector<std::string>{"selection", "selection"}));
    EXPECT_TRUE(c.bottom()->attached());

    // A cell has no children: select_in answers false and changes nothing.
    c.scene.damages.clear();
    EXPECT_FALSE(c.bottom()->select_in());
    EXPECT_TRUE(c.scene.damages.empty());
    EXPECT_EQ(c.scene.focus()->glyph(), c.first);

    // Children that all refuse: false, but the scene is put together again.
    ASSERT_TRUE(c.scene.do_select_out());
    c.middle()->refuse_children = true;
    EXPECT_FALSE(c.middle()->select_in());
    EXPECT_TRUE(c.middle()->attached());
}

TEST(Selection, DeselectDropsTheLevelsThatLoseTheirGlyph)
{
    Chain c;
    c.scene.select(c.second);
    // The hierarchical rule: a glyph inside sub drops sub, and the answer is false.
    EXPECT_FALSE(c.top()->deselect(c.second));
    EXPECT_EQ(c.middle()->sub_selection(), nullptr);
    EXPECT_TRUE(c.middle()->deselect(c.inner));

    // Through the scene: the glyph of the middle level drops it, the top stays.
    c.scene.select(c.second);
    c.scene.damages.clear();
    EXPECT_FALSE(c.scene.deselect(c.inner));
    EXPECT_EQ(c.top()->sub_selection(), nullptr);
    EXPECT_TRUE(c.top()->attached());
    // Off, on, and the change: three highlight damages.
    EXPECT_EQ(c.scene.damages.size(), 3u);

    // The root is never deselected.
    EXPECT_FALSE(c.scene.deselect(c.root));
    EXPECT_NE(c.scene.selection(), nullptr);

    // The top level's own glyph takes the whole selection with it.
    EXPECT_FALSE(c.scene.deselect(c.outer));
    EXPECT_EQ(c.scene.selection(), nullptr);
    EXPECT_EQ(c.scene.focus(), &c.scene);

    // A glyph leaving the tree reaches the scene through its parents.
    c.scene.select(c.second);
    c.second->deselect();
    EXPECT_EQ(c.scene.focus()->glyph(), c.inner);

}

TEST(Selection, EditAcceleratorsRunTheirCommandsDownTheChain)
{
    struct Case
    {
        Input::Key key;
        int modifiers;
        bool deletable;
        bool taken;
        Journal expected;
    };
    Case const cases[] = {
        {Input::key_x, 2, true, true, {"copy:0", "delete:0"}},
        // Cut needs both copy and delete; without delete nothing happens, and the key is still taken.
        {Input::key_x, 2, false, true, {}},
        // Other combinations go to the selection as keys; it takes V only.
        {Input::key_delete, 1, true, false, {"key:46/1"}},
        {Input::key_v, 0, true, true, {"key:86/0"}},
    };
    for (Case const &k : cases) {
        Chain c;
        c.scene.select(c.outer);
        c.top()->deletable = k.deletable;
        c.top()->take_key = Input::key_v;
        c.scene.journal.clear();
        EXPECT_EQ(c.scene.key_down(k.key, k.modifiers), k.taken) << k.key << "/" << k.modifiers;
        EXPECT_EQ(c.scene.journal, k.expected) << k.key << "/" << k.modifiers;
    }
    // Without selection nothing can be done, and nothing breaks.
    Chain c;
    c.scene.select(c.outer);
    c.scene.deselect(c.outer);
    EXPECT_FALSE(c.scene.do_delete());
    EXPECT_TRUE(c.scene.key_down(Input::key_c, 2));
}

}  // namespace
