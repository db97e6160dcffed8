#include "Check.h"
#include "Input.h"

#include <tests/support/FormText.h>

#include <document/Editing.h>
#include <host/fields/DefaultAppearance.h>
#include <host/fields/Fill.h>
#include <host/fields/FormFields.h>
#include <host/fonts/CodeMap.h>
#include <host/fonts/TextFont.h>
#include <host/fonts/TrueTypeProgram.h>
#include <host/streams/StreamBytes.h>

// The target `looks`: a form of one field, whose widget, font and data of streams are the input's, is filled and drawn.
// An input is a number of options, the length of the value and the value, and parts that zeros separate: the entries of
// the widget, those of the font, those of its descriptor, the map of its characters, and its program.

namespace Fuzz {

namespace {

using namespace Tests;

// Draws each character as the glyph of its low bits, two characters at once now and then.
class AnyEngine : public Host::TextEngine {
public:
    std::u32string missing(std::u32string_view text) noexcept override
    {
        return text.find(U'\u2603') != text.npos ? U"\u2603" : U"";
    }
    bool isRightToLeft(std::u32string_view paragraph) noexcept override { return paragraph.size() % 2 == 1; }
    std::vector<Glyph> shape(std::u32string_view line, bool isRightToLeft) noexcept override
    {
        std::vector<Glyph> glyphs;
        for (std::size_t i = 0; i < line.size(); ++i) {
            const std::size_t count = line[i] % 7 == 0 && i + 1 < line.size() ? 2 : 1;
            glyphs.push_back({line[i] % 3, line[i] & 0xFFFF, i, count, 500, 510, double(line[i] % 5), 0});
            i += count - 1;
        }
        if (isRightToLeft)
            std::reverse(glyphs.begin(), glyphs.end());
        return glyphs;
    }
    Font font(std::uint32_t font) noexcept override
    {
        Font facts;
        facts.isCompact = font == 1;
        facts.ascent = 800;
        return facts;
    }
    Host::Result<std::string> subset(std::uint32_t, const std::vector<std::uint32_t>& ids) noexcept override
    {
        return std::string(ids.size(), 'x');
    }
};

std::string takePart(std::string_view& rest)
{
    const std::size_t end = std::min(rest.find('\0'), rest.size());
    std::string part(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return part;
}

std::string formOf(std::string_view parts)
{
    const auto stream = [](const std::string& data) {
        return "<< /Length " + std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream";
    };
    const std::string widget = takePart(parts), font = takePart(parts), descriptor = takePart(parts);
    const std::string map = takePart(parts);
    return formFile("/Fields [ 3 0 R ] /DR << /Font << /F 4 0 R >> >>",
        {"<< /T (a) /FT /Tx /DA (/F 0 Tf) /Rect [ 0 0 90 20 ] " + widget + " >>",
            "<< /Type /Font /BaseFont /ABCDEF+F /FontDescriptor 5 0 R /ToUnicode 6 0 R " + font + " >>",
            "<< " + descriptor + " >>", stream(map), stream(std::string(parts))});
}

// What was drawn can be read, and nothing of it is lost when the document is written.
void look(const Ref<PDF::Document>& document)
{
    for (const auto& object : PDF::objectsOf(document))
        if (const auto stream = PDF::valueAs<PDF::Stream>(object->value()); stream && object->id() > 7)
            require(bool(Host::decoded(document, stream)), "a stream that was made can be read");
    const auto fields = Host::listFields(document);
    require(fields && !fields->fields.empty(), "a form that was filled can be read");
}

void run(std::uint8_t flags, std::string_view value, std::string_view parts)
{
    Host::DefaultAppearance::read(parts);
    const Host::CodeMap map(parts);
    if (const auto program = Host::TrueTypeProgram::read(parts))
        for (std::uint32_t code : {0u, 0x41u, 0xF041u, 0x20000u})
            program->state(program->find(Host::TrueTypeProgram::Codes::Unicode, code));
    const auto document = Tests::open(formOf(parts));
    auto filler = document ? Host::FormFiller::create(document) : Host::Result<Host::FormFiller>(Host::Refusal{});
    if (!filler)
        return;
    Host::FillOptions options;
    options.isAnyTextAllowed = (flags & 1) != 0;
    if (flags & 2)
        options.engine = [] { return Host::Result<std::shared_ptr<Host::TextEngine>>(std::make_shared<AnyEngine>()); };
    const auto fields = Host::listFields(document);
    bool isFilled = false;
    for (const auto& field : fields->fields) {
        for (const std::string& state : field.states)
            isFilled |= !filler->fill(field.path, state, options);
        for (const Host::FieldOption& option : field.options)
            isFilled |= !filler->fill(field.path, option.exported, options);
        isFilled |= !filler->fill(field.path, std::string(value), options);
        isFilled |= !filler->fill(field.path, true, options);
    }
    if (isFilled)
        look(document);
}

} // namespace

} // namespace Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    const std::uint8_t flags = input.byte();
    const std::string_view value = input.text(input.byte());
    Fuzz::run(flags, value, input.rest());
    return 0;
}
