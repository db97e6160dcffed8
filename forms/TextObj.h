#pragma once

#include <forms/FieldObj.h>
#include <forms/Text.h>

namespace Libraries::Files::PDF {

class TextObj final : public FieldObj, public virtual Fields::Text {
public:
    TextObj(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent) noexcept;

    // Text
    std::int64_t maxLength() const noexcept override;
    bool setValue(Ref<String> text) noexcept override;
    Ref<String> value() const noexcept override;
    Ref<String> defaultValue() const noexcept override;
};

} // namespace Libraries::Files::PDF
