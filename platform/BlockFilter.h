#pragma once

#include <platform/Object.h>

// A filter over blocks of bytes. Lengths and capacities are in bytes.
class EXPORTED BlockFilter : public virtual RefCount {
public:
    // Takes from `in` and puts into `out` what it can; `consumed` and `produced` say how much that
    // was. False when the data is no good.
    virtual bool process(const void* in, std::size_t inLength, void* out, std::size_t outCapacity,
        std::size_t* consumed, std::size_t* produced) noexcept = 0;
    // Gives out what is still inside after the last `process`. 0 when finished, 1 when more output remains, 2 on
    // failure. The call that answers 0 may have produced some too. The capacity must not be 0.
    virtual int flush(void* out, std::size_t outCapacity, std::size_t* produced) noexcept = 0;
};
