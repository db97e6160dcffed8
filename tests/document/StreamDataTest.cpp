#include <tests/support/Streams.h>

#include <gtest/gtest.h>

using namespace Tests;

TEST(StreamData, theFirstCallDecidesWhatLaterOnesGive)
{
    const Ref<PDF::Document> document = open(PdfText().pages().stream(3, compressed("text"), flate));
    EXPECT_EQ(decodedBytes(document), "text");
    EXPECT_EQ(decodedBytes(document), compressed("text")) << "held data is never decoded";
    EXPECT_TRUE(document->streamData(streamOf(document), true) == document->streamData(streamOf(document), false));
}

TEST(StreamData, theFilterAndTheLengthMustBeUsable)
{
    struct Case {
        const char* rule;
        std::string entries;
        std::uint32_t code;
        Lines lines;
        std::string data = "12345";
    };
    const std::string whole = compressed("some text of some length");
    const Case cases[] = {
        {"an indirect length", "/Length 4 0 R", 0, {}},
        {"no length", "", ErrBadStreamLength, {"Stream has no Length entry"}},
        {"a dangling one", "/Length 9 0 R", ErrBadStreamLength, {"Failed to resolve Length object reference"}},
        {"a length of another kind", "/Length /Five", ErrBadStreamLength,
            {"Stream Length has unexpected type: 1h (1)"}},
        {"a negative length", "/Length -5", ErrBadStreamLength,
            {"Stream Length attribute value is invalid: FFFFFFFFFFFFFFFBh (-5)"}},
        {"a broken length", "/Length 10.5", ErrBadStreamLength,
            {"Stream Length attribute value is invalid: Ah (10)"}},
        {"a length beyond the file", "/Length 9223372036854775807", ErrBadStreamLength,
            {"Stream end 80000000000000A0h (9223372036854775968) is out of range of underlying file: 15Bh (347)"}},
        {"another filter", "/Filter /LZWDecode /Length 5", ErrBadFilter, {"Unsupported filter type LZWDecode"}},
        {"a list of filters", "/Filter [ /FlateDecode ] /Length 5", ErrBadFilter,
            {"Unexpected type for filter property; got = 8h (8), expected = 1h (1)"}},
        {"data that is none", "/Filter /FlateDecode /Length 5", ErrStreamConvert,
            {"Failed to convert data of stream"}},
        {"data cut short", "/Filter /FlateDecode /Length 20", ErrStreamConvert,
            {"Failed to flush conversion of stream"}, whole},
        {"empty data", "/Filter /FlateDecode /Length 0", 0, {}},
        {"garbage behind it", "/Filter /FlateDecode /Length 300000", 0, {}, whole + incompressible(300000)},
    };
    LogCapture log;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.rule);
        const Ref<PDF::Document> document
            = open(PdfText().pages().object(3, "<< " + c.entries + " >>\nstream\n" + c.data).object(4, "4"));
        const Ref<Interfaces::Stripe> data = document->streamData(streamOf(document), true);
        EXPECT_EQ(codeOf(data), c.code);
        EXPECT_TRUE(!data || data->tell() == 0);
        EXPECT_EQ(log.take(), c.lines);
        EXPECT_FALSE(document->changed());
    }
    EXPECT_EQ(codeOf(open(PdfText().pages())->streamData(nullptr, false)), ErrNullArgument);
}
