#include <document/Inspection.h>
#include <values/DictionaryObj.h>
#include <values/NameObj.h>
#include <values/Number.h>
#include <values/Object.h>
#include <values/StreamObj.h>

#include "../support/FlateData.h"
#include "../support/LogCapture.h"
#include "../support/PdfText.h"

#include <gtest/gtest.h>

using namespace Tests;

namespace {

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
    corrupt[corrupt.size() - 1] ^= 1;
    const Ref<PDF::Document> document = open(PdfText().pages().stream(3, good, flate)
                                                 .object(4, "<< /Length 5 0 R /Filter /FlateDecode >>\nstream\n" + good)
                                                 .object(5, std::to_string(good.size()))
                                                 .stream(6, corrupt, flate));
    const std::string before = state(document);
    LogCapture log;
    EXPECT_FALSE(document->recompress(PDF::Compression::None));
    EXPECT_EQ(Error::get(), std::uint32_t(ErrStreamConvert));
    EXPECT_EQ(log.take(), std::vector<std::string>{"Failed to convert data of stream 6h (6)"});
    const Ref<PDF::Dictionary> failing = streamOf(document, 5)->dict();
    EXPECT_FALSE(failing->find(::String::create("Filter")));
    failing->set(::String::create("Filter"), PDF::Name::create(::String::create("FlateDecode")));
    EXPECT_EQ(state(document), before);
}

TEST(Recompression, everyFailingCallOfTheFileRollsBack)
{
    const std::string text = PdfText().pages().stream(3, "one").stream(4, incompressible(70000)).stream(5, "three");
    const Ref<TestStripe> probe = make<TestStripe>(text);
    PDF::Document::create(probe);
    for (std::uint64_t n = 0;; ++n) {
        const Ref<TestStripe> file = make<TestStripe>(text, Fault{.read = probe->reads + n});
        const Ref<PDF::Document> document = PDF::Document::create(file);
        if (document->recompress(PDF::Compression::Flate)) {
            EXPECT_EQ(n, 4u) << "one read for each block";
            break;
        }
        EXPECT_EQ(Error::get(), std::uint32_t(ErrStreamConvert));
        for (const Ref<PDF::Object>& object : PDF::objectsOf(document))
            EXPECT_FALSE(object->value()->changed()) << n;
        EXPECT_FALSE(document->changed());
        EXPECT_EQ(stored(document, 2) + stored(document, 4), "onethree");
    }
}
