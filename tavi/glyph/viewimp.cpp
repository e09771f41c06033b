// ViewImp.
#include "tavi/glyph/viewimp.h"

namespace Tavi {

ViewImp::~ViewImp() = default;

}  // namespace Tavi
