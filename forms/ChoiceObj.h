#pragma once

#include <forms/Choice.h>
#include <forms/FieldObj.h>

namespace Libraries::Files::PDF {

class ChoiceObj final : public FieldObj, public virtual Fields::Choice {
public:
    ChoiceObj(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent) noexcept;

    // Choice
    bool setValue(Ref<Value> value) noexcept override;
    Ref<Value> value() const noexcept override;
    Ref<Value> defaultValue() const noexcept override;
    Ref<Array> options() const noexcept override;
    Ref<Array> selectedIndices() const noexcept override;

private:
    bool normalise(Ref<Value>& value) const noexcept;
    bool normaliseArray(Ref<Value>& value) const noexcept;
};

} // namespace Libraries::Files::PDF
