// The three generic family names that the vector canvases turn into concrete fonts before measuring,
// with the PostScript family each stands for.
#pragma once

#include "tavi/canvas/eps_canvas.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

struct GenericFontFamily
{
    wchar const *generic;  // the name as a formula's style gives it
    wchar const *family;   // the font that is measured in its place
    EPS_Canvas::PSFont ps_font;
};

// The entry whose generic name equals `name` in full, or null.
GenericFontFamily const *find_generic_font_family(wchar const *name);

}  // namespace Tavi
