#include <values/BooleanObj.h>

namespace Libraries::Files::PDF {

Ref<::String> Boolean::asText() const noexcept
{
    return ::String::create(value() ? "true" : "false");
}

bool Boolean::equal(Ref<Value> other) const noexcept
{
    const Ref<Boolean> boolean = valueAs<Boolean>(other);
    return boolean && value() == boolean->value();
}

} // namespace Libraries::Files::PDF
