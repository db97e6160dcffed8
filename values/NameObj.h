#pragma once

#include <values/Name.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

class NameObj final : public ValueObj, public virtual Name {
public:
    // Without the tests of `Name::create`.
    explicit NameObj(Ref<::String> value) noexcept : ValueObj(kind), _value(std::move(value)) {}

    // Name
    Ref<::String> value() const noexcept override { return _value; }

    // The text, which must not be null.
    const ::String& text() const noexcept { return *_value; }

private:
    const Ref<::String> _value;
};

} // namespace Libraries::Files::PDF
