// Commands: every command starts disabled, copies keep both flags, and the query pattern of a
// handler chain.
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

// Copies keep both flags; a toggle's state stands apart from enabled.
TEST(Command, CopiesKeepEnabledAndOn)
{
    ToggleReadOnlyCmd toggle(false);
    toggle.enable(true);
    toggle.turn_on(true);
    ToggleReadOnlyCmd copy(toggle), assigned(false);
    assigned = toggle;
    for (FlipFlop const *c : {static_cast<FlipFlop const *>(&copy), static_cast<FlipFlop const *>(&assigned)})
        EXPECT_TRUE(c->enabled() && c->is_on());
    EXPECT_FALSE(ToggleInheritReadOnlyCmd(true).enabled());  // built "on", still disabled
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

}  // namespace
