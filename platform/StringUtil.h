#pragma once

#include <platform/String.h>
#include <platform/TVector.h>

#include <span>
#include <string_view>

// Operations on texts. None sets a code.
class EXPORTED StringUtil {
public:
    // The pieces between the separators, empty ones dropped; null when the text is null. With a
    // `limit` other than 0 the last of so many pieces holds all of the rest, separators included.
    static Ref<TVector<Ref<String>>> split(const Ref<String>& text, unsigned int separator, std::size_t limit) noexcept;
    // The same for text that is no string yet, into `pieces`, of which only as many are filled as there
    // are; returns how many pieces the text has.
    static std::size_t split(
        std::u32string_view text, char32_t separator, std::span<std::u32string_view> pieces) noexcept;
    // The text without the characters up to 32 at both ends; null when the text is null.
    static Ref<String> trim(const Ref<String>& text) noexcept;
};
