#pragma once

#include <platform/Object.h>

#include <vector>

// Small ids for references. A free id is taken from the top of a stack; the id at its bottom, 0, is
// never given out, so that 0 can mean none.
template <class Reference>
class ShIdTable final : public ::Object {
public:
    ShIdTable() noexcept { grow(firstCapacity); }

    std::uint64_t take(Reference reference) noexcept
    {
        if (_top == 0)
            grow(2 * _references.size());
        const std::uint64_t id = _free[_top--];
        _isUsed[id] = true;
        _references[id] = std::move(reference);
        return id;
    }
    // The reference of an id; null when the id is not in use.
    Reference find(std::uint64_t id) const noexcept { return isUsed(id) ? _references[id] : Reference(); }
    // Takes an id back and releases its reference; an id that is not in use is ignored.
    void giveBack(std::uint64_t id) noexcept
    {
        if (!isUsed(id))
            return;
        _isUsed[id] = false;
        _references[id] = nullptr;
        _free[++_top] = id;
    }

private:
    static constexpr std::size_t firstCapacity = 16;

    bool isUsed(std::uint64_t id) const noexcept { return id < _isUsed.size() && _isUsed[id]; }
    // The new ids go on the stack in rising order, so the highest is given out first.
    void grow(std::size_t capacity) noexcept
    {
        const std::size_t before = _references.size();
        _free.resize(capacity);
        for (std::size_t id = before; id < capacity; ++id)
            _free[before == 0 ? id : ++_top] = id;
        if (before == 0)
            _top = capacity - 1;
        _isUsed.resize(capacity);
        _references.resize(capacity);
    }

    std::size_t _top = 0; // index of the last free id in `_free`
    std::vector<std::uint64_t> _free;
    std::vector<bool> _isUsed;
    std::vector<Reference> _references;
};
