#include <values/NullObj.h>

namespace Libraries::Files::PDF {

Ref<::String> Null::asText() const noexcept
{
    return ::String::create("Null");
}

bool Null::equal(Ref<Value> other) const noexcept
{
    return bool(valueAs<Null>(other));
}

} // namespace Libraries::Files::PDF
