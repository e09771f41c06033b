// GlyphDocumentMixin: a glyph shown as the document of a scene. Its children are the glyph's
// components, its element is the first of them that is an element, and its selected element is the
// element that holds the scene's selection.
#pragma once

#include "tavi/client/glyphnodemixin.h"

namespace Tavi {

class GlyphDocumentMixin : public GlyphNodeMixin, public IDocument
{
public:
    wchar const *nodeName() override;
    NodeType nodeType() override;

    IElement *documentElement() override;
    // Null here: what a document can make is its own class's affair.
    IElement *createElement(wchar const *tag_name) override;
    IElement *selectedElement() override;
    // An element that isn't in this document raises code 8.
    void selectElement(IElement *element) override;

    // The document's functions, then the node's.
    VarArg *invoke_client_call(ClientCall *call, bool &error) override;
};

}  // namespace Tavi
