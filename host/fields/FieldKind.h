#pragma once

#include <platform/Export.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace Host {

// The kinds of fields that users distinguish, by `FT` and `Ff`.
enum class FieldKind {
    Text,
    CheckBox,
    RadioButtons,
    PushButton,
    ListBox,
    ComboBox,
    Signature,
    Unknown, // no FT, neither its own nor inherited, or one that the standard doesn't have
};
// Whether fields of this kind take a value.
constexpr bool isFillable(FieldKind kind) noexcept
{
    return kind != FieldKind::PushButton && kind != FieldKind::Signature && kind != FieldKind::Unknown;
}
// "text", "check box", "radio buttons" ...
EXPORTED std::string_view kindLabel(FieldKind kind) noexcept;

// The flags that are set and mean something for the kind: "read-only", "required", "multiline" ...
EXPORTED std::vector<std::string_view> flagLabels(FieldKind kind, std::uint32_t flags) noexcept;

} // namespace Host
