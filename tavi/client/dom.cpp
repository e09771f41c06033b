// The out-of-line destructors of the DOM interfaces, so that their vtables live in the library.
#include "tavi/client/dom.h"

namespace Tavi {

INode::~INode() = default;
INodeList::~INodeList() = default;
IElement::~IElement() = default;
IDocument::~IDocument() = default;
IFlatDOM::~IFlatDOM() = default;

}  // namespace Tavi
