// The text of a number as a host or the clipboard hands it over: an optional sign, digits with an
// optional decimal part, and an optional exponent after "e", "E", "d" or "D" with a sign of its own.
// Blanks (every character from 1 to 32) may stand around the whole, after each sign and around the
// exponent letter: "- 1.5 e + 3" is a number, "1.", ".5", "1e" and "1e5x" are not.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

struct ScannedNumber
{
    wstring mantissa;  // the digits, with the decimal point as it stood
    wstring exponent;  // the exponent's digits; empty without an exponent
    bool negative = false;
    bool negative_exponent = false;
};

// Reads `text` with `point` as the decimal point. False for a text that is not a number (or null);
// `out` then holds what had been read.
bool scan_number(wchar const *text, wchar point, ScannedNumber &out);

}  // namespace Tavi
