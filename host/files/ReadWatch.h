#pragma once

#include <platform/Export.h>

#include <cstdint>
#include <functional>

namespace Host {

// Lets an application show how far it is with a large file. As long as a watch lives, its function is called for
// each block that its thread reads of a `FileStripe`: while opening, examining, saving with comparison, and wherever
// stream data is fetched. A watch belongs to the thread that made it, and ends there; of several the newest is asked.
class EXPORTED ReadWatch {
public:
    // Takes where a block ends in its file and the size of that file, both in bytes. What is read goes forwards for
    // the most part, often more than once, and through more than one file. It must not throw.
    using Function = std::function<void(std::uint64_t end, std::uint64_t size)>;

    // The watch is in force from now on, in place of an older one of this thread, which comes back after it.
    explicit ReadWatch(Function function) noexcept;
    ReadWatch(const ReadWatch&) = delete;
    ReadWatch& operator=(const ReadWatch&) = delete;
    ~ReadWatch() noexcept;

    // Tells the watch of this thread of a block, if there is one; for stripes of one's own.
    static void tell(std::uint64_t end, std::uint64_t size) noexcept;

private:
    const Function _function;
    const ReadWatch* const _outer;
};

} // namespace Host
