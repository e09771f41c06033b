// BoxPool: where the boxes of box trees are allocated. Every layout of a formula makes and drops
// thousands of small boxes of three sizes; a freed box goes onto a free list of its size in the
// thread that frees it and is handed out again from there, which is several times cheaper than the
// general allocator. The lists live as long as their thread. Builds with AddressSanitizer use the
// general allocator, so that a box used after it was freed is still caught.
#pragma once

#include <cstddef>

namespace Tavi {
namespace BoxPool {

void *allocate(std::size_t size);
void release(void *block, std::size_t size);

}  // namespace BoxPool
}  // namespace Tavi
