#pragma once

#include <platform/String.h>
#include <platform/TVector.h>

// Operations on texts. None sets a code.
class EXPORTED StringUtil {
public:
    // The pieces between the separators, empty ones dropped; null when the text is null. With a
    // `limit` other than 0 the last of so many pieces holds all of the rest, separators included.
    static Ref<TVector<Ref<String>>> split(const Ref<String>& text, unsigned int separator, std::size_t limit) noexcept;
    // The text without the characters up to 32 at both ends; null when the text is null.
    static Ref<String> trim(const Ref<String>& text) noexcept;
};
