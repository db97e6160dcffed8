#include "Walk.h"

#include <tests/support/TestStripe.h>

#include <forms/Button.h>
#include <forms/Choice.h>
#include <forms/Text.h>

namespace Fuzz {

namespace {

void walkPages(const Ref<PDF::Document>& document)
{
    ask("getCatalog", {ErrNoRootRef, ErrNoRoot, ErrBadCatalog}, [&] { return document->getCatalog(); });
    const Ref<PDF::Object> root
        = ask("getPageCatalog", {ErrNoRoot, ErrBadCatalog, ErrBadPages}, [&] { return document->getPageCatalog(); });
    Error::set(0);
    const auto pages = document->getPages();
    require(root || (pages.empty() && Error::get() == ErrBadPages), "no pages without the root of their tree");
    for (const Ref<PDF::Object>& page : pages)
        ask("valueAsDict", {ErrBadObject, ErrUnresolved}, [&] { return document->valueAsDict(page->value()); });
}

// Asks for an entry by each of the kinds that it might have.
void findAll(const Ref<PDF::Dictionary>& dictionary, const Ref<::String>& key)
{
    const Ref<PDF::Value> value = dictionary->find(key);
    require(bool(value), "a key has a value");
    int kinds = 0;
    const auto find = [&](auto operation) {
        kinds += bool(ask("find", {ErrWrongType}, [&] { return (*dictionary.*operation)(key, kinds % 2 == 0); }));
    };
    find(&PDF::Dictionary::findAsObjectRef);
    find(&PDF::Dictionary::findAsArray);
    find(&PDF::Dictionary::findAsDictionary);
    find(&PDF::Dictionary::findAsName);
    find(&PDF::Dictionary::findAsNumber);
    find(&PDF::Dictionary::findAsString);
    const bool hasAccessor = value->type() != PDF::Value::Type::Boolean && value->type() != PDF::Value::Type::Null;
    require(kinds == hasAccessor, "a value is of one kind");
}

// The same of an element.
void getAll(const Ref<PDF::Array>& array, std::uint64_t index)
{
    ask("get", {ErrWrongType}, [&] { return array->getAsObjectRef(index); });
    ask("get", {ErrWrongType}, [&] { return array->getAsName(index); });
    ask("get", {ErrWrongType}, [&] { return array->getAsString(index); });
}

void walkObjects(const Ref<PDF::Document>& document)
{
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document)) {
        const Ref<PDF::Value> value = object->value();
        require(value && object->valueType() == value->type(), "an object that was opened has a value");
        require(!value->changed(), "an object that was opened hasn't changed");
        require(value->equal(value) != (value->type() == PDF::Value::Type::Stream), "a value equals itself");
        require(document->object(make<PDF::ObjectRefObj>(object->id(), object->generation())) == object,
            "an object is found by its numbers");
        require(object->asText() && value->asText(), "an object has a text");
    }
    visitValues(document, [&document](const Ref<PDF::Value>& value) {
        if (const Ref<PDF::ObjectRef> reference = PDF::valueAs<PDF::ObjectRef>(value))
            ask("object", {ErrNotFound}, [&] { return document->object(reference); });
        if (const Ref<PDF::Dictionary> dictionary = PDF::valueAs<PDF::Dictionary>(value)) {
            const auto keys = dictionary->keys();
            for (const Ref<::String>& key : *keys)
                findAll(dictionary, key);
        }
        if (const Ref<PDF::Array> array = PDF::valueAs<PDF::Array>(value))
            for (std::uint64_t i = 0; i < array->size(); ++i)
                getAll(array, i);
    });
}

// The first call gives the decoded data, all later ones the stored.
void walkStream(const Ref<PDF::Document>& document, const Ref<PDF::StreamObj>& stream, std::string_view file,
    Allowance& allowance)
{
    const auto stored = storedIn(file, document, stream);
    const bool hasFilter = bool(stream->dict()->find(::String::create("Filter")));
    const Inflated inflation = stored && isFlate(stream) ? inflated(*stored, Allowance::mostElements)
                                                         : Inflated{Inflated::End::Whole, {}};
    const std::uint64_t decodedSize = hasFilter ? inflation.bytes.size() : stored ? stored->size() : 0;
    if (inflation.end == Inflated::End::TooLong || !allowance.hasElements(decodedSize + (stored ? stored->size() : 0)))
        return;
    const Ref<Interfaces::Stripe> decoded = ask("the decoding of a stream",
        {ErrOutOfRange, ErrBadFilter, ErrBadStreamLength, ErrStreamConvert},
        [&] { return document->streamData(stream, true); });
    const bool isDecodable = stored && (!hasFilter || isFlate(stream)) && inflation.end == Inflated::End::Whole;
    require(bool(decoded) == isDecodable, "data is decoded unless it is damaged, or its filter unknown");
    if (decoded)
        require(Tests::bytesOf(decoded) == (hasFilter ? inflation.bytes : *stored), "data is decoded as it was made");
    const Ref<Interfaces::Stripe> held = ask("the stored data of a stream", {ErrOutOfRange, ErrBadStreamLength},
        [&] { return document->streamData(stream, false); });
    require(bool(held) == stored.has_value(), "stored data is had when its place and length are in the file");
    if (held)
        require(Tests::bytesOf(held) == *stored, "stored data is what stands in the file");
}

void collect(const Ref<PDF::Field>& field, std::vector<Ref<PDF::Field>>& fields)
{
    fields.push_back(field);
    for (std::uint64_t i = 0; i < field->childCount(); ++i)
        collect(field->child(i), fields);
}

constexpr std::initializer_list<std::uint32_t> noEntry = {0, ErrNotAvailable};
constexpr std::initializer_list<std::uint32_t> noEntryOfKind = {ErrNotAvailable, ErrWrongType};

// What every field answers to, and what fields of its kind do.
void walkField(const Ref<PDF::Field>& field)
{
    ask("name", noEntry, [&] { return field->name(); });
    ask("alternateName", noEntry, [&] { return field->alternateName(); });
    ask("mappingName", noEntry, [&] { return field->mappingName(); });
    ask("defaultResources", noEntry, [&] { return field->defaultResources(); });
    ask("defaultAppearance", noEntry, [&] { return field->defaultAppearance(); });
    ask("appearance", {ErrNotAvailable}, [&] { return field->appearance(); });
    require(field->quadding() <= PDF::Field::Quadding::Right, "a quadding is one of the four");
    field->flags();
    ask("child", {ErrOutOfRange}, [&] { return field->child(field->childCount()); });
    require(field->childCount() == 0 || field->child(0)->parent() == field, "a field is the parent of its children");
    ask("fieldByName", {ErrNoEntry}, [&] { return field->fieldByName(::String::create("0")); });
    if (const auto text = field.cast<PDF::Fields::Text>()) {
        text->maxLength();
        ask("value", noEntryOfKind, [&] { return text->value(); });
        ask("defaultValue", noEntryOfKind, [&] { return text->defaultValue(); });
    } else if (const auto choice = field.cast<PDF::Fields::Choice>()) {
        ask("value", noEntryOfKind, [&] { return choice->value(); });
        ask("options", noEntryOfKind, [&] { return choice->options(); });
        ask("selectedIndices", noEntryOfKind, [&] { return choice->selectedIndices(); });
    } else if (const auto button = field.cast<PDF::Fields::Button>()) {
        ask("value", noEntryOfKind, [&] { return button->value(); });
        ask("appearanceState", noEntryOfKind, [&] { return button->appearanceState(); });
        for (const Ref<PDF::Name>& state : button->states())
            require(bool(state), "a state has a name");
    }
}

void walkForm(const Ref<PDF::Document>& document)
{
    const auto find = [&] {
        return ask("form", {ErrNoEntry, ErrBadCast, ErrFormCreate, ErrNoRoot}, [&] { return document->form(); });
    };
    const Ref<PDF::Form> form = find();
    require(find() == form, "the form is the same at each call");
    if (!form)
        return;
    form->needAppearances();
    ask("quadding", noEntry, [&] { return form->quadding(); });
    ask("defaultAppearance", noEntry, [&] { return form->defaultAppearance(); });
    ask("defaultResources", noEntry, [&] { return form->defaultResources(); });
    ask("calculationOrder", noEntry, [&] { return form->calculationOrder(); });
    for (const Ref<PDF::Field>& field : fieldsOf(document))
        walkField(field);
    for (std::uint64_t i = 0; i < std::min<std::uint64_t>(form->fieldCount(), 50); ++i) {
        const Ref<PDF::String> name = form->field(i)->name();
        if (!name || !name->asText())
            continue;
        ask("fieldByName", {ErrInvalidArgument, ErrNoEntry}, [&] { return form->fieldByName(name->asText()); });
        ask("fieldByPath", {ErrInvalidArgument, ErrNoEntry}, [&] { return form->fieldByPath(name->asText()); });
    }
}

} // namespace

std::vector<Ref<PDF::Field>> fieldsOf(const Ref<PDF::Document>& document) noexcept
{
    std::vector<Ref<PDF::Field>> fields;
    const Ref<PDF::Form> form = document->form();
    for (std::uint64_t i = 0; form && i < form->fieldCount(); ++i)
        collect(form->field(i), fields);
    return fields;
}

void walk(const Ref<PDF::Document>& document, std::string_view file, Allowance& allowance) noexcept
{
    require(document->version() != 0 && document->trailer(), "a document that was opened has a version and a trailer");
    require(!document->changed(), "a document that was opened hasn't changed");
    walkPages(document);
    walkObjects(document);
    for (const Ref<PDF::StreamObj>& stream : streamsOf(document))
        walkStream(document, stream, file, allowance);
    if (allowance.hasElements(elementsToWrite(document, file)))
        for (const Ref<PDF::Object>& object : PDF::objectsOf(document))
            ask("writtenText", {ErrInvalidArgument}, [&] { return PDF::writtenText(document, object->value()); });
    walkForm(document);
    require(!document->changed(), "looking at a document is no change");
}

} // namespace Fuzz
