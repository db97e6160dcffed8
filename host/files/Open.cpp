#include <host/files/Open.h>

#include <host/base/Budget.h>
#include <host/base/ErrorWords.h>

namespace Host {

namespace {

// Whether the first line ends somewhere near. The library would read all of one that doesn't, and refuse it then.
bool hasHeaderLine(FileStripe& file)
{
    constexpr std::uint64_t longest = 4096;
    const ByteRun head = file.bytesAround(0);
    const std::string_view text(reinterpret_cast<const char*>(head.bytes), head.bytes ? head.length : 0);
    return head.length < longest || text.find_first_of("\r\n") != text.npos;
}

} // namespace

Result<OpenedFile> open(const std::string& path) noexcept
{
    const Result<Ref<FileStripe>> file = FileStripe::open(path);
    return file ? open(*file) : Result<OpenedFile>(file.refusal());
}

Result<OpenedFile> open(const Ref<FileStripe>& file) noexcept
{
    if (!file)
        return codeRefusal(ErrNullArgument);
    if (!hasHeaderLine(*file))
        return file->readFailure().value_or(codeRefusal(ErrBadHeader));
    file->seek(0);
    Ref<PDF::Document> document = PDF::Document::create(file);
    if (document)
        return OpenedFile{std::move(document), file};
    const std::uint32_t code = Error::get();
    return file->readFailure().value_or(codeRefusal(code));
}

std::optional<Refusal> detach(OpenedFile& opened, std::uint64_t limitFactor) noexcept
{
    if (!opened.document)
        return codeRefusal(ErrNullArgument);
    if (!opened.file)
        return {};
    if (auto refusal = refuseOverlaps(opened.document, limitFactor))
        return refusal;
    const bool isCached = opened.document->cacheStreams();
    const std::uint32_t code = Error::get();
    // Checked at the end: what was read meanwhile may be neither the old contents nor the new.
    if (!opened.file->isUnchanged())
        return changedMeanwhile();
    if (!isCached)
        return opened.file->readFailure().value_or(codeRefusal(code));
    opened.file = nullptr;
    return {};
}

} // namespace Host
