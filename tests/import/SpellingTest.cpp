#include <import/Spelling.h>

#include <tests/support/Documents.h>

#include <gtest/gtest.h>

using namespace Tests;

namespace {

// The value that the core reads where this is spelled in an array.
Ref<PDF::Value> read(const std::string& spelled)
{
    const Ref<PDF::Document> document = open(PdfText().pages().object(3, "[ " + spelled + " ]"));
    const Ref<PDF::Object> object = document ? PDF::objectsOf(document)[2] : nullptr;
    const Ref<PDF::Array> array = object ? object->valueAsArray() : nullptr;
    return array ? array->get(0) : nullptr;
}

// The bytes of a string as the core has them: characters of text, or the bytes themselves.
std::string bytesOf(const Ref<PDF::Value>& value)
{
    const auto* string = dynamic_cast<const PDF::String*>(value.get());
    std::string bytes;
    if (!string)
        return "no string";
    if (const Ref<::String> text = string->value())
        for (std::size_t i = 0; i < text->length(); ++i)
            bytes += char(text->charAt(i));
    else if (const auto data = string->data())
        bytes.assign(reinterpret_cast<const char*>(data->data()), data->size());
    return bytes;
}

} // namespace

TEST(SpelledString, isReadAsTheBytesThatItMeans)
{
    std::vector<std::string> strings = {"", "(", ")", "a(b)c", "\r\n", "\\", "\xFE\xFF\x04\x10", "a\\)\x80", "<<>>"};
    for (int byte = 0; byte < 256; ++byte)
        strings.push_back(std::string("a") + char(byte) + "1");
    for (const std::string& string : strings)
        for (const auto place : {Import::Place::Object, Import::Place::Trailer}) {
            std::string spelled;
            Import::spellString(spelled, string, place);
            EXPECT_EQ(bytesOf(read(spelled)), string) << spelled;
            if (place == Import::Place::Trailer && spelled[0] == '(') {
                EXPECT_EQ(spelled.find_first_of("<>"), spelled.npos) << "the core counts brackets there";
            }
        }
}

TEST(SpelledString, isTextWhereItCanBe)
{
    const std::pair<const char*, const char*> spellings[] = {
        {"two\rlines (1\xE9)", "(two\\rlines \\(1\xE9\\))"},
        {"\xFE\xFF\x04\x10", "<FEFF0410>"},
        {"C:\\a", "<433A5C61>"},
    };
    for (const auto& [string, expected] : spellings) {
        std::string spelled;
        Import::spellString(spelled, string, Import::Place::Object);
        EXPECT_EQ(spelled, expected);
    }
}

TEST(SpelledName, isReadByTheFormatAsItWas)
{
    using namespace std::string_literals;
    const std::pair<std::string, const char*> spellings[] = {
        {"A B#C/\xE4"s, "/A#20B#23C#2F#E4"}, {"A\0G"s, "/A#G"}, {"", "/"}};
    for (const auto& [name, expected] : spellings) {
        std::string spelled;
        Import::spellName(spelled, name);
        EXPECT_EQ(spelled, expected);
    }
}

TEST(SpelledReal, isTheTokenOrTheNearestThatTheCoreHolds)
{
    struct Case {
        const char* token;
        const char* spelled; // null for the token itself
        bool isRounded;
    };
    const Case cases[] = {
        {"-.5", nullptr, false},
        {"5.", nullptr, false},
        {"+00012.0450", nullptr, false},
        {"0.000000000000000000000000000001", nullptr, false},
        {"9223372036854775807.9223372036854775807", nullptr, false},
        {"1.50000000000000000000000000", "1.5", false},
        {"1.00000000000000000000000000", nullptr, false},
        {"0.92233720368547758071", "0.9223372036854775807", true},
        {"0.92233720368547758079", "0.922337203685477581", true},
        {"-2.00123456789012345678949", "-2.001234567890123456789", true}, // zeros in front take no room
        {".99999999999999999999", "1.0", true},
        {"9223372036854775807.99999999999999999999", "9223372036854775807.999999999999999999", true},
        {"9223372036854775808.5", "9223372036854775807.0", true},
    };
    for (const Case& row : cases) {
        std::string spelled;
        EXPECT_EQ(Import::spellReal(spelled, row.token) == Import::Spelled::Rounded, row.isRounded) << row.token;
        EXPECT_EQ(spelled, row.spelled ? row.spelled : row.token);
        EXPECT_TRUE(read(spelled)) << row.token;
    }
}
