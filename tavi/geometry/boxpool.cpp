// BoxPool: free lists by size, one set per thread.
#include "tavi/geometry/boxpool.h"

#include <new>

namespace Tavi {
namespace BoxPool {

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool pooling = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool pooling = false;
#else
constexpr bool pooling = true;
#endif
#else
constexpr bool pooling = true;
#endif

// Sizes are rounded up to 16 bytes; larger blocks than the last class go to the general allocator.
constexpr std::size_t granule = 16;
constexpr std::size_t classes = 16;

struct FreeBlock
{
    FreeBlock *next;
};

struct Lists
{
    FreeBlock *head[classes] = {};
    ~Lists()
    {
        for (FreeBlock *&h : head)
            while (h != nullptr) {
                FreeBlock *next = h->next;
                ::operator delete(static_cast<void *>(h));
                h = next;
            }
    }
};

thread_local Lists lists;

std::size_t class_of(std::size_t size) { return (size + granule - 1) / granule - 1; }

}  // namespace

void *allocate(std::size_t size)
{
    std::size_t const c = class_of(size);
    if (!pooling || c >= classes)
        return ::operator new(size);
    if (FreeBlock *block = lists.head[c]) {
        lists.head[c] = block->next;
        return block;
    }
    return ::operator new((c + 1) * granule);
}

void release(void *block, std::size_t size)
{
    if (block == nullptr)
        return;
    std::size_t const c = class_of(size);
    if (!pooling || c >= classes) {
        ::operator delete(block);
        return;
    }
    FreeBlock *free = static_cast<FreeBlock *>(block);
    free->next = lists.head[c];
    lists.head[c] = free;
}

}  // namespace BoxPool
}  // namespace Tavi
