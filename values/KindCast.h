#pragma once

#include <values/ArrayObj.h>
#include <values/BooleanObj.h>
#include <values/DictionaryObj.h>
#include <values/NameObj.h>
#include <values/NullObj.h>
#include <values/NumberObj.h>
#include <values/ObjectRefObj.h>
#include <values/StreamObj.h>
#include <values/StringObj.h>

#include <typeinfo>

namespace Libraries::Files::PDF {

// The class that implements the interface of a kind in all that the library makes.
template <class Kind>
struct ImplementationOf;
template <> struct ImplementationOf<Null> { using Class = NullObj; };
template <> struct ImplementationOf<Boolean> { using Class = BooleanObj; };
template <> struct ImplementationOf<Number> { using Class = NumberObj; };
template <> struct ImplementationOf<Name> { using Class = NameObj; };
template <> struct ImplementationOf<String> { using Class = StringObj; };
template <> struct ImplementationOf<ObjectRef> { using Class = ObjectRefObj; };
template <> struct ImplementationOf<Array> { using Class = ArrayObj; };
template <> struct ImplementationOf<Dictionary> { using Class = DictionaryObj; };
template <> struct ImplementationOf<Stream> { using Class = StreamObj; };

// The value as exactly this class; null when it is of any other, a derived one included. A comparison
// of types costs a fraction of a cast through virtual bases.
template <class Class>
Class* exactly(Value& value) noexcept
{
    return typeid(value) == typeid(Class) ? static_cast<Class*>(dynamic_cast<void*>(&value)) : nullptr;
}

template <class Class>
const Class* exactly(const Value& value) noexcept
{
    return exactly<Class>(const_cast<Value&>(value));
}

// The dynamic cast to the interface of a kind, with the library's own class tried first.
template <class Kind>
Kind* castKind(Value& value) noexcept
{
    if (Kind* own = exactly<typename ImplementationOf<Kind>::Class>(value))
        return own;
    return dynamic_cast<Kind*>(&value);
}

} // namespace Libraries::Files::PDF
