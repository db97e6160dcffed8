#include <import/StreamEntries.h>

#include <platform/Limits.h>

#include <algorithm>

namespace Import {

namespace {

constexpr const char* filterKey = "/Filter";
constexpr const char* parametersKey = "/DecodeParms";

using Values = std::vector<QPDFObjectHandle>;

bool isName(QPDFObjectHandle value, const char* name)
{
    return value.isNameAndEquals(name);
}

bool isCrypt(const QPDFObjectHandle& value)
{
    return isName(value, "/Crypt");
}

bool isNullOrEmpty(QPDFObjectHandle parameters)
{
    return parameters.isNull() || (parameters.isDictionary() && parameters.getKeys().empty());
}

// Whether parameters say nothing: those of one filter, or an array with those of each. Arrays go no deeper, however
// they refer to each other.
bool saysNothing(QPDFObjectHandle parameters)
{
    if (!isFilterArray(parameters))
        return isNullOrEmpty(parameters);
    const Values all = parameters.getArrayAsVector();
    return std::all_of(all.begin(), all.end(), isNullOrEmpty);
}

QPDFObjectHandle valueOf(const ValueText::Entries& entries, const char* key)
{
    const auto found = entries.find(key);
    return found == entries.end() ? QPDFObjectHandle::newNull() : found->second;
}

void removeCrypt(ValueText::Entries& entries)
{
    QPDFObjectHandle filter = valueOf(entries, filterKey);
    QPDFObjectHandle parameters = valueOf(entries, parametersKey);
    if (isCrypt(filter)) {
        entries.erase(filterKey);
        entries.erase(parametersKey);
    }
    if (!isFilterArray(filter))
        return;
    const Values filters = filter.getArrayAsVector();
    if (std::none_of(filters.begin(), filters.end(), isCrypt))
        return;
    const Values all = isFilterArray(parameters) ? parameters.getArrayAsVector() : Values();
    Values keptFilters;
    Values keptParameters;
    for (std::size_t i = 0; i < filters.size(); ++i) {
        if (isCrypt(filters[i]))
            continue;
        keptFilters.push_back(filters[i]);
        keptParameters.push_back(i < all.size() ? all[i] : QPDFObjectHandle::newNull());
    }
    entries[filterKey] = QPDFObjectHandle::newArray(keptFilters);
    entries[parametersKey] = QPDFObjectHandle::newArray(keptParameters);
    if (keptFilters.empty())
        entries.erase(filterKey);
    if (saysNothing(entries[parametersKey]))
        entries.erase(parametersKey);
}

} // namespace

bool isFilterArray(QPDFObjectHandle value)
{
    return value.isArray() && value.getArrayNItems() <= int(::Limits::maxFilters);
}

void simplifyFilters(ValueText::Entries& entries)
{
    if (entries.count(filterKey) == 0)
        return;
    removeCrypt(entries);
    QPDFObjectHandle filter = valueOf(entries, filterKey);
    if (filter.isIndirect() || !filter.isArray() || filter.getArrayNItems() != 1)
        return;
    QPDFObjectHandle only = filter.getArrayItem(0);
    if (only.isIndirect() || !only.isName() || only.getName() == "/" || !saysNothing(valueOf(entries, parametersKey)))
        return;
    entries[filterKey] = only;
    entries.erase(parametersKey);
}

} // namespace Import
