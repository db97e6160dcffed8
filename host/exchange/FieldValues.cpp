#include <host/exchange/FieldValues.h>

#include <unordered_set>

namespace Host {

std::vector<const FormField*> fieldsWithValues(const FormFields& form) noexcept
{
    std::unordered_set<std::string_view> paths;
    std::vector<const FormField*> result;
    for (const FormField& field : form.fields)
        if (isFillable(field.kind) && paths.insert(field.path).second)
            result.push_back(&field);
    return result;
}

} // namespace Host
