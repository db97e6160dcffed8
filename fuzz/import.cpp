#include "Walk.h"

#include <host/base/Utf8.h>
#include <import/Conversion.h>
#include <import/Import.h>
#include <import/Qpdf.h>
#include <import/Stop.h>

#include <sys/mman.h>

#include <cmath>
#include <cstdlib>
#include <map>

// The target `import`: the input is a file, which is opened through the door, as it is and with repair. What libqpdf reads
// of the image is compared with what it reads of the file.

namespace {

using Fuzz::require;

constexpr std::uint64_t limit = 4 << 20; // of decoded data and of the image, in bytes

Ref<Host::FileStripe> fileOf(std::string_view bytes)
{
    Host::Descriptor file(::memfd_create("input", MFD_CLOEXEC));
    const bool isWritten = ::write(file.number(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    require(isWritten, "the input can be written into memory");
    return make<Host::FileStripe>(std::move(*Host::FileBytes::adopt(std::move(file))));
}

std::string bytesOf(Interfaces::Stripe& stripe)
{
    std::string bytes(stripe.size(), '\0');
    stripe.seek(0);
    require(dynamic_cast<Interfaces::ByteReading&>(stripe).readBytes(bytes.data(), bytes.size()) == bytes.size(),
        "an image can be read");
    return bytes;
}

std::shared_ptr<QPDF> openedByQpdf(std::string_view bytes, bool isRepairAllowed)
{
    const std::shared_ptr<QPDF> document = QPDF::create();
    document->setSuppressWarnings(true);
    document->setAttemptRecovery(isRepairAllowed);
    document->processMemoryFile("", bytes.data(), bytes.size());
    document->getAllObjects();
    return document;
}

// Keeps data in a string.
class Text final : public Pipeline {
public:
    Text() : Pipeline("text", nullptr) {}

    void write(const unsigned char* data, std::size_t length) override
    {
        bytes.append(reinterpret_cast<const char*>(data), length);
    }
    void finish() override {}

    std::string bytes;
};

std::string dataOf(QPDFObjectHandle stream)
{
    Text text;
    stream.pipeStreamData(&text, nullptr, 0, qpdf_dl_none, true);
    return text.bytes;
}

// Compares values of a file with those of its image.
class Comparison {
public:
    bool areSame(QPDFObjectHandle file, QPDFObjectHandle image) const
    {
        if (!file.isIndirect())
            return areSameDirect(file, image);
        const QPDFObjGen object = file.getObjGen();
        const bool isWritable = object.getObj() > 0 && object.getGen() >= 0 && object.getGen() <= 65535;
        return isWritable ? image.getObjGen() == object : image.isNull();
    }

    // The values themselves.
    bool areSameDirect(QPDFObjectHandle file, QPDFObjectHandle image) const
    {
        if (isEmptyName(file))
            return image.isNull();
        if (file.getTypeCode() != image.getTypeCode())
            return false;
        switch (file.getTypeCode()) {
        case ::ot_boolean: return file.getBoolValue() == image.getBoolValue();
        case ::ot_integer: return file.getIntValue() == image.getIntValue();
        case ::ot_real: return areSameReals(file.getRealValue(), image.getRealValue());
        case ::ot_string: return file.getStringValue() == image.getStringValue();
        case ::ot_name: return file.getName() == image.getName();
        case ::ot_array: return areSameArrays(file.getArrayAsVector(), image.getArrayAsVector());
        case ::ot_dictionary: return areSameEntries(file.getDictAsMap(), image.getDictAsMap());
        case ::ot_stream: return areSameStreams(file, image);
        default: return true;
        }
    }

private:
    using Entries = std::map<std::string, QPDFObjectHandle>;

    static bool isEmptyName(QPDFObjectHandle value) { return value.isName() && value.getName() == "/"; }
    // One that the core can't hold is rounded.
    static bool areSameReals(const std::string& file, const std::string& image)
    {
        constexpr std::size_t heldByAll = 18; // digits
        const double value = std::strtod(file.c_str(), nullptr);
        const double rounded = std::strtod(image.c_str(), nullptr);
        const bool isHeld = file.size() <= heldByAll || std::abs(value) < double(~std::uint64_t(0) >> 1);
        return file == image
            || (file.size() > heldByAll && (!isHeld || std::abs(value - rounded) < 1e-9 * std::abs(value) + 1e-17));
    }
    bool areSameArrays(const std::vector<QPDFObjectHandle>& file, const std::vector<QPDFObjectHandle>& image) const
    {
        return std::equal(file.begin(), file.end(), image.begin(), image.end(),
            [this](const QPDFObjectHandle& a, const QPDFObjectHandle& b) { return areSame(a, b); });
    }
    bool areSameEntries(Entries file, const Entries& image) const
    {
        file.erase("/");
        return std::equal(file.begin(), file.end(), image.begin(), image.end(),
            [this](const auto& a, const auto& b) { return a.first == b.first && areSame(a.second, b.second); });
    }
    bool areSameStreams(QPDFObjectHandle file, QPDFObjectHandle image) const
    {
        Entries fileEntries = file.getDict().getDictAsMap();
        Entries imageEntries = image.getDict().getDictAsMap();
        for (const char* key : {"/Length", "/Filter", "/DecodeParms"}) { // which may be simplified
            fileEntries.erase(key);
            imageEntries.erase(key);
        }
        return areSameEntries(fileEntries, imageEntries) && dataOf(file) == dataOf(image);
    }
};

bool isContainer(QPDFObjectHandle value)
{
    return value.isStreamOfType("/ObjStm") || value.isStreamOfType("/XRef");
}

void compare(
    std::string_view file, const std::string& image, const Import::Options& options, const Import::Report& report)
{
    const std::shared_ptr<QPDF> original = openedByQpdf(file, options.isRepairAllowed);
    const std::shared_ptr<QPDF> converted = openedByQpdf(image, false);
    std::map<int, QPDFObjGen> newest; // of each id
    for (const auto& [object, entry] : original->getXRefTable())
        if (object.getObj() > 0 && entry.getType() != 0)
            newest[object.getObj()] = object;
    const QPDFObjGen encryption = original->getTrailer().getKey("/Encrypt").getObjGen();
    const Comparison comparison;
    for (const auto& [id, object] : newest) {
        QPDFObjectHandle before = original->getObject(object);
        QPDFObjectHandle after = converted->getObject(object);
        if (after.isNull() && (isContainer(before) || object == encryption))
            continue;
        // An object that is nothing but a reference is a number to libqpdf.
        if (before.isInteger() && report.replaced.count > 0)
            continue;
        require(comparison.areSameDirect(before, after), "an image has what the file has");
    }
    for (const auto& [object, entry] : converted->getXRefTable())
        require(newest.count(object.getObj()) != 0, "an image has nothing else");
    for (const QPDFExc& warning : converted->getWarnings())
        require(warning.getMessageDetail().starts_with("name with stray #"), "an image is sound");
}

bool isLine(const std::string& text)
{
    const bool hasControls = std::any_of(text.begin(), text.end(), [](char c) { return c >= 0 && c < ' '; });
    return !text.empty() && !hasControls && Host::fromUtf8(text);
}

void importFile(std::string_view bytes, const Import::Options& options)
{
    const Ref<Host::FileStripe> file = fileOf(bytes);
    const Host::Result<Import::Imported> imported = Import::open(file, options);
    if (!imported) {
        require(isLine(imported.refusal().message), "a refusal has a line of text");
        return;
    }
    for (const std::string& warning : imported->report.warnings)
        require(isLine(warning), "a warning is a line of text");
    require(options.isRepairAllowed || !imported->report.isRepaired, "only repair repairs");
    Import::Report report;
    const std::string image = bytesOf(*Import::convert(file, options, report));
    // What libqpdf guesses depends on which object it reads first.
    if (!report.isRepaired)
        compare(bytes, image, options, report);
    Fuzz::Allowance allowance;
    require(!imported->opened.document->changed(), "nothing is changed");
    Fuzz::walk(imported->opened.document, image, allowance);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const std::string_view file(reinterpret_cast<const char*>(bytes), size);
    for (const bool isRepairAllowed : {false, true})
        importFile(file, {.isRepairAllowed = isRepairAllowed, .limit = limit});
    return 0;
}
