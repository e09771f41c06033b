// Commands: every command starts disabled, and copies keep both flags.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <typeinfo>

#include "tavi/glyph/commands.h"

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

// Copies keep both flags; a toggle's state stands apart from enabled and follows turn_on either way.
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
    toggle.turn_on(false);
    EXPECT_FALSE(toggle.is_on());
    EXPECT_TRUE(toggle.enabled());
    // Handlers dispatch on the exact class: the inherit toggle must be a class of its own.
    EXPECT_NE(typeid(ToggleInheritReadOnlyCmd), typeid(ToggleReadOnlyCmd));
}

}  // namespace
