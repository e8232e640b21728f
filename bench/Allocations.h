// How often this program takes memory from the heap: operator new counts.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kv::bench {

/// Calls of operator new since the program began.
std::int64_t Allocations() noexcept;

/// Bytes of the heap that are in use at this moment, in blocks as the heap deals them out.
std::size_t HeapInUse() noexcept;

/// What a block at `Memory` takes of them.
std::size_t HeapBlock(const void* Memory) noexcept;

}  // namespace kv::bench
