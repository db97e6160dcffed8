#include <document/Lookup.h>

#include <document/Keys.h>
#include <document/Report.h>
#include <values/Array.h>
#include <values/Object.h>
#include <values/ObjectRef.h>

namespace Libraries::Files::PDF {

bool findEntry(const Dictionary& dictionary, const Ref<::String>& key, Ref<Value>& value) noexcept
{
    value = dictionary.find(key);
    return value || Error::get() == ErrNotAvailable;
}

bool readPages(const Document& document, StackVector<Ref<Object>>& pages) noexcept
{
    const Ref<Object> root = document.getPageCatalog();
    if (!root)
        return report.fail(ErrBadPages, "Failed to retrieve pages object");
    const Ref<Dictionary> dictionary = root->valueAsDictionary();
    if (!dictionary)
        return report.fail(ErrBadPages, "Failed to retrieve pages object dictionary");
    const Ref<Array> kids = dictionary->findAsArray(Keys::kids, false);
    if (!kids)
        return report.fail(ErrBadPages, "Pages object has no valid Kids entry");
    for (std::uint64_t i = 0; i < kids->size(); ++i) {
        const Ref<ObjectRef> reference = kids->getAsObjectRef(i);
        if (!reference)
            return report.fail(ErrBadPages, "Failed to retrieve pages object's Kids entry object reference ", i);
        Ref<Object> page = document.object(reference);
        if (!page)
            return report.fail(ErrBadPages, "Failed to resolve page object reference entry ", i);
        pages.push_back(std::move(page));
    }
    return true;
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
