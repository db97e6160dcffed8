#include <tools/ValueRows.h>

#include <algorithm>
#include <cstring>

namespace Tools {

Host::FieldValues valuesOf(const NamedTexts& texts)
{
    Host::FieldValues values;
    for (const auto& [name, all] : texts)
        values.emplace(name, all.size() == 1 ? Host::FieldValue(all[0]) : Host::FieldValue(all));
    return values;
}

Host::Result<ValueRows> ValueRows::create(CsvReader::Source source, char separator)
{
    ValueRows rows(CsvReader(std::move(source), separator));
    auto names = rows._reader.read();
    if (!names)
        return names.refusal();
    if (names->empty())
        return Host::Refusal{Host::Reason::Missing, "has no row of names"};
    rows._names = std::move(*names);
    const auto empty = std::find(rows._names.begin(), rows._names.end(), "");
    if (empty != rows._names.end())
        return Host::Refusal{Host::Reason::BrokenRule, "line " + std::to_string(rows.rowLine()) + ": cell "
                + std::to_string(empty - rows._names.begin() + 1) + " has no name"};
    return rows;
}

Host::Result<CsvRow> ValueRows::next()
{
    auto row = _reader.read();
    if (row && !row->empty() && row->size() != _names.size())
        return Host::Refusal{Host::Reason::BrokenRule, "line " + std::to_string(rowLine()) + ": "
                + std::to_string(row->size()) + " cells for " + std::to_string(_names.size()) + " names"};
    return row;
}

Host::FieldValues ValueRows::valuesOf(const CsvRow& row) const
{
    NamedTexts texts;
    for (std::size_t i = 0; i < _names.size(); ++i)
        if (!row[i].empty())
            texts[_names[i]].push_back(row[i]);
    return Tools::valuesOf(texts);
}

CsvReader::Source sourceOf(std::string_view text)
{
    return [text](char* buffer, std::size_t size) mutable {
        const std::size_t count = std::min(size, text.size());
        std::memcpy(buffer, text.data(), count);
        text.remove_prefix(count);
        return count;
    };
}

std::string writeRow(const Host::FormFields& form, char separator)
{
    std::string names;
    std::string cells;
    std::size_t count = 0;
    const auto add = [&](const std::string& name, const std::string& text) {
        if (count++ > 0) {
            names += separator;
            cells += separator;
        }
        names += csvCell(name, separator);
        cells += csvCell(text, separator);
    };
    for (const Host::FormField* field : Host::fieldsWithValues(form)) {
        const Host::FieldTexts texts = field->value.value_or(Host::FieldTexts());
        for (const std::string& text : texts)
            add(field->path, text);
        if (texts.empty())
            add(field->path, "");
    }
    const bool isBlank = cells.empty() && count == 1; // an empty line would be no row
    return names + "\r\n" + (isBlank ? "\"\"" : cells) + "\r\n";
}

} // namespace Tools
