// The allocation of the text blocks that FixedStringBase values share.
#include "tavi/kxt/fixedstring.h"

namespace Kxt {

void *allocate_string_block(std::size_t size) { return ::operator new(size); }

void free_string_block(void *block) noexcept { ::operator delete(block); }

}  // namespace Kxt
