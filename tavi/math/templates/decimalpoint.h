// The decimal point of numbers handed over as text. It is "." unless the host asks for the point of
// the user's locale, which is then "," or "." and found once. The setting is one for the process.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

// Whether the locale is asked; off at start.
bool use_locale_decimal_point();
void use_locale_decimal_point(bool on);

// "." while the setting is off. With it on, "," if the environment's LC_NUMERIC locale writes
// numbers with a comma and "." otherwise.
wchar decimal_point();

}  // namespace Tavi
