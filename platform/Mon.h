#pragma once

#include <platform/Object.h>

#include <mutex>

// A monitor. It is recursive: a thread that is inside may enter again, and leaves as often.
class Mon final : public Object {
public:
    static Ref<Mon> create() noexcept { return make<Mon>(); }

    void enter() noexcept { _mutex.lock(); }
    void leave() noexcept { _mutex.unlock(); }

private:
    std::recursive_mutex _mutex;
};
