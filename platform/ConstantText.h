#pragma once

#include <platform/String.h>

#include <atomic>

// A text that the code names, such as the key of an entry. It is made when it is first asked for, by any thread, and
// kept for good: so it is there for objects of the program that use the library before `main` or after it, in whatever
// order they come and go.
class ConstantText {
public:
    // Of a literal.
    explicit constexpr ConstantText(const char* text) noexcept : _text(text) {}

    // The text, never null.
    const Ref<String>& get() const noexcept
    {
        const Ref<String>* const made = _made.load(std::memory_order_acquire);
        return made ? *made : makeText();
    }
    operator const Ref<String>&() const noexcept { return get(); }

private:
    [[gnu::noinline, gnu::cold]] const Ref<String>& makeText() const noexcept
    {
        const auto* const fresh = new Ref<String>(String::create(_text));
        const Ref<String>* made = nullptr;
        if (_made.compare_exchange_strong(made, fresh, std::memory_order_acq_rel))
            return *fresh;
        delete fresh; // another thread was faster
        return *made;
    }

    const char* const _text;
    mutable std::atomic<const Ref<String>*> _made{nullptr};
};
