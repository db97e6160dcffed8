#include <platform/Pool.h>

#include <platform/Heap.h>

#include <atomic>
#include <cstdint>
#include <mutex>
#include <new>
#include <utility>

#include <pthread.h>

namespace {

// AddressSanitizer has to see each block by itself.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool isPooled = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool isPooled = false;
#else
constexpr bool isPooled = true;
#endif
#else
constexpr bool isPooled = true;
#endif

constexpr std::size_t granule = 8;
constexpr std::size_t slabAlignment = 65536; // the start of a block's slab is found by cutting its address
constexpr std::size_t slabSize = slabAlignment - 64; // leaves room for what the C library puts around it

struct Block {
    Block* next;
};

struct Lane;

// A run of blocks of one size.
struct Slab {
    Lane* const lane;
    const std::uint32_t blockSize;
    std::uint32_t used = 0;  // blocks that are handed out
    std::uint32_t fresh;     // where the part begins that was never handed out, in bytes
    bool isOpen = false;     // whether it is in its lane's list
    Block* free = nullptr;
    Slab* previous = nullptr; // of the lane's slabs of this size with room
    Slab* next = nullptr;

    Slab(Lane* itsLane, std::size_t itsBlockSize) noexcept
        : lane(itsLane), blockSize(static_cast<std::uint32_t>(itsBlockSize)), fresh(sizeof(Slab))
    {
    }

    static Slab* of(void* block) noexcept
    {
        return reinterpret_cast<Slab*>(reinterpret_cast<std::uintptr_t>(block) & ~(slabAlignment - 1));
    }

    // Takes a block; null when there is none.
    void* take() noexcept
    {
        void* block = free;
        if (block) {
            free = free->next;
        } else if (fresh + blockSize <= slabSize) {
            block = reinterpret_cast<unsigned char*>(this) + fresh;
            fresh += blockSize;
        } else {
            return nullptr;
        }
        ++used;
        return block;
    }
};

// A class that asks for an alignment of 16 bytes has a size to match, and so has the place of its blocks.
static_assert(sizeof(Slab) % 16 == 0);

// The slabs of one thread at a time. Lanes are never deleted: one whose thread has ended waits for the
// next that starts, with its slabs, since other threads may hold blocks of them.
struct Lane {
    Slab* open[Pool::largest / granule + 1] = {}; // by size: the first of the slabs with room
    std::atomic<Block*> returned{nullptr};        // blocks that other threads have freed
    Lane* nextIdle = nullptr;

    void* alloc(std::size_t kind) noexcept
    {
        if (Slab* slab = open[kind])
            if (void* block = slab->take())
                return block;
        return allocFurther(kind);
    }
    void free(Slab* slab, Block* block) noexcept
    {
        block->next = slab->free;
        slab->free = block;
        if (--slab->used == 0 || !slab->isOpen)
            settle(slab);
    }

private:
    [[gnu::noinline]] void* allocFurther(std::size_t kind) noexcept;
    [[gnu::noinline]] void settle(Slab* slab) noexcept;
    void link(Slab* slab, std::size_t kind) noexcept;
    void unlink(Slab* slab, std::size_t kind) noexcept;
};

void Lane::link(Slab* slab, std::size_t kind) noexcept
{
    slab->previous = nullptr;
    slab->next = open[kind];
    if (slab->next)
        slab->next->previous = slab;
    open[kind] = slab;
    slab->isOpen = true;
}

void Lane::unlink(Slab* slab, std::size_t kind) noexcept
{
    (slab->previous ? slab->previous->next : open[kind]) = slab->next;
    if (slab->next)
        slab->next->previous = slab->previous;
    slab->isOpen = false;
}

// What is left to do after the freeing of a block: a slab with room gets into the list, an empty one
// out of it, unless it is the last one there.
void Lane::settle(Slab* slab) noexcept
{
    const std::size_t kind = slab->blockSize / granule;
    if (!slab->isOpen)
        link(slab, kind);
    if (slab->used == 0 && (slab->previous || slab->next)) {
        unlink(slab, kind);
        Heap::free(slab, Heap::Array, __builtin_return_address(0), slabSize);
    }
}

void* Lane::allocFurther(std::size_t kind) noexcept
{
    for (Block* block = returned.exchange(nullptr, std::memory_order_acquire); block;) {
        Block* const next = block->next;
        free(Slab::of(block), block);
        block = next;
    }
    while (Slab* slab = open[kind]) {
        if (void* block = slab->take())
            return block;
        unlink(slab, kind);
    }
    void* memory = Heap::allocAligned(slabSize, slabAlignment, __builtin_return_address(0));
    link(new (memory) Slab(this, kind * granule), kind);
    return open[kind]->take();
}

// The lanes that no thread uses.
std::mutex idleLock;
Lane* idle = nullptr;

// Bound early, so that the thread's lane is one load away.
[[gnu::tls_model("initial-exec")]] thread_local Lane* ownLane = nullptr;

// Whether the thread has given its lane back.
thread_local bool hasEnded = false;

// A child of `fork` has one thread, which must not find the lock taken by one that it doesn't have.
[[maybe_unused]] const int forkRule
    = pthread_atfork([] { idleLock.lock(); }, [] { idleLock.unlock(); }, [] { idleLock.unlock(); });

void makeIdle(Lane* lane) noexcept
{
    const std::lock_guard guard(idleLock);
    lane->nextIdle = idle;
    idle = lane;
}

Lane* takeIdle() noexcept
{
    const std::lock_guard guard(idleLock);
    return idle ? std::exchange(idle, idle->nextIdle) : new Lane;
}

// Gives the lane back when its thread ends. Blocks that are freed on the thread even later are another
// thread's to it.
struct LaneKeeper {
    Lane* const lane;
    explicit LaneKeeper(Lane* itsLane) noexcept : lane(itsLane) {}
    LaneKeeper(const LaneKeeper&) = delete;
    LaneKeeper& operator=(const LaneKeeper&) = delete;
    ~LaneKeeper() noexcept
    {
        ownLane = nullptr;
        hasEnded = true;
        makeIdle(lane);
    }
};

// A block for a thread that has no lane yet, or none any more: nobody would give a second one back.
[[gnu::noinline]] void* allocWithoutLane(std::size_t kind) noexcept
{
    Lane* const lane = takeIdle();
    if (hasEnded) {
        void* const block = lane->alloc(kind);
        makeIdle(lane);
        return block;
    }
    thread_local const LaneKeeper keeper(lane);
    ownLane = lane;
    return lane->alloc(kind);
}

void giveBack(Lane* lane, Block* block) noexcept
{
    block->next = lane->returned.load(std::memory_order_relaxed);
    while (!lane->returned.compare_exchange_weak(
        block->next, block, std::memory_order_release, std::memory_order_relaxed)) {
    }
}

} // namespace

void* Pool::alloc(std::size_t size) noexcept
{
    if (!isPooled || size > largest)
        return Heap::alloc(size, Heap::SingleObject, __builtin_return_address(0));
    const std::size_t kind = (size + granule - 1) / granule;
    return ownLane ? ownLane->alloc(kind) : allocWithoutLane(kind);
}

void Pool::free(void* block, std::size_t size) noexcept
{
    if (!isPooled || size > largest)
        return Heap::free(block, Heap::SingleObject, __builtin_return_address(0), size);
    Slab* const slab = Slab::of(block);
    if (slab->lane == ownLane)
        slab->lane->free(slab, static_cast<Block*>(block));
    else
        giveBack(slab->lane, static_cast<Block*>(block));
}
