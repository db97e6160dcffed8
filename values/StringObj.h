#pragma once

#include <values/String.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

class StringObj final : public ValueObj, public virtual String {
public:
    // The forms as they are, without the conversion of `String::create`.
    explicit StringObj(Ref<::String> text) noexcept : ValueObj(kind), _text(std::move(text)) {}
    explicit StringObj(Ref<TConstArray<std::uint8_t>> bytes) noexcept : ValueObj(kind), _bytes(std::move(bytes)) {}

    // String
    Ref<::String> value() const noexcept override { return _text; }
    Ref<TConstArray<std::uint8_t>> data() const noexcept override { return _bytes; }

private:
    const Ref<::String> _text;
    const Ref<TConstArray<std::uint8_t>> _bytes;
};

} // namespace Libraries::Files::PDF
