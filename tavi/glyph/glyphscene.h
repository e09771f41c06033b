// GlyphScene: the scene that shows a tree of glyphs and keeps its selection. It is itself the
// outermost selection of the chain: it owns the real one, and the selection interface of the scene
// (clear, detach, attach, highlight, memo, ...) reaches it. It runs the measuring, placing and
// drawing of the root glyph, keeps where the selection stood at the last draw (so that views can
// scroll to it), and turns change hints into damage and invalidation. A glyph finds its scene through
// its parents (Glyph::scene) and calls deselect before it leaves the tree, so that no selection is
// left pointing into a removed branch.
//
// The root glyph, which the subclass supplies through glyph(), keeps the tree its request gives back
// (it caches it): the scene borrows that tree and never deletes it.
#pragma once

#include "tavi/geometry/extension.h"
#include "tavi/geometry/point.h"
#include "tavi/glyph/scene.h"
#include "tavi/glyph/selection.h"

namespace Tavi {

class Canvas;
class Gauge;
class GlyphSceneMemo;
class View;

class GlyphScene : public Scene, public Selection
{
public:
    // A bottom of this value in the selection extension means that it is not known.
    static constexpr long no_extension = 2147483647;

    GlyphScene();
    // Detaches the selection if it is attached, then deletes it.
    ~GlyphScene() override;

    // The scene first, then the selection.
    bool do_command(Command *command) override;
    bool command_state(Command *command) override;
    // The standard accelerators first; everything else goes to the selection.
    bool key_down(Input::Key key, int modifiers) override;
    bool key_up(Input::Key key, int modifiers) override;
    bool enter_char(wchar character) override;
    int modifier_state() const override;

    // The selection interface, passed on to the selection where there is one.
    using Selection::select_at;
    wchar const *type_name() override;
    Selection *focus() override;
    // A GlyphSceneMemo, holding the memo of the present selection if it is attached; the caller owns
    // it.
    SelectionMemo *memo() override;
    // None: the scene is the outermost selection.
    Selection *owner() override;
    void attach() override;
    void detach() override;
    bool attached() override;
    void clear() override;
    void highlight() override;
    // The root glyph: null here, supplied by the subclass.
    Glyph *glyph() override;
    Glyph *selected_element() override;
    bool select_default() override;
    GlyphScene *scene() override;
    // Selection moves damage the highlight; edits mark the scene modified and invalidate the root.
    void changed(ChangedAspect const &aspect) override;
    long glyph_index() override;
    long count() override;
    Glyph *component(long index) override;
    // Drops the selection when the glyph takes it with it. The answer is always false.
    bool deselect(Glyph *glyph) override;
    bool contains(Glyph *glyph) override;
    // Makes a new selection and asks it to select the glyph, or to fall back to its default.
    bool select(Glyph *glyph) override;

    // Selects what lies under the point, measured with the gauge.
    virtual bool select_at(View *view, Gauge *gauge, Point point);
    // Measures (again, when invalidate is set), places and draws the root for the view.
    virtual void draw(View *view, Canvas *canvas, bool invalidate);
    virtual bool can_copy();
    virtual bool do_copy();
    virtual bool can_select_all();
    virtual bool do_select_all();
    virtual bool can_select_next();
    virtual bool do_select_next();
    virtual bool can_select_previous();
    virtual bool do_select_previous();
    virtual bool can_select_out();
    virtual bool do_select_out();
    virtual bool can_select_in();
    virtual bool do_select_in();
    // Asks every glyph view to bring the selection into sight; nothing without a selection.
    virtual void scroll_to_selection();
    // Where the selection stood at the last draw; false when that is not known.
    virtual bool selection_extension(View *view, Extension &extension);
    virtual bool read_only() const;

protected:
    // Deletes the old selection and takes the new one (which may be null) over.
    virtual void selection(Selection *selection);
    virtual Selection *selection() const;
    // A new selection for the component of the root at the index, owned by the caller (the scene
    // stores it). The subclass brings it into being; the scene alone makes none and answers null.
    virtual Selection *create_selection(long glyph_index);
    // The root measured without limits and placed with its top left corner at (0, 0). The tree is
    // the root's; the tree pointer is null when the root measured nothing.
    virtual AllocationTree root_allocation(GlyphContext &context);
    virtual bool use_standard_accelerators() const;

    void invalidate_selection_extension() { selection_extension_.bottom(no_extension); }

private:
    friend class GlyphSceneMemo;

    // The index among the root's components of the one that holds the glyph; 0 when none does.
    long root_index_of(Glyph *glyph);

    Selection *selection_;
    Extension selection_extension_;
};

}  // namespace Tavi
