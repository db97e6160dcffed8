// Replaces the data of one stream of a PDF file.

#include <document/Inspection.h>
#include <host/base/ErrorWords.h>
#include <host/streams/FilterChain.h>
#include <host/streams/StreamChecks.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/Opening.h>
#include <tools/Saving.h>
#include <values/Dictionary.h>
#include <values/Name.h>

#include <algorithm>

namespace {

using namespace Libraries::Files;

constexpr Tools::Option ownOptions[] = {
    {"--stored", "", "store the data as it is in any case: it is already encoded as the filter says"},
};
const Tools::Program program = {
    .name = "replace-stream",
    .usage = "[options] IN OUT N DATAFILE",
    .operandCount = 4,
    .about = "Opens the PDF file IN, replaces the data of its stream object N with that of DATAFILE, and saves the "
             "whole as OUT, which may be the same file. The data is compressed when the stream has the filter "
             "FlateDecode, which takes the place of others without loss, and stored as it is when it has none; streams "
             "with filters of images are refused.",
    .options = {{"", ownOptions}, Tools::openOptions(), Tools::saveOptions(), Tools::logOptions()},
    .refusedWhen = "IN, or what is asked for, is refused",
};

Ref<PDF::Object> objectOf(const Ref<PDF::Document>& document, std::uint32_t id)
{
    for (const auto& object : PDF::objectsOf(document))
        if (object->id() == id)
            return object;
    return nullptr;
}

// Whether the stream has filters that can be undone, so that FlateDecode alone can take their place.
bool hasOtherFilters(const Ref<PDF::Document>& document, const PDF::Stream& stream)
{
    const auto dictionary = stream.dict();
    const auto filters = dictionary ? Host::filtersOf(document, *dictionary) : std::vector<Host::FilterStep>();
    const auto isSupported = [](const Host::FilterStep& step) { return step.isSupported(); };
    return filters && std::all_of(filters->begin(), filters->end(), isSupported)
        && (filters->size() > 1 || (filters->size() == 1 && Host::hasDecodeParameters(stream))
            || (filters->size() == 1 && stream.compression() != PDF::Compression::Flate));
}

int replaceStream(const Tools::CommandLine& line, const Tools::Console& console)
{
    const std::string& in = line.operand(0);
    const std::string& dataFile = line.operand(3);
    const auto id = Tools::numberOf(line.operand(2));
    if (!id)
        return console.misuse("N must be the number of an object");
    const auto opened = Tools::Opening(line, console).open(in);
    if (!opened)
        return console.refuse(in, opened.refusal());
    const Ref<PDF::Object> object = objectOf(opened->document, *id);
    if (!object)
        return console.refuse(in, Host::codeRefusal(ErrNotFound));
    const auto stream = PDF::valueAs<PDF::Stream>(object->value());
    if (!stream)
        return console.refuse(in, {Host::Reason::WrongArgument, Host::nameOf(*object) + " is not a stream"});
    if (const Ref<PDF::Object> other = Host::sharerOfLength(opened->document, stream))
        return console.refuse(in, {Host::Reason::Conflict,
            Host::nameOf(*object) + " shares its Length with " + Host::nameOf(*other), ErrStreamLength});
    const auto data = Host::ByteFileStripe::open(dataFile);
    if (!data)
        return console.refuse(dataFile, data.refusal());
    if (!line.has("--stored") && hasOtherFilters(opened->document, *stream)) {
        const auto dictionary = stream->dict();
        for (const char* key : {"DecodeParms", "DP"})
            dictionary->set(::String::create(key), nullptr);
        dictionary->set(::String::create("Filter"), PDF::Name::create(::String::create("FlateDecode")));
    }
    if (!opened->document->setStreamData(stream, *data, !line.has("--stored"))) {
        if (const auto failure = (*data)->readFailure())
            return console.refuse(dataFile, *failure);
        return console.refuse(in, Host::codeRefusal(Error::get(), Host::nameOf(*object) + ": "));
    }
    if (Host::hasDecodeParameters(*stream))
        console.warn(in, Host::nameOf(*object) + " has decode parameters, which stay: the data must fit them");
    return Tools::Saving(line, console).save(*opened, in, line.operand(1));
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, replaceStream);
}
