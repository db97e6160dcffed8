// Uses the library in the constructors and destructors of globals. The program's own objects come first where it is
// linked, so its globals are made before any of the library's, and end after them.

#include <forms/Form.h>
#include <host/fields/Fill.h>
#include <host/files/Open.h>
#include <host/losses/Examine.h>
#include <host/saving/Save.h>
#include <platform/SysLog.h>

#include <tests/support/FormText.h>
#include <tests/support/TestFolder.h>

#include <unistd.h>

#include <cstdio>

namespace {

using namespace Tests;

void expect(bool isSo, const char* words)
{
    if (isSo)
        return;
    std::fprintf(stderr, "%s\n", words);
    ::_exit(1); // also where the status of `main` is told already
}

// Everything that has texts of its own.
void work(const TestFolder& folder, const char* when)
{
    const auto opened = Host::open(folder.path("in.pdf"));
    expect(bool(opened), when);
    expect(opened->document->getPages().size() == 1 && opened->document->form(), when);
    auto filler = Host::FormFiller::create(opened->document);
    expect(filler && !filler->fill("field", "new"), when);
    expect(bool(Host::save(*opened, folder.path("out.pdf"))), when);
    expect(bool(Host::examine(folder.path("out.pdf"))), when);
    SysLogFilter::enable("PDF", true);
    std::size_t lines = 0;
    SysLogStream::setSink([&lines](std::size_t, const Ref<String>&) { ++lines; });
    opened->document->trailer()->findAsName(String::create("Root"), false);
    SysLogStream::setSink({});
    expect(lines == 1, when);
}

struct Globals {
    const TestFolder folder;

    Globals()
    {
        folder.put("in.pdf",
            PdfText()
                .object(1, "<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [ 4 0 R ] >> >>")
                .object(2, "<< /Type /Pages /Kids [ 3 0 R ] /Count 1 >>")
                .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [ 0 0 9 9 ] >>")
                .object(4, "<< /FT /Tx /T (field) /V (old) >>"));
        work(folder, "before main");
    }
    ~Globals() { work(folder, "after main"); }
} globals;

} // namespace

int main()
{
    work(globals.folder, "in main");
}
