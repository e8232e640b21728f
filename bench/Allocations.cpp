#include "bench/Allocations.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {

std::int64_t Taken = 0;  // the programs measured here have one thread

}  // namespace

void* operator new(std::size_t Size) {
    ++Taken;
    if (void* const Memory = std::malloc(Size == 0 ? 1 : Size)) return Memory;
    throw std::bad_alloc();
}
void operator delete(void* Memory) noexcept { std::free(Memory); }
void operator delete(void* Memory, std::size_t) noexcept { std::free(Memory); }

namespace kv::bench {

std::int64_t Allocations() noexcept { return Taken; }

std::size_t HeapInUse() noexcept {
    const struct mallinfo2 Now = mallinfo2();
    return Now.uordblks + Now.hblkhd;
}

std::size_t HeapBlock(const void* Memory) noexcept {
    // The heap keeps the size of a block in front of it.
    return malloc_usable_size(const_cast<void*>(Memory)) + sizeof(std::size_t);
}

}  // namespace kv::bench
