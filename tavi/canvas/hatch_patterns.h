// The names of the hatch patterns that the SVG and EPS writers define in their files and refer to
// for a brush that is not solid.
#pragma once

#include "tavi/canvas/brush.h"

namespace Tavi {

struct HatchPattern
{
    Brush::FillStyle fill_style;
    char const *name;
};

// A fill style that is neither solid nor in this table is drawn as horizontal hatching.
inline constexpr HatchPattern hatch_patterns[] = {
    {Brush::horizontal, "HpH"},
    {Brush::vertical, "HpV"},
    {Brush::diagonal, "HpD"},
    {Brush::back_diagonal, "HpBD"},
    {Brush::cross, "HpC"},
    {Brush::diagonal_cross, "HpXC"},
};

inline char const *hatch_pattern_name(Brush::FillStyle fill_style)
{
    for (HatchPattern const &pattern : hatch_patterns)
        if (pattern.fill_style == fill_style)
            return pattern.name;
    return "HpH";
}

}  // namespace Tavi
