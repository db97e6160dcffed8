#include <host/streams/FilterChain.h>

#include <tests/support/Streams.h>

#include <gtest/gtest.h>

using namespace Tests;
namespace Decoders = Host::Decoders;

namespace {

// What a stream with these entries decodes to; the code when it is refused, and a mark where it is damaged.
std::string decode(const std::string& data, const std::string& entries, std::size_t limit = 0)
{
    const auto document = Tests::open(PdfText().pages().stream(3, data, entries));
    const auto decoded = Host::decodeStream(document, streamOf(document), limit);
    if (!decoded)
        return "refused " + std::to_string(decoded.refusal().code);
    return std::string(decoded->bytes.begin(), decoded->bytes.end()) + (decoded->isDamaged ? " (damaged)" : "");
}

std::string hex(const std::string& digits)
{
    return decode(digits, "/Filter /ASCIIHexDecode");
}

std::string digitsOf(const std::string& bytes)
{
    std::string digits;
    for (const char byte : bytes) {
        char text[3];
        std::snprintf(text, sizeof text, "%02x", unsigned(std::uint8_t(byte)));
        digits += text;
    }
    return digits;
}

// Each byte as a code of its own, as an encoder writes it that finds no string twice.
std::string lzwOf(const std::string& text, bool isEarly)
{
    std::string out;
    std::uint64_t bits = 0;
    unsigned count = 0;
    const auto put = [&](unsigned code, unsigned width) {
        bits = bits << width | code;
        for (count += width; count >= 8; count -= 8)
            out += char(bits >> (count - 8) & 0xFF);
    };
    unsigned size = 258;
    unsigned width = 9;
    put(256, width);
    bool isFirst = true;
    for (const char c : text) {
        put(std::uint8_t(c), width);
        size += isFirst || size == 4096 ? 0 : 1;
        isFirst = false;
        const unsigned next = size + isEarly;
        width = next >= 2048 ? 12 : next >= 1024 ? 11 : next >= 512 ? 10 : 9;
    }
    put(257, width);
    put(0, 7);
    return out;
}

const std::string noise = incompressible(6000);

} // namespace

TEST(FilterChain, undoesEachFilterWithItsParameters)
{
    const std::string lzw = hex("800B6050220C0C8501>");
    const auto params = [](const std::string& rows) {
        return "/Filter /FlateDecode /DecodeParms << " + rows + " >>";
    };
    // Rule, data, entries of the dictionary, and what comes out.
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"base 85", "87cUR D]i,\"Ebo80~> more", "/Filter /ASCII85Decode", "Hello World!"},
        {"zeros and a short group in base 85", "z!!~>", "/Filter /ASCII85Decode", std::string(5, '\0')},
        {"base 85 without its mark", "87cURDZ", "/Filter /ASCII85Decode", "Hello"},
        {"a wrong digit", "87cUR\x7f", "/Filter /ASCII85Decode", "Hell (damaged)"},
        {"an odd number of digits", "48 656C6c7>x", "/Filter /ASCIIHexDecode", "Hellp"},
        {"runs", std::string("\2abc\376x\0y\200zz", 9), "/Filter /RunLengthDecode", "abcxxxy"},
        {"a cut run", std::string("\5ab", 3), "/Filter /RunLengthDecode", "ab (damaged)"},
        {"a code that its own string makes", lzw, "/Filter /LZWDecode", "-----A---B"},
        {"wide codes", lzwOf(noise, true), "/Filter /LZWDecode", noise},
        {"wide codes that grow late", lzwOf(noise, false), "/Filter /LZWDecode /DecodeParms << /EarlyChange 0 >>",
            noise},
        {"two filters, each with its parameters", digitsOf(compressed(std::string("\2ab\2\1\1", 6))) + ">",
            "/Filter [ /AHx /FlateDecode ] /DecodeParms [ null << /Predictor 12 /Columns 2 >> ]", "abbc"},
        {"a filter that leads nowhere", "78>", "/Filter [ /AHx 4 0 R ]", "refused " + std::to_string(ErrBadFilter)},
        {"differences of bytes", compressed("\1\2\3\1\1\1\1\1\1"), params("/Predictor 2 /Colors 3 /Columns 3"),
            "\1\2\3\2\3\4\3\4\5"},
        {"differences of bits", compressed("\x40"), params("/Predictor 2 /BitsPerComponent 1 /Columns 8"), "\x7F"},
        {"differences of two bytes", compressed(std::string("\0\xFF\0\1", 4)),
            params("/Predictor 2 /BitsPerComponent 16 /Columns 2"), std::string("\0\xFF\1\0", 4)},
        {"each type of row", compressed(std::string("\0abc\1a\1\1\2\1\1\1\3\1\1\1\4\1\1\1\2z", 22)),
            params("/Predictor 15 /Columns 3"), std::string("abcabcbcd2KX3LY\xAD", 16)},
        {"rows of pixels of a byte and a half", compressed("\1\1\2\1"),
            params("/Predictor 11 /Colors 3 /BitsPerComponent 4 /Columns 2"), "\1\2\2"},
        {"a row of no type", compressed(std::string("\0ab\7cd", 6)), params("/Predictor 10 /Columns 2"),
            "ab (damaged)"},
        {"a predictor that is none", compressed("x"), params("/Predictor 7"), "refused " + std::to_string(ErrBadFilter)},
        {"rows beyond any size", compressed("x"), params("/Predictor 12 /Columns 99999999999"),
            "refused " + std::to_string(ErrBadFilter)},
        {"cut data", compressed(noise).substr(0, 3000), "/Filter /FlateDecode", decode(
            compressed(noise).substr(0, 3000), "/Filter [ /FlateDecode ]")},
        {"too many filters", "", "/Filter [ " + [] {
            std::string names;
            for (int i = 0; i < 17; ++i)
                names += "/FlateDecode ";
            return names;
        }() + "]", "refused " + std::to_string(ErrBadFilter)},
    };
    for (const auto& [rule, data, entries, expected] : cases)
        EXPECT_EQ(decode(data, entries), expected) << rule;
}

TEST(FilterChain, dataIsNoLongerThanTheLimit)
{
    const std::string longOne(100000, 'a');
    const std::string tooLong = "refused " + std::to_string(ErrOutOfRange);
    EXPECT_EQ(decode(compressed(longOne), flate, 100000), longOne);
    EXPECT_EQ(decode(compressed(longOne), flate, 99999), tooLong);
    EXPECT_EQ(decode(lzwOf(noise, true), "/Filter /LZWDecode", 5999), tooLong);
    EXPECT_EQ(decode("zzzz", "/Filter /ASCII85Decode", 15), tooLong);
    EXPECT_EQ(decode("414243", "/Filter /AHx", 2), tooLong);
    EXPECT_EQ(decode("\201x", "/Filter /RunLengthDecode", 127), tooLong);
    const std::string once = compressed(longOne);
    EXPECT_EQ(decode(compressed(once), "/Filter [ /FlateDecode /FlateDecode ]", 100000 + once.size()), longOne);
    EXPECT_EQ(decode(compressed(once), "/Filter [ /FlateDecode /FlateDecode ]", 100000), tooLong) << "all steps count";
    const std::string huge = compressed(std::string(Limits::decodedData.always + 100000, 'a'));
    EXPECT_EQ(decode(compressed(huge), "/Filter [ /FlateDecode /FlateDecode ]"), tooLong);
}
