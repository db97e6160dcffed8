// Makes a document of a text in memory, with the library alone, and counts its pages.

#include <document/Document.h>
#include <forms/Form.h>
#include <platform/MemoryStream.h>
#include <stripes/ElementSizeStripe.h>
#include <values/Dictionary.h>
#include <values/NumberObj.h>
#include <values/Object.h>
#include <values/String.h>

#include <cstdio>
#include <string>

using namespace Libraries::Files;

namespace {

// Puts a dictionary of the program's own on the page, and finds in it what was put there.
bool mark(const Ref<PDF::Object>& page)
{
    const Ref<::String> key = ::String::create("Mark");
    const Ref<PDF::Dictionary> made = PDF::Dictionary::create();
    if (!made->set(key, PDF::String::create(::String::create("seen")))
        || !page->valueAsDictionary()->set(key, made))
        return false;
    const Ref<PDF::Dictionary> found = page->valueAsDictionary()->findAsDictionary(key, false);
    const Ref<PDF::String> text = found ? found->findAsString(key, false) : nullptr;
    return text && text->PDF::String::value()->equals("seen");
}

} // namespace

int main()
{
    const std::string text = "%PDF-1.4\n"
                             "1 0 obj\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n"
                             "2 0 obj\n<< /Type /Pages /Kids [ 3 0 R ] /Count 1 >>\nendobj\n"
                             "3 0 obj\n<< /Type /Page /Parent 2 0 R >>\nendobj\n"
                             "xref\n0 4\n0000000000 65535 f \n0000000009 00000 n \n0000000058 00000 n \n"
                             "0000000117 00000 n \ntrailer\n<< /Root 1 0 R /Size 4 >>\nstartxref\n";
    const std::string file = text + std::to_string(text.find("xref")) + "\n%%EOF\n";
    const Ref<MemoryStream> bytes = MemoryStream::create(0, 1);
    for (const char c : file)
        bytes->append(std::u32string(1, static_cast<unsigned char>(c)).data(), sizeof(char32_t));
    bytes->seek(0);
    const Ref<PDF::Document> document = PDF::Document::create(Libraries::Adapters::ElementSize::Stripe::create(bytes));
    if (!document) {
        std::printf("refused: %X\n", Error::get());
        return 1;
    }
    const auto pages = document->getPages();
    const bool isSet = pages.size() == 1
        && pages[0]->valueAsDictionary()->set(String::create("Rotate"), make<PDF::NumberObj>(90, 0))
        && mark(pages[0]);
    std::printf("%zu page, %s, %s\n", pages.size(), document->changed() ? "changed" : "unchanged",
        document->form() ? "a form" : "no form");
    return isSet ? 0 : 1;
}
