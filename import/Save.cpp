#include <import/Save.h>

#include <host/base/ErrorWords.h>
#include <import/Import.h>
#include <import/QpdfDocument.h>
#include <import/SameContents.h>
#include <import/Stop.h>
#include <import/Warnings.h>
#include <platform/Windows_1252.h>

#include <qpdf/QPDFWriter.hh>

#include <algorithm>
#include <array>
#include <new>

namespace Import {

namespace {

using Host::FileOutput;
using Host::Refusal;
using Libraries::Strings::Encodings::ANSI::Windows_1252;

// Passes on what libqpdf writes.
class OutputPipeline final : public Pipeline {
public:
    explicit OutputPipeline(FileOutput& out) : Pipeline("output", nullptr), _out(out) {}

    // Pipeline
    void write(const unsigned char* data, std::size_t length) override
    {
        std::array<std::uint32_t, 4096> elements;
        for (std::size_t done = 0; done < length;) {
            const std::size_t count = std::min(length - done, elements.size());
            std::transform(data + done, data + done + count, elements.begin(), Windows_1252::toCodePoint);
            BufferDesc area = BufferDesc::plain(elements.data());
            if (_out.write(area, count, 0) != count)
                throw Stop{_out.failure().value_or(Refusal())};
            done += count;
        }
    }
    void finish() override {}

private:
    FileOutput& _out;
};

Ref<Host::FileStripe> reopened(FileOutput& out)
{
    const Host::Result<Ref<Host::FileStripe>> file = out.reopen();
    if (!file)
        throw Stop{file.refusal()};
    return *file;
}

// A file that was just written, with all that is in it; nothing may be lost by how libqpdf reads it.
std::shared_ptr<QPDF> readWhole(FileOutput& out, const std::string& password)
{
    const std::shared_ptr<QPDF> document =
        openQpdf(std::make_shared<Source>(reopened(out)), {.password = password});
    document->getAllObjects();
    for (const QPDFExc& warning : document->getWarnings())
        if (!losesNothing(warning))
            stop(Reason::Difference, "libqpdf reads the document otherwise: " + messageOf(warning));
    return document;
}

void takeIn(QPDFObjectHandle dictionary, const char* key)
{
    if (QPDFObjectHandle value = dictionary.getKey(key); value.isIndirect())
        dictionary.replaceKey(key, value.shallowCopy());
}

// libqpdf writes the trailer's ID and the catalog's Extensions where they belong, wherever they are. Where one is an
// object of its own, that is one more that nothing refers to, so that those are the same in both documents, in the same
// order.
void takeInWhatLibqpdfDoes(QPDF& document)
{
    takeIn(document.getTrailer(), "/ID");
    takeIn(document.getRoot(), "/Extensions");
}

void write(QPDF& document, FileOutput& out, const Storage& storage)
{
    takeInWhatLibqpdfDoes(document);
    for (QPDFObjectHandle object : document.getAllObjects())
        if (object.isStream())
            object.setFilterOnWrite(false); // its data goes out as it is stored
    OutputPipeline pipeline(out);
    QPDFWriter writer(document);
    writer.setOutputPipeline(&pipeline);
    writer.setDecodeLevel(qpdf_dl_none);
    writer.setCompressStreams(storage.isCompact); // those that libqpdf makes
    writer.setObjectStreamMode(storage.isCompact ? qpdf_o_generate : qpdf_o_disable);
    writer.setPreserveUnreferencedObjects(true);
    std::shared_ptr<QPDF> encrypted;
    if (storage.encryptedLike) {
        const Options options{.password = storage.password, .isRepairAllowed = true};
        encrypted = openQpdf(std::make_shared<Source>(storage.encryptedLike), options);
        if (!encrypted->isEncrypted())
            stop(Reason::WrongArgument, "the file that it is to be encrypted like is not encrypted");
        writer.copyEncryptionParameters(*encrypted);
    }
    writer.write();
}

// Opens the new file by the door, and compares it with the document that it was made of.
void verify(QPDF& document, FileOutput& out, const std::string& password)
{
    if (const auto imported = open(reopened(out), {.password = password}); !imported)
        throw Stop{{Reason::Difference, "the new file can't be opened again: " + imported.refusal().message}};
    if (const auto difference = findDifference(document, *readWhole(out, password)))
        stop(Reason::Difference, *difference + " is not read back as it was");
}

Host::Result<Host::Saved> store(
    const Host::OpenedFile& from, const std::string& path, const Storage& storage, Host::SaveOptions options)
{
    options.source = from.file;
    const Host::Result<Ref<FileOutput>> classic = Host::writeVerified(from.document, path, options);
    if (!classic)
        return classic.refusal();
    const Host::Result<Ref<FileOutput>> out = FileOutput::create(path);
    if (!out)
        return out.refusal();
    const std::shared_ptr<QPDF> document = readWhole(**classic, "");
    write(*document, **out, storage);
    if (!options.isUnverified)
        verify(*document, **out, storage.password);
    const Host::Result<Host::Durability> durability = (*out)->commit();
    if (!durability)
        return durability.refusal();
    return Host::Saved{(*out)->count(), *durability};
}

} // namespace

Host::Result<Host::Saved> save(const Host::OpenedFile& opened, const std::string& path, const Storage& storage,
    const Host::SaveOptions& options) noexcept
{
    try {
        return store(opened, path, storage, options);
    } catch (const Stop& stopped) {
        return stopped.refusal;
    } catch (const std::bad_alloc&) {
        return Refusal{Reason::OutOfMemory, "needs more memory than there is"};
    } catch (const std::exception& exception) {
        return Refusal{Reason::Unwritable, lineOf(exception.what())};
    }
}

} // namespace Import
