#include <values/NameObj.h>

#include <platform/Reporter.h>

namespace Libraries::Files::PDF {

Ref<Name> Name::create(Ref<::String> value) noexcept
{
    if (!value)
        return refuse(ErrNullArgument);
    if (value->isEmpty())
        return refuse(ErrInvalidArgument);
    return make<NameObj>(std::move(value));
}

Ref<::String> Name::asText() const noexcept
{
    return value();
}

bool Name::equal(Ref<Value> other) const noexcept
{
    const Ref<Name> name = valueAs<Name>(other);
    const Ref<::String> text = value();
    return name && text && text->equals(name->value());
}

} // namespace Libraries::Files::PDF
