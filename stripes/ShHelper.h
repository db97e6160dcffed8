#pragma once

#include <platform/Stripe.h>
#include <stripes/ShIdTable.h>

// Keeps track of the blocks that one stream has shared out. There is no table of blocks received:
// nothing in the library receives any.
class ShHelper final : public ::Object {
public:
    // A handle for the block; all zero, and no id taken, for a null one.
    SharedHandle shareOut(Ref<SharedMemory> memory) noexcept;
    // Takes the handle's id back. The result is a handle of all zeros.
    SharedHandle shareIn(SharedHandle handle) noexcept;
    // Whether `count` bytes can be moved through the description. A shared block is looked up by the
    // id in the description's last word if the description doesn't hold it yet.
    bool isUsable(BufferDesc& area, std::uint64_t count) noexcept;
    // The memory that a usable description names.
    static unsigned char* memoryOf(const BufferDesc& area) noexcept;

private:
    Ref<ShIdTable<Ref<SharedMemory>>> _sharedOut; // null until first use
    std::uint64_t _handlesGivenOut = 0;
};
