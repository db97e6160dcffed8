#pragma once

#include <pthread.h>

#include <cstddef>
#include <cstdlib>
#include <functional>

namespace Tests {

#ifndef __has_feature
#define __has_feature(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || __has_feature(address_sanitizer) \
    || __has_feature(thread_sanitizer)
constexpr std::size_t smallStack = 8 << 20; // sanitizers blow frames up
#else
constexpr std::size_t smallStack = 1 << 20;
#endif

// Runs it in a thread whose stack has 1 MB, so that a recursion that grows with the input shows.
inline void onSmallStack(std::function<void()> work)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, smallStack);
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    if (pthread_create(&thread, &attributes, run, &work) != 0)
        std::abort();
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

} // namespace Tests
