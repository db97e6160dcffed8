#pragma once

#include <platform/Export.h>

#include <cstdint>
#include <functional>

namespace Host {

// Lets an application show its progress with a large file. As long as a watch lives, its function is called for
// each block that its thread reads of a `FileStripe`: while opening, examining, saving with comparison, and wherever
// stream data is fetched. A watch belongs to the thread that made it, and ends there; of several the newest is called.
class EXPORTED ReadWatch {
public:
    // Gets the end of the block in its file and the size of that file, both in bytes. The reading mostly goes
    // forwards, often more than once, and through more than one file. The function must not throw.
    using Function = std::function<void(std::uint64_t end, std::uint64_t size)>;

    // Replaces an older watch of this thread, which is in force again when this one ends.
    explicit ReadWatch(Function function) noexcept;
    ReadWatch(const ReadWatch&) = delete;
    ReadWatch& operator=(const ReadWatch&) = delete;
    ~ReadWatch() noexcept;

    // Calls the watch of this thread, if there is one; for an application's own stripes.
    static void tell(std::uint64_t end, std::uint64_t size) noexcept;

private:
    const Function _function;
    const ReadWatch* const _outer;
};

} // namespace Host
