#include <tests/support/Streams.h>

#include <gtest/gtest.h>

#include <host/files/MemoryStripe.h>
#include <stripes/ByteElements.h>

using namespace Tests;

namespace {

std::string textOf(const Ref<PDF::Value>& value, const std::string& ending = "\n")
{
    const Ref<TConstArray<std::uint32_t>> text = PDF::writtenText(open(PdfText(ending).pages()), value);
    return text ? std::string(text->data(), text->data() + text->size()) : "(failed)";
}

Ref<PDF::Value> literal(std::u32string_view characters)
{
    return make<PDF::StringObj>(::String::create(characters));
}

Ref<PDF::StreamObj> stream(const std::string& data, Fault fault = {}, std::uint64_t width = 4)
{
    return make<PDF::StreamObj>(make<PDF::DictionaryObj>(), make<TestStripe>(data, fault, width));
}

// A file that takes bytes, which fail as other writes do.
class ByteTaker final : public TestStripe, public virtual Interfaces::ByteWriting {
public:
    using TestStripe::TestStripe;

    bool takesBytes() const noexcept override { return true; }
    std::uint64_t writeBytes(const void* bytes, std::uint64_t count) noexcept override
    {
        mostBytes = std::max(mostBytes, count);
        byteCount += count;
        std::u32string wide;
        for (std::uint64_t i = 0; i < count; ++i)
            wide += encoding().codePoint(static_cast<const std::uint8_t*>(bytes)[i]);
        BufferDesc area = BufferDesc::plain(wide.data());
        return write(area, count, waitForever);
    }

    std::uint64_t mostBytes = 0;
    std::uint64_t byteCount = 0;
};

Ref<PDF::Document> openBytes(const std::string& file)
{
    return PDF::Document::create(make<Host::MemoryStripe>(std::vector<std::uint8_t>(file.begin(), file.end())));
}

} // namespace

TEST(Writing, theFileIsWhatItsTableSays)
{
    const std::string expected = "%PDF-1.7\n"
                                 "1 0 obj\n<< /Pages 2 0 R /Type /Catalog >>\nendobj\n"
                                 "2 0 obj\n<< /Count 0 /Kids [ ] /Type /Pages >>\nendobj\n"
                                 "3 0 obj\n<< /Length 4 >>\nstream\ndata\nendstream\nendobj\n"
                                 "xref\n0 4\n0000000000 65535 f \n0000000009 00000 n \n0000000058 00000 n \n"
                                 "0000000111 00000 n \ntrailer\n<< /Prev 7 /Root 1 0 R /Size 4 >>\n"
                                 "startxref\n164\n%%EOF\n";
    const Ref<PDF::Document> document = open(PdfText().pages().stream(3, "data").trailer("/Prev 7 /Size 99"));
    EXPECT_EQ(written(document), expected);
    EXPECT_EQ(written(document), expected) << "a second time the same";
    EXPECT_FALSE(document->changed());
}

TEST(Writing, rowsHave20CharactersWhateverTheLineEnding)
{
    for (const std::string ending : {"\n", "\r", "\r\n"}) {
        const std::string file = written(open(PdfText(ending).pages()));
        const std::size_t table = file.find("xref" + ending + "0 3" + ending) + 7 + 2 * ending.size();
        EXPECT_EQ(file.substr(table + 60, 7), "trailer") << file;
        EXPECT_EQ(file.substr(file.size() - 5 - ending.size()), "%%EOF" + ending);
        EXPECT_EQ(written(open(file)), file);
    }
}

TEST(Writing, idsStayAndTheTableKeepsItsFirstNumber)
{
    // A gap shifts the rows behind it; ids are not renumbered.
    const auto holds = [](const std::string& file, const char* piece) { return file.find(piece) != file.npos; };
    const std::string file = written(open(PdfText().pages().object(5, "7")));
    EXPECT_TRUE(holds(file, "\n5 0 obj\n7\nendobj\nxref\n0 4\n") && holds(file, "/Size 4 >>")) << file;
    const std::string first = "%PDF-1.4\n1 0 obj\n(x)\nendobj\nxref\n1 1\n9 0 n\ntrailer\n<< >>\nstartxref\n28\n%%EOF";
    EXPECT_TRUE(holds(written(open(first)), "xref\n1 2\n"));
    EXPECT_TRUE(holds(written(open(damaged(first, "1 1\n9 0 n\n", "0 0\n"))), "%PDF-1.4\nxref\n0 1\n"));
}

TEST(WrittenText, ofEveryKind)
{
    const Ref<TConstArray<std::uint8_t>> bytes
        = TConstArray<std::uint8_t>::create(reinterpret_cast<const std::uint8_t*>("\x01\xAB"), 2);
    const std::pair<Ref<PDF::Value>, std::string> cases[] = {
        {make<PDF::NameObj>(text("A B#")), "/A B#"},
        {make<PDF::NumberObj>(-3, 25), "-3.25"},
        {make<PDF::NumberObj>(0, 18446744073709551615u), "0.18446744073709551615"},
        {make<PDF::ObjectRefObj>(4294967295, 65535), "4294967295 65535 R"},
        {PDF::Array::create({make<PDF::NumberObj>(5, 0), PDF::Array::create({make<PDF::DictionaryObj>()})}),
            "[ 5 [ << >> ] ]"},
        {make<PDF::StringObj>(bytes), "<01AB>"},
        {literal(U"\b\t\n\f\r()\\~"), "(\\b\\t\\n\\f\\r\\(\\)\\\\~)"},
        {literal(std::u32string_view(U"\0\x1F", 2)), std::string("(\0\x1F)", 4)},
        {literal(U"\x7F\x80\xFF\u20AC\u0178"), "(\\177\\200\\377\\200\\237)"},
        {stream(""), "<< >>\nstream\nendstream"},
        {stream("data"), "<< >>\nstream\ndata\nendstream"},
        {stream("data\n"), "<< >>\nstream\ndata\nendstream"},
        {stream("data\r"), "<< >>\nstream\ndata\rendstream"},
    };
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(textOf(value), expected);
    EXPECT_EQ(textOf(stream("x"), "\r\n"), "<< >>\r\nstream\r\nx\r\nendstream");
    EXPECT_EQ(codeOf(PDF::writtenText(nullptr, literal(U""))), ErrNullArgument);
}

TEST(WrittenText, theOutermostFailureDecidesTheCode)
{
    const Ref<PDF::DictionaryObj> holder = make<PDF::DictionaryObj>();
    holder->set(text("Key"), PDF::Array::create({make<PDF::NullObj>(), literal(U"\u0141")}));
    const Lines ofString
        = {"Failed to convert character: 141h (321)", "Failed to convert string to PDF compatible string"};
    Lines ofHolder = ofString;
    ofHolder.insert(ofHolder.end(), {"Failed to convert value of array element to buffer 1h (1)",
        "Failed to convert value of dictionary key to buffer: Key"});
    Lines ofStream = ofHolder;
    ofStream.push_back("Failed to convert stream dictionary to buffer");
    const std::tuple<Ref<PDF::Value>, std::uint32_t, Lines> cases[] = {
        {nullptr, ErrNullArgument, {}},
        {literal(U"\u0141"), ErrInvalidArgument, ofString},
        {make<PDF::StringObj>(Ref<::String>()), ErrInvalidArgument, {"Invalid Stirng value"}},
        {PDF::Array::create({nullptr}), ErrInvalidArgument, {"Array element is NULL: 0h (0)"}},
        {holder, ErrNoResource, ofHolder},
        {make<PDF::StreamObj>(holder, make<TestStripe>("x")), ErrNoResource, ofStream},
        {make<PDF::StreamObj>(nullptr, make<TestStripe>("x")), ErrInvalidArgument, {"Stream has no dictionary"}},
        {make<PDF::StreamObj>(make<PDF::DictionaryObj>(), 9999999), ErrInvalidArgument,
            {"Failed to retrieve data of stream"}},
        {stream("x", {.seek = 0}), ErrNoResource, {"Failed to navigate stream data"}},
        {stream("x", {.read = 0}), ErrNoResource, {"Failed to retrieve stream data"}},
        {stream("x", {}, 1), ErrNoResource, {"Failed to retrieve stream data"}},
    };
    const Ref<PDF::Document> document = open(PdfText().pages());
    LogCapture log;
    for (const auto& [value, code, lines] : cases) {
        EXPECT_EQ(codeOf(PDF::writtenText(document, value)), code);
        EXPECT_EQ(log.take(), lines);
    }
}

TEST(Writing, everyFailingWriteEndsItWithTheCodeOfItsStage)
{
    const Ref<PDF::Document> document = open(PdfText().pages().stream(3, "data"));
    std::vector<std::uint32_t> stages;
    const auto isEnded = [&](Fault fault) {
        const Ref<TestStripe> out = make<TestStripe>("", fault);
        const std::uint32_t code = codeOf(document->write(out));
        EXPECT_EQ(code != 0, out->hasFailed);
        if (stages.empty() || stages.back() != code)
            stages.push_back(code);
        return out->hasFailed;
    };
    failOneByOne(&Fault::write, 0, isEnded);
    EXPECT_EQ(stages, (std::vector<std::uint32_t>{ErrWriteVersion, ErrWriteObject, ErrWriteTrailer, 0}));
    EXPECT_EQ(codeOf(document->write(nullptr)), ErrNullArgument);
    EXPECT_EQ(codeOf(document->write(narrow(""))), ErrInvalidArgument);

    LogCapture log;
    const Ref<PDF::Document> withoutData = open(PdfText().pages().object(3, "<< /Length 9999 >> stream\nx"));
    EXPECT_EQ(codeOf(withoutData->write(make<TestStripe>(""))), ErrWriteObject);
    EXPECT_EQ(log.take().back(), "Failed to write object 3 (0)");
}

TEST(Writing, streamDataGoesOutAsBytesWhereTheyAreTaken)
{
    const std::string large = incompressible(150000) + "\x80";
    const PdfText file = PdfText("\r\n").pages().stream(3, large).stream(4, "").stream(5, "a\n").stream(6, "b\r");
    const Ref<PDF::Document> documents[] = {openBytes(file), openBytes(file), openBytes(file)};
    ASSERT_TRUE(documents[1]->cacheStreams());
    ASSERT_TRUE(documents[2]->setStreamData(streamOf(documents[2]), narrow(large), false));
    for (const Ref<PDF::Document>& document : documents) {
        const Ref<ByteTaker> out = make<ByteTaker>("");
        ASSERT_TRUE(document->write(out));
        EXPECT_TRUE(out->bytes() == written(document));
        EXPECT_EQ(out->byteCount, large.size() + 4);
        EXPECT_LE(out->mostBytes, 65536u);
    }
    // A stripe that has no bytes to give, and a stream among other values.
    const Ref<PDF::Document> document = openBytes(file);
    document->trailer()->set(text("Own"), PDF::Array::create({stream("x"), streamOf(documents[2])}));
    const Ref<ByteTaker> out = make<ByteTaker>("");
    ASSERT_TRUE(document->write(out));
    EXPECT_TRUE(out->bytes() == written(document));
}

TEST(Writing, takenBytesFailAsElementsDo)
{
    const Ref<PDF::Document> document = openBytes(PdfText().pages().stream(3, "data"));
    LogCapture log;
    failOneByOne(&Fault::write, 0, [&](Fault fault) {
        const Ref<ByteTaker> out = make<ByteTaker>("", fault);
        const std::uint32_t code = codeOf(document->write(out));
        const Lines lines = log.take();
        EXPECT_EQ(code != 0, out->hasFailed);
        if (out->bytes().ends_with("\nstream\n")) {
            EXPECT_EQ(code, ErrWriteObject);
            EXPECT_EQ(lines, (Lines{"Failed to write buffer of size 4h (4)", "Failed to write value of object 3 (0)",
                "Failed to write object 3 (0)"}));
        }
        return out->hasFailed;
    });
    const Ref<PDF::ByteElements> unreadable = make<PDF::ByteElements>(narrow("x", {.read = 0}));
    document->trailer()->set(text("Own"), make<PDF::StreamObj>(make<PDF::DictionaryObj>(), unreadable));
    EXPECT_EQ(codeOf(document->write(make<ByteTaker>(""))), ErrWriteTrailer);
    EXPECT_EQ(log.take().front(), "Failed to retrieve stream data");
}
