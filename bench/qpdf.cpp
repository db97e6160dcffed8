// The operations, by libqpdf.

#include <bench/Library.h>

#include <qpdf/Buffer.hh>
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFAcroFormDocumentHelper.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

namespace Bench {

namespace {

// A document over bytes that must outlive it.
class Document : public QPDF {
public:
    explicit Document(const Bytes& bytes)
    {
        setAttemptRecovery(false);
        processMemoryFile("in.pdf", reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
};

// A file to be written that isn't flushed after each stream.
class Output final : public Pipeline {
public:
    explicit Output(const std::string& path) : Pipeline("output", nullptr), _file(path) {}

    // Pipeline
    void write(const unsigned char* data, std::size_t size) override { _file.write(data, size); }
    void finish() override {}

    void close() { _file.close(); }

private:
    OutputFile _file;
};

void save(QPDF& document, const Job& job, StreamForm form = StreamForm::Stored)
{
    Output output(job.out);
    QPDFWriter writer(document);
    writer.setOutputPipeline(&output);
    writer.setObjectStreamMode(qpdf_o_disable);
    writer.setDecodeLevel(form == StreamForm::Stored ? qpdf_dl_none : qpdf_dl_generalized);
    writer.setCompressStreams(form == StreamForm::Flate || form == StreamForm::FlateAnew);
    writer.setRecompressFlate(form == StreamForm::FlateAnew);
    writer.write();
    output.close();
}

void touch(const QPDFObjectHandle& value, Tally& tally);

void touchAll(QPDFObjectHandle dictionary, Tally& tally)
{
    for (const auto& [key, value] : dictionary.getDictAsMap()) {
        tally.textLength += key.size() - 1;
        touch(value, tally);
    }
}

// The value itself, also where it is that of an indirect object.
void touchDirect(QPDFObjectHandle value, Tally& tally)
{
    ++tally.values;
    switch (value.getTypeCode()) {
    case ot_boolean:
        tally.booleans += value.getBoolValue();
        break;
    case ot_integer:
        tally.integerSum += static_cast<std::uint64_t>(value.getIntValue());
        break;
    case ot_real:
        tally.fractions += !value.getRealValue().empty();
        break;
    case ot_string:
        tally.textLength += value.getStringValue().size();
        break;
    case ot_name:
        tally.textLength += value.getName().size() - 1;
        break;
    case ot_array:
        for (int i = 0, count = value.getArrayNItems(); i < count; ++i)
            touch(value.getArrayItem(i), tally);
        break;
    case ot_dictionary:
        touchAll(value, tally);
        break;
    case ot_stream:
        touchAll(value.getDict(), tally);
        break;
    default:
        break;
    }
}

void touch(const QPDFObjectHandle& value, Tally& tally)
{
    if (!value.isIndirect())
        return touchDirect(value, tally);
    ++tally.values;
    tally.idSum += static_cast<std::uint64_t>(value.getObjectID());
}

Tally walk(QPDF& document)
{
    Tally tally;
    for (const auto& [id, entry] : document.getXRefTable())
        touchDirect(document.getObject(id), tally);
    return tally;
}

QPDFObjectHandle pageRootOf(QPDF& document)
{
    return document.getRoot().getKey("/Pages");
}

// One stream or an array of them, as a list.
std::vector<QPDFObjectHandle> contentsOf(QPDFObjectHandle page)
{
    QPDFObjectHandle contents = page.getKey("/Contents");
    if (contents.isArray())
        return contents.getArrayAsVector();
    return contents.isNull() ? std::vector<QPDFObjectHandle>() : std::vector<QPDFObjectHandle>{contents};
}

struct Resource {
    std::string category;
    std::string name;
    QPDFObjectHandle value;
};

// The resources of a page or of the root of a page tree, taken over into the document.
std::vector<Resource> copyResources(QPDF& document, QPDFObjectHandle foreign)
{
    std::vector<Resource> resources;
    QPDFObjectHandle categories = foreign.getKey("/Resources");
    if (categories.isDictionary())
        for (const auto& [category, names] : categories.getDictAsMap())
            for (const auto& [name, value] : QPDFObjectHandle(names).getDictAsMap())
                resources.push_back({category, name, document.copyForeignObject(value)});
    return resources;
}

void mergeResources(QPDFObjectHandle target, const std::vector<Resource>& resources)
{
    QPDFObjectHandle categories = target.getKey("/Resources");
    if (!categories.isDictionary()) {
        categories = QPDFObjectHandle::newDictionary();
        target.replaceKey("/Resources", categories);
    }
    for (const Resource& resource : resources) {
        QPDFObjectHandle names = categories.getKey(resource.category);
        if (!names.isDictionary()) {
            names = QPDFObjectHandle::newDictionary();
            categories.replaceKey(resource.category, names);
        }
        names.replaceKey(resource.name, resource.value);
    }
}

} // namespace

void openAndTouch(Job& job)
{
    Document document(job.bytes);
    walk(document).print();
}

void walk(Job& job)
{
    Document document(job.bytes);
    measureWalk([&document] { return walk(document); });
}

void openAndSave(Job& job, StreamForm form)
{
    Document document(job.bytes);
    save(document, job, form);
}

void decode(Job& job)
{
    Document document(job.bytes);
    DecodedData decoded;
    for (const auto& [id, entry] : document.getXRefTable()) {
        QPDFObjectHandle object = document.getObject(id);
        if (!object.isStream())
            continue;
        const std::shared_ptr<Buffer> data = object.getStreamData(qpdf_dl_generalized);
        decoded.add(data->getBuffer(), data->getSize(), job.isChecked);
    }
    decoded.print(job.isChecked);
}

// What is taken over from the foreign document is copied once, and all pages refer to it.
void addBackground(Job& job)
{
    Document document(job.bytes);
    Document foreign(job.foreign);
    QPDFObjectHandle foreignPage = pageRootOf(foreign).getKey("/Kids").getArrayItem(0);
    std::vector<QPDFObjectHandle> added;
    for (const QPDFObjectHandle& stream : contentsOf(foreignPage))
        added.push_back(document.copyForeignObject(stream));
    const std::vector<Resource> pageResources = copyResources(document, foreignPage);
    if (pageResources.empty())
        mergeResources(pageRootOf(document), copyResources(document, pageRootOf(foreign)));
    for (QPDFObjectHandle page : pageRootOf(document).getKey("/Kids").getArrayAsVector()) {
        if (!pageResources.empty())
            mergeResources(page, pageResources);
        std::vector<QPDFObjectHandle> contents = added;
        for (const QPDFObjectHandle& stream : contentsOf(page))
            contents.push_back(stream);
        page.replaceKey("/Contents", QPDFObjectHandle::newArray(contents));
    }
    save(document, job);
}

void placePage(Job& job)
{
    addBackground(job);
}

namespace {

void setValues(Document& document)
{
    std::size_t i = 0;
    for (QPDFObjectHandle group : document.getRoot().getKey("/AcroForm").getKey("/Fields").getArrayAsVector()) {
        std::size_t j = 0;
        for (QPDFObjectHandle field : group.getKey("/Kids").getArrayAsVector())
            field.replaceKey("/V", QPDFObjectHandle::newUnicodeString(valueOfField(i, j++)));
        ++i;
    }
}

} // namespace

void fillForm(Job& job)
{
    Document document(job.bytes);
    setValues(document);
    save(document, job);
}

void drawForm(Job& job)
{
    Document document(job.bytes);
    setValues(document);
    QPDFAcroFormDocumentHelper(document).generateAppearancesIfNeeded();
    save(document, job);
}

} // namespace Bench
