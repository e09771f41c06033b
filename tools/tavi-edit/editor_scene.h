// EditorScene: the formula of tavi-edit's window. It is a FormulaScene that can be scripted (through
// its document, as --script does), that tells the window of every
// change (so menus, palette and line breaks follow the edits), and whose selection also pastes over
// the whole formula: the library offers paste only into a slot of a parent, which would leave a new,
// empty window unable to take a formula from the clipboard.
#pragma once

#include <functional>
#include <vector>

#include "tavi/client/scriptedformulascene.h"
#include "tavi/editing/mathselection.h"
#include "tavi/editing/mathselectionmemo.h"

namespace TaviEdit {

class EditorScene : public Tavi::ScriptedFormulaScene
{
public:
    // Called after each change of content or selection, while the scene may still be in the middle of
    // its work: the listener should only take note.
    void change_listener(std::function<void()> listener) { listener_ = std::move(listener); }

    void changed(Tavi::ChangedAspect const &aspect) override;
    // After a change of the style (the text size): lays the formula out again, redraws it and
    // brings the selection back into view.
    void restyled();

protected:
    Tavi::Selection *create_selection(long glyph_index) override;

private:
    std::function<void()> listener_;
};

// A math selection that, with the whole expression selected, pastes by replacing it.
class EditorSelection : public Tavi::MathSelection
{
public:
    using Tavi::MathSelection::MathSelection;

    bool command_state(Tavi::Command *command) override;
    bool do_command(Tavi::Command *command) override;
    // Undo and redo bring back a selection of this class, not a plain one.
    Tavi::SelectionMemo *memo() override;

private:
    bool pastes_over_expression(Tavi::Command *command) const;
    void import_with_own_templates();
};

class EditorSelectionMemo : public Tavi::MathSelectionMemo
{
public:
    using Tavi::MathSelectionMemo::MathSelectionMemo;
    Tavi::Selection *revive(Tavi::Selection *owner) override;
};

}  // namespace TaviEdit
