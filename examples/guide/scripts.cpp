// Fills a field with characters that the fonts of the form don't have.

#include <host/fields/Fill.h>
#include <host/files/Open.h>
#include <host/saving/Save.h>
#include <text/Loader.h>

#include <cstdio>

namespace {

// The reason when the value is refused; nothing is saved then.
std::optional<Host::Refusal> fill(const Host::OpenedFile& opened)
{
    auto filler = Host::FormFiller::create(opened.document);
    if (!filler)
        return filler.refusal();
    Text::Options fonts; // those of the system, after files that the application names
    Host::FillOptions options;
    options.engine = [&fonts] { return Text::loadEngine(fonts); };
    if (auto refusal = filler->fill("order", "\u0141\u00F3d\u017A, \u6771\u4EAC", options))
        return refusal;
    return {};
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    auto opened = Host::open(argv[1]);
    if (!opened)
        return 1;
    if (const auto refusal = fill(*opened)) {
        std::printf("refused: %s\n", refusal->message.c_str());
        return 1;
    }
    return Host::save(*opened, argv[2]) ? 0 : 1;
}
