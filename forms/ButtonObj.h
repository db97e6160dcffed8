#pragma once

#include <forms/Button.h>
#include <forms/FieldObj.h>

namespace Libraries::Files::PDF {

class ButtonObj final : public FieldObj, public virtual Fields::Button {
public:
    ButtonObj(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent) noexcept;

    // Button
    bool setValue(Ref<Name> name) noexcept override;
    Ref<Name> value() const noexcept override;
    Ref<Name> defaultValue() const noexcept override;
    bool setAppearanceState(Ref<Name> name) noexcept override;
    Ref<Name> appearanceState() const noexcept override;
    Ref<Array> options() const noexcept override;
    StackVector<Ref<Name>> states() const noexcept override;

private:
    bool setState(const Ref<::String>& key, Ref<Name> name) noexcept;
    StackVector<Ref<Name>> statesOfOptions(const Array& list) const noexcept;
    StackVector<Ref<Name>> statesOfAppearance() const noexcept;
};

} // namespace Libraries::Files::PDF
