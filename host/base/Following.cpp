#include <host/base/Following.h>

#include <platform/Limits.h>
#include <values/Name.h>

namespace Host {

using namespace Libraries::Files::PDF;

Ref<Value> followAll(const Document& document, Ref<Value> value) noexcept
{
    const auto isReference = [&value] { return value && value->type() == Value::Type::ObjectRef; };
    for (int i = 0; i < Limits::maxReferenceChain && isReference(); ++i)
        value = resolve(document, value);
    return isReference() ? nullptr : value;
}

Ref<Value> followEntry(const Document& document, const Dictionary& dictionary, const Ref<::String>& key) noexcept
{
    Ref<Value> value = followAll(document, dictionary.find(key));
    return value && value->type() != Value::Type::Null ? value : nullptr;
}

bool isNamed(const Ref<Value>& value, const char* name) noexcept
{
    const Ref<Name> held = valueAs<Name>(value);
    return held && held->value() && held->value()->equals(name);
}

} // namespace Host
