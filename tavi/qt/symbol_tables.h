// Code point tables for text in a symbol encoding: a run in the Adobe Symbol byte encoding becomes
// Unicode that the font at hand actually has glyphs for.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

// Indexed by the Adobe Symbol code, giving the Unicode code point that "Standard Symbols L" and its
// URW successors publish for it. 0 where the encoding has no character.
extern wchar const standard_symbols_code_points[256];

// The same for "OpenSymbol", which keeps many Greek letters and operators in its own private-use area.
extern wchar const open_symbol_code_points[256];

}  // namespace Tavi
