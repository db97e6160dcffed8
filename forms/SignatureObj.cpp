#include <forms/SignatureObj.h>

#include <values/Dictionary.h>

namespace Libraries::Files::PDF {

SignatureObj::SignatureObj(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent) noexcept
    : FieldObj(build, Type::Signature, std::move(dictionary), parent)
{
}

} // namespace Libraries::Files::PDF
