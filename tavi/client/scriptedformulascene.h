// ScriptedFormulaScene: a FormulaScene that a host can script. It is its own flat DOM: the document
// holds the one formula, an element whose attributes are "readonly" and "content". A change made
// through the DOM is one step of the scene's history, redraws the views, and is told to the
// observers of client_changes, so that a host can refresh what it shows about the formula.
#pragma once

#include "tavi/client/flatdommixin.h"
#include "tavi/client/mathscenedocument.h"
#include "tavi/editing/formulascene.h"
#include "tavi/glyph/observable.h"

namespace Tavi {

class ScriptedFormulaScene : public FormulaScene, public FlatDOMMixin
{
public:
    ScriptedFormulaScene();
    // Lets go of every id a host still holds while the formula and the document are still there.
    ~ScriptedFormulaScene() override;

    IDocument *dom_document() override;
    // Notified after each change that came through the DOM.
    Observable &client_changes() { return client_changes_; }

    void changed(ChangedAspect const &aspect) override;

private:
    MathSceneDocument document_;
    Observable client_changes_;
};

}  // namespace Tavi
