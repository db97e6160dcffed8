#include <forms/TextObj.h>

#include <forms/FormKeys.h>
#include <platform/Reporter.h>
#include <values/Dictionary.h>
#include <values/Number.h>
#include <values/String.h>

namespace Libraries::Files::PDF {

namespace {

// Whether the string has at most `limit` characters; 0 is no limit.
bool fits(const String& string, std::int64_t limit)
{
    if (limit == 0)
        return true;
    if (const Ref<::String> text = string.value())
        return static_cast<std::int64_t>(text->length()) <= limit;
    // Deliberately all bytes count as UTF-16 with a byte order mark, which is no character: other bytes
    // pass at about twice the limit.
    const Ref<TConstArray<std::uint8_t>> bytes = string.data();
    return bytes && static_cast<std::int64_t>(bytes->size() / 2) - 1 <= limit;
}

} // namespace

TextObj::TextObj(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent) noexcept
    : FieldObj(build, Type::Text, std::move(dictionary), parent)
{
}

std::int64_t TextObj::maxLength() const noexcept
{
    const Ref<Number> number = dictionary().findAsNumber(FormKeys::maxLength, true);
    return number ? number->intPart() : 0;
}

bool TextObj::setValue(Ref<String> text) noexcept
{
    if (text && !fits(*text, maxLength()))
        return refuse(ErrInvalidArgument);
    return dictionary().set(FormKeys::value, std::move(text));
}

Ref<String> TextObj::value() const noexcept
{
    return dictionary().findAsString(FormKeys::value, true);
}

Ref<String> TextObj::defaultValue() const noexcept
{
    return dictionary().findAsString(FormKeys::defaultValue, true);
}

} // namespace Libraries::Files::PDF
