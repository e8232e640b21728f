// Memory that runs out on demand, and how large a piece was asked for. One source of a test program, and only
// one, includes this header: it replaces the program's operator new.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

namespace kv::test {

struct MemoryState {
    std::size_t LeftToGive = std::numeric_limits<std::size_t>::max();  // pieces until none is left
    bool RanOut = false;
    std::size_t Largest = 0;
};

inline MemoryState& Memory() noexcept {
    static MemoryState One;
    return One;
}

/// Runs `Body` so that only `Pieces` more pieces of memory can be had. Answers whether it ran out.
template <class Body>
bool RunsOutAfter(std::size_t Pieces, Body&& Run) {
    struct Refill {
        ~Refill() { Memory().LeftToGive = std::numeric_limits<std::size_t>::max(); }
    };
    Memory().RanOut = false;
    {
        const Refill AtTheEnd;
        Memory().LeftToGive = Pieces;
        Run();
    }
    return Memory().RanOut;
}

/// The largest single piece of memory that `Body` asks for, in bytes.
template <class Body>
std::size_t LargestPiece(Body&& Run) {
    Memory().Largest = 0;
    Run();
    return Memory().Largest;
}

}  // namespace kv::test

// Not inlined: seen from where it is used, a free of what new gave would look like a mistake.
[[gnu::noinline]] void* operator new(std::size_t Size) {
    kv::test::MemoryState& State = kv::test::Memory();
    if (Size > State.Largest) State.Largest = Size;
    if (State.LeftToGive == 0) {
        State.RanOut = true;
        throw std::bad_alloc();
    }
    if (State.LeftToGive != std::numeric_limits<std::size_t>::max()) --State.LeftToGive;
    if (void* const Piece = std::malloc(Size == 0 ? 1 : Size)) return Piece;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* Piece) noexcept { std::free(Piece); }
[[gnu::noinline]] void operator delete(void* Piece, std::size_t) noexcept { std::free(Piece); }
