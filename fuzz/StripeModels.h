#pragma once

#include "Check.h"
#include "Input.h"

#include <platform/Mem.h>
#include <platform/Stripe.h>
#include <platform/Windows_1252.h>

#include <map>
#include <vector>

// Plain models of stripes, and the operations that compare a stripe with its model.
namespace Fuzz {

enum class Access { ReadOnly, Growing };
constexpr std::uint32_t noCode = 0;

// A block of bytes. Every model answers for itself what its stripe must: results, places, and the code of
// what comes short.
class BytesModel {
public:
    using Element = std::uint8_t;

    BytesModel(std::vector<std::uint8_t> bytes, Access access) : _bytes(std::move(bytes)), _access(access) {}

    std::uint64_t size() const { return _bytes.size(); }
    std::uint64_t tell() const { return _place; }
    std::uint64_t seek(std::uint64_t place) { return _place = std::min<std::uint64_t>(place, _bytes.size()); }
    std::uint64_t read(void* target, std::uint64_t count)
    {
        const std::uint64_t got = std::min<std::uint64_t>(count, _bytes.size() - _place);
        Mem::copy(_bytes.data() + _place, target, got);
        _place += got;
        return got;
    }
    std::uint64_t write(const void* source, std::uint64_t count)
    {
        if (_access == Access::ReadOnly)
            return 0;
        _bytes.resize(std::max<std::uint64_t>(_bytes.size(), _place + count));
        Mem::copy(source, _bytes.data() + _place, count);
        _place += count;
        return count;
    }
    std::uint64_t resize(std::uint64_t count)
    {
        if (_access == Access::Growing)
            _bytes.resize(count);
        _place = std::min<std::uint64_t>(_place, _bytes.size());
        return _bytes.size();
    }
    // The most that a read can get, and the code that one leaves which gets nothing of so many.
    std::uint64_t most() const { return _bytes.size(); }
    std::uint32_t codeOfNothing(std::uint64_t) const { return ErrOutOfRange; }

private:
    std::vector<std::uint8_t> _bytes;
    const Access _access;
    std::uint64_t _place = 0;
};

// The same bytes as elements of four; counts and places are multiplied, and cut, in 64 bits.
class ElementsModel {
public:
    using Element = std::uint32_t;

    ElementsModel(std::vector<std::uint8_t> bytes, Access access) : _bytes(std::move(bytes), access) {}

    std::uint64_t size() const { return _bytes.size() / 4; }
    std::uint64_t tell() const { return _bytes.tell() / 4; }
    std::uint64_t seek(std::uint64_t place) { return _bytes.seek(4 * place) / 4; }
    std::uint64_t read(void* target, std::uint64_t count) { return _bytes.read(target, 4 * count) / 4; }
    std::uint64_t write(const void* source, std::uint64_t count) { return _bytes.write(source, 4 * count) / 4; }
    std::uint64_t resize(std::uint64_t count) { return _bytes.resize(4 * count) / 4; }
    std::uint64_t most() const { return _bytes.most() / 4 + 1; }
    std::uint32_t codeOfNothing(std::uint64_t count) const { return 4 * count == 0 ? noCode : ErrOutOfRange; }

private:
    BytesModel _bytes;
};

// Elements that are held as bytes, until one is written that stands for none: from then on counts and places are
// multiplied, and cut, in 64 bits.
class HeldModel {
public:
    using Element = std::uint32_t;
    using Encoding = ::Libraries::Strings::Encodings::ANSI::Windows_1252;

    explicit HeldModel(const std::vector<std::uint8_t>& bytes)
    {
        for (const std::uint8_t byte : bytes)
            _elements.push_back(Encoding::toCodePoint(byte));
    }

    std::uint64_t size() const { return _elements.size(); }
    std::uint64_t tell() const { return _place; }
    std::uint64_t seek(std::uint64_t place) { return _place = std::min(asked(place), size()); }
    std::uint64_t read(void* target, std::uint64_t count)
    {
        const std::uint64_t got = std::min(asked(count), size() - _place);
        Mem::copy(_elements.data() + _place, target, got * sizeof(Element));
        _place += got;
        return got;
    }
    std::uint64_t write(const void* source, std::uint64_t count)
    {
        _elements.resize(std::max(size(), _place + count));
        Mem::copy(source, _elements.data() + _place, count * sizeof(Element));
        for (const std::uint64_t end = _place + count; _place < end; ++_place)
            _isWide = _isWide || !Encoding::hasByte(_elements[_place]);
        return count;
    }
    std::uint64_t resize(std::uint64_t count)
    {
        _elements.resize(count);
        seek(_place);
        return count;
    }
    std::uint64_t most() const { return size(); }
    std::uint32_t codeOfNothing(std::uint64_t count) const { return asked(count) == 0 ? noCode : ErrOutOfRange; }

private:
    std::uint64_t asked(std::uint64_t count) const
    {
        return _isWide ? sizeof(Element) * count / sizeof(Element) : count;
    }

    std::vector<std::uint32_t> _elements;
    bool _isWide = false;
    std::uint64_t _place = 0;
};

// A range of elements, which may reach beyond them.
class ViewModel {
public:
    using Element = std::uint32_t;

    ViewModel(std::vector<std::uint32_t> elements, std::uint64_t offset, std::uint64_t size)
        : _elements(std::move(elements)), _offset(offset), _size(size)
    {
    }

    std::uint64_t size() const { return _size; }
    std::uint64_t tell() const { return _place; }
    std::uint64_t seek(std::uint64_t place) { return _place = std::min(place, _size); }
    std::uint64_t read(void* target, std::uint64_t count)
    {
        const std::uint64_t start = _offset + _place;
        const std::uint64_t there = start < _elements.size() ? _elements.size() - start : 0;
        const std::uint64_t got = std::min({count, _size - _place, there});
        Mem::copy(_elements.data() + (got ? start : 0), target, got * sizeof(Element));
        _place += got;
        return got;
    }
    std::uint64_t write(const void*, std::uint64_t) { return 0; }
    std::uint64_t resize(std::uint64_t) { return _size; }
    std::uint64_t most() const { return _elements.size(); }
    // Only a view of offset 0 says that it is at its end; and one that begins behind what there is says nothing.
    std::uint32_t codeOfNothing(std::uint64_t) const
    {
        const bool isAtEnd = _place == _size;
        const bool isSilent = isAtEnd ? _offset != 0 : _offset + _place > _elements.size();
        return isSilent ? noCode : ErrOutOfRange;
    }

private:
    const std::vector<std::uint32_t> _elements;
    const std::uint64_t _offset;
    const std::uint64_t _size;
    std::uint64_t _place = 0;
};

// A read through a buffer that holds what there is, however much is asked for.
template <class Model>
void compareReads(Interfaces::Stripe& stripe, Model& model, std::uint64_t count, std::uint64_t offset)
{
    using Element = typename Model::Element;
    const std::uint64_t room = std::min(count, model.most());
    const std::uint32_t codeOfNothing = model.codeOfNothing(count);
    std::vector<Element> expected(room + 1);
    std::vector<Element> found(room + 1 + offset);
    BufferDesc area = BufferDesc::plain(found.data());
    area.offset = offset * sizeof(Element);
    Error::set(0);
    const std::uint64_t got = stripe.read(area, count, waitForever);
    require(got == model.read(expected.data(), count), "a read moves what there is");
    require(got != 0 || count == 0 || Error::get() == codeOfNothing, "a read that moves nothing leaves its code");
    require(Mem::equal(found.data() + offset, expected.data(), room * sizeof(Element)),
        "a read moves the right elements");
}

template <class Model>
void compareWrites(Interfaces::Stripe& stripe, Model& model, std::uint64_t count, std::uint8_t mark)
{
    std::vector<typename Model::Element> elements(count, mark);
    BufferDesc area = BufferDesc::plain(elements.data());
    Error::set(0);
    const std::uint64_t moved = stripe.write(area, count, waitForever);
    require(moved == model.write(elements.data(), count), "a write moves what it can");
    require(moved == count || Error::get() == ErrNotSupported, "a refused write leaves its code");
}

// One operation, which the input chooses, on both.
template <class Model>
void operate(Interfaces::Stripe& stripe, Model& model, Input& input)
{
    switch (input.byte() % 6) {
    case 0: {
        const std::uint64_t count = input.anyNumber();
        compareReads(stripe, model, count, input.byte() % 4);
        break;
    }
    case 1: {
        const std::uint64_t count = input.byte();
        compareWrites(stripe, model, count, input.byte());
        break;
    }
    case 2: {
        const std::uint64_t place = input.anyNumber();
        require(stripe.seek(place) == model.seek(place), "a seek stops at the end");
        break;
    }
    case 3: {
        const std::uint64_t count = input.number(2) % 1000;
        require(stripe.resize(count) == model.resize(count), "a resize answers the size");
        break;
    }
    case 4: {
        BufferDesc none;
        Error::set(0);
        require(stripe.read(none, 1 + input.byte(), waitForever) == 0 && Error::get() == ErrInvalidArgument,
            "no memory is read into");
        break;
    }
    default:
        Error::set(0);
        require(stripe.skipRead(1, waitForever) == 0 && stripe.skipWrite(1, waitForever) == 0
                && Error::get() == ErrNotSupported && !stripe.shareOut(nullptr).memory,
            "what isn't offered is refused");
    }
    require(stripe.tell() == model.tell() && stripe.size() == model.size(), "place and size are those of the model");
    require(stripe.elementSize() == sizeof(typename Model::Element), "elements have one width");
}

template <class Model>
void operateAll(Interfaces::Stripe& stripe, Model model, Input& input)
{
    while (!input.isAtEnd())
        operate(stripe, model, input);
}

} // namespace Fuzz
