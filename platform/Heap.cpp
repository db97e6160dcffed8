#include <platform/Heap.h>

#include <cstdio>
#include <cstdlib>

namespace {

void* demand(void* block, std::size_t size) noexcept
{
    if (block)
        return block;
    std::fprintf(stderr, "Out of memory: %zu bytes\n", size);
    std::abort();
}

} // namespace

void* Heap::alloc(std::size_t size, Kind, const void*) noexcept
{
    return demand(std::malloc(size ? size : 1), size);
}

void* Heap::allocAligned(std::size_t size, std::size_t alignment, const void*) noexcept
{
    void* block = nullptr;
    return demand(::posix_memalign(&block, alignment, size) == 0 ? block : nullptr, size);
}

void* Heap::resize(void* block, std::size_t size, Kind, const void*) noexcept
{
    return demand(std::realloc(block, size ? size : 1), size);
}

void Heap::free(void* block, Kind, const void*) noexcept
{
    std::free(block);
}

void Heap::free(void* block, Kind, const void*, std::size_t) noexcept
{
    std::free(block);
}
