// The generic family names and the fonts that stand in for them.
#include "tavi/qt/generic_font_families.h"

namespace Tavi {

namespace {

GenericFontFamily const generic_font_families[] = {
    // generic        family               PostScript family
    {u"serif",        u"Times New Roman",  EPS_Canvas::ps_times},
    {u"sans-serif",   u"Arial",            EPS_Canvas::ps_helvetica},
    {u"monospace",    u"Courier New",      EPS_Canvas::ps_courier},
};

bool same_name(wchar const *a, wchar const *b)
{
    for (; *a != 0 && *a == *b; ++a, ++b) {
    }
    return *a == *b;
}

}  // namespace

GenericFontFamily const *find_generic_font_family(wchar const *name)
{
    if (name == nullptr)
        return nullptr;
    for (GenericFontFamily const &f : generic_font_families) {
        if (same_name(name, f.generic))
            return &f;
    }
    return nullptr;
}

}  // namespace Tavi
