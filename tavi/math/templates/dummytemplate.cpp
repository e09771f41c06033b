// DummyTemplate: placeholder nodes and the placeholder character.
#include "tavi/math/templates/dummytemplate.h"

#include "tavi/math/layout/layoutdummy.h"
#include "tavi/math/layout/layouttoken.h"
#include "tavi/math/mathdummynode.h"

namespace Tavi {

DummyTemplate::DummyTemplate(TemplateTable *table, bool can_enter, wchar const *keyword,
                             TemplateAccelerator const &accelerator)
    : AtomTemplate(table, u"dummy", can_enter, keyword, accelerator)
{
    // A name the character table does not know stays as its text, as any template text does.
    text_ = LayoutToken::decode_text(u"&placeholder;");
    layout(new LayoutDummy);
}

MathNode *DummyTemplate::create_node(wchar const *) { return new MathDummyNode(this); }

}  // namespace Tavi
