// Selection: what is selected and, at the same time, the object that gets the user's input for it.
// Selections form a chain from the scene (the outermost one) inward; the innermost member is the
// focus, which sees keys, characters and commands first. Each link can be rebuilt from a memo after
// the tree under it has changed.
#pragma once

#include "tavi/geometry/point.h"
#include "tavi/glyph/inputhandler.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class AllocationTree;
class ChangedAspect;
class Glyph;
class GlyphContext;
class GlyphScene;
class SelectionMemo;

class Selection : public IInputHandler
{
public:
    bool do_command(Command *command) override = 0;
    bool command_state(Command *command) override = 0;
    ~Selection() override;
    bool key_down(Input::Key key, int modifiers) override = 0;
    bool key_up(Input::Key key, int modifiers) override = 0;
    bool enter_char(wchar character) override = 0;
    int modifier_state() const override = 0;

    // Selects what lies under the point, the tree being placed at the allocation; false in the base.
    virtual bool select_at(GlyphContext &context, AllocationTree const &allocation, Point point);
    // The name of the innermost kind of selection in the chain.
    virtual wchar const *type_name() = 0;
    // The innermost selection of the chain; the selection itself in the base.
    virtual Selection *focus();
    // A new snapshot from which the selection can be rebuilt; the caller owns it.
    virtual SelectionMemo *memo() = 0;
    virtual Selection *owner() = 0;
    // attach and detach bracket every change of the chain: in between nothing is drawn for it.
    virtual void attach() = 0;
    virtual void detach() = 0;
    virtual bool attached() = 0;
    // Takes the highlight off (damages it); nothing in the base.
    virtual void clear();
    // Puts the highlight on (damages it); nothing in the base.
    virtual void highlight();
    // The glyph this selection stands for.
    virtual Glyph *glyph() = 0;
    // What is selected inside glyph(); null in the base.
    virtual Glyph *selected_element();
    // Falls back to a selection that is always valid; false in the base, which has none.
    virtual bool select_default();
    virtual GlyphScene *scene() = 0;
    // Where the selection stands, given the allocation of glyph(); a new object the caller owns. The
    // base allocates glyph() itself.
    virtual AllocationTree *allocate(GlyphContext &context, AllocationTree const &allocation);
    virtual void changed(ChangedAspect const &aspect) = 0;
    // The index of glyph() among the components of the owner's glyph.
    virtual long glyph_index() = 0;
    // How many elements are selected, and each of them; 0 and null in the base.
    virtual long count();
    virtual Glyph *component(long index);
    // The glyph is about to leave the tree: true when the selection must go as a whole.
    virtual bool deselect(Glyph *glyph) = 0;
    virtual bool contains(Glyph *glyph) = 0;
    virtual bool select(Glyph *glyph) = 0;

protected:
    Selection() = default;
};

}  // namespace Tavi
