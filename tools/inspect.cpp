// Prints what is in a PDF file.

#include <document/ExactWriting.h>
#include <document/Inspection.h>
#include <document/Version.h>
#include <host/base/ErrorWords.h>
#include <host/base/Utf8.h>
#include <host/losses/Examine.h>
#include <host/pages/PageTree.h>
#include <host/streams/StreamBytes.h>
#include <platform/Windows_1252.h>
#include <tools/FileProgress.h>
#include <tools/Hints.h>
#include <tools/Identifiers.h>
#include <tools/ImportReport.h>
#include <tools/Json.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>
#include <tools/ShownText.h>
#include <tools/Table.h>
#include <values/Dictionary.h>
#include <values/Object.h>

namespace {

using namespace Libraries::Files;
using Tools::CommandLine;
using Tools::Console;
using Tools::json;
using Libraries::Strings::Encodings::ANSI::Windows_1252;

constexpr Tools::Option ownOptions[] = {
    {"--objects", "", "only the objects"},
    {"--object", "N", "only object N"},
    {"--stream", "N", "the decoded data of stream object N, as it is"},
    {"--stored", "", "with --stream: the data as it is stored"},
    {"--losses", "", "what saving would lose"},
    {"--json", "", "output for programs"},
};
const Tools::Program program = {
    .name = "inspect",
    .usage = "[options] FILE",
    .operandCount = 1,
    .about = "Prints the version, line ending and trailer of a PDF file, its objects as PDF text, and its pages. "
             "Control characters in the text are printed as \\ and three octal digits.",
    .options = {{"", ownOptions}, Tools::openOptions(), Tools::logOptions()},
    .refusedWhen = "FILE, or what is asked for in it, is refused",
};

using Text = std::u32string;
using Objects = StackVector<Ref<PDF::Object>>;

// The PDF text of a value; of a stream without its data.
Text textOf(const Ref<PDF::Document>& document, const Ref<PDF::Value>& value)
{
    const Ref<PDF::Stream> stream = PDF::valueAs<PDF::Stream>(value);
    const auto text = PDF::exactText(document, stream ? Ref<PDF::Value>(stream->dict()) : value);
    return text ? Text(text->data(), text->data() + text->size()) : Text();
}

// Bytes of the file as the characters that they are in one.
Text textOf(const std::string& bytes)
{
    Text text;
    for (const char c : bytes)
        text += char32_t(Windows_1252::toCodePoint(static_cast<unsigned char>(c)));
    return text;
}

std::string lineEndingName(const Ref<PDF::Document>& document)
{
    const Ref<::String> ending = PDF::lineEndingOf(document);
    return ending->equals("\r\n") ? "CR LF" : ending->equals("\r") ? "CR" : "LF";
}

Host::Result<std::uint64_t> storedSize(const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream)
{
    const Ref<Interfaces::Stripe> data = document->streamData(stream, false);
    if (!data)
        return Host::codeRefusal(Error::get());
    return data->size();
}

Host::Result<std::uint64_t> decodedSize(
    const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream, Host::Budget& budget)
{
    return Host::copyStream(
        document, stream, Host::StreamForm::Decoded, budget, [](const std::uint8_t*, std::size_t) { return true; });
}

std::string numberOf(const PDF::Object& object)
{
    return std::to_string(object.id()) + " " + std::to_string(object.generation());
}

std::string textLine(const Ref<PDF::Document>& document, const PDF::Object& object, Host::Budget& budget)
{
    std::string line = numberOf(object) + " obj " + Tools::shown(textOf(document, object.value()));
    const auto stream = PDF::valueAs<PDF::Stream>(object.value());
    if (!stream)
        return line;
    auto stored = storedSize(document, stream);
    auto decoded = decodedSize(document, stream, budget);
    line += " stream: " + (stored ? std::to_string(*stored) + " bytes stored" : stored.refusal().message);
    if (stored)
        line += decoded ? ", " + std::to_string(*decoded) + " decoded" : "; not decoded: " + decoded.refusal().message;
    return line;
}

// A code as text; null for none.
std::string jsonCode(std::uint32_t code)
{
    return code ? json(Host::codeText(code)) : "null";
}

std::string jsonObject(const Ref<PDF::Document>& document, const PDF::Object& object, Host::Budget& budget)
{
    std::string out = "{\"id\": " + std::to_string(object.id())
        + ", \"generation\": " + std::to_string(object.generation())
        + ", \"text\": " + json(Host::toUtf8(textOf(document, object.value())));
    if (const auto stream = PDF::valueAs<PDF::Stream>(object.value())) {
        auto stored = storedSize(document, stream);
        auto decoded = decodedSize(document, stream, budget);
        out += ", \"stored\": " + (stored ? std::to_string(*stored) : "null");
        out += ", \"decoded\": " + (decoded ? std::to_string(*decoded) : "null");
        if (!decoded)
            out += ", \"error\": " + json(decoded.refusal().message)
                + ", \"code\": " + jsonCode(decoded.refusal().code);
    }
    return out + "}";
}

// A page by its object; "-" for one that the page tree has itself.
std::string pageText(const Host::Page& page)
{
    return page.object ? numberOf(*page.object) + " R" : "-";
}

void printPages(const Ref<PDF::Document>& document)
{
    const auto tree = Host::pages(document);
    std::printf("pages: %zu\n", tree ? tree->pages.size() : 0);
    if (!tree)
        std::printf("no page list: %s (%s)\n", tree.refusal().message.c_str(),
            Host::codeText(tree.refusal().code).c_str());
    for (std::size_t i = 0; tree && i < tree->pages.size(); ++i)
        std::printf("page %zu: %s\n", i + 1, pageText(tree->pages[i]).c_str());
    for (std::size_t i = 0; tree && i < tree->problems.size(); ++i)
        std::printf("problem: %s\n", tree->problems[i].c_str());
}

void printJsonPages(const Ref<PDF::Document>& document)
{
    const auto tree = Host::pages(document);
    const char* separator = "";
    std::printf(",\n\"pages\": [");
    for (std::size_t i = 0; tree && i < tree->pages.size(); ++i) {
        const Ref<PDF::Object>& object = tree->pages[i].object;
        std::printf("%s{\"id\": %s, \"generation\": %s}", std::exchange(separator, ", "),
            object ? std::to_string(object->id()).c_str() : "null",
            object ? std::to_string(object->generation()).c_str() : "null");
    }
    separator = "";
    std::printf("],\n\"pagesCode\": %s,\n\"pageProblems\": [", jsonCode(tree ? 0 : tree.refusal().code).c_str());
    for (std::size_t i = 0; tree && i < tree->problems.size(); ++i)
        std::printf("%s%s", std::exchange(separator, ", "), json(tree->problems[i]).c_str());
    std::printf("]");
}

enum class Extent { Whole, AllObjects, OneObject };

void printText(const Tools::Opened& opened, const Objects& objects, Extent extent)
{
    const Ref<PDF::Document>& document = opened.document;
    Host::Budget budget(document); // of all streams together
    if (extent == Extent::Whole) {
        std::printf("version: %s\n", Host::toUtf8(PDF::versionToString(document->version())).c_str());
        std::printf("line ending: %s\n", lineEndingName(document).c_str());
        std::printf("trailer: %s\n", Tools::shown(textOf(document, document->trailer())).c_str());
        std::printf("objects: %zu\n", objects.size());
    }
    for (const auto& object : objects)
        std::printf("%s\n", textLine(document, *object, budget).c_str());
    if (extent != Extent::Whole)
        return;
    printPages(document);
}

void printJson(const Tools::Opened& opened, const Objects& objects, Extent extent)
{
    const Ref<PDF::Document>& document = opened.document;
    Host::Budget budget(document); // of all streams together
    if (extent == Extent::OneObject) {
        std::printf("%s\n", jsonObject(document, *objects[0], budget).c_str());
        return;
    }
    if (extent == Extent::Whole)
        std::printf("{\"version\": %s,\n\"lineEnding\": %s,\n\"trailer\": %s,\n\"objects\": ",
            json(Host::toUtf8(PDF::versionToString(document->version()))).c_str(),
            json(lineEndingName(document)).c_str(), json(Host::toUtf8(textOf(document, document->trailer()))).c_str());
    const char* separator = "[\n";
    for (const auto& object : objects)
        std::printf("%s%s", std::exchange(separator, ",\n"), jsonObject(document, *object, budget).c_str());
    std::printf("%s]", objects.empty() ? "[" : "");
    if (extent == Extent::Whole) {
        printJsonPages(document);
        std::printf(",\n\"import\": %s}", Tools::importJson(opened).c_str());
    }
    std::printf("\n");
}

// The data of a stream object to standard output.
Host::Result<std::uint64_t> printStream(
    const Ref<PDF::Document>& document, const Ref<PDF::Object>& object, Host::StreamForm form)
{
    const auto stream = PDF::valueAs<PDF::Stream>(object->value());
    if (!stream)
        return Host::Refusal{Host::Reason::WrongArgument, "object " + numberOf(*object) + " is not a stream"};
    return Host::copyStream(document, stream, form, [](const std::uint8_t* bytes, std::size_t count) {
        return std::fwrite(bytes, 1, count, stdout) == count;
    });
}

// The text of bytes of the file, a long one cut to what fits in a row.
std::string cellOf(const std::string& bytes)
{
    constexpr std::size_t longest = 36;
    return Tools::shown(textOf(bytes.substr(0, longest))) + (bytes.size() > longest ? "..." : "");
}

void printLosses(const Host::Examination& examination)
{
    std::vector<std::vector<std::string>> rows = {{"OBJECT", "OFFSET", "LOSS", "IN THE FILE", "WRITTEN"}};
    for (const Host::Loss& loss : examination.losses.all())
        rows.push_back({loss.id == 0 ? "" : std::to_string(loss.id) + " " + std::to_string(loss.generation),
            std::to_string(loss.offset), std::string(Host::lossLabel(loss.kind)), cellOf(loss.inFile),
            cellOf(loss.written)});
    Tools::printTable(rows);
    for (std::size_t i = 0; i < Host::lossKindCount; ++i)
        if (const std::size_t count = examination.losses.count(Host::LossKind(i)))
            std::printf("%s: %zu\n", std::string(Host::lossLabel(Host::LossKind(i))).c_str(), count);
    std::printf("size of the new file: %s\n",
        examination.size == 0 ? "it can't be written" : std::to_string(examination.size).c_str());
    std::printf("its table: %s\n", examination.tableProblem.empty() ? "fits" : examination.tableProblem.c_str());
}

void printLossesAsJson(const Host::Examination& examination)
{
    const auto text = [](const std::string& bytes) { return json(Host::toUtf8(textOf(bytes))); };
    const char* separator = "";
    std::printf("{\"losses\": [");
    for (const Host::Loss& loss : examination.losses.all())
        std::printf("%s\n{\"id\": %u, \"generation\": %u, \"kind\": %s, \"words\": %s, \"offset\": %s, "
                    "\"inFile\": %s, \"written\": %s}",
            std::exchange(separator, ","), loss.id, loss.generation,
            json(Tools::identifierOf(loss.kind)).c_str(), json(Host::lossLabel(loss.kind)).c_str(),
            std::to_string(loss.offset).c_str(), text(loss.inFile).c_str(), text(loss.written).c_str());
    std::printf("],\n\"counts\": {");
    separator = "";
    for (std::size_t i = 0; i < Host::lossKindCount; ++i) {
        const auto kind = Host::LossKind(i);
        if (const std::size_t count = examination.losses.count(kind))
            std::printf("%s%s: %zu", std::exchange(separator, ", "), json(Tools::identifierOf(kind)).c_str(), count);
    }
    std::printf("},\n\"size\": %s, \"table\": %s,\n\"import\": null}\n",
        examination.size == 0 ? "null" : std::to_string(examination.size).c_str(),
        examination.tableProblem.empty() ? "null" : json(examination.tableProblem).c_str());
}

// Of a file that was imported everything is in memory but what the report names.
void printImportLosses(const CommandLine& line, const Tools::Opened& opened)
{
    const std::string losses = Tools::importLosses(*opened.report);
    if (line.has("--json"))
        std::printf("{\"losses\": [],\n\"counts\": {},\n\"size\": null, \"table\": null,\n\"import\": %s}\n",
            Tools::importJson(opened).c_str());
    else
        std::printf("the import lost %s\n", losses.empty() ? "nothing" : losses.c_str());
}

int inspectLosses(const CommandLine& line, const Console& console, const Tools::Opened& opened)
{
    if (opened.report) {
        printImportLosses(line, opened);
        return console.finish();
    }
    const auto examination = Tools::withProgress("examining", [&opened] { return Host::examine(opened.file, opened.limitFactor); });
    if (!examination)
        return console.refuse(line.operand(0), Tools::withOpeningHint(examination.refusal()));
    (line.has("--json") ? printLossesAsJson : printLosses)(*examination);
    return console.finish();
}

int inspectDocument(const CommandLine& line, const Console& console, const Tools::Opened& opened)
{
    const Ref<PDF::Document>& document = opened.document;
    const std::string& file = line.operand(0);
    const bool isStream = line.has("--stream");
    const bool isOne = isStream || line.has("--object");
    Objects objects = PDF::objectsOf(document);
    if (isOne) {
        const std::string option = isStream ? "--stream" : "--object";
        const auto id = Tools::numberOf(line.argument(option));
        if (!id)
            return console.misuse(option + " takes the number of an object");
        std::erase_if(objects, [&id](const auto& object) { return object->id() != *id; });
        if (objects.empty())
            return console.refuse(file, Host::codeRefusal(ErrNotFound));
    }
    if (isStream) {
        const auto form = line.has("--stored") ? Host::StreamForm::Stored : Host::StreamForm::Decoded;
        const auto printed = printStream(document, objects[0], form);
        return printed || std::ferror(stdout) ? console.finish() : console.refuse(file, printed.refusal());
    }
    const Extent extent = isOne ? Extent::OneObject : line.has("--objects") ? Extent::AllObjects : Extent::Whole;
    (line.has("--json") ? printJson : printText)(opened, objects, extent);
    return console.finish();
}

// What is wrong with the options together; empty when nothing is.
std::string conflictOf(const CommandLine& line)
{
    std::string conflict = line.conflictAmong({"--objects", "--object", "--stream", "--losses"});
    if (conflict.empty())
        conflict = line.conflictAmong({"--stream", "--json"});
    if (!conflict.empty())
        return conflict;
    return line.has("--stored") && !line.has("--stream") ? "--stored goes only with --stream" : "";
}

int inspect(const CommandLine& line, const Console& console)
{
    if (const std::string conflict = conflictOf(line); !conflict.empty())
        return console.misuse(conflict);
    const auto opened = Tools::Opening(line, console).open(line.operand(0));
    if (!opened)
        return console.refuse(line.operand(0), opened.refusal());
    return (line.has("--losses") ? inspectLosses : inspectDocument)(line, console, *opened);
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, inspect);
}
