#pragma once

#include <platform/MemOutStrm.h>
#include <values/NumberObj.h>

// Numbers and the words of a file.
namespace Libraries::Files::PDF {

// A number whose word is kept, since two integers and a spelling don't give it back: 1.-5.
class WordNumberObj final : public NumberObj {
public:
    WordNumberObj(std::int64_t intPart, std::uint64_t fracPart, Ref<::String> word) noexcept
        : NumberObj(intPart, fracPart, {.flags = Spelling::Word}), _word(std::move(word))
    {
    }

    const Ref<::String>& word() const noexcept { return _word; }

private:
    const Ref<::String> _word;
};

// The number that a word makes; null when it is none. The text before a point and that after it are
// each a whole number, sign and all, and either may be empty.
Ref<NumberObj> numberFrom(std::u32string_view word) noexcept;

// The number as the library's own class; null for a number of another one, which has no spelling.
const NumberObj* spelledNumber(const Number& number) noexcept;
// The word of a number that has kept it; null for any other.
Ref<::String> wordOf(const NumberObj& number) noexcept;

// A number of the same integers and the same spelling.
Ref<NumberObj> copyExactly(const Number& number) noexcept;
// Appends the word that the number was in its file; of a number that an application made, the one of the plain
// form.
void appendExactly(const Number& number, MemOutStrm& text) noexcept;
// The same by the two integers alone.
void appendPlainly(const Number& number, MemOutStrm& text) noexcept;

} // namespace Libraries::Files::PDF
