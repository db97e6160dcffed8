#include <host/fields/FieldKind.h>

#include <forms/Field.h>

namespace Host {

namespace {

using Libraries::Files::PDF::Field;

constexpr unsigned bit(FieldKind kind)
{
    return 1u << static_cast<unsigned>(kind);
}
constexpr unsigned texts = bit(FieldKind::Text);
constexpr unsigned radios = bit(FieldKind::RadioButtons);
constexpr unsigned combos = bit(FieldKind::ComboBox);
constexpr unsigned choices = combos | bit(FieldKind::ListBox);
constexpr unsigned all = ~0u;

constexpr struct {
    std::uint32_t flag;
    unsigned kinds; // for which it means this
    std::string_view label;
} flagTable[] = {
    {Field::ReadOnly, all, "read-only"},
    {Field::Required, all, "required"},
    {Field::NoExport, all, "no-export"},
    {Field::NoToggleToOff, radios, "no-toggle-to-off"},
    {Field::RadiosInUnison, radios, "in-unison"},
    {Field::Multiline, texts, "multiline"},
    {Field::Password, texts, "password"},
    {Field::FileSelect, texts, "file-select"},
    {Field::DoNotScroll, texts, "do-not-scroll"},
    {Field::Comb, texts, "comb"},
    {Field::RichText, texts, "rich-text"},
    {Field::Edit, combos, "editable"},
    {Field::Sort, choices, "sorted"},
    {Field::MultiSelect, choices, "multi-select"},
    {Field::CommitOnSelectionChange, choices, "commit-on-change"},
    {Field::DoNotSpellCheck, texts | choices, "do-not-spell-check"},
};

} // namespace

std::string_view kindLabel(FieldKind kind) noexcept
{
    switch (kind) {
    case FieldKind::Text: return "text";
    case FieldKind::CheckBox: return "check box";
    case FieldKind::RadioButtons: return "radio buttons";
    case FieldKind::PushButton: return "push button";
    case FieldKind::ListBox: return "list box";
    case FieldKind::ComboBox: return "combo box";
    case FieldKind::Signature: return "signature";
    case FieldKind::Unknown: break;
    }
    return "unknown";
}

std::vector<std::string_view> flagLabels(FieldKind kind, std::uint32_t flags) noexcept
{
    std::vector<std::string_view> labels;
    for (const auto& row : flagTable)
        if ((flags & row.flag) && (row.kinds & bit(kind)))
            labels.push_back(row.label);
    return labels;
}

} // namespace Host
