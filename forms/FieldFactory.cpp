#include <forms/FieldFactory.h>

#include <forms/ButtonObj.h>
#include <forms/ChoiceObj.h>
#include <forms/FormKeys.h>
#include <forms/Report.h>
#include <forms/SignatureObj.h>
#include <forms/TextObj.h>
#include <platform/Limits.h>
#include <values/Array.h>
#include <values/Dictionary.h>
#include <values/Name.h>
#include <values/Object.h>
#include <values/ObjectRef.h>

#include <algorithm>

namespace Libraries::Files::PDF {

namespace {

// Builds a field of one class.
using Maker = Ref<FieldObj> (*)(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent);

template <class Class>
Ref<FieldObj> makeField(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent)
{
    return make<Class>(build, std::move(dictionary), parent);
}

Ref<FieldObj> makeGenericField(FieldBuild& build, Ref<Dictionary> dictionary, const Ref<Field>& parent)
{
    return make<FieldObj>(build, Field::Type::Generic, std::move(dictionary), parent);
}

struct Kind {
    const char* fieldType;
    Maker maker;
};

constexpr Kind kinds[] = {
    {"Btn", makeField<ButtonObj>},
    {"Tx", makeField<TextObj>},
    {"Ch", makeField<ChoiceObj>},
    {"Sig", makeField<SignatureObj>},
};

// How to build the field that `FT` names; null, with a line, for a name that is unknown.
Maker makerOf(const Dictionary& dictionary, std::uint64_t index, const ObjectRef& reference)
{
    // The lookup is deliberately not optional: each widget without `FT` leaves its line in the log.
    const Ref<Name> name = dictionary.findAsName(FormKeys::fieldType, false);
    if (!name)
        return makeGenericField;
    const Ref<::String> text = name->value();
    for (const Kind& kind : kinds)
        if (text && text->equals(kind.fieldType))
            return kind.maker;
    formReport.line(
        "Resolved child ", index, " ( -> ", reference.asText(), " ) has unsupported field type: ", text);
    return nullptr;
}

// The dictionary that an element of `Fields` or `Kids` refers to; null with a line.
Ref<Dictionary> resolveChild(const Document& document, std::uint64_t index, const Ref<ObjectRef>& reference)
{
    const Ref<PDF::Object> object = document.object(reference);
    if (!object)
        return formReport.line("Failed to resolve child ", index, ": ", reference->asText());
    Ref<Dictionary> dictionary = object->valueAsDictionary();
    if (!dictionary)
        return formReport.line("Resolved child ", index, " ( -> ", reference->asText(), " ) is not an object: ",
            object->valueType());
    return dictionary;
}

Failure refuseChild(std::uint64_t index, const ObjectRef& reference)
{
    return formReport.line("Failed to initialize child field ", index, " ( -> ", reference.asText(), ")");
}

Ref<Field> createField(FieldBuild& build, const Array& array, std::uint64_t index, const Ref<Field>& parent)
{
    const Ref<ObjectRef> reference = array.getAsObjectRef(index);
    if (!reference)
        return formReport.line("Child field is not an object reference: ", index);
    Ref<Dictionary> dictionary = resolveChild(build.document(), index, reference);
    if (!dictionary)
        return nullptr;
    const Maker maker = makerOf(*dictionary, index, *reference);
    if (!maker)
        return nullptr;
    if (!build.enter(*dictionary))
        return refuseChild(index, *reference);
    Ref<FieldObj> field = maker(build, std::move(dictionary), parent);
    build.leave();
    if (!field->isValid())
        return refuseChild(index, *reference);
    return field;
}

} // namespace

bool FieldBuild::enter(const Dictionary& dictionary) noexcept
{
    if (_fieldsLeft == 0 || _path.size() == Limits::maxFieldLevels)
        return false;
    if (std::find(_path.begin(), _path.end(), &dictionary) != _path.end())
        return false;
    --_fieldsLeft;
    _path.push_back(&dictionary);
    return true;
}

bool createFields(
    FieldBuild& build, const Ref<Array>& array, const Ref<Field>& parent, std::vector<Ref<Field>>& out) noexcept
{
    for (std::uint64_t i = 0; array && i < array->size(); ++i) {
        Ref<Field> field = createField(build, *array, i, parent);
        if (!field)
            return false;
        out.push_back(std::move(field));
    }
    return true;
}

} // namespace Libraries::Files::PDF
