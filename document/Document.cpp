#include <document/Document.h>

#include <document/DocumentObj.h>
#include <document/Keys.h>
#include <document/Lookup.h>
#include <document/Report.h>
#include <values/Dictionary.h>
#include <values/Name.h>
#include <values/ObjectRef.h>

namespace Libraries::Files::PDF {

namespace {

// What the messages of a typed dictionary say.
struct TypeWording {
    const char* type;
    const char* missing;
    const char* wrong;
};

constexpr TypeWording catalogWording{
    .type = "Catalog",
    .missing = "Root object has no valid Type entry",
    .wrong = "Root object Type entry is not of type Catalog. Got: ",
};
constexpr TypeWording pagesWording{
    .type = "Pages",
    .missing = "Pages object has no valid Type entry",
    .wrong = "Pages object Type entry is not of type Pages. Got: ",
};

// Whether the dictionary's `Type` is the one expected.
bool hasType(const Ref<Dictionary>& dictionary, const TypeWording& wording, std::uint32_t code)
{
    const Ref<Name> type = dictionary->findAsName(Keys::type, false);
    const Ref<::String> text = type ? type->value() : nullptr;
    if (!text)
        return report.fail(code, wording.missing);
    if (!text->equals(wording.type))
        return report.fail(code, wording.wrong, text);
    return true;
}

} // namespace

Ref<Document> Document::create(Ref<Interfaces::Stripe> stripe) noexcept
{
    if (!stripe)
        return refuse(ErrNullArgument);
    if (stripe->elementSize() != sizeof(std::uint32_t))
        return refuse(ErrInvalidArgument);
    FileContent content;
    if (!FileReader(*stripe).read(content))
        return nullptr;
    return make<DocumentObj>(std::move(stripe), std::move(content));
}

Ref<Object> Document::getCatalog() const noexcept
{
    const Ref<Dictionary> dictionary = trailer();
    if (!dictionary)
        return report.fail(ErrNoTrailerDict, "Document has no root dictionary");
    const Ref<ObjectRef> reference = dictionary->findAsObjectRef(Keys::root, false);
    if (!reference)
        return report.fail(ErrNoRootRef, "Failed to retrieve root object reference");
    Ref<Object> root = object(reference);
    if (!root)
        return report.fail(ErrNoRoot, "Document has no root object");
    const Ref<Dictionary> catalog = root->valueAsDictionary();
    if (!catalog)
        return report.fail(ErrNoRoot, "Failed to retrieve root object dictionary");
    return hasType(catalog, catalogWording, ErrBadCatalog) ? root : nullptr;
}

Ref<Object> Document::getPageCatalog() const noexcept
{
    const Ref<Object> root = getCatalog();
    if (!root)
        return report.fail(ErrNoRoot, "Document has no root object");
    const Ref<Dictionary> catalog = root->valueAsDictionary();
    if (!catalog)
        return report.fail(ErrNoRoot, "Failed to retrieve root object dictionary");
    const Ref<ObjectRef> reference = catalog->findAsObjectRef(Keys::pages, false);
    if (!reference)
        return report.fail(ErrBadCatalog, "Failed to retrieve pages object reference");
    Ref<Object> pages = object(reference);
    if (!pages)
        return report.fail(ErrBadPages, "Failed to retrieve pages object");
    const Ref<Dictionary> dictionary = pages->valueAsDictionary();
    if (!dictionary)
        return report.fail(ErrBadPages, "Failed to retrieve pages object dictionary");
    return hasType(dictionary, pagesWording, ErrBadPages) ? pages : nullptr;
}

StackVector<Ref<Object>> Document::getPages() const noexcept
{
    StackVector<Ref<Object>> pages;
    return readPages(*this, pages) ? pages : StackVector<Ref<Object>>();
}

Ref<Dictionary> Document::valueAsDict(Ref<Value> value) const noexcept
{
    if (!value)
        return refuse(ErrNullArgument);
    if (value->type() == Value::Type::ObjectRef && !valueAs<ObjectRef>(value))
        return report.fail(ErrBadCast, "Failed to object reference value to ObjectRef");
    value = follow(*this, value,
        {.noObject = {ErrUnresolved, "Failed to resolve object reference"},
            .noValue = {ErrBadObject, "Value of resolved object is NULL"}});
    if (!value)
        return nullptr;
    if (value->type() != Value::Type::Dictionary)
        return report.fail(ErrBadObject, "Invalid object type ", value->type());
    Ref<Dictionary> dictionary = value.cast<Dictionary>();
    if (!dictionary)
        return report.fail(ErrBadCast, "Failed to cast dictionary value to Dictionary");
    return dictionary;
}

} // namespace Libraries::Files::PDF
