// FlatDOMMixin: the flat DOM of a scene, every object named by its id. A scene that is to be
// scripted derives from it and supplies its document; a host starts from document_id and works with
// the ids that the calls give back, each of which it gives back with release once.
#pragma once

#include "tavi/client/dom.h"
#include "tavi/client/domobjectmgr.h"

namespace Tavi {

class FlatDOMMixin : public DOMObjectMgr, public IFlatDOM
{
public:
    // The document the scene shows; null when it shows none.
    virtual IDocument *dom_document() = 0;
    // An id of the document, with one reference for the host; -1 without a document.
    long document_id();

    // Each fetches the object by id (code 8 when there is none of the kind), runs the same operation
    // on it, and turns an object result into an id.
    void release(long id) override;
    wchar const *nodeName(long id) override;
    NodeType nodeType(long id) override;
    long parentNode(long id) override;
    long childNodes(long id) override;
    long firstChild(long id) override;
    long lastChild(long id) override;
    long previousSibling(long id) override;
    long nextSibling(long id) override;
    long ownerDocument(long id) override;
    long insertBefore(long id, long new_child, long ref_child) override;
    long replaceChild(long id, long new_child, long old_child) override;
    long removeChild(long id, long old_child) override;
    long appendChild(long id, long new_child) override;
    bool hasChildNodes(long id) override;
    long cloneNode(long id, bool deep) override;
    bool equalNode(long id, long other) override;
    std::size_t length(long id) override;
    long item(long id, std::size_t index) override;
    wchar const *tagName(long id) override;
    VarArg *getAttribute(long id, wchar const *name) override;
    void setAttribute(long id, wchar const *name, VarArg const *value) override;
    void removeAttribute(long id, wchar const *name) override;
    long documentElement(long id) override;
    long createElement(long id, wchar const *tag_name) override;
    long selectedElement(long id) override;
    void selectElement(long id, long element) override;
};

}  // namespace Tavi
