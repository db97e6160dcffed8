#include <host/files/Open.h>

#include <host/base/ErrorWords.h>

namespace Host {

Result<OpenedFile> open(const std::string& path) noexcept
{
    const Result<Ref<FileStripe>> file = FileStripe::open(path);
    return file ? open(*file) : Result<OpenedFile>(file.refusal());
}

Result<OpenedFile> open(const Ref<FileStripe>& file) noexcept
{
    if (!file)
        return codeRefusal(ErrNullArgument);
    file->seek(0);
    Ref<PDF::Document> document = PDF::Document::create(file);
    if (document)
        return OpenedFile{std::move(document), file};
    const std::uint32_t code = Error::get();
    return file->readFailure().value_or(codeRefusal(code));
}

std::optional<Refusal> detach(OpenedFile& opened) noexcept
{
    if (!opened.document)
        return codeRefusal(ErrNullArgument);
    if (!opened.file)
        return {};
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
