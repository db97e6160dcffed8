#include <host/saving/Save.h>

#include <document/ExactWriting.h>
#include <document/Inspection.h>
#include <host/base/Budget.h>
#include <host/base/ErrorWords.h>
#include <host/losses/Examine.h>
#include <host/losses/PartialMarks.h>
#include <host/losses/ReadingLosses.h>
#include <host/saving/Comparison.h>
#include <host/saving/UnwritableName.h>
#include <values/Object.h>
#include <values/Stream.h>

namespace Host {

namespace {

using namespace Libraries::Files::PDF;

bool isChanged(const Ref<FileStripe>& source)
{
    return source && !source->isUnchanged();
}

constexpr const char* theSource = "the file that the document was opened from ";

std::optional<Refusal> refuseBeforehand(const Ref<Document>& document, const Ref<FileStripe>& source)
{
    if (objectsOf(document).empty())
        return Refusal{Reason::BrokenRule, "the document has no objects"};
    if (const PartialMark* mark = findPartialMark(*document->trailer()))
        return Refusal{mark->reason, mark->message};
    if (!document->getCatalog())
        return codeRefusal(Error::get(), "the document has no catalog: ");
    if (isChanged(source))
        return changedMeanwhile().withPrefix(theSource);
    return {};
}

// A stream that was put here without a copy of its data would be written with bytes of the wrong file.
std::optional<Refusal> refuseStreamsOfOthers(const Ref<Document>& document)
{
    for (const auto& object : objectsOf(document))
        if (const Ref<Stream> stream = valueAs<Stream>(object->value()); stream && isOfOtherFile(document, stream))
            return Refusal{Reason::Unwritable, nameOf(*object) + " is a stream of another document's file"};
    return {};
}

// Refuses what the options don't allow of what the reading noted.
std::optional<Refusal> refuseReading(const Ref<Document>& document, const SaveOptions& options)
{
    if (options.isPartialAllowed && options.isLossyAllowed)
        return {};
    const ReadingNotes notes = options.isPlain ? readingNotes(document) : unwrittenNotes(document);
    if (!options.isPartialAllowed && isPartial(notes))
        return Refusal{Reason::Partial, "the document has a table of several parts, of which only one was read"};
    const std::string losses = options.isLossyAllowed ? std::string() : lossesOfReading(notes);
    if (losses.empty())
        return {};
    return Refusal{Reason::Lossy, "the document was read otherwise than it is meant, and saving loses " + losses};
}

// Why a strict save refuses.
std::optional<Refusal> refuseLosses(const Ref<FileStripe>& source)
{
    if (!source)
        return Refusal{Reason::WrongArgument, std::string(theSource) + "is not available to be examined"};
    const Result<Examination> examination = examine(source);
    if (!examination)
        return examination.refusal().withPrefix(theSource);
    if (examination->losses.countOfMeaning() == 0)
        return {};
    return Refusal{Reason::Lossy, "saving loses " + examination->losses.summary()};
}

// Why the document could not be written: the failure of a file, or else the first object without a text.
Refusal whyUnwritten(const Ref<Document>& document, const FileOutput& out, const Ref<FileStripe>& source)
{
    const std::uint32_t code = Error::get();
    if (out.failure() && out.failure()->reason == Reason::Unwritable)
        for (const auto& object : objectsAsWritten(document))
            if (const std::string names = unwritableName(object->value()); !names.empty())
                return {Reason::Unwritable, nameOf(*object) + " can't be written" + names, code};
    if (out.failure())
        return *out.failure();
    if (code == ErrOutOfRange)
        return {Reason::LimitReached, "the object numbers leave gaps that are too large for a table", code};
    if (const auto failure = source ? source->readFailure() : std::nullopt)
        return {failure->reason, theSource + failure->message, code};
    for (const auto& object : objectsAsWritten(document)) {
        if (exactText(document, object->value()))
            continue;
        const Ref<Stream> stream = valueAs<Stream>(object->value());
        const bool hasNoData = stream && !document->streamData(stream, false);
        const std::string reason = hasNoData ? ": " + std::string(errorWords(Error::get())) : "";
        return {Reason::Unwritable, nameOf(*object) + " can't be written" + reason, code};
    }
    return codeRefusal(code);
}

// Writes the document and compares, all as the options say.
std::optional<Refusal> writeTo(const Ref<FileOutput>& out, const Ref<Document>& document, const SaveOptions& options)
{
    const Ref<Dictionary> trailer
        = options.isPlain ? nullptr : writeExactly(document, out, {.isIdKept = options.isIdKept});
    if (options.isPlain ? !document->write(out) : !trailer)
        return whyUnwritten(document, *out, options.source);
    if (options.isUnverified)
        return {};
    Result<Ref<FileStripe>> written = out->reopen();
    if (!written)
        return written.refusal();
    return findDifference(document, {*written, trailer});
}

} // namespace

Result<Ref<FileOutput>> writeVerified(
    const Ref<Document>& document, const std::string& path, const SaveOptions& options) noexcept
{
    if (!document)
        return codeRefusal(ErrNullArgument);
    if (!options.isPartialAllowed)
        if (auto refusal = refuseBeforehand(document, options.source))
            return *refusal;
    if (auto refusal = refuseOverlaps(document, options.limitFactor))
        return *refusal;
    if (options.isStrict)
        if (auto refusal = refuseLosses(options.source))
            return *refusal;
    if (auto refusal = refuseStreamsOfOthers(document))
        return *refusal;
    if (auto refusal = refuseReading(document, options))
        return *refusal;
    Result<Ref<FileOutput>> out = FileOutput::create(path);
    if (!out)
        return out.refusal();
    if (auto refusal = writeTo(*out, document, options))
        return *refusal;
    // What was read from it meanwhile may be neither the old nor the new.
    if (!options.isPartialAllowed && isChanged(options.source))
        return changedMeanwhile().withPrefix(theSource);
    return out;
}

Result<Saved> save(const Ref<Document>& document, const std::string& path, const SaveOptions& options) noexcept
{
    Result<Ref<FileOutput>> out = writeVerified(document, path, options);
    if (!out)
        return out.refusal();
    Result<Durability> durability = (*out)->commit();
    if (!durability)
        return durability.refusal();
    return Saved{(*out)->count(), *durability};
}

Result<Saved> save(const OpenedFile& opened, const std::string& path, SaveOptions options) noexcept
{
    options.source = opened.file;
    return save(opened.document, path, options);
}

} // namespace Host
