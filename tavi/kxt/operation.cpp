// The out-of-line destructor of Operation, so that its vtable lives in the library.
#include "tavi/kxt/operation.h"

namespace Kxt {

Operation::~Operation() = default;

}  // namespace Kxt
