// The user's decimal separator: numbers are held in memory with it and written with a point.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

// The separator of the user's locale, "," or "." and nothing else. Found on first use from the
// environment's numeric locale (LC_ALL, LC_NUMERIC, LANG), without changing the process's own,
// then kept for the life of the process. Safe to call from any thread.
wchar decimal_separator();

// The separator that a reported decimal point stands for: ',' when it begins with a comma, '.'
// for anything else, null included.
wchar decimal_separator_of(char const *decimal_point);

// Turns the first `from` in `text` into `to`; false when there is none. The conversion between
// the point of the content format and the user's separator, in both directions.
bool replace_first(wstring &text, wchar from, wchar to);

}  // namespace Tavi
