// ScriptedFormulaScene: the document of the formula, and what a change through it sets off.
#include "tavi/client/scriptedformulascene.h"

#include "tavi/glyph/hint.h"

namespace Tavi {

ScriptedFormulaScene::ScriptedFormulaScene() : document_(this) {}

ScriptedFormulaScene::~ScriptedFormulaScene() { release_all(); }

IDocument *ScriptedFormulaScene::dom_document() { return &document_; }

// A change through the DOM comes with no selection move that would damage the views, so the whole
// view is drawn again.
void ScriptedFormulaScene::changed(ChangedAspect const &aspect)
{
    FormulaScene::changed(aspect);
    if (dynamic_cast<DOMEditChange const *>(&aspect) != nullptr) {
        damage_all();
        client_changes_.notify();
    }
}

}  // namespace Tavi
