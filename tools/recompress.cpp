// Converts the data of all streams of a PDF file to one compression.

#include <host/base/ErrorWords.h>
#include <host/streams/Recompress.h>
#include <tools/FileProgress.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/Opening.h>
#include <tools/Saving.h>
#include <tools/StandardFiles.h>

namespace {

namespace PDF = Libraries::Files::PDF;
using Host::RecompressedStream;
using Host::StreamOutcome;

constexpr Tools::Option ownOptions[] = {
    {"--flate", "", "compress, with the filter FlateDecode"},
    {"--none", "", "uncompress, without a filter"},
    {"--force", "",
        "with --flate: also compress data that has another filter, just as it is. The name of that filter is lost, "
        "so that nobody can read the data afterwards"},
};
const Tools::Program program = {
    .name = "recompress",
    .usage = "--flate | --none [options] IN OUT",
    .operandCount = 2,
    .about = "Opens the PDF file IN, converts the data of every stream to one form, saves the whole as OUT, which may "
             "be the same file, and reports what was done to each stream, with its sizes in bytes.",
    .options = {{"", ownOptions}, Tools::openOptions(), Tools::saveOptions(), Tools::logOptions()},
    .refusedWhen = "IN, or what is asked for, is refused",
};

std::string outcomeText(const RecompressedStream& stream, PDF::Compression target, bool isForced)
{
    switch (stream.outcome) {
    case StreamOutcome::Converted: break;
    case StreamOutcome::Fitting:
        return target == PDF::Compression::None ? "left alone: no filter" : "left alone: FlateDecode";
    case StreamOutcome::OtherFilter: return "left alone: its filter is " + stream.filter;
    case StreamOutcome::NoName: return "left alone: what it says of its filters can't be used";
    }
    std::string text = std::to_string(stream.sizeBefore) + " -> " + std::to_string(stream.sizeAfter);
    if (target == PDF::Compression::Flate && !stream.filter.empty() && isForced)
        text += "; its filter " + stream.filter + " is lost";
    if (stream.hasDecodeParameters && isForced)
        text += target == PDF::Compression::None ? "; its decode parameters stay and no longer fit"
                                                 : "; its decode parameters take effect";
    return text;
}

void print(const std::vector<RecompressedStream>& streams, PDF::Compression target, bool isForced)
{
    std::uint64_t before = 0;
    std::uint64_t after = 0;
    std::size_t converted = 0;
    std::size_t otherFilters = 0;
    for (const RecompressedStream& stream : streams) {
        std::printf("%s: %s\n", Host::nameOf(*stream.object).c_str(), outcomeText(stream, target, isForced).c_str());
        before += stream.sizeBefore;
        after += stream.sizeAfter;
        converted += stream.outcome == StreamOutcome::Converted;
        otherFilters += stream.outcome == StreamOutcome::OtherFilter || stream.outcome == StreamOutcome::NoName;
    }
    std::printf("%zu converted, %zu left alone, %zu of them for their filters; bytes: %s -> %s\n", converted,
        streams.size() - converted, otherFilters, std::to_string(before).c_str(), std::to_string(after).c_str());
}

int recompress(const Tools::CommandLine& line, const Tools::Console& console)
{
    if (const std::string conflict = line.conflictAmong({"--flate", "--none"}); !conflict.empty())
        return console.misuse(conflict);
    if (!line.has("--flate") && !line.has("--none"))
        return console.misuse("expected either --flate or --none");
    const auto target = line.has("--flate") ? PDF::Compression::Flate : PDF::Compression::None;
    const std::string& in = line.operand(0);
    const auto opened = Tools::Opening(line, console).open(in);
    if (!opened)
        return console.refuse(in, opened.refusal());
    const auto streams = Tools::withProgress("recompressing",
        [&] { return Host::recompress(opened->document, target, {line.has("--force"), opened->limitFactor}); });
    if (!streams)
        return console.refuse(in, streams.refusal());
    const int status = Tools::Saving(line, console).save(*opened, in, line.operand(1));
    if (status != Tools::Done)
        return status;
    if (!Tools::isStandard(line.operand(1))) // which has the file itself
        print(*streams, target, line.has("--force"));
    return console.finish();
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, recompress);
}
