// Replaces the data of one stream of a PDF file.

#include <document/Inspection.h>
#include <host/streams/StreamChecks.h>
#include <tools/Command.h>

namespace {

using namespace Libraries::Files;

const char help[] =
    "Usage: replace-stream [options] IN OUT N DATAFILE\n"
    "\n"
    "Opens the PDF file IN, replaces the data of its stream object N by that of\n"
    "DATAFILE, and saves the whole as OUT, which may be the same file. The data is\n"
    "compressed when the stream has the filter FlateDecode and stored as it is when\n"
    "it has none; streams with other filters are refused.\n"
    "\n"
    "  --stored       store the data as it is in any case: it is encoded already as\n"
    "                 the filter says\n"
    SAVE_OPTIONS_HELP
    "  -v             print the library's log lines at the end\n"
    "\n"
    "Exit status: 0; 1 when IN, or what is asked for, is refused; 2 for wrong use\n"
    "and unreadable files.\n";

Ref<PDF::Object> objectOf(const Ref<PDF::Document>& document, std::uint32_t id)
{
    for (const auto& object : PDF::objectsOf(document))
        if (object->id() == id)
            return object;
    return nullptr;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> options = Tools::saveOptionNames;
    options.push_back("--stored");
    Tools::Command command("replace-stream", help, 4, options);
    if (const auto status = command.parse(argc, argv))
        return *status;
    const std::string& in = command.operand(0);
    const std::string& dataFile = command.operand(3);
    const auto id = command.number(2);
    if (!id)
        return command.misuse("N is the number of an object");
    Host::Result<Host::OpenedFile> opened = Tools::open(in);
    if (!opened)
        return command.refuse(in, opened.refusal());
    const Ref<PDF::Object> object = objectOf(opened->document, *id);
    if (!object)
        return command.refuse(in, Host::codeRefusal(ErrNotFound));
    const auto stream = PDF::valueAs<PDF::Stream>(object->value());
    if (!stream)
        return command.refuse(in, {Host::nameOf(*object) + " is no stream"});
    if (const Ref<PDF::Object> other = Host::sharerOfLength(opened->document, stream))
        return command.refuse(
            in, {Host::nameOf(*object) + " has its Length in common with " + Host::nameOf(*other), ErrStreamLength});
    const auto data = Host::ByteFileStripe::open(dataFile);
    if (!data)
        return command.refuse(dataFile, data.refusal());
    if (!opened->document->setStreamData(stream, *data, !command.has("--stored"))) {
        const std::string trouble = (*data)->trouble();
        return trouble.empty() ? command.refuse(in, Host::codeRefusal(Error::get(), Host::nameOf(*object) + ": "))
                               : command.refuse(dataFile, {trouble, 0, true});
    }
    if (Host::hasDecodeParameters(*stream))
        command.warn(in, Host::nameOf(*object) + " has decode parameters, which stay: the data has to fit them");
    return Tools::save(command, *opened, in, command.operand(1));
}
