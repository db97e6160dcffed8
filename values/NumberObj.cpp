#include <values/NumberObj.h>

#include <platform/StrConv.h>

namespace Libraries::Files::PDF {

Ref<::String> Number::asText() const noexcept
{
    return StrConv::str(intPart())->concat(".")->concat(StrConv::str(fracPart()));
}

bool Number::equal(Ref<Value> other) const noexcept
{
    const Ref<Number> number = valueAs<Number>(other);
    return number && intPart() == number->intPart() && fracPart() == number->fracPart();
}

} // namespace Libraries::Files::PDF
