// Reads the content of the first page, and puts a line in front of it.

#include <host/files/Open.h>
#include <host/saving/Save.h>
#include <host/streams/StreamBytes.h>
#include <platform/MemoryStream.h>
#include <values/Array.h>
#include <values/Dictionary.h>
#include <values/Object.h>
#include <values/ObjectRef.h>

#include <cstdio>

namespace {

using namespace Libraries::Files;

// The content stream of the first page; null when there is none, or more than one.
Ref<PDF::Stream> firstContent(const Ref<PDF::Document>& document)
{
    const auto pages = document->getPages();
    const auto page = pages.empty() ? nullptr : pages.front()->valueAsDictionary();
    if (!page)
        return nullptr;
    const auto object = document->object(page->findAsObjectRef(::String::create("Contents"), false));
    return object ? object->valueAsStream() : nullptr;
}

// Compressed when the stream's Filter is FlateDecode, as it is when there is no filter.
bool replace(const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream, const std::string& text)
{
    const auto data = MemoryStream::create(0, 1);
    data->append(text.data(), text.size());
    data->seek(0);
    return document->setStreamData(stream, data, true);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    auto opened = Host::open(argv[1]);
    if (!opened)
        return 1;
    const auto stream = firstContent(opened->document);
    const auto bytes = stream ? Host::decoded(opened->document, stream)
                              : Host::Refusal{Host::Reason::Missing, "no content"};
    if (!bytes)
        return std::fprintf(stderr, "%s\n", bytes.refusal().message.c_str()), 1;
    std::printf("%zu bytes of content\n", bytes->size());
    const std::string content = "0.5 w\n" + std::string(bytes->begin(), bytes->end());
    return replace(opened->document, stream, content) && Host::save(*opened, argv[2]) ? 0 : 1;
}
