#include <host/files/MemoryStripe.h>

#include <tests/support/Streams.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>

using namespace Tests;

TEST(ReplacedData, comesBackWhateverItsSize)
{
    for (const std::size_t size : {0u, 1u, 65535u, 65536u, 65537u, 1000000u})
        for (const std::string& data : {incompressible(size), std::string(size, 'a')})
            for (const bool compress : {false, true}) {
                SCOPED_TRACE(std::to_string(size) + (compress ? " compressed" : " stored"));
                const Ref<PDF::Document> document = open(PdfText().pages().stream(3, "old", flate));
                const Ref<TestStripe> source = narrow("skipped" + data);
                source->seek(7);
                ASSERT_TRUE(document->setStreamData(streamOf(document), source, compress));
                EXPECT_EQ(source->position, 7u);
                const std::string file = written(document);
                EXPECT_TRUE(decodedBytes(open(compress ? file : damaged(file, "/Filter", "/Gilter"))) == data);
            }
}

TEST(StoredData, ofAnotherDocumentIsNoDataOfThisOne)
{
    const std::string file = PdfText().pages().stream(3, "own data");
    const Ref<PDF::Document> document = open(file);
    const Ref<PDF::Document> other = open(damaged(file, "own data", "its data"));
    const Ref<PDF::Stream> stream = streamOf(document);
    EXPECT_EQ(bytesOf(other->streamData(stream, false)), "its data") << "at the same place of its file";
    EXPECT_TRUE(PDF::isOfOtherFile(other, stream) && !PDF::isOfOtherFile(document, stream));
    EXPECT_EQ(stored(document), "own data");
    EXPECT_EQ(bytesOf(other->streamData(stream, false)), "own data") << "what is held is anybody's";
    EXPECT_FALSE(PDF::isOfOtherFile(other, stream) || PDF::isOfOtherFile(other, nullptr));
    // One that an application makes belongs to whoever reads it.
    const Ref<PDF::StreamObj> made = make<PDF::StreamObj>(stream->dict(), stream->strmOfs());
    EXPECT_EQ(bytesOf(other->streamData(made, false)), "its data");
    EXPECT_TRUE(made->strmData());
}

TEST(ReplacedData, patchesTheLengthInPlace)
{
    const Ref<PDF::Document> document
        = open(PdfText().pages().object(3, "<< /Length 4 0 R >> stream\nxyz").object(4, "3.7"));
    EXPECT_TRUE(document->setStreamData(streamOf(document), narrow("seven.."), true));
    EXPECT_EQ(plain(PDF::objectsOf(document)[3]->value()->asText()), "7.7") << "the fraction stays";
    EXPECT_EQ(stored(document), "seven..") << "without a filter nothing compresses";
}

TEST(ReplacedData, aFailureLeavesTheStreamAsItWas)
{
    // Entries, fault, code, and line, in which @ stands for the name of the stream.
    const std::tuple<std::string, Fault, std::uint32_t, std::string> cases[] = {
        {"", {}, ErrStreamLength, "No length entry in dictionary of stream @"},
        {"/Length (3)", {}, ErrStreamLength, "Length entry is not valid in dictionary of stream @"},
        {"/Length 9 0 R", {}, ErrStreamLength, "Failed to resolve length reference to object 9h (9) for stream @"},
        {"/Length 2 0 R", {}, ErrStreamLength, "Length object 2h (2) is not a valid number for stream @"},
        {"/Length 3 /Filter /LZWDecode", {}, ErrStreamConvert, "Compression method not supported LZWDecode"},
        {"/Length 3 /Filter [ /FlateDecode ]", {}, ErrStreamConvert, "Compression method not supported Unknown"},
        {"/Length 3 /Filter /FlateDecode", {.read = 1}, ErrStreamConvert,
            "Failed to read updated stream data of stream @; read 0h (0) of 10000h (65536); error: 7777h (30583)"},
    };
    LogCapture log;
    for (const auto& [entries, fault, code, line] : cases) {
        SCOPED_TRACE(entries);
        const Ref<PDF::Document> document
            = open(PdfText().pages().object(3, "<< " + entries + " >>\nstream\nxyz\nendstream"));
        const Ref<PDF::StreamObj> stream = streamOf(document).cast<PDF::StreamObj>();
        const std::string name = plain(stream->asText());
        EXPECT_EQ(codeOf(document->setStreamData(stream, narrow(incompressible(200000), fault), true)), code);
        EXPECT_EQ(log.take(), Lines{line.find('@') == line.npos ? line : damaged(line, "@", name)});
        EXPECT_EQ(plain(stream->asText()), name);
        EXPECT_FALSE(document->changed() || stream->strmData());
    }
    const Ref<PDF::Document> document = open(PdfText().pages().stream(3, "xyz"));
    EXPECT_EQ(codeOf(document->setStreamData(nullptr, narrow(""), true)), ErrNullArgument);
    EXPECT_EQ(codeOf(document->setStreamData(streamOf(document), nullptr, true)), ErrNullArgument);
    EXPECT_EQ(codeOf(document->setStreamData(streamOf(document), make<TestStripe>("1234"), false)),
        ErrInvalidArgument) << "the work buffer holds bytes";
}

TEST(Caching, cutsTheTieToTheFile)
{
    const Ref<TestStripe> file = make<TestStripe>(
        PdfText().pages().stream(3, "one").stream(4, "").object(5, "<< >> stream\nx").stream(6, "two"));
    const Ref<PDF::Document> document = PDF::Document::create(file);
    Error::set(0);
    EXPECT_TRUE(document->cacheStreams());
    EXPECT_EQ(Error::get(), ErrBadStreamLength) << "a stream without length is passed over";
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
    const Ref<PDF::Document> document = PDF::Document::create(make<TestStripe>(text, Fault{.read = probe->reads + 1}));
    LogCapture log;
    EXPECT_EQ(codeOf(document->cacheStreams()), ErrNoResource);
    EXPECT_EQ(log.lines.back(), "Failed to read from to be cached stream's data");
    EXPECT_TRUE(document->cacheStreams()) << "it can be repeated";
    EXPECT_EQ(stored(document, 3), "two");
}

TEST(Recompression, leavesWhatItCantOrNeedNotConvert)
{
    const Ref<PDF::Document> document = open(PdfText().pages().stream(3, "text").stream(4, "jpeg", "/Filter /DCTDecode")
                                                 .stream(5, "listed", "/Filter [ /FlateDecode ]"));
    LogCapture log;
    EXPECT_TRUE(document->recompress(PDF::Compression::None));
    EXPECT_EQ(log.take(), Lines{"Unsupported compression for stream of object 5h (5)"});
    EXPECT_FALSE(document->changed());
    EXPECT_TRUE(document->recompress(PDF::Compression::Flate));
    const Ref<PDF::Document> again = open(written(document));
    EXPECT_EQ(stored(again, 4), "listed");
    EXPECT_TRUE(again->recompress(PDF::Compression::Flate));
    EXPECT_FALSE(again->changed());
    EXPECT_TRUE(again->recompress(PDF::Compression::None));
    EXPECT_EQ(stored(again, 2), "text");
    EXPECT_EQ(stored(again, 3), "jpeg") << "compressed as it stood, the name lost";
    const Ref<Interfaces::Stripe> bytes[] = {narrow("data"), make<Host::ByteMemoryStripe>(std::vector<std::uint8_t>(4))};
    for (const Ref<Interfaces::Stripe>& data : bytes) {
        streamOf(again).cast<PDF::StreamObj>()->strmData(data);
        EXPECT_EQ(codeOf(again->recompress(PDF::Compression::Flate)), ErrStreamLength) << "elements of another width";
    }
    for (const auto target : {PDF::Compression::Unknown, PDF::Compression(7)})
        EXPECT_EQ(codeOf(again->recompress(target)), ErrInvalidArgument);
}

TEST(Recompression, aFailureNamesTheStreamWhoseFilterMayHaveChanged)
{
    const Ref<PDF::Document> document = open(PdfText().pages().object(3, "<< >> stream\nxyz"));
    LogCapture log;
    EXPECT_FALSE(document->recompress(PDF::Compression::Flate));
    EXPECT_EQ(log.take().back(), "Failed to retrieve data for stream 3h (3)");
    streamOf(document).cast<PDF::StreamObj>()->strmData(make<TestStripe>("xyz"));
    EXPECT_EQ(codeOf(document->recompress(PDF::Compression::Flate)), ErrStreamLength);
    EXPECT_EQ(log.take(), Lines{"No length entry in dictionary of stream 3h (3)"});
    EXPECT_EQ(streamOf(document)->compression(), PDF::Compression::None) << "the length is asked for before";
    const Ref<PDF::Document> damaged = open(PdfText().pages().stream(3, corrupted(compressed("text")), flate));
    EXPECT_EQ(codeOf(damaged->recompress(PDF::Compression::None)), ErrStreamConvert);
    EXPECT_EQ(log.take(), Lines{"Failed to convert data of stream 3h (3)"});
    EXPECT_EQ(streamOf(damaged)->compression(), PDF::Compression::None);
}

TEST(Changed, afterEachOperationAndInSequence)
{
    static const auto replace = [](const Ref<PDF::Document>& document, const Ref<TestStripe>& data) {
        document->setStreamData(streamOf(document, 3), data, true);
    };
    const std::map<char, std::function<void(const Ref<PDF::Document>&)>> operations = {
        {'s', [](const auto& document) { stored(document, 3); }},
        {'d', [](const auto& document) { decodedBytes(document, 3); }},
        {'c', [](const auto& document) { document->cacheStreams(); }},
        {'w', [](const auto& document) { written(document); }},
        {'x', [](const auto& document) { replace(document, narrow("x", {.read = 0})); }},
        {'k', [](const auto& document) { streamOf(document)->dict()->set(text("K"), make<PDF::NumberObj>(1, 0)); }},
        {'R', [](const auto& document) { replace(document, narrow("new")); }},
        {'D', [](const auto& document) { PDF::objectsOf(document)[1]->valueAsDictionary()->set(text("K"), nullptr); }},
        {'F', [](const auto& document) { document->recompress(PDF::Compression::Flate); }},
        // Fails at the last stream, which then has no filter: the next one succeeds.
        {'N', [](const auto& document) { document->recompress(PDF::Compression::None); }},
    };
    std::vector<std::pair<std::string, bool>> rows = {{"N", false}, {"NN", true}, {"FN", true}, {"DN", true},
        {"RFN", true}, {"NR", true}, {"kNs", false},
        {"RN", false}}; // deliberate: the roll back forgets what was changed before
    const std::string harmless = "sdcwxk";
    for (const char first : harmless) {
        rows.push_back({first + harmless, false});
        for (const std::string change : {"R", "D", "F"})
            rows.insert(rows.end(), {{first + change, true}, {change + first, true}});
    }
    for (const auto& [sequence, expected] : rows) {
        const Ref<PDF::Document> document = open(PdfText().pages().stream(3, "plain")
                .stream(4, compressed("text"), flate).stream(5, "corrupt", flate));
        for (const char operation : sequence) {
            operations.at(operation)(document);
            for (const std::size_t index : {2u, 3u, 4u}) // a writing leaves its data at its end
                document->streamData(streamOf(document, index), false)->seek(0);
        }
        EXPECT_EQ(document->changed(), expected) << sequence;
    }
}
