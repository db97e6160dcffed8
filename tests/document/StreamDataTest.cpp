#include <document/Inspection.h>
#include <document/StreamPump.h>
#include <values/Object.h>
#include <values/Stream.h>

#include "../support/FlateData.h"
#include "../support/LogCapture.h"
#include "../support/PdfText.h"

#include <gtest/gtest.h>

using namespace Tests;

namespace {

Ref<PDF::Stream> streamOf(const Ref<PDF::Document>& document, std::size_t index = 2)
{
    return PDF::objectsOf(document)[index]->valueAsStream();
}

const char* flate = "/Filter /FlateDecode";

} // namespace

TEST(StreamData, decodesEveryByteOfEverySize)
{
    std::string allBytes;
    for (int i = 0; i < 256; ++i)
        allBytes += static_cast<char>(i);
    for (const std::string& data : {std::string(), std::string("x"), allBytes, incompressible(65535),
             incompressible(65536),
             incompressible(65537), incompressible(300000), std::string(5000000, 'a')}) {
        const Ref<PDF::Document> document = open(PdfText().pages().stream(3, compressed(data), flate));
        const Ref<Interfaces::Stripe> decoded = document->streamData(streamOf(document), true);
        ASSERT_TRUE(decoded) << data.size();
        EXPECT_EQ(decoded->tell(), 0u);
        EXPECT_EQ(decoded->size(), data.size());
        EXPECT_FALSE(document->changed());
        EXPECT_TRUE(bytesOf(decoded) == data) << data.size();
    }
}

TEST(StreamData, theFirstCallDecidesWhatLaterOnesGive)
{
    const Ref<PDF::Document> document = open(PdfText().pages().stream(3, compressed("text"), flate));
    const Ref<PDF::Stream> stream = streamOf(document);
    EXPECT_EQ(bytesOf(document->streamData(stream, true)), "text");
    const Ref<Interfaces::Stripe> second = document->streamData(stream, true);
    EXPECT_EQ(bytesOf(second), compressed("text")) << "held data is never decoded";
    EXPECT_TRUE(document->streamData(stream, false) == second);
    const Ref<PDF::Document> plainDocument = open(PdfText().pages().stream(3, "stored"));
    EXPECT_EQ(bytesOf(plainDocument->streamData(streamOf(plainDocument), true)), "stored");
}

TEST(StreamData, theFilterAndTheLengthMustBeUsable)
{
    const auto file = [](const std::string& dictionary, const std::string& data = "12345") {
        return std::string(PdfText().pages().object(3, "<< " + dictionary + " >>\nstream\n" + data).object(4, "4"));
    };
    struct Case {
        const char* rule;
        std::string file;
        std::uint32_t code;
        std::vector<std::string> lines;
    };
    const std::string whole = compressed("some text of some length");
    const Case cases[] = {
        {"a direct length", file("/Length 5"), 0, {}},
        {"an indirect length", file("/Length 4 0 R"), 0, {}},
        {"no length", file(""), ErrBadStreamLength, {"Stream has no Length entry"}},
        {"a dangling length", file("/Length 9 0 R"), ErrBadStreamLength,
            {"Failed to resolve Length object reference"}},
        {"a length of another kind", file("/Length /Five"), ErrBadStreamLength,
            {"Stream Length has unexpected type: 1h (1)"}},
        {"a reference to no number", file("/Length 2 0 R"), ErrBadStreamLength,
            {"Stream Length has unexpected type: 6h (6)"}},
        {"a negative length", file("/Length -5"), ErrBadStreamLength,
            {"Stream Length attribute value is invalid: FFFFFFFFFFFFFFFBh (-5)"}},
        {"a broken length", file("/Length 10.5"), ErrBadStreamLength,
            {"Stream Length attribute value is invalid: Ah (10)"}},
        {"a length beyond the file", file("/Length 9223372036854775807"), ErrBadStreamLength,
            {"Stream end 80000000000000A0h (9223372036854775968) is out of range of underlying file: 15Bh (347)"}},
        {"another filter", file("/Filter /LZWDecode /Length 5"), ErrBadFilter, {"Unsupported filter type LZWDecode"}},
        {"a list of filters", file("/Filter [ /FlateDecode ] /Length 5"), ErrBadFilter,
            {"Unexpected type for filter property; got = 8h (8), expected = 1h (1)"}},
        {"data that is none", file("/Filter /FlateDecode /Length 5"), ErrStreamConvert,
            {"Failed to convert data of stream"}},
        {"data cut short", PdfText().pages().stream(3, whole.substr(0, 20), flate), ErrStreamConvert,
            {"Failed to flush conversion of stream"}},
        {"empty data", PdfText().pages().stream(3, "", flate), 0, {}},
        {"garbage behind the data", PdfText().pages().stream(3, whole + incompressible(300000), flate), 0, {}},
    };
    LogCapture log;
    for (const Case& c : cases) {
        const Ref<PDF::Document> document = open(c.file);
        ASSERT_TRUE(document) << c.rule;
        log.take();
        Error::set(0);
        EXPECT_EQ(bool(document->streamData(streamOf(document), true)), c.code == 0) << c.rule;
        EXPECT_TRUE(c.code == 0 || Error::get() == c.code) << c.rule << " " << Error::get();
        EXPECT_EQ(log.take(), c.lines) << c.rule;
        EXPECT_FALSE(document->changed()) << c.rule;
    }
    const Ref<PDF::Document> document = open(file("/Length 5"));
    EXPECT_FALSE(document->streamData(nullptr, false));
    EXPECT_EQ(Error::get(), std::uint32_t(ErrNullArgument));
}

TEST(StreamData, everyFailingReadAndSeekEndsADecoding)
{
    const std::string data = incompressible(200000);
    const std::string file = PdfText().pages().stream(3, compressed(data), flate);
    const Ref<TestStripe> probe = make<TestStripe>(file);
    PDF::Document::create(probe);
    // The view makes one seek and one read for each block, after the opening's.
    for (std::uint64_t n = 0; n < 5; ++n) {
        const Ref<TestStripe> stripe = make<TestStripe>(file, Fault{.read = probe->reads + n});
        const Ref<PDF::Document> document = PDF::Document::create(stripe);
        ASSERT_TRUE(document);
        const bool isDecoded = bool(document->streamData(streamOf(document), true));
        EXPECT_EQ(isDecoded, n == 4) << n;
        EXPECT_TRUE(isDecoded || Error::get() == ErrStreamConvert);
    }
}
