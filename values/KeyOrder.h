#pragma once

#include <platform/String.h>

namespace Libraries::Files::PDF {

// The order in which dictionaries hold and walk their keys, for containers of keys that are not null. A key can be
// looked up by a text that is in no `Ref`.
struct KeyOrder {
    using is_transparent = void;
    bool operator()(const Ref<::String>& a, const Ref<::String>& b) const noexcept { return a->compare(*b) < 0; }
    bool operator()(const Ref<::String>& a, const ::String& b) const noexcept { return a->compare(b) < 0; }
    bool operator()(const ::String& a, const Ref<::String>& b) const noexcept { return a.compare(*b) < 0; }
};

} // namespace Libraries::Files::PDF
