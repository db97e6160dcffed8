#include <document/Resolve.h>

#include <values/Object.h>
#include <values/ObjectRef.h>

namespace Libraries::Files::PDF {

Ref<Value> resolve(const Document& document, const Ref<Value>& value) noexcept
{
    Ref<ObjectRef> reference = valueAs<ObjectRef>(value);
    if (!reference)
        return value;
    const Ref<Object> object = document.object(std::move(reference));
    return object ? object->value() : nullptr;
}

} // namespace Libraries::Files::PDF
