// Glyph codes of the math extension font for the stretchy, large and accent operators, looked up by
// the operator's text as the template writes it ("(", "&Sum;"). The codes are positions in that font,
// fixed by its designers; heights of fence pieces are in thirtieths of the font's descent D, display
// metrics and shifts in thousandths of D/3.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {
namespace ExtensionCodes {

// An operator drawn with one fixed glyph.
struct CharCodes
{
    wchar const *text;
    wchar normal;
};

// A large operator with a text-style and a display-style glyph, and the ascent and descent each
// stands for, in thousandths of D/3.
struct DisplayCodes
{
    wchar const *text;
    wchar normal;
    wchar display;
    long text_ascent;
    long text_descent;
    long display_ascent;
    long display_descent;
};

// A bar that is stacked from one repeated glyph.
struct StackCodes
{
    wchar const *text;
    wchar normal;
    wchar stack;
};

// A delimiter with four ready-made sizes beyond its normal glyph, in growing size.
struct BigCodes
{
    wchar const *text;
    wchar normal;
    wchar big[4];
};

// The pieces of a delimiter built to any height: glyphs and heights of top, middle and bottom, and
// the horizontal shift of the pieces.
struct FenceCodes
{
    wchar const *text;
    wchar top;
    wchar mid;
    wchar bottom;
    long top_height;
    long mid_height;
    long bottom_height;
    long x_shift;
};

// Each gives the row of the text, or null when the text has none (a null text has none either).
CharCodes const *char_codes(wchar const *text);
DisplayCodes const *display_codes(wchar const *text);
StackCodes const *stack_codes(wchar const *text);
BigCodes const *big_codes(wchar const *text);
FenceCodes const *fence_codes(wchar const *text);

// The glyph in the middle of a stretched brace: 60 for "{", 61 for every other text.
wchar brace_center(wchar const *text);

// The glyph of the bar over a formula, repeated to its width.
constexpr wchar overbar_char = 197;

}  // namespace ExtensionCodes
}  // namespace Tavi
