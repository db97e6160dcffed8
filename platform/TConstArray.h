#pragma once

#include <platform/Heap.h>
#include <platform/Mem.h>
#include <platform/Object.h>

// A counted, immutable array that owns a private copy of its elements.
template <class T>
class TConstArray final : public Object {
public:
    // A copy of `count` elements; null, with no error code, for a null pointer or a count of 0.
    static Ref<TConstArray> create(const T* elements, std::size_t count) noexcept
    {
        if (!elements || count == 0)
            return nullptr;
        auto* block = static_cast<T*>(Heap::alloc(count * sizeof(T), Heap::Array, __builtin_return_address(0)));
        Mem::copy(elements, block, count * sizeof(T));
        return make<TConstArray>(block, count);
    }

    // Takes over a block from `Heap::alloc`; `create` is the ordinary way.
    TConstArray(T* block, std::size_t count) noexcept : _elements(block), _size(count) {}
    ~TConstArray() noexcept override
    {
        Heap::free(_elements, Heap::Array, __builtin_return_address(0), _size * sizeof(T));
    }

    // In elements.
    std::size_t size() const noexcept { return _size; }
    const T* data() const noexcept { return _elements; }

private:
    T* _elements;
    std::size_t _size;
};
