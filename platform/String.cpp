#include <platform/String.h>

#include <platform/Heap.h>
#include <platform/Mem.h>
#include <platform/Pool.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace {

bool isHighSurrogate(unsigned int unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(unsigned int unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

std::size_t textBytes(std::size_t length, bool wide)
{
    return wide ? length * sizeof(unsigned int) : length;
}

} // namespace

void* String::operator new(std::size_t size, TextBytes text) noexcept
{
    return Pool::alloc(size + text.count);
}

void String::operator delete(void* memory, TextBytes text) noexcept
{
    Pool::free(memory, sizeof(String) + text.count);
}

void String::operator delete(String* string, std::destroying_delete_t) noexcept
{
    const std::size_t size = sizeof(String) + textBytes(string->_length, string->_wide);
    string->~String();
    Pool::free(string, size);
}

Ref<String> String::allocate(std::size_t length, bool wide) noexcept
{
    return Ref<String>(new (TextBytes{textBytes(length, wide)}) String(length, wide));
}

template <class Unit>
Ref<String> String::fromUnits(const Unit* units, std::size_t count) noexcept
{
    bool wide = false;
    if constexpr (sizeof(Unit) > 1)
        wide = std::any_of(units, units + count, [](Unit unit) { return unit > 0xFF; });
    Ref<String> result = allocate(count, wide);
    if (wide)
        std::copy(units, units + count, const_cast<unsigned int*>(result->wide()));
    else
        std::copy(units, units + count, const_cast<unsigned char*>(result->narrow()));
    return result;
}

Ref<String> String::create() noexcept
{
    // Never torn down: objects that end with the program may still ask for it.
    static String* const empty = allocate(0, false).release();
    return Ref<String>(empty);
}

Ref<String> String::create(const char* text, std::size_t start, std::size_t length) noexcept
{
    if (!text)
        return create();
    if (length == all)
        length = std::strlen(text + start);
    return fromUnits(reinterpret_cast<const unsigned char*>(text + start), length);
}

Ref<String> String::create(const unsigned short* text, std::size_t start, std::size_t length) noexcept
{
    if (!text)
        return create();
    if (length == all)
        for (length = 0; text[start + length];)
            ++length;
    std::u32string characters;
    for (std::size_t i = start; i < start + length; ++i) {
        const unsigned int unit = text[i];
        if (isHighSurrogate(unit) && i + 1 < start + length && isLowSurrogate(text[i + 1]))
            characters += char32_t(0x10000 + ((unit - 0xD800) << 10) + (text[++i] - 0xDC00));
        else
            characters += char32_t(unit);
    }
    return create(characters);
}

Ref<String> String::create(unsigned int c) noexcept
{
    return fromUnits(&c, 1);
}

Ref<String> String::create(std::u32string_view text) noexcept
{
    return fromUnits(text.data(), text.size());
}

void String::copyTo(String& target, std::size_t targetIndex, std::size_t start, std::size_t count) const noexcept
{
    if (target._wide)
        copy(start, count, const_cast<unsigned int*>(target.wide()) + targetIndex);
    else
        Mem::copy(narrow() + start, const_cast<unsigned char*>(target.narrow()) + targetIndex, count);
}

Ref<String> String::substring(std::size_t start, std::size_t length) const noexcept
{
    start = std::min(start, _length);
    length = std::min(length, _length - start);
    return _wide ? fromUnits(wide() + start, length) : fromUnits(narrow() + start, length);
}

Ref<String> String::substring(std::size_t start) const noexcept
{
    return substring(start, all);
}

Ref<String> String::append(unsigned int c) const noexcept
{
    return concat(create(c));
}

Ref<String> String::append(char c) const noexcept
{
    return append(static_cast<unsigned int>(static_cast<unsigned char>(c)));
}

Ref<String> String::concat(const char* text) const noexcept
{
    return concat(create(text));
}

Ref<String> String::concat(Ref<String> text) const noexcept
{
    const std::size_t added = text ? text->_length : 0;
    Ref<String> result = allocate(_length + added, _wide || (text && text->_wide));
    copyTo(*result, 0, 0, _length);
    if (text)
        text->copyTo(*result, _length, 0, added);
    return result;
}

std::size_t String::length() const noexcept
{
    return _length;
}

bool String::isEmpty() const noexcept
{
    return _length == 0;
}

std::size_t String::find(Ref<String> needle, std::size_t from) const noexcept
{
    if (!needle || needle->_length > _length)
        return _length;
    for (std::size_t i = from; i <= _length - needle->_length; ++i) {
        std::size_t matched = 0;
        while (matched < needle->_length && at(i + matched) == needle->at(matched))
            ++matched;
        if (matched == needle->_length)
            return i;
    }
    return _length;
}

std::size_t String::find(unsigned int c, std::size_t from) const noexcept
{
    for (std::size_t i = from; i < _length; ++i)
        if (at(i) == c)
            return i;
    return _length;
}

bool String::equals(const char* text) const noexcept
{
    if (!text)
        return false;
    std::size_t i = 0;
    while (i < _length && text[i] && at(i) == static_cast<unsigned char>(text[i]))
        ++i;
    return i == _length && !text[i];
}

bool String::equals(Ref<String> text) const noexcept
{
    return text && _length == text->_length && compare(*text) == 0;
}

bool String::equals(std::u32string_view text) const noexcept
{
    if (_wide)
        return std::equal(wide(), wide() + _length, text.begin(), text.end());
    return std::equal(narrow(), narrow() + _length, text.begin(), text.end());
}

bool String::greaterOrEqual(Ref<String> text) const noexcept
{
    return !text || compare(*text) >= 0;
}

int String::compare(const String& other) const noexcept
{
    const std::size_t shared = std::min(_length, other._length);
    if (!_wide && !other._wide) {
        const int order = shared ? std::memcmp(narrow(), other.narrow(), shared) : 0;
        if (order != 0)
            return order;
    } else {
        for (std::size_t i = 0; i < shared; ++i)
            if (at(i) != other.at(i))
                return at(i) < other.at(i) ? -1 : 1;
    }
    return _length == other._length ? 0 : _length < other._length ? -1 : 1;
}

unsigned int String::charAt(std::size_t index) const noexcept
{
    return index < _length ? at(index) : 0;
}

std::size_t String::copy(std::size_t start, std::size_t count, unsigned int* out) const noexcept
{
    if (start >= _length)
        return 0;
    count = std::min(count, _length - start);
    if (_wide)
        std::copy_n(wide() + start, count, out);
    else
        std::copy_n(narrow() + start, count, out);
    return count;
}

unsigned int* String::toElements(std::size_t start) const noexcept
{
    const std::size_t count = _length - std::min(start, _length);
    void* block = Heap::alloc(count * sizeof(unsigned int), Heap::Array, __builtin_return_address(0));
    copy(start, count, static_cast<unsigned int*>(block));
    return static_cast<unsigned int*>(block);
}

unsigned short* String::toUtf16(std::size_t* length) const noexcept
{
    std::u16string units;
    forEach([&units](unsigned int c) {
        if (c > 0xFFFF) {
            units += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            units += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            units += static_cast<char16_t>(c);
        }
    });
    const std::size_t bytes = units.size() * sizeof(unsigned short);
    void* block = Heap::alloc(bytes, Heap::Array, __builtin_return_address(0));
    Mem::copy(units.data(), block, bytes);
    if (length)
        *length = units.size();
    return static_cast<unsigned short*>(block);
}
