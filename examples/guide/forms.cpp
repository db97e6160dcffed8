// Lists the fields of a form, fills some, and saves.

#include <host/exchange/Fdf.h>
#include <host/fields/Fill.h>
#include <host/fields/FormFields.h>
#include <host/files/Open.h>
#include <host/saving/Save.h>

#include <cstdio>

namespace {

constexpr const char* values = "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields [ << /T (order) /V (A 7) >> ] >> >>\nendobj\n"
                            "trailer\n<< /Root 1 0 R >>\n";

void print(const Ref<Host::PDF::Document>& document)
{
    const auto form = Host::listFields(document);
    if (!form)
        return;
    for (const Host::FormField& field : form->fields)
        std::printf("%s: %s\n", field.path.c_str(), std::string(Host::kindLabel(field.kind)).c_str());
}

// Sets the values of an FDF file; the reason when one is refused.
std::optional<Host::Refusal> fillFrom(const std::string& fdf, Host::FormFiller& filler)
{
    const auto read = Host::readFdf(fdf);
    if (!read)
        return read.refusal();
    for (const auto& [path, value] : *read)
        if (const auto refusal = filler.fill(path, value))
            return refusal->withPrefix(path + ": ");
    return {};
}

// The reason when a value is refused; nothing is saved then.
std::optional<Host::Refusal> fill(const Host::OpenedFile& opened)
{
    auto filler = Host::FormFiller::create(opened.document);
    if (!filler)
        return filler.refusal();
    if (auto refusal = fillFrom(values, *filler))
        return refusal;
    if (auto refusal = filler->fill("number", "2024-0118"))
        return refusal;
    if (auto refusal = filler->fill("nobody", true))
        std::printf("refused: %s\n", refusal->message.c_str());
    for (const std::string& warning : filler->warnings())
        std::printf("warning: %s\n", warning.c_str());
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
    print(opened->document);
    return !fill(*opened) && Host::save(*opened, argv[2]) ? 0 : 1;
}
