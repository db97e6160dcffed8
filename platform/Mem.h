#pragma once

#include <cstddef>
#include <cstring>

// Operations on raw memory; sizes are in bytes.
class Mem {
public:
    // The areas may not overlap.
    static void copy(const void* source, void* destination, std::size_t size) noexcept
    {
        if (size)
            std::memcpy(destination, source, size);
    }
    // The areas may overlap.
    static void move(const void* source, void* destination, std::size_t size) noexcept
    {
        if (size)
            std::memmove(destination, source, size);
    }
    // The number of leading bytes that are equal: `size` when all are.
    static std::size_t compare(const void* a, const void* b, std::size_t size) noexcept
    {
        const auto* left = static_cast<const unsigned char*>(a);
        const auto* right = static_cast<const unsigned char*>(b);
        std::size_t equalBytes = 0;
        while (equalBytes < size && left[equalBytes] == right[equalBytes])
            ++equalBytes;
        return equalBytes;
    }
    static bool equal(const void* a, const void* b, std::size_t size) noexcept
    {
        return size == 0 || std::memcmp(a, b, size) == 0;
    }
    static void fill8(void* area, std::size_t size, unsigned char byte) noexcept
    {
        if (size)
            std::memset(area, byte, size);
    }
};
