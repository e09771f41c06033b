// Windows-1252 to Unicode, for measuring a single character of text held as 8-bit codes.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

// Indexed by the Windows-1252 code. The code 0 and the five codes the code page leaves undefined
// (0x81, 0x8d, 0x8f, 0x90, 0x9d) give 0.
extern wchar const cp1252_code_points[256];

}  // namespace Tavi
