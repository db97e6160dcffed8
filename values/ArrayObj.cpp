#include <values/ArrayObj.h>

#include <platform/StringPrinter.h>
#include <values/TypedAccess.h>

namespace Libraries::Files::PDF {

namespace {

const Reporter report("PDF");

} // namespace

Ref<Array> Array::create(const std::vector<Ref<Value>>& elements) noexcept
{
    return make<ArrayObj>(ArrayObj::Elements(elements.begin(), elements.end()));
}

template <class Kind>
Ref<Kind> Array::getAs(std::uint64_t index) const noexcept
{
    if (const Ref<Value> value = get(index))
        return castValue<Kind>(report, value);
    const std::uint32_t code = Error::get();
    return report.fail(code, "Index out of range in array: ", index);
}

Ref<ObjectRef> Array::getAsObjectRef(std::uint64_t index) const noexcept
{
    return getAs<ObjectRef>(index);
}

Ref<Name> Array::getAsName(std::uint64_t index) const noexcept
{
    return getAs<Name>(index);
}

Ref<String> Array::getAsString(std::uint64_t index) const noexcept
{
    return getAs<String>(index);
}

// Deliberately without separators: the text serves logs, and only a missing element brings a blank.
Ref<::String> Array::asText() const noexcept
{
    const Ref<StringPrinter> printer = StringPrinter::create();
    printer->print("[");
    for (std::uint64_t i = 0; i < size(); ++i) {
        if (const Ref<Value> value = get(i))
            printer->print(value->asText());
        else
            printer->print(" null");
    }
    printer->print(" ]");
    return printer->take();
}

bool Array::equal(Ref<Value> other) const noexcept
{
    const Ref<Array> array = valueAs<Array>(other);
    if (!array || size() != array->size())
        return false;
    for (std::uint64_t i = 0; i < size(); ++i)
        if (const Ref<Value> value = get(i); !value || !value->equal(array->get(i)))
            return false;
    return true;
}

Ref<Value> ArrayObj::get(std::uint64_t index) const noexcept
{
    return index < _elements.size() ? _elements[index] : nullptr;
}

bool ArrayObj::append(Ref<Value> value) noexcept
{
    if (!value)
        return refuse(ErrNullArgument);
    _elements.push_back(std::move(value));
    return true;
}

} // namespace Libraries::Files::PDF
