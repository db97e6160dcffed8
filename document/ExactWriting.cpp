#include <document/ExactWriting.h>

#include <document/DocumentObj.h>
#include <document/Report.h>
#include <document/ValueWriter.h>
#include <values/Dictionary.h>

namespace Libraries::Files::PDF {

Ref<Dictionary> writeExactly(
    const Ref<Document>& document, const Ref<Interfaces::Stream>& out, const ExactOptions& options) noexcept
{
    if (!document || !out)
        return refuse(ErrNullArgument);
    const Ref<DocumentObj> held = document.cast<DocumentObj>();
    if (!held || out->elementSize() != sizeof(std::uint32_t))
        return refuse(ErrInvalidArgument);
    return held->writeExactly(*out, options.isIdKept);
}

ReadingNotes unwrittenNotes(const Ref<Document>& document) noexcept
{
    const Ref<DocumentObj> held = document ? document.cast<DocumentObj>() : nullptr;
    if (!held)
        return refuse(document ? ErrInvalidArgument : ErrNullArgument), ReadingNotes();
    return held->unwrittenNotes();
}

Ref<TConstArray<std::uint32_t>> exactText(const Ref<Document>& document, const Ref<Value>& value) noexcept
{
    if (!document)
        return refuse(ErrNullArgument);
    const Ref<DocumentObj> held = document.cast<DocumentObj>();
    if (!held)
        return refuse(ErrInvalidArgument);
    MemOutStrm text;
    if (!ValueWriter(*held, *held->lineEnding(), Dialect::Exact, text, nullptr, &held->sources()).writeValue(value))
        return nullptr;
    return TConstArray<std::uint32_t>::create(text.data(), text.size());
}

} // namespace Libraries::Files::PDF
