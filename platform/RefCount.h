#pragma once

#include <platform/Export.h>

#include <cstddef>

class GcProxy;
class Object;
class String;
template <class T> class Ref;

// The root interface of every counted object, reached through a virtual base. Applications
// don't implement it: they derive from `Object` and hold objects by `Ref`.
class EXPORTED RefCount {
public:
    virtual ~RefCount() = default;

    // The control block of weak references to this object, made on the first call. The caller
    // that keeps the pointer calls `incWeakRef` on it.
    virtual GcProxy* gcproxy() noexcept = 0;
    // Adds and drops one count. The object is destroyed when `decRef` reaches zero.
    virtual void incRef() noexcept = 0;
    virtual void decRef() noexcept = 0;
    // Bracket a stretch in which the object survives a count that falls back to zero: a
    // constructor that hands a `Ref` of itself to others uses them.
    virtual void lockRef() noexcept = 0;
    virtual void unlockRef() noexcept = 0;
    // The present count; a snapshot when several threads hold the object.
    virtual std::size_t counterRef() const noexcept = 0;
    // The object itself.
    virtual Object* obj() noexcept = 0;
    // Diagnostics: the text and the verdict of one class, and of the whole object.
    virtual Ref<String> _dump() const noexcept = 0;
    virtual bool _selfTest() const noexcept = 0;
    virtual Ref<String> dump() const noexcept = 0;
    virtual bool selfTest() const noexcept = 0;
};
