#include <text/SystemFonts.h>

namespace Text {

void SystemFonts::load() noexcept
{
    _isLoaded = true;
    const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> pattern(FcPatternCreate(), &FcPatternDestroy);
    if (!pattern || !FcInit())
        return;
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>("sans-serif"));
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    _fonts.reset(FcFontSort(nullptr, pattern.get(), FcFalse, nullptr, &result), [](FcFontSet* fonts) {
        if (fonts)
            FcFontSetDestroy(fonts);
    });
}

std::optional<SystemFonts::Found> SystemFonts::find(char32_t character, std::size_t first) noexcept
{
    if (!_isLoaded)
        load();
    for (std::size_t i = first; _fonts && i < std::size_t(_fonts->nfont); ++i) {
        FcPattern* const font = _fonts->fonts[i];
        FcCharSet* characters = nullptr;
        FcChar8* path = nullptr;
        int index = 0;
        if (FcPatternGetCharSet(font, FC_CHARSET, 0, &characters) == FcResultMatch
            && FcCharSetHasChar(characters, character) && FcPatternGetString(font, FC_FILE, 0, &path) == FcResultMatch
            && FcPatternGetInteger(font, FC_INDEX, 0, &index) == FcResultMatch && (index >> 16) == 0)
            return Found{{reinterpret_cast<const char*>(path), static_cast<unsigned>(index)}, i};
    }
    return {};
}

} // namespace Text
