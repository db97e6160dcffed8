#include "Check.h"

#include <host/base/Utf8.h>
#include <host/exchange/Fdf.h>
#include <platform/Limits.h>
#include <tools/FieldValues.h>
#include <tools/JsonInput.h>
#include <tools/ValueRows.h>
#include <tools/Xfdf.h>

#include <cstdint>
#include <string_view>

// Files of values, as each of their formats: the first byte says which. What is read has names and texts in UTF-8, and
// is read again from what is written of it.

namespace Fuzz {

namespace {

using Host::FieldValues;

// A form that has these values.
Host::FormFields formOf(const FieldValues& values)
{
    Host::FormFields form;
    for (const auto& [path, value] : values) {
        Host::FormField field;
        field.path = path;
        field.kind = Host::FieldKind::ListBox;
        if (const auto* text = std::get_if<std::string>(&value))
            field.value = Host::FieldTexts{*text};
        else if (const auto* texts = std::get_if<Host::FieldTexts>(&value))
            field.value = *texts;
        form.fields.push_back(std::move(field));
    }
    return form;
}

// As they are read when they were written: one text and a list of it alone are alike.
FieldValues simplified(FieldValues values)
{
    // No field has such a name, or is neither on nor off but true.
    std::erase_if(values, [](const auto& each) {
        const auto& [path, value] = each;
        return path.empty() || path.size() > Limits::maxFieldPath || std::holds_alternative<bool>(value);
    });
    for (auto& [path, value] : values)
        if (const auto* texts = std::get_if<Host::FieldTexts>(&value); texts && texts->size() == 1)
            value = Host::FieldValue(std::string(texts->front()));
    return values;
}

Host::Result<FieldValues> readCsv(std::string_view text)
{
    auto rows = Tools::ValueRows::create(Tools::sourceOf(text), ',');
    if (!rows)
        return rows.refusal();
    FieldValues first;
    for (bool isFirst = true;; isFirst = false) {
        const std::uint64_t before = rows->rowLine();
        const auto row = rows->next();
        require(rows->rowLine() >= before, "rows come in the order of their lines");
        if (row && row->empty())
            return first;
        if (row && isFirst)
            first = rows->valuesOf(*row);
    }
}

Host::Result<FieldValues> readJson(std::string_view text)
{
    const auto value = Tools::readJson(text, text.size() % 2 == 0 ? Tools::Digits::All : Tools::Digits::UnderFill);
    return value ? Tools::valuesOf(*value) : value.refusal();
}

void checkTexts(const FieldValues& values)
{
    for (const auto& [path, value] : values) {
        require(bool(Host::fromUtf8(path)), "a name is UTF-8");
        if (const auto* text = std::get_if<std::string>(&value))
            require(bool(Host::fromUtf8(*text)), "a text is UTF-8");
    }
}

void checkWriting(const FieldValues& read)
{
    const FieldValues values = simplified(read);
    const Host::FormFields form = formOf(values);
    const auto fdf = Host::readFdf(Host::writeFdf(form));
    require(fdf && *fdf == values, "what is written as FDF is read again");
    const auto json = Tools::readJson(*Tools::writeValues(form, Tools::ValueFormat::Json, ','), Tools::Digits::All);
    require(json && *Tools::valuesOf(*json) == values, "what is written as JSON is read again");
    const auto csv = readCsv(Tools::writeRow(form, ','));
    require(csv || values.empty(), "what is written as CSV is read again");
#ifdef FILES_PDF_XFDF
    FieldValues choices = values;
    for (auto& [path, value] : choices)
        if (value == Host::FieldValue(Host::FieldTexts()))
            value = Host::FieldValue("");
    if (const auto file = Tools::writeXfdf(form)) {
        const auto xfdf = Tools::readXfdf(*file);
        require(xfdf && *xfdf == choices, "what is written as XFDF is read again");
    }
#endif
}

} // namespace

} // namespace Fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using namespace Fuzz;
    if (size == 0)
        return 0;
    const std::string_view text(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    constexpr Host::Result<FieldValues> (*readers[])(std::string_view)
        = {[](std::string_view file) { return Host::readFdf(file); }, &Tools::readXfdf, &readCsv, &readJson};
    const auto values = readers[bytes[0] % std::size(readers)](text);
    if (!values) {
        require(bool(Host::fromUtf8(values.refusal().message)), "a message is UTF-8");
        return 0;
    }
    checkTexts(*values);
    checkWriting(*values);
    return 0;
}
