// HierarchicalSingleSelection: a glyph selection with at most one sub-selection inside its glyph.
// With a sub-selection, input, drawing and questions go inward first; without one the selection
// answers for its whole glyph. Selecting in and out moves the focus one level down or up.
#pragma once

#include "tavi/glyph/glyphselection.h"

namespace Tavi {

class HierarchicalSingleSelection : public GlyphSelection
{
public:
    HierarchicalSingleSelection(Selection *owner, long glyph_index);
    // Destroys the sub-selection.
    ~HierarchicalSingleSelection() override;
    HierarchicalSingleSelection(HierarchicalSingleSelection const &) = delete;
    HierarchicalSingleSelection &operator=(HierarchicalSingleSelection const &) = delete;

    bool do_command(Command *command) override;
    bool command_state(Command *command) override;
    bool key_down(Input::Key key, int modifiers) override;
    bool key_up(Input::Key key, int modifiers) override;
    bool enter_char(wchar character) override;
    bool select_at(GlyphContext &context, AllocationTree const &allocation, Point point) override;
    wchar const *type_name() override;
    Selection *focus() override;
    void attach() override;
    void detach() override;
    void clear() override;
    void highlight() override;
    Glyph *selected_element() override;
    bool select_default() override;
    AllocationTree *allocate(GlyphContext &context, AllocationTree const &allocation) override;
    long count() override;
    Glyph *component(long index) override;
    bool deselect(Glyph *glyph) override;
    bool contains(Glyph *glyph) override;
    bool select(Glyph *glyph) override;

    // Destroys the old sub-selection (unless it is the same object) and takes the new one over.
    virtual void sub_selection(Selection *selection);
    virtual Selection *sub_selection() const;
    virtual bool handle_command_state(Command *command);
    virtual bool handle_command(Command *command);
    virtual bool select_out();
    virtual bool can_select_out();
    virtual bool select_in();
    virtual bool can_select_in();
    // Makes a sub-selection for the child at the index of glyph(); false if it cannot.
    virtual bool select_child(long index) = 0;
    // The name of this selection when it has no sub-selection.
    virtual wchar const *own_type_name() = 0;

private:
    // Damages this selection's glyph through the scene, for the highlight.
    void damage_own_highlight();

    Selection *sub_selection_;
};

}  // namespace Tavi
