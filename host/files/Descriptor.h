#pragma once

#include <unistd.h>

#include <utility>

namespace Host {

// A file descriptor that closes itself.
class Descriptor {
public:
    Descriptor() noexcept = default;
    // Takes ownership of the descriptor; a number below 0 is none.
    explicit Descriptor(int number) noexcept : _number(number) {}
    // The other one has none afterwards; the one held here is closed.
    Descriptor(Descriptor&& other) noexcept : _number(std::exchange(other._number, -1)) {}
    Descriptor& operator=(Descriptor other) noexcept
    {
        std::swap(_number, other._number);
        return *this;
    }
    ~Descriptor() noexcept
    {
        if (isOpen())
            ::close(_number);
    }

    // As system calls take it; -1 when there is none.
    int number() const noexcept { return _number; }
    bool isOpen() const noexcept { return _number >= 0; }

private:
    int _number = -1;
};

} // namespace Host
