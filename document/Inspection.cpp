#include <document/Inspection.h>

#include <document/DocumentObj.h>
#include <document/Report.h>
#include <document/ValueWriter.h>

#include <algorithm>

namespace Libraries::Files::PDF {

namespace {

// `DocumentObj` is the one class that implements the interface.
Ref<DocumentObj> implementation(const Ref<Document>& document)
{
    if (!document)
        return refuse(ErrNullArgument);
    Ref<DocumentObj> result = document.cast<DocumentObj>();
    if (!result)
        return refuse(ErrInvalidArgument);
    return result;
}

} // namespace

StackVector<Ref<Object>> objectsOf(const Ref<Document>& document) noexcept
{
    const Ref<DocumentObj> held = implementation(document);
    return held ? held->objects() : StackVector<Ref<Object>>();
}

StackVector<Ref<Object>> objectsAsWritten(const Ref<Document>& document) noexcept
{
    StackVector<Ref<Object>> objects = objectsOf(document);
    std::stable_sort(objects.begin(), objects.end(), [](const auto& a, const auto& b) { return a->id() < b->id(); });
    return objects;
}

Ref<::String> lineEndingOf(const Ref<Document>& document) noexcept
{
    const Ref<DocumentObj> held = implementation(document);
    return held ? held->lineEnding() : nullptr;
}

std::uint64_t fileSizeOf(const Ref<Document>& document) noexcept
{
    const Ref<DocumentObj> held = implementation(document);
    return held ? held->fileSize() : 0;
}

bool isOfOtherFile(const Ref<Document>& document, const Ref<Stream>& stream) noexcept
{
    const Ref<DocumentObj> held = implementation(document);
    if (held && !stream)
        return refuse(ErrNullArgument);
    return held && held->isOfOtherFile(*stream);
}

Ref<TConstArray<std::uint32_t>> writtenText(const Ref<Document>& document, const Ref<Value>& value) noexcept
{
    const Ref<DocumentObj> held = implementation(document);
    MemOutStrm text;
    if (!held || !ValueWriter(*held, *held->lineEnding(), Dialect::Plain, text).writeValue(value))
        return nullptr;
    return TConstArray<std::uint32_t>::create(text.data(), text.size());
}

StoredSizes storedSizes(const Ref<Document>& document) noexcept
{
    const Ref<DocumentObj> held = implementation(document);
    return held ? held->storedSizes() : StoredSizes();
}

ReadingNotes readingNotes(const Ref<Document>& document) noexcept
{
    const Ref<DocumentObj> held = implementation(document);
    return held ? held->readingNotes() : ReadingNotes();
}

} // namespace Libraries::Files::PDF
