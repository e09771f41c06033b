// MathOverlayTemplateInfo: what a host learns of one template when it lists them (to build a menu or
// a palette): its name, its display text and whether the user may enter it. TemplatePosition is the
// opaque cookie of that walk (see TemplateTable::get_first_template_info_position).
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

class MathTemplate;

// Never defined: a position is only carried from one call of the walk to the next.
struct TemplatePosition;

struct MathOverlayTemplateInfo
{
    MathOverlayTemplateInfo() = default;
    explicit MathOverlayTemplateInfo(MathTemplate const &templ) { assign(templ); }

    // Copies the template's name, keyword and entry flag. The texts stay valid as long as the
    // template, and until its keyword is set again.
    void assign(MathTemplate const &templ);

    wchar const *name = nullptr;     // the template's type name
    wchar const *keyword = nullptr;  // its display text
    bool can_enter = false;
};

}  // namespace Tavi
