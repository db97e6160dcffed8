#include <values/KindCast.h>

namespace Libraries::Files::PDF {

template <class Kind>
Ref<Kind> valueAs(const Ref<Value>& value) noexcept
{
    return value && value->type() == Kind::kind ? Ref<Kind>(castKind<Kind>(*value)) : nullptr;
}

template EXPORTED Ref<Null> valueAs(const Ref<Value>& value) noexcept;
template EXPORTED Ref<Boolean> valueAs(const Ref<Value>& value) noexcept;
template EXPORTED Ref<Number> valueAs(const Ref<Value>& value) noexcept;
template EXPORTED Ref<Name> valueAs(const Ref<Value>& value) noexcept;
template EXPORTED Ref<String> valueAs(const Ref<Value>& value) noexcept;
template EXPORTED Ref<ObjectRef> valueAs(const Ref<Value>& value) noexcept;
template EXPORTED Ref<Array> valueAs(const Ref<Value>& value) noexcept;
template EXPORTED Ref<Dictionary> valueAs(const Ref<Value>& value) noexcept;
template EXPORTED Ref<Stream> valueAs(const Ref<Value>& value) noexcept;

} // namespace Libraries::Files::PDF
