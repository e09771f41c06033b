// MathSceneDocument: the scene's root glyph as a document, and new formulas.
#include "tavi/client/mathscenedocument.h"

#include <string>

#include "tavi/editing/matheditscene.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

Glyph *MathSceneDocument::this_glyph() { return scene_->glyph(); }

IElement *MathSceneDocument::createElement(wchar const *tag_name)
{
    if (tag_name == nullptr || std::u16string(tag_name) != u"math")
        return nullptr;
    MathTemplate *placeholder = scene_->template_table()->get_dummy_template();
    if (placeholder == nullptr)
        return nullptr;
    return new MathRootNode(placeholder->create_node());
}

}  // namespace Tavi
