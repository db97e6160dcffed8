#include <host/Open.h>

#include <host/ErrorWords.h>

namespace Host {

Result<OpenedFile> open(const std::string& path) noexcept
{
    Result<Ref<FileStripe>> file = FileStripe::open(path);
    if (!file)
        return file.refusal();
    Ref<PDF::Document> document = PDF::Document::create(*file);
    if (document)
        return OpenedFile{std::move(document), std::move(*file)};
    const std::uint32_t code = Error::get();
    const std::string trouble = (*file)->trouble();
    return trouble.empty() ? codeRefusal(code) : Refusal{trouble, 0, true};
}

} // namespace Host
