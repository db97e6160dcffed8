#include <host/pages/SameContents.h>

#include <host/base/Following.h>
#include <host/base/Keys.h>
#include <platform/Mem.h>
#include <values/Stream.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

bool readBlock(Interfaces::Stripe& stripe, std::vector<std::uint32_t>& block, std::size_t count)
{
    BufferDesc area = BufferDesc::plain(block.data());
    return stripe.read(area, count, waitForever) == count;
}

// Whether two stripes hold the same. They are left at their ends.
bool isSameData(Interfaces::Stripe& own, Interfaces::Stripe& foreign)
{
    constexpr std::size_t blockSize = 16384;
    std::uint64_t left = own.size();
    const bool isAlike = left == foreign.size() && own.elementSize() == sizeof(std::uint32_t)
        && foreign.elementSize() == sizeof(std::uint32_t);
    if (!isAlike || own.seek(0) != 0 || foreign.seek(0) != 0)
        return false;
    std::vector<std::uint32_t> a(blockSize);
    std::vector<std::uint32_t> b(blockSize);
    while (left > 0) {
        const std::size_t count = std::min<std::uint64_t>(left, blockSize);
        if (!readBlock(own, a, count) || !readBlock(foreign, b, count)
            || !Mem::equal(a.data(), b.data(), count * sizeof(std::uint32_t)))
            return false;
        left -= count;
    }
    return true;
}

} // namespace

bool SameContents::areSame(const Ref<Value>& own, const Ref<Value>& foreign) noexcept
{
    _open.emplace_back(own, foreign);
    while (!_open.empty()) {
        const auto [a, b] = std::move(_open.back());
        _open.pop_back();
        if (!compare(followAll(*_document, a), followAll(*_foreign, b)))
            return false;
    }
    return true;
}

// Compares two values, and notes their parts to be compared.
bool SameContents::compare(const Ref<Value>& own, const Ref<Value>& foreign) noexcept
{
    if (!own || !foreign || own->type() != foreign->type())
        return false;
    switch (own->type()) {
    case Value::Type::Array:
        return !join(own.get(), foreign.get()) || compareArrays(*own.cast<Array>(), *foreign.cast<Array>());
    case Value::Type::Dictionary:
        return !join(own.get(), foreign.get())
            || compareDictionaries(*own.cast<Dictionary>(), *foreign.cast<Dictionary>());
    case Value::Type::Stream:
        return !join(own.get(), foreign.get()) || compareStreams(own.cast<Stream>(), foreign.cast<Stream>());
    case Value::Type::String: // which may be long, and have many references to it
        return !join(own.get(), foreign.get()) || own->equal(foreign);
    default:
        return own->equal(foreign);
    }
}

bool SameContents::compareArrays(const Array& own, const Array& foreign) noexcept
{
    if (own.size() != foreign.size())
        return false;
    for (std::uint64_t i = 0; i < own.size(); ++i)
        _open.emplace_back(own.get(i), foreign.get(i));
    return true;
}

bool SameContents::compareDictionaries(const Dictionary& own, const Dictionary& foreign) noexcept
{
    const auto keys = keysOf(own);
    if (keys.size() != keysOf(foreign).size())
        return false;
    for (const Ref<::String>& key : keys)
        _open.emplace_back(own.find(key), foreign.find(key)); // null, and so a difference, without the key
    return true;
}

bool SameContents::compareStreams(const Ref<Stream>& own, const Ref<Stream>& foreign) noexcept
{
    const Ref<Interfaces::Stripe> a = _document->streamData(own, false);
    const Ref<Interfaces::Stripe> b = _foreign->streamData(foreign, false);
    if (!a || !b || a->size() != b->size() || !_budget.spend(Cost::StoredData, a->size()))
        return false;
    const std::uint64_t placeOfA = a->tell();
    const std::uint64_t placeOfB = b->tell();
    const bool isSame = isSameData(*a, *b);
    a->seek(placeOfA);
    b->seek(placeOfB);
    _open.emplace_back(own->dict(), foreign->dict());
    return isSame;
}

// The value that represents the class of another: itself when it was not compared with any.
const Value* SameContents::classOf(const Value* value) noexcept
{
    auto found = _classes.find(value);
    while (found != _classes.end()) {
        const auto next = _classes.find(found->second);
        if (next == _classes.end())
            return found->second;
        found->second = next->second; // shortens the way
        found = next;
    }
    return value;
}

// Puts two values into one class; false when they are in one already.
bool SameContents::join(const Value* own, const Value* foreign) noexcept
{
    own = classOf(own);
    foreign = classOf(foreign);
    return own != foreign && _classes.emplace(foreign, own).second;
}

} // namespace Host
