// Brings the data of all streams of a PDF file to one compression.

#include <host/streams/Recompress.h>
#include <tools/Command.h>

namespace {

namespace PDF = Libraries::Files::PDF;
using Host::RecompressedStream;
using Host::StreamOutcome;

const char help[] =
    "Usage: recompress --flate | --none [options] IN OUT\n"
    "\n"
    "Opens the PDF file IN, brings the data of every stream to one form, saves the\n"
    "whole as OUT, which may be the same file, and says of each stream what became\n"
    "of it, with its sizes in bytes.\n"
    "\n"
    "  --flate        compressed, with the filter FlateDecode\n"
    "  --none         uncompressed, without a filter\n"
    "  --force        with --flate: compress as well data that has a filter of\n"
    "                 another name, as it stands. That name is lost, so nobody can\n"
    "                 read the data then\n"
    SAVE_OPTIONS_HELP
    "  -v             print the library's log lines at the end\n"
    "\n"
    "Exit status: 0; 1 when IN, or what is asked for, is refused; 2 for wrong use\n"
    "and unreadable files.\n";

std::string outcomeText(const RecompressedStream& stream, PDF::Compression target)
{
    switch (stream.outcome) {
    case StreamOutcome::Converted: break;
    case StreamOutcome::Fitting:
        return target == PDF::Compression::None ? "left alone: no filter" : "left alone: FlateDecode";
    case StreamOutcome::OtherFilter: return "left alone: its filter is " + stream.filter;
    case StreamOutcome::NoName: return "left alone: its filter is no name, such as an array";
    }
    std::string text = std::to_string(stream.sizeBefore) + " -> " + std::to_string(stream.sizeAfter);
    if (target == PDF::Compression::Flate && !stream.filter.empty())
        text += "; its filter " + stream.filter + " is lost";
    if (stream.hasDecodeParameters)
        text += target == PDF::Compression::None ? "; its decode parameters stay and fit no more"
                                                 : "; its decode parameters come into force";
    return text;
}

void print(const std::vector<RecompressedStream>& streams, PDF::Compression target)
{
    std::uint64_t before = 0;
    std::uint64_t after = 0;
    std::size_t converted = 0;
    for (const RecompressedStream& stream : streams) {
        std::printf("%s: %s\n", Host::nameOf(*stream.object).c_str(), outcomeText(stream, target).c_str());
        before += stream.sizeBefore;
        after += stream.sizeAfter;
        converted += stream.outcome == StreamOutcome::Converted;
    }
    std::printf("%zu converted, %zu left alone; bytes: %s -> %s\n", converted, streams.size() - converted,
        std::to_string(before).c_str(), std::to_string(after).c_str());
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> options = Tools::saveOptionNames;
    options.insert(options.end(), {"--flate", "--none", "--force"});
    Tools::Command command("recompress", help, 2, options);
    if (const auto status = command.parse(argc, argv))
        return *status;
    if (command.has("--flate") && command.has("--none"))
        return command.misuse("--flate and --none don't go together");
    if (!command.has("--flate") && !command.has("--none"))
        return command.misuse("expected either --flate or --none");
    const auto target = command.has("--flate") ? PDF::Compression::Flate : PDF::Compression::None;
    const std::string& in = command.operand(0);
    Host::Result<Host::OpenedFile> opened = Tools::open(in);
    if (!opened)
        return command.refuse(in, opened.refusal());
    const auto streams = Tools::withProgress("recompressing",
        [&] { return Host::recompress(opened->document, target, {command.has("--force")}); });
    if (!streams)
        return command.refuse(in, streams.refusal());
    const int status = Tools::save(command, *opened, in, command.operand(1));
    if (status != Tools::Done)
        return status;
    print(*streams, target);
    return command.finish();
}
