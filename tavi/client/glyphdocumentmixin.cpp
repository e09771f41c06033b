// GlyphDocumentMixin: the document's element, its selection, and its client calls.
#include "tavi/client/glyphdocumentmixin.h"

#include "tavi/client/clientcalltable.h"
#include "tavi/client/domexception.h"
#include "tavi/glyph/glyph.h"
#include "tavi/glyph/glyphscene.h"

namespace Tavi {

namespace {

using DocumentRow = ClientCallRow<IDocument>;

bool call_document_element(IDocument &document, ClientCall &, DOMObjectMgr &mgr, VarArg *&result)
{
    result = client_object_result(mgr.dom_element_id(document.documentElement()));
    return true;
}

bool call_create_element(IDocument &document, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result)
{
    wchar const *tag_name = nullptr;
    if (!call.at(0)->string_val(tag_name))
        return false;
    result = client_object_result(mgr.dom_element_id(document.createElement(tag_name)));
    return true;
}

bool call_selected_element(IDocument &document, ClientCall &, DOMObjectMgr &mgr, VarArg *&result)
{
    result = client_object_result(mgr.dom_element_id(document.selectedElement()));
    return true;
}

bool call_select_element(IDocument &document, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result)
{
    IElement *element = client_call_object<IElement>(call, mgr, 0);
    if (element == nullptr)
        return false;
    document.selectElement(element);
    result = nullptr;
    return true;
}

const DocumentRow document_calls[] = {
    {u"documentElement", "",  call_document_element},
    {u"createElement",   "s", call_create_element},
    {u"selectedElement", "",  call_selected_element},
    {u"selectElement",   "o", call_select_element},
};

}  // namespace

wchar const *GlyphDocumentMixin::nodeName() { return u"#document"; }

INode::NodeType GlyphDocumentMixin::nodeType() { return DOCUMENT_NODE; }

IElement *GlyphDocumentMixin::documentElement()
{
    Glyph *glyph = this_glyph();
    for (long i = 0; i < glyph->count(); ++i)
        if (IElement *element = dynamic_cast<IElement *>(node_of(glyph->component(i))))
            return element;
    return nullptr;
}

IElement *GlyphDocumentMixin::createElement(wchar const *) { return nullptr; }

// The selection may stand deep inside an element that shows no children (a formula): the element is
// the nearest one above it.
IElement *GlyphDocumentMixin::selectedElement()
{
    Glyph *document = this_glyph();
    GlyphScene *scene = document->scene();
    if (scene == nullptr)
        return nullptr;
    for (Glyph *g = scene->selected_element(); g != nullptr && g != document; g = g->parent())
        if (IElement *element = dynamic_cast<IElement *>(node_of(g)))
            return element;
    return nullptr;
}

void GlyphDocumentMixin::selectElement(IElement *element)
{
    Glyph *document = this_glyph();
    Glyph *glyph = glyph_of(dynamic_cast<INode *>(element));
    Glyph *above = glyph;
    while (above != nullptr && above != document)
        above = above->parent();
    GlyphScene *scene = document->scene();
    if (glyph == nullptr || above == nullptr || scene == nullptr)
        throw DOMException(DOMException::NOT_FOUND_ERR);
    scene->select(glyph);
}

VarArg *GlyphDocumentMixin::invoke_client_call(ClientCall *call, bool &error)
{
    VarArg *result = nullptr;
    if (call != nullptr &&
        run_client_call_rows(document_calls, static_cast<IDocument &>(*this), client_object_id(), *call, result)) {
        error = false;
        return result;
    }
    return GlyphNodeMixin::invoke_client_call(call, error);
}

}  // namespace Tavi
