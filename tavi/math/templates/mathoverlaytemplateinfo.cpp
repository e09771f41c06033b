// MathOverlayTemplateInfo: filling the host's record from a template.
#include "tavi/math/templates/mathoverlaytemplateinfo.h"

#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

void MathOverlayTemplateInfo::assign(MathTemplate const &templ)
{
    name = templ.type_name();
    keyword = templ.keyword();
    can_enter = templ.can_enter();
}

}  // namespace Tavi
