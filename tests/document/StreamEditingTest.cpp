#include <document/Inspection.h>
#include <values/DictionaryObj.h>
#include <values/NameObj.h>
#include <values/NumberObj.h>
#include <values/Object.h>
#include <values/StreamObj.h>

#include "../support/FlateData.h"
#include "../support/LogCapture.h"
#include "../support/PdfText.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>

using namespace Tests;

namespace {

using Lines = std::vector<std::string>;

const char* flate = "/Filter /FlateDecode";

Ref<PDF::Stream> streamOf(const Ref<PDF::Document>& document, std::size_t index = 2)
{
    return PDF::objectsOf(document)[index]->valueAsStream();
}

Ref<TestStripe> callersData(const std::string& bytes, Fault fault = {})
{
    return make<TestStripe>(bytes, fault, 1);
}

std::string stored(const Ref<PDF::Document>& document, std::size_t index = 2)
{
    const Ref<Interfaces::Stripe> data = document->streamData(streamOf(document, index), false);
    return data ? bytesOf(data) : "(none)";
}

std::string written(const Ref<PDF::Document>& document)
{
    const Ref<TestStripe> out = make<TestStripe>("");
    return document->write(out) ? out->bytes() : "(failed)";
}

// All that an operation on streams can change, to compare a document before and after.
std::string state(const Ref<PDF::Document>& document)
{
    std::string result = document->changed() ? "changed\n" : "unchanged\n";
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document)) {
        result += plain(object->value()->asText()) + (object->value()->changed() ? " *" : "") + "\n";
        if (object->valueType() == PDF::Value::Type::Stream)
            result += bytesOf(document->streamData(object->valueAsStream(), false)) + "\n";
    }
    return result;
}

// Gives the streams of the document the filter that they had, FlateDecode for those at `flateAt`, and none
// for the others; how many had another one.
int restoreFilters(const Ref<PDF::Document>& document, const std::set<std::size_t>& flateAt)
{
    int restored = 0;
    for (std::size_t index = 2; index < PDF::objectsOf(document).size(); ++index) {
        const Ref<PDF::Stream> stream = streamOf(document, index);
        const auto name = flateAt.count(index) ? PDF::Name::create(::String::create("FlateDecode")) : nullptr;
        restored += (stream->compression() == PDF::Compression::Flate) != bool(name);
        stream->dict()->set(::String::create("Filter"), name);
    }
    return restored;
}

} // namespace

TEST(ReplacedData, comesBackWhateverItsSize)
{
    for (const std::size_t size : {std::size_t(0), std::size_t(1), std::size_t(65535), std::size_t(65536),
             std::size_t(65537), std::size_t(1000000)})
        for (const std::string& data : {incompressible(size), std::string(size, 'a')})
            for (const bool compress : {false, true}) {
                const Ref<PDF::Document> document = open(PdfText().pages().stream(3, "old", flate));
                const Ref<TestStripe> source = callersData("skipped" + data);
                source->seek(7);
                ASSERT_TRUE(document->setStreamData(streamOf(document), source, compress));
                EXPECT_EQ(source->position, 7u);
                EXPECT_TRUE(document->changed());
                const std::string file = written(document);
                const Ref<PDF::Document> again = open(compress ? file : damaged(file, "/Filter", "/Gilter"));
                ASSERT_TRUE(again);
                EXPECT_TRUE(bytesOf(again->streamData(streamOf(again), true)) == data)
                    << size << (compress ? " compressed" : " stored");
            }
}

TEST(ReplacedData, patchesTheLengthInPlace)
{
    const Ref<PDF::Document> document
        = open(PdfText().pages().object(3, "<< /Length 4 0 R >> stream\nxyz").object(4, "3.7"));
    EXPECT_TRUE(document->setStreamData(streamOf(document), callersData("seven.."), true));
    EXPECT_EQ(plain(PDF::objectsOf(document)[3]->value()->asText()), "7.7") << "the fraction stays";
    EXPECT_EQ(stored(document), "seven..") << "without a filter nothing compresses";
    EXPECT_EQ(bytesOf(document->streamData(streamOf(document), true)), "seven..");
}

TEST(ReplacedData, aFailureLeavesTheStreamAsItWas)
{
    struct Case {
        const char* rule;
        std::string dictionary;
        Fault fault;
        std::uint32_t code;
        std::string line;
    };
    const Case cases[] = {
        {"no length", "", {}, ErrStreamLength, "No length entry in dictionary of stream @123 << >>"},
        {"a length of another kind", "/Length (3)", {}, ErrStreamLength,
            "Length entry is not valid in dictionary of stream @123 << Length -> 3 >>"},
        {"a dangling length", "/Length 9 0 R", {}, ErrStreamLength,
            "Failed to resolve length reference to object 9h (9) for stream @123 << Length -> 9 (0) >>"},
        {"a reference to no number", "/Length 2 0 R", {}, ErrStreamLength,
            "Length object 2h (2) is not a valid number for stream @123 << Length -> 2 (0) >>"},
        {"another filter", "/Length 3 /Filter /LZWDecode", {}, ErrStreamConvert,
            "Compression method not supported LZWDecode"},
        {"a list of filters", "/Length 3 /Filter [ /FlateDecode ]", {}, ErrStreamConvert,
            "Compression method not supported Unknown"},
        {"a failing read", "/Length 3 /Filter /FlateDecode", {.read = 1}, ErrStreamConvert,
            "Failed to read updated stream data of stream @123 << Filter -> FlateDecode Length -> 3.0 >>; read 0h (0), "
            "of 10000h (65536); error: 7777h (30583)"},
    };
    LogCapture log;
    for (const Case& c : cases) {
        const std::string tail = " >>\nstream\nxyz\nendstream";
        const Ref<PDF::Document> document = open(PdfText().pages().object(3, "<< " + c.dictionary + tail));
        const Ref<PDF::Stream> stream = streamOf(document);
        const std::string before = plain(stream->asText());
        log.take();
        EXPECT_FALSE(document->setStreamData(stream, callersData(incompressible(200000), c.fault), true)) << c.rule;
        EXPECT_EQ(Error::get(), c.code) << c.rule;
        ASSERT_EQ(log.lines.size(), 1u) << c.rule;
        const std::string place = before.substr(0, before.find(' '));
        EXPECT_EQ(log.take()[0], c.line.find('@') == c.line.npos ? c.line : damaged(c.line, "@123", place)) << c.rule;
        EXPECT_EQ(plain(stream->asText()), before) << c.rule;
        EXPECT_FALSE(document->changed()) << c.rule;
        EXPECT_FALSE(stream.cast<PDF::StreamObj>()->strmData()) << c.rule;
    }
    const Ref<PDF::Document> document = open(PdfText().pages().stream(3, "xyz"));
    EXPECT_FALSE(document->setStreamData(nullptr, callersData(""), true));
    EXPECT_FALSE(document->setStreamData(streamOf(document), nullptr, true));
    EXPECT_EQ(Error::get(), std::uint32_t(ErrNullArgument));
    EXPECT_FALSE(document->setStreamData(streamOf(document), make<TestStripe>("1234"), false));
    EXPECT_EQ(Error::get(), std::uint32_t(ErrInvalidArgument)) << "the work buffer holds bytes";
}

TEST(Caching, cutsTheTieToTheFile)
{
    const Ref<TestStripe> file
        = make<TestStripe>(
            PdfText().pages().stream(3, "one").stream(4, "").object(5, "<< >> stream\nx").stream(6, "two"));
    const Ref<PDF::Document> document = PDF::Document::create(file);
    Error::set(0);
    EXPECT_TRUE(document->cacheStreams());
    EXPECT_EQ(Error::get(), std::uint32_t(ErrBadStreamLength)) << "a stream without length is passed over";
    EXPECT_FALSE(document->changed());
    file->elements.clear();
    EXPECT_EQ(stored(document, 2) + stored(document, 3) + stored(document, 5), "onetwo");
    const std::uint64_t reads = file->reads;
    EXPECT_TRUE(document->cacheStreams()) << "a second run copies nothing";
    EXPECT_EQ(file->reads, reads);
}

TEST(Caching, stopsAtTheFirstStreamThatCannotBeRead)
{
    const std::string text = PdfText().pages().stream(3, "one").stream(4, "two").stream(5, "three");
    const Ref<TestStripe> probe = make<TestStripe>(text);
    PDF::Document::create(probe);
    const Ref<PDF::Document> document
        = PDF::Document::create(make<TestStripe>(text, Fault{.read = probe->reads + 1}));
    LogCapture log;
    EXPECT_FALSE(document->cacheStreams());
    EXPECT_EQ(Error::get(), std::uint32_t(ErrNoResource));
    EXPECT_EQ(log.take().back(), "Failed to read from to be cached stream's data");
    EXPECT_TRUE(document->cacheStreams()) << "it can be repeated";
    EXPECT_EQ(stored(document, 3), "two");
}

TEST(Recompression, goesThereAndBackAndKeepsTheBytes)
{
    const std::string text = incompressible(100000) + std::string(100000, 'x');
    const Ref<PDF::Document> document = open(PdfText().pages().stream(3, text).stream(4, compressed(text), flate)
                                                 .stream(5, "jpeg", "/Filter /DCTDecode")
                                                 .stream(6, compressed("listed"), "/Filter [ /FlateDecode ]"));
    LogCapture log;
    const std::string listed = stored(document, 5);
    EXPECT_TRUE(document->recompress(PDF::Compression::None));
    EXPECT_EQ(log.take(), std::vector<std::string>{"Unsupported compression for stream of object 6h (6)"});
    EXPECT_TRUE(document->changed());
    EXPECT_TRUE(bytesOf(document->streamData(streamOf(document, 3), true)) == text);
    EXPECT_EQ(streamOf(document, 3)->compression(), PDF::Compression::None);
    EXPECT_EQ(plain(streamOf(document, 4)->dict()->find(::String::create("Filter"))->asText()), "DCTDecode");
    EXPECT_TRUE(document->recompress(PDF::Compression::Flate));
    const Ref<PDF::Document> again = open(written(document));
    for (const std::size_t index : {2u, 3u})
        EXPECT_TRUE(bytesOf(again->streamData(streamOf(again, index), true)) == text);
    EXPECT_EQ(bytesOf(again->streamData(streamOf(again, 4), true)), "jpeg") << "compressed as it stood, the name lost";
    EXPECT_EQ(stored(again, 5), listed);
    EXPECT_TRUE(again->recompress(PDF::Compression::Flate)) << "nothing to do";
    EXPECT_FALSE(again->changed());
    for (const auto target : {PDF::Compression::Unknown, PDF::Compression(7)}) {
        EXPECT_FALSE(again->recompress(target));
        EXPECT_EQ(Error::get(), std::uint32_t(ErrInvalidArgument));
    }
}

TEST(Recompression, aFailureRestoresAllButTheFilterOfTheFailingStream)
{
    const std::string good = compressed("text of a stream");
    std::string corrupt = good;
    corrupt.back() = char(~corrupt.back());
    for (const unsigned failing : {3u, 4u, 6u}) {
        const auto data = [&](unsigned id) { return id == failing ? corrupt : good; };
        const Ref<PDF::Document> document = open(PdfText().pages().stream(3, data(3), flate)
                .object(4, "<< /Length 5 0 R /Filter /FlateDecode >>\nstream\n" + data(4))
                .object(5, std::to_string(good.size()))
                .stream(6, data(6), flate));
        const std::string before = state(document);
        LogCapture log;
        EXPECT_FALSE(document->recompress(PDF::Compression::None));
        EXPECT_EQ(Error::get(), std::uint32_t(ErrStreamConvert));
        const std::string id = std::to_string(failing);
        EXPECT_EQ(log.take(), Lines{"Failed to convert data of stream " + id + "h (" + id + ")"});
        const Ref<PDF::Dictionary> left = streamOf(document, failing - 1)->dict();
        EXPECT_FALSE(left->find(::String::create("Filter")));
        left->set(::String::create("Filter"), PDF::Name::create(::String::create("FlateDecode")));
        EXPECT_EQ(state(document), before);
    }
}

TEST(Recompression, asksForTheLengthBeforeTheFilterChanges)
{
    const Ref<PDF::Document> document = open(PdfText().pages().object(3, "<< >> stream\nxyz"));
    LogCapture log;
    EXPECT_FALSE(document->recompress(PDF::Compression::Flate));
    EXPECT_EQ(log.take().back(), "Failed to retrieve data for stream 3h (3)");
    streamOf(document).cast<PDF::StreamObj>()->strmData(make<TestStripe>("xyz"));
    EXPECT_FALSE(document->recompress(PDF::Compression::Flate));
    EXPECT_EQ(Error::get(), std::uint32_t(ErrStreamLength));
    EXPECT_EQ(log.take(), Lines{"No length entry in dictionary of stream 3h (3)"});
    EXPECT_EQ(streamOf(document)->compression(), PDF::Compression::None);
}

// Calls fail one after another; what is then left is compared with a document that nothing happened to.
TEST(EveryFailingCall, ofTheFileLeavesTheDocumentAsItWas)
{
    const std::string data = incompressible(70000);
    const std::string text = PdfText().pages().stream(3, data).stream(4, compressed(data), flate).stream(5, "x");
    const Ref<TestStripe> probe = make<TestStripe>(text);
    const std::string before = state(PDF::Document::create(probe));
    const Ref<TestStripe> opening = make<TestStripe>(text);
    PDF::Document::create(opening);
    const std::function<bool(PDF::Document&)> operations[] = {
        [](PDF::Document& document) { return document.recompress(PDF::Compression::Flate); },
        [](PDF::Document& document) { return document.recompress(PDF::Compression::None); },
        [](PDF::Document& document) { return document.cacheStreams(); },
    };
    const std::pair<std::uint64_t Fault::*, std::uint64_t> kinds[]
        = {{&Fault::read, opening->reads}, {&Fault::seek, opening->seeks}, {&Fault::size, opening->sizes}};
    for (const auto& operation : operations)
        for (const auto& [kind, first] : kinds)
            for (std::uint64_t n = 0;; ++n) {
                SCOPED_TRACE(std::to_string(&operation - operations) + " " + std::to_string(n));
                Fault fault;
                fault.*kind = first + n;
                const Ref<TestStripe> file = make<TestStripe>(text, fault);
                const Ref<PDF::Document> document = PDF::Document::create(file);
                Error::set(0);
                const bool isDone = operation(*document);
                if (!file->hasFailed) {
                    EXPECT_TRUE(isDone && n > 0);
                    break;
                }
                // A caching passes over a stream that it can't have.
                EXPECT_EQ(isDone, &operation == operations + 2 && kind == &Fault::size);
                EXPECT_NE(Error::get(), 0u);
                EXPECT_LE(restoreFilters(document, {3}), 1);
                EXPECT_EQ(state(document), before);
            }
}

TEST(EveryFailingCall, ofTheCallersDataLeavesTheStreamAsItWas)
{
    for (const bool compress : {false, true})
        for (std::uint64_t n = 0; n <= 4; ++n) {
            const Ref<PDF::Document> document = open(PdfText().pages().stream(3, "old", flate));
            const std::string before = state(document);
            const bool isDone = document->setStreamData(
                streamOf(document), callersData(incompressible(200000), {.read = n}), compress);
            EXPECT_EQ(isDone, n == 4) << "one read for each block";
            EXPECT_EQ(state(document) == before, !isDone) << n;
        }
}

TEST(Changed, afterEachOperationAndInSequence)
{
    const std::map<char, std::function<void(const Ref<PDF::Document>&)>> operations = {
        {'s', [](const auto& document) { document->streamData(streamOf(document, 3), false); }},
        {'d', [](const auto& document) { document->streamData(streamOf(document, 3), true); }},
        {'c', [](const auto& document) { document->cacheStreams(); }},
        {'w', [](const auto& document) { written(document); }},
        {'x', [](const auto& document) {
             document->setStreamData(streamOf(document, 3), callersData("x", {.read = 0}), true);
         }},
        {'k', [](const auto& document) {
             streamOf(document)->dict()->set(::String::create("K"), make<PDF::NumberObj>(1, 0));
         }},
        {'R', [](const auto& document) { document->setStreamData(streamOf(document, 3), callersData("new"), true); }},
        {'D', [](const auto& document) {
             PDF::objectsOf(document)[1]->valueAsDictionary()->set(::String::create("K"), nullptr);
         }},
        {'F', [](const auto& document) { document->recompress(PDF::Compression::Flate); }},
        {'z', [](const auto& document) {
             for (const std::size_t index : {2u, 3u, 4u})
                 streamOf(document, index).template cast<PDF::StreamObj>()->resetChanged();
         }},
        // Fails at the last stream, which then has no filter: the next one succeeds.
        {'N', [](const auto& document) { document->recompress(PDF::Compression::None); }},
    };
    std::vector<std::pair<std::string, bool>> rows = {{"", false}, {"N", false}, {"NN", true}, {"FN", true},
        {"DN", true},
        {"RN", false}, // deliberate: the roll back forgets what was changed before
        {"RFN", true}, {"NR", true}, {"kNs", false},
        {"Rz", false}, {"FzF", true}};
    for (const char harmless : std::string("sdcwxk")) {
        for (const char next : std::string("sdcwxkN"))
            rows.push_back({{harmless, next}, false});
        for (const char change : std::string("RDF"))
            for (const std::string& sequence : {std::string{harmless, change}, std::string{change, harmless}})
                rows.push_back({sequence, true});
    }
    for (const auto& [sequence, expected] : rows) {
        const Ref<PDF::Document> document = open(PdfText().pages().stream(3, "plain")
                .stream(4, compressed("text"), flate).stream(5, "corrupt", flate));
        for (const char operation : sequence) {
            operations.at(operation)(document);
            for (const std::size_t index : {2u, 3u, 4u})
                document->streamData(streamOf(document, index), false)->seek(0);
        }
        EXPECT_EQ(document->changed(), expected) << sequence;
    }
}
