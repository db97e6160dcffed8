#pragma once

#include <platform/Export.h>

#include <cstddef>

// Memory of the many small objects that a document is made of. Every thread takes it from slabs of its
// own, without a lock; a slab that holds nothing any more goes back to the C library. Any thread may free
// a block: one of another thread's slabs waits there until that thread, or the next one to start after it
// has ended, runs short. Sizes are in bytes; what is larger than `largest` comes from the C library.
class EXPORTED Pool {
public:
    // The largest block of a slab, in bytes.
    static constexpr std::size_t largest = 512;

    // A block of `size` bytes, at least 1, aligned to 8 bytes, to 16 if `size` is a multiple of 16, or as the C
    // library does above `largest`. The failure of an allocation ends the program.
    static void* alloc(std::size_t size) noexcept;
    // Releases a block that was allocated with the same size.
    static void free(void* block, std::size_t size) noexcept;
};

// Lets containers take their memory from the pool.
template <class T>
struct PoolAllocator {
    static_assert(alignof(T) <= 8);
    // What the containers ask for, in elements.
    using value_type = T;

    PoolAllocator() noexcept = default;
    // All allocators of the pool are the same.
    template <class U>
    PoolAllocator(const PoolAllocator<U>&) noexcept
    {
    }

    // Room for so many elements, and its release with the same number.
    T* allocate(std::size_t count) noexcept { return static_cast<T*>(Pool::alloc(count * sizeof(T))); }
    void deallocate(T* block, std::size_t count) noexcept { Pool::free(block, count * sizeof(T)); }

    // True: what one has allocated another one may release.
    template <class U>
    bool operator==(const PoolAllocator<U>&) const noexcept
    {
        return true;
    }
};
