#pragma once

#include <fontconfig/fontconfig.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Text {

// The fonts that fontconfig knows, those for sans-serif text first. They are looked for once, at the first question.
class SystemFonts {
public:
    struct Place {
        std::string path;
        unsigned index = 0; // in a collection
    };
    // Fonts that say that they have the character: the one after `after`, by its number, which is told as well.
    struct Found {
        Place place;
        std::size_t number = 0;
    };
    std::optional<Found> find(char32_t character, std::size_t first) noexcept;

private:
    void load() noexcept;

    std::shared_ptr<FcFontSet> _fonts;
    bool _isLoaded = false;
};

} // namespace Text
