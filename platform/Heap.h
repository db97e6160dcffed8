#pragma once

#include <platform/Export.h>

#include <cstddef>

// Raw memory. Sizes are in bytes; the failure of an allocation of a non-zero size ends the program,
// so that no caller tests for it.
class EXPORTED Heap {
public:
    // What the memory is for; `alloc` and `free` of one block name the same kind.
    enum Kind : unsigned { SingleObject = 1, Array = 2 };

    // A block of `size` bytes, aligned for every scalar type. A size of 0 gives a block too, which
    // holds nothing. `caller` is the return address, for the diagnostics of a heap that has some.
    static void* alloc(std::size_t size, Kind kind, const void* caller) noexcept;
    // A block that begins at a multiple of `alignment`, a power of two; it is freed as an array.
    static void* allocAligned(std::size_t size, std::size_t alignment, const void* caller) noexcept;
    // The block with a new size; what fits of its contents is kept, and the old address is gone.
    static void* resize(void* block, std::size_t size, Kind kind, const void* caller) noexcept;
    // Releases a block; null is ignored.
    static void free(void* block, Kind kind, const void* caller) noexcept;
    static void free(void* block, Kind kind, const void* caller, std::size_t size) noexcept;
};
