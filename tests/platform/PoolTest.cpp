#include <platform/Pool.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <iterator>
#include <thread>
#include <vector>

namespace {

struct Piece {
    void* block;
    std::size_t size;
};

std::vector<Piece> allocSome(unsigned seed, std::size_t count)
{
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < count; ++i) {
        seed = seed * 1664525 + 1013904223;
        const std::size_t size = 1 + (seed >> 16) % (Pool::largest + 64);
        void* block = Pool::alloc(size);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % (size % 16 == 0 ? 16 : 8), 0u);
        std::memset(block, int(i & 0xFF), size);
        pieces.push_back({block, size});
    }
    return pieces;
}

// Frees every `step`th of the pieces, once it is as it was left.
void freeSome(const std::vector<Piece>& pieces, std::size_t start, std::size_t step)
{
    for (std::size_t i = start; i < pieces.size(); i += step) {
        const std::vector<unsigned char> expected(pieces[i].size, static_cast<unsigned char>(i));
        EXPECT_EQ(std::memcmp(pieces[i].block, expected.data(), expected.size()), 0) << i;
        Pool::free(pieces[i].block, pieces[i].size);
    }
}

// Takes a block when its thread has ended already, and tells where it was.
struct LateUser {
    std::uintptr_t* slab = nullptr;
    ~LateUser()
    {
        void* const block = Pool::alloc(200);
        *slab = reinterpret_cast<std::uintptr_t>(block) / 65536;
        Pool::free(block, 200);
    }
};

thread_local LateUser lateUser;

} // namespace

TEST(Pool, blocksKeepWhatIsWrittenToThemWhicheverThreadFreesThem)
{
    for (unsigned round = 0; round < 3; ++round) {
        std::vector<Piece> ours = allocSome(round, 5000);
        std::vector<Piece> theirs;
        std::thread([&] {
            theirs = allocSome(round + 7, 5000);
            freeSome(ours, 0, 2);
            freeSome(theirs, 0, 2);
        }).join();
        // The thread has ended; the next one takes its slabs over while blocks of them come back.
        std::thread next([&] { freeSome(allocSome(round + 9, 5000), 0, 1); });
        freeSome(theirs, 1, 2);
        freeSome(ours, 1, 2);
        next.join();
    }
}

TEST(Pool, slabsThatAThreadTakesAtItsVeryEndAreTheNextOnes)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer has each block by itself";
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    GTEST_SKIP() << "the sanitizer has each block by itself";
#endif
#endif
    std::uintptr_t slabs[8] = {};
    for (std::uintptr_t& slab : slabs)
        std::thread([&] {
            lateUser.slab = &slab;
            Pool::free(Pool::alloc(40), 40);
        }).join();
    EXPECT_EQ(std::vector<std::uintptr_t>(std::begin(slabs), std::end(slabs)),
        std::vector<std::uintptr_t>(std::size(slabs), slabs[0]));
}
