#pragma once

#include <host/files/FileStripe.h>

#include <string>
#include <string_view>
#include <vector>

namespace Import {

// A classic file that is made of another: text of its own, and runs of bytes that stay in the original. The text is in
// memory or, where there is much of it, in a file without a name.
class Image {
public:
    // A part of it. The parts follow each other.
    struct Part {
        std::uint64_t start;  // in the image
        std::uint64_t length; // in bytes
        bool isText;          // of the image's own text; else bytes of the original
        std::uint64_t offset; // in the text, or in the original
    };

    // No more than `limit` bytes in all.
    Image(Ref<Host::FileStripe> original, std::uint64_t limit);

    // In bytes; the text alone, and all.
    std::uint64_t textSize() const noexcept { return _written + _text.size(); }
    std::uint64_t size() const noexcept { return _originalSize + textSize(); }

    // What is added throws `Stop` when the limit is reached, and when text can't be written.
    void add(std::string_view text);
    // The text, to be added to directly; `settle` afterwards, or every now and then.
    std::string& text() noexcept { return _text; }
    void settle();
    void addOriginal(std::uint64_t offset, std::uint64_t length);
    // Puts other text of the same length where some was added.
    void replaceText(std::uint64_t offset, std::string_view text);

    // The image as a stripe for `Document::create`, which has the original then. Nothing is left here.
    Ref<Interfaces::Stripe> toStripe();

private:
    void endText();
    void writeOut();

    const Ref<Host::FileStripe> _original;
    const std::uint64_t _limit;
    std::vector<Part> _parts;
    std::uint64_t _partText = 0;     // where the text after the parts begins
    std::string _text;               // the text that isn't in the file
    Host::Descriptor _file;          // none while all text is in memory
    std::uint64_t _written = 0;      // bytes of text in the file
    std::uint64_t _originalSize = 0; // of all parts of the original
};

} // namespace Import
