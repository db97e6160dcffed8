#include <document/Resolve.h>

#include <document/Following.h>
#include <document/Report.h>
#include <values/Object.h>
#include <values/ObjectRef.h>

namespace Libraries::Files::PDF {

Ref<Value> resolve(const Document& document, const Ref<Value>& value) noexcept
{
    Ref<ObjectRef> reference = valueAs<ObjectRef>(value);
    if (!reference)
        return value;
    const Ref<Object> object = document.object(std::move(reference));
    return object ? object->value() : nullptr;
}

bool findEntry(const Dictionary& dictionary, const Ref<::String>& key, Ref<Value>& value) noexcept
{
    value = dictionary.find(key);
    return value || Error::get() == ErrNotAvailable;
}

Ref<Value> follow(const Document& document, const Ref<Value>& value, const FollowingFailures& failures) noexcept
{
    Ref<ObjectRef> reference = valueAs<ObjectRef>(value);
    if (!reference)
        return value;
    const Ref<Object> object = document.object(std::move(reference));
    if (!object)
        return report.fail(failures.noObject.code, failures.noObject.line);
    Ref<Value> held = object->value();
    if (!held)
        return report.fail(failures.noValue.code, failures.noValue.line);
    return held;
}

} // namespace Libraries::Files::PDF
