#pragma once

#include <values/Dictionary.h>
#include <values/ValueObj.h>

namespace Tests {

// An application's own dictionary, which may answer as no other does.
class KeysAlone final : public Libraries::Files::PDF::ValueObj, public virtual Libraries::Files::PDF::Dictionary {
public:
    explicit KeysAlone(Ref<TVector<Ref<::String>>> keys) : ValueObj(kind), _keys(std::move(keys)) {}

    Ref<TVector<Ref<::String>>> keys() const noexcept override { return _keys; }
    Ref<Libraries::Files::PDF::Value> find(Ref<::String>) const noexcept override { return nullptr; }
    bool set(Ref<::String>, Ref<Libraries::Files::PDF::Value>) noexcept override { return false; }

private:
    const Ref<TVector<Ref<::String>>> _keys;
};

} // namespace Tests
