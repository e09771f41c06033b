// Numbers in the attribute values of the setup file. A value is narrowed and read the way the C
// scanf family reads " %d ", " %ld " and " %ld , %ld ": white space may stand around a number and
// around the comma, a sign may lead, and whatever follows a number that was read is ignored
// ("2*" reads as 2). A value that does not fill every field is refused and leaves the output alone.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

// " %d ": a value beyond the range of int is clamped to it.
bool scan_setup_int(wchar const *value, int &out);
// " %ld ": a value beyond the range of long is clamped to it.
bool scan_setup_long(wchar const *value, long &out);
// " %ld , %ld ".
bool scan_setup_long_pair(wchar const *value, long &first, long &second);

}  // namespace Tavi
