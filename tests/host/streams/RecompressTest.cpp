#include <host/streams/Recompress.h>
#include <host/streams/StreamChecks.h>

#include <tests/support/Pages.h>
#include <tests/support/Streams.h>

#include <gtest/gtest.h>

using namespace Tests;
using Host::StreamOutcome;

namespace {

const auto toNone = PDF::Compression::None;
const auto toFlate = PDF::Compression::Flate;

// One word for each stream: what became of it, its filter, and an exclamation mark for parameters.
std::string told(const Ref<PDF::Document>& document, PDF::Compression target)
{
    const auto streams = Host::recompress(document, target);
    if (!streams)
        return streams.refusal().message;
    std::string all;
    for (const auto& stream : *streams) {
        const char* words[] = {"converted", "fitting", "other", "noName"};
        all += all.empty() ? "" : " ";
        all += words[int(stream.outcome)];
        all += stream.filter.empty() ? "" : "/" + stream.filter;
        all += stream.hasDecodeParameters ? "!" : "";
        EXPECT_EQ(stream.sizeBefore != 0, stream.outcome == StreamOutcome::Converted);
        const auto data = document->streamData(stream.object->valueAsStream(), false);
        EXPECT_TRUE(stream.outcome != StreamOutcome::Converted || stream.sizeAfter == data->size());
    }
    return all;
}

} // namespace

TEST(Recompress, tellsWhatBecameOfEachStream)
{
    const std::string data = compressed("text");
    const std::string rows = compressed(std::string("\2te\2\4\17", 6));
    const std::string file = PdfText().pages().stream(3, "plain").stream(4, data, flate)
                                 .stream(5, rows, std::string(flate) + " /DecodeParms << /Predictor 12 /Columns 2 >>")
                                 .stream(6, data, std::string(flate) + " /DecodeParms null")
                                 .stream(7, data, "/Filter [ /FlateDecode ] /DP [ ]")
                                 .stream(8, "0374657874>", "/Filter [ /AHx 9 0 R ] /DecodeParms [ null null ]")
                                 .object(9, "/RunLengthDecode").stream(10, "j", "/Filter /DCT\177\200Decode")
                                 .stream(11, "x", "/Filter 2 0 R").stream(12, "3>", "/Filter /AHx");
    const Ref<PDF::Document> document = Tests::open(file);
    EXPECT_EQ(told(document, toFlate), "converted fitting/FlateDecode fitting/FlateDecode! fitting/FlateDecode "
                                       "fitting! converted/ASCIIHexDecode RunLengthDecode! other/DCT#7F#80Decode "
                                       "noName converted/AHx");
    EXPECT_EQ(told(document, toNone), "converted/FlateDecode converted/FlateDecode converted/FlateDecode! "
                                      "converted/FlateDecode converted! converted/FlateDecode other/DCT#7F#80Decode "
                                      "noName converted/FlateDecode");
    EXPECT_EQ(stored(document, 4), "text") << "with its parameters undone";
    EXPECT_EQ(valueText(document, streamOf(document, 4)->dict()), "<< /Length 4 >>");
    EXPECT_EQ(told(document, toNone), "fitting fitting fitting fitting fitting fitting other/DCT#7F#80Decode noName "
                                      "fitting");
    EXPECT_TRUE(Host::recompress(document, toFlate, {true})) << "compressed as it is";
    EXPECT_EQ(decodedBytes(Tests::open(written(document)), 9), "j");
    EXPECT_EQ(Host::recompress(document, PDF::Compression::Unknown).refusal().code, ErrInvalidArgument);
}

TEST(Recompress, readsDataFromItsBeginningWhereverItStands)
{
    const std::string text = incompressible(100000);
    const Ref<PDF::Document> document
        = Tests::open(PdfText().pages().stream(3, text).stream(4, compressed(text), flate));
    for (const auto target : {toNone, toFlate, toNone}) {
        written(document); // leaves all data at its end
        ASSERT_TRUE(Host::recompress(document, target));
        const Ref<PDF::Document> again = Tests::open(written(document));
        for (const std::size_t index : {2u, 3u}) {
            EXPECT_EQ(streamOf(again, index)->compression(), target);
            EXPECT_TRUE(decodedBytes(again, index) == text);
        }
    }
}

TEST(Recompress, aRefusalLeavesTheDocumentAsItWas)
{
    const std::string good = compressed("text of a stream");
    const std::string shared = " /Length 6 0 R >>\nstream\n" + good;
    // Rule, file, and the code and the beginning of the words of the refusal.
    const std::tuple<const char*, std::string, std::uint32_t, const char*> cases[] = {
        {"corrupt data", PdfText().pages().stream(3, good, flate).stream(4, corrupted(good), flate), ErrStreamConvert,
            "object 4: the data of a stream is damaged"},
        {"an unusable Length",
            PdfText().pages().stream(3, good, flate).stream(4, good, "/Length 9999 /Filter /FlateDecode"),
            ErrBadStreamLength, "object 4: the Length of a stream"},
        {"one Length for two",
            PdfText().pages().object(3, "<< /Filter /FlateDecode" + shared).object(4, "<<" + shared)
            .object(6, std::to_string(good.size())), ErrStreamLength, "object 3 and object 4 share one Length"},
    };
    for (const auto& [rule, file, code, words] : cases) {
        SCOPED_TRACE(rule);
        const Ref<PDF::Document> document = Tests::open(file);
        const std::string before = written(document);
        for (int times = 0; times < 4; ++times) {
            const auto refused = Host::recompress(document, toNone, {times % 2 == 0});
            ASSERT_FALSE(refused);
            EXPECT_EQ(refused.refusal().code, code);
            EXPECT_EQ(refused.refusal().message.find(words), 0u) << refused.refusal().message;
            EXPECT_EQ(written(document), before);
            EXPECT_FALSE(document->changed());
        }
    }
    const Ref<PDF::Document> document = Tests::open(PdfText().pages().object(3, "<<" + shared)
            .object(4, "<<" + shared).stream(5, "x").object(6, std::to_string(good.size())));
    EXPECT_TRUE(Host::recompress(document, toNone)) << "a shared Length that nobody changes";
    EXPECT_EQ(Host::sharerOfLength(document, streamOf(document, 2))->id(), 4u);
    EXPECT_EQ(Host::sharerOfLength(document, streamOf(document, 3))->id(), 3u);
    EXPECT_FALSE(Host::sharerOfLength(document, streamOf(document, 4)));
}
