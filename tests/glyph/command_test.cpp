// Commands: every command starts disabled, toggles carry their state, copies keep both flags,
// and the query pattern of a handler chain.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <typeinfo>

#include "tavi/glyph/commandhandler.h"
#include "tavi/glyph/commands.h"
#include "tavi/glyph/inputhandler.h"

namespace {

using namespace Tavi;

wchar const sample[] = u"frac";

struct Maker
{
    char const *name;
    std::function<Command *()> make;
};

Maker const makers[] = {
    {"UndoCmd", [] { return new UndoCmd; }},
    {"RedoCmd", [] { return new RedoCmd; }},
    {"CopyCmd", [] { return new CopyCmd; }},
    {"PasteCmd", [] { return new PasteCmd; }},
    {"DeleteCmd", [] { return new DeleteCmd; }},
    {"SelectAllCmd", [] { return new SelectAllCmd; }},
    {"SelectOutCmd", [] { return new SelectOutCmd; }},
    {"SelectInCmd", [] { return new SelectInCmd; }},
    {"SelectNextCmd", [] { return new SelectNextCmd; }},
    {"SelectPreviousCmd", [] { return new SelectPreviousCmd; }},
    {"SelectExprCmd", [] { return new SelectExprCmd; }},
    {"ToggleReadOnlyCmd", [] { return new ToggleReadOnlyCmd(true); }},
    {"ToggleInheritReadOnlyCmd", [] { return new ToggleInheritReadOnlyCmd(true); }},
    {"InsertOverlayCmd", [] { return new InsertOverlayCmd(sample); }},
    {"InsertSymbolOverlayCmd", [] { return new InsertSymbolOverlayCmd(sample); }},
    {"InsertCharByNameCmd", [] { return new InsertCharByNameCmd(sample); }},
    {"InsertNumberCmd", [] { return new InsertNumberCmd(sample); }},
    {"InsertApplyOverlayCmd", [] { return new InsertApplyOverlayCmd(sample); }},
    {"InsertTabularOverlayCmd", [] { return new InsertTabularOverlayCmd(sample, 2, 3); }},
};

TEST(Command, EveryNewCommandIsDisabledAndEnableSetsTheFlag)
{
    for (Maker const &m : makers) {
        SCOPED_TRACE(m.name);
        std::unique_ptr<Command> c(m.make());
        EXPECT_FALSE(c->enabled());
        c->enable(true);
        EXPECT_TRUE(c->enabled());
        c->enable(false);
        EXPECT_FALSE(c->enabled());
    }
}

TEST(Command, FlipFlopCarriesItsStateApartFromEnabled)
{
    ToggleReadOnlyCmd on(true);
    ToggleInheritReadOnlyCmd off(false);
    EXPECT_TRUE(on.is_on());
    EXPECT_FALSE(on.enabled());  // built "on", still disabled
    EXPECT_FALSE(off.is_on());
    off.turn_on(true);
    EXPECT_TRUE(off.is_on());
    EXPECT_FALSE(off.enabled());
    on.turn_on(false);
    EXPECT_FALSE(on.is_on());
}

TEST(Command, CopiesKeepEnabledAndOn)
{
    CopyCmd enabled;
    enabled.enable(true);
    CopyCmd copy(enabled);
    EXPECT_TRUE(copy.enabled());

    ToggleReadOnlyCmd toggle(false);
    toggle.enable(true);
    toggle.turn_on(true);
    ToggleReadOnlyCmd toggle_copy(toggle);
    EXPECT_TRUE(toggle_copy.enabled());
    EXPECT_TRUE(toggle_copy.is_on());

    ToggleReadOnlyCmd assigned(false);
    assigned = toggle;
    EXPECT_TRUE(assigned.enabled());
    EXPECT_TRUE(assigned.is_on());
}

TEST(Command, TextCommandsKeepTheCallersPointer)
{
    wchar const name[] = u"sqrt";
    EXPECT_EQ(InsertOverlayCmd(name).name(), name);
    EXPECT_EQ(InsertSymbolOverlayCmd(name).name(), name);
    EXPECT_EQ(InsertCharByNameCmd(name).name(), name);
    EXPECT_EQ(InsertNumberCmd(name).number(), name);
    EXPECT_EQ(InsertApplyOverlayCmd(name).function(), name);
    InsertTabularOverlayCmd table(name, 4, 7);
    EXPECT_EQ(table.name(), name);
    EXPECT_EQ(table.rows(), 4u);
    EXPECT_EQ(table.columns(), 7u);
}

// A handler that knows copy (enabled when it has something to copy) and the read-only toggle
// (whose present state it reports through turn_on), by exact class.
class ToyHandler : public ICommandHandler
{
public:
    bool has_selection = false;
    bool read_only = false;
    int copies = 0;

    bool command_state(Command *c) override
    {
        if (typeid(*c) == typeid(CopyCmd)) {
            c->enable(has_selection);
            return true;
        }
        if (typeid(*c) == typeid(ToggleReadOnlyCmd)) {
            c->enable(true);
            static_cast<FlipFlop *>(c)->turn_on(read_only);
            return true;
        }
        return false;
    }
    bool do_command(Command *c) override
    {
        if (typeid(*c) == typeid(CopyCmd)) {
            ++copies;
            return true;
        }
        if (typeid(*c) == typeid(ToggleReadOnlyCmd)) {
            read_only = !read_only;
            return true;
        }
        return false;
    }
};

// The query of every can_* operation: a fresh command on the stack, command_state, then enabled.
template <class C, class... Args>
bool can(ICommandHandler &handler, Args... args)
{
    C command(args...);
    return handler.command_state(&command) && command.enabled();
}

TEST(Command, QueryPatternOnAToyHandler)
{
    ToyHandler handler;
    EXPECT_FALSE(can<CopyCmd>(handler));  // known but nothing to copy
    handler.has_selection = true;
    EXPECT_TRUE(can<CopyCmd>(handler));

    // Unknown commands, Undo and Redo among them, come back false and untouched.
    for (Maker const &m : makers) {
        std::unique_ptr<Command> c(m.make());
        if (typeid(*c) == typeid(CopyCmd) || typeid(*c) == typeid(ToggleReadOnlyCmd))
            continue;
        SCOPED_TRACE(m.name);
        EXPECT_FALSE(handler.command_state(c.get()));
        EXPECT_FALSE(c->enabled());
        EXPECT_FALSE(handler.do_command(c.get()));
    }

    // A subclass is not the class: exact-class dispatch ignores it.
    ToggleInheritReadOnlyCmd other(false);
    EXPECT_FALSE(handler.command_state(&other));

    // The toggle's state comes back through the command, whatever it was built with.
    ToggleReadOnlyCmd query(true);
    ASSERT_TRUE(handler.command_state(&query));
    EXPECT_TRUE(query.enabled());
    EXPECT_FALSE(query.is_on());
    EXPECT_TRUE(handler.do_command(&query));
    ToggleReadOnlyCmd again(false);
    ASSERT_TRUE(handler.command_state(&again));
    EXPECT_TRUE(again.is_on());

    CopyCmd copy;
    EXPECT_TRUE(handler.do_command(&copy));
    EXPECT_EQ(handler.copies, 1);
}

TEST(Input, KeyAndModifierNumbers)
{
    struct Row
    {
        Input::Key key;
        int number;
    };
    Row const rows[] = {
        {Input::key_none, 0}, {Input::key_backspace, 8}, {Input::key_tab, 9}, {Input::key_return, 13},
        {Input::key_shift, 16}, {Input::key_control, 17}, {Input::key_alt, 18}, {Input::key_escape, 27},
        {Input::key_space, 32}, {Input::key_page_up, 33}, {Input::key_page_down, 34}, {Input::key_end, 35},
        {Input::key_home, 36}, {Input::key_left, 37}, {Input::key_up, 38}, {Input::key_right, 39},
        {Input::key_down, 40}, {Input::key_insert, 45}, {Input::key_delete, 46}, {Input::key_0, 48},
        {Input::key_9, 57}, {Input::key_a, 65}, {Input::key_z, 90}, {Input::key_multiply, 106},
        {Input::key_divide, 111}, {Input::key_f1, 112}, {Input::key_f12, 123},
    };
    for (Row const &r : rows)
        EXPECT_EQ(static_cast<int>(r.key), r.number);
    EXPECT_EQ(Input::modifier_shift, 1 << 0);
    EXPECT_EQ(Input::modifier_control, 1 << 1);
    EXPECT_EQ(Input::scroll_horizontal, 0);
    EXPECT_EQ(Input::scroll_to_start, 1);
    EXPECT_EQ(Input::scroll_to_end, 2);
    EXPECT_EQ(Input::scroll_line_back, 3);
    EXPECT_EQ(Input::scroll_page_forward, 6);
    EXPECT_EQ(Input::scroll_to_position, 8);
}

}  // namespace
