#include <values/ObjectObj.h>

#include <platform/Reporter.h>
#include <values/Array.h>
#include <values/Dictionary.h>
#include <values/ReferenceText.h>
#include <values/Stream.h>

namespace Libraries::Files::PDF {

namespace {

const Reporter report("PDF");

// How an accessor's failures are told.
struct Wording {
    const char* expected;
    const char* got;
    const char* castFailure;
};

// The cast failure of arrays deliberately says Dictionary: callers know the line so.
constexpr Wording dictionaryWording{
    "Expected value of type ", ", but got one of type ", "Failed to cast value to Dictionary"};
constexpr Wording arrayWording = dictionaryWording;
constexpr Wording streamWording{
    "Unexpected type of value; expected = ", ", got = ", "Failed to cast value to Stream"};

template <class Kind>
Ref<Kind> valueOf(const Object& object, const Wording& wording)
{
    const Ref<Value> value = object.value();
    if (!value)
        return report.fail(ErrNoValue, "Object has no valid value");
    if (value->type() != Kind::kind)
        return report.fail(ErrWrongType, wording.expected, Kind::kind, wording.got, value->type());
    Ref<Kind> result = value.cast<Kind>();
    if (!result)
        return report.fail(ErrWrongType, wording.castFailure);
    return result;
}

} // namespace

Ref<::String> Object::asText() const noexcept
{
    return referenceText(id(), generation());
}

Value::Type Object::valueType() const noexcept
{
    if (const Ref<Value> held = value())
        return held->type();
    report.fail(ErrNoValue, "Object has no valid value");
    return Value::Type::Invalid;
}

Ref<Dictionary> Object::valueAsDictionary() const noexcept
{
    return valueOf<Dictionary>(*this, dictionaryWording);
}

Ref<Array> Object::valueAsArray() const noexcept
{
    return valueOf<Array>(*this, arrayWording);
}

Ref<Stream> Object::valueAsStream() const noexcept
{
    return valueOf<Stream>(*this, streamWording);
}

} // namespace Libraries::Files::PDF
