// The out-of-line destructor of IResource, so that its vtable lives in the library.
#include "tavi/kxt/resource.h"

namespace Kxt {

IResource::~IResource() = default;

}  // namespace Kxt
