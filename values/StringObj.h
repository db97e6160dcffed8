#pragma once

#include <values/String.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

// A string of a file remembers what its two forms don't say, where the format means other bytes than they do: a
// literal one its source, a hexadecimal one that its last digit was alone.
class StringObj final : public ValueObj, public virtual String {
public:
    // The forms as they are, without the conversion of `String::create`.
    explicit StringObj(Ref<::String> text) noexcept : ValueObj(kind), _text(std::move(text)) {}
    explicit StringObj(Ref<TConstArray<std::uint8_t>> bytes) noexcept : ValueObj(kind), _bytes(std::move(bytes)) {}
    // A text with its source, brackets included. Neither may be null.
    StringObj(Ref<::String> text, Ref<TConstArray<std::uint8_t>> source) noexcept
        : ValueObj(kind), _memory(Memory::Source), _text(std::move(text)), _bytes(std::move(source))
    {
    }
    // Bytes of which the last one is a digit that had no second one, read as a number of tens.
    struct OddDigit {};
    StringObj(Ref<TConstArray<std::uint8_t>> bytes, OddDigit) noexcept
        : ValueObj(kind), _memory(Memory::OddDigit), _bytes(std::move(bytes))
    {
    }

    // String
    Ref<::String> value() const noexcept override { return _text; }
    Ref<TConstArray<std::uint8_t>> data() const noexcept override { return hasSource() ? nullptr : _bytes; }

    bool hasSource() const noexcept { return _memory == Memory::Source; }
    // Null for a string that has none.
    Ref<TConstArray<std::uint8_t>> source() const noexcept { return hasSource() ? _bytes : nullptr; }
    bool hasOddDigit() const noexcept { return _memory == Memory::OddDigit; }
    // A string of the same form that remembers the same.
    Ref<StringObj> copy() const noexcept;

private:
    enum class Memory : std::uint8_t { None, Source, OddDigit };

    const Memory _memory = Memory::None; // first, where the kind leaves room
    const Ref<::String> _text;
    const Ref<TConstArray<std::uint8_t>> _bytes; // those of the source, if there is one
};

} // namespace Libraries::Files::PDF
