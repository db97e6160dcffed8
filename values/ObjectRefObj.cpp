#include <values/ObjectRefObj.h>

#include <platform/StrConv.h>
#include <values/ReferenceText.h>

namespace Libraries::Files::PDF {

Ref<::String> referenceText(std::uint32_t id, std::uint16_t generation) noexcept
{
    return StrConv::str(id)->concat(" (")->concat(StrConv::str(unsigned(generation)))->concat(")");
}

Ref<::String> ObjectRef::asText() const noexcept
{
    return referenceText(id(), generation());
}

bool ObjectRef::equal(Ref<Value> other) const noexcept
{
    const Ref<ObjectRef> reference = valueAs<ObjectRef>(other);
    return reference && id() == reference->id() && generation() == reference->generation();
}

} // namespace Libraries::Files::PDF
