#pragma once

#include <host/fonts/TextEngine.h>

#include <memory>
#include <string>
#include <vector>

// Text in any script, by HarfBuzz, FriBidi and fontconfig: a library of its own, so that core and host need none of
// these.
namespace Text {

// Where the fonts come from.
struct Options {
    // Font files, OpenType or TrueType, of collections the first font. They come first, in this order.
    std::vector<std::string> fontFiles;
    // Then those that fontconfig finds, beginning with those for sans-serif text.
    bool areSystemFontsUsed = true;
};

// An engine for one thread. Refused: a font file that can't be read, or used, or must not be embedded, by its path.
EXPORTED Host::Result<std::shared_ptr<Host::TextEngine>> createEngine(const Options& options = {}) noexcept;

} // namespace Text
