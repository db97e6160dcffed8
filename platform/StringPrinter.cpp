#include <platform/StringPrinter.h>

#include <platform/StrConv.h>

#include <utility>

StringPrinter& StringPrinter::print(const char* text) noexcept
{
    for (; text && *text; ++text)
        _text += char32_t(static_cast<unsigned char>(*text));
    return *this;
}

StringPrinter& StringPrinter::print(const String* text) noexcept
{
    if (text)
        text->forEach([this](unsigned int c) { _text += char32_t(c); });
    return *this;
}

StringPrinter& StringPrinter::print(const void* pointer) noexcept
{
    return print(reinterpret_cast<std::uintptr_t>(pointer));
}

StringPrinter& StringPrinter::hex() noexcept
{
    _hex = true;
    return *this;
}

StringPrinter& StringPrinter::width(std::size_t digits) noexcept
{
    _width = digits;
    return *this;
}

StringPrinter& StringPrinter::endl() noexcept
{
    _text += U'\n';
    return *this;
}

Ref<String> StringPrinter::take() noexcept
{
    return String::create(std::exchange(_text, {}));
}

void StringPrinter::printNumber(unsigned long long number, bool negative) noexcept
{
    const std::size_t base = std::exchange(_hex, false) ? 16 : 10;
    if (negative && base == 10) {
        _text += U'-';
        number = 0 - number;
    }
    print(StrConv::str(number, base, std::exchange(_width, 0)));
}
