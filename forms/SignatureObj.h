#pragma once

#include <forms/FieldObj.h>
#include <forms/Signature.h>

namespace Libraries::Files::PDF {

class SignatureObj final : public FieldObj, public virtual Fields::Signature {
public:
    SignatureObj(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent) noexcept;
};

} // namespace Libraries::Files::PDF
