#include <host/streams/StreamBytes.h>

#include <tests/support/Streams.h>

#include <gtest/gtest.h>

using namespace Tests;
using namespace Host;

namespace {

std::string refused(std::uint32_t code)
{
    return "refused: " + std::to_string(code);
}

std::string decodedText(const Ref<PDF::Document>& document)
{
    auto bytes = decoded(document, streamOf(document));
    return bytes ? std::string(bytes->begin(), bytes->end()) : refused(bytes.refusal().code);
}

} // namespace

TEST(StreamBytes, decodesByTheDictionaryWhateverTheLibraryHolds)
{
    const std::string data = incompressible(200000);
    const Ref<PDF::Document> document = Tests::open(PdfText().pages().stream(3, compressed(data), flate));
    const Ref<PDF::StreamObj> stream = streamOf(document).cast<PDF::StreamObj>();
    EXPECT_TRUE(decodedText(document) == data);
    const Ref<Interfaces::Stripe> held = document->streamData(stream, false);
    held->seek(7);
    EXPECT_TRUE(decodedText(document) == data) << "from the beginning, wherever the held form is read";
    EXPECT_EQ(held->tell(), 7u);
    stream->strmData(make<TestStripe>(compressed("other")));
    EXPECT_EQ(decodedText(document), "other");
    stream->strmData(narrow(""));
    EXPECT_EQ(decodedText(document), refused(ErrStreamConvert)) << "data of another width";
}

TEST(StreamBytes, whatCantBeDecodedIsRefusedWithTheCode)
{
    const std::string longText = "some text that is long enough to be cut somewhere";
    const std::string data = compressed(longText);
    // Rule, data, entries of the dictionary, and what comes out.
    const std::tuple<const char*, std::string, const char*, std::string> cases[] = {
        {"no filter", "plain", "", "plain"},
        {"no data", "", flate, ""},
        {"followed by garbage", data + std::string(200000, 'x'), flate, longText},
        {"a predictor", compressed(std::string("\2ab\2\1\1", 6)),
            "/Filter /FlateDecode /DecodeParms << /Predictor 12 /Columns 2 >>", "abbc"},
        {"expands a thousandfold", compressed(std::string(30000000, 'a')), flate, std::string(30000000, 'a')},
        {"cut short", data.substr(0, data.size() - 5), flate, refused(ErrStreamConvert)},
        {"corrupt", corrupted(data), flate, refused(ErrStreamConvert)},
        {"no such data", "plain", flate, refused(ErrStreamConvert)},
        {"another filter", "plain", "/Filter /DCTDecode", refused(ErrBadFilter)},
        {"an array of one filter", data, "/Filter [ /FlateDecode ]", longText},
        {"a filter that is damaged after a good one", "~>", "/Filter [ /ASCII85Decode /LZWDecode ]", ""},
        {"a filter by reference", data, "/Filter 2 0 R", refused(ErrBadFilter)},
        {"an unusable Length", "plain", "/Length 99999", refused(ErrBadStreamLength)},
    };
    for (const auto& [rule, stream, entries, expected] : cases) {
        const Ref<PDF::Document> document = Tests::open(PdfText().pages().stream(3, stream, entries));
        for (int call = 0; call < 2; ++call)
            EXPECT_TRUE(decodedText(document) == expected) << rule;
    }
}

TEST(StreamBytes, aSinkCanEndTheCopying)
{
    const Ref<PDF::Document> document = Tests::open(PdfText().pages().stream(3, incompressible(300000)));
    std::size_t taken = 0;
    const auto takeOnce = [&taken](const std::uint8_t*, std::size_t count) {
        taken += count;
        return false;
    };
    EXPECT_FALSE(copyStream(document, streamOf(document), StreamForm::Stored, takeOnce));
    EXPECT_TRUE(taken > 0 && taken < 300000) << taken;
}
