#include <platform/ZlibFilter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

struct Outcome {
    bool isProcessed = true;
    int flushed = 0;
    std::string output;
};

// Runs all input through the filter, in pieces of `inStep` bytes into room for `outStep`.
Outcome run(BlockFilter& filter, const std::string& input, std::size_t inStep, std::size_t outStep)
{
    Outcome outcome;
    std::vector<char> out(outStep);
    std::size_t produced = 0;
    for (std::size_t place = 0; place < input.size();) {
        std::size_t consumed = 0;
        const std::size_t length = std::min(inStep, input.size() - place);
        if (!filter.process(input.data() + place, length, out.data(), outStep, &consumed, &produced)) {
            outcome.isProcessed = false;
            return outcome;
        }
        outcome.output.append(out.data(), produced);
        if (consumed == 0 && produced == 0)
            break;
        place += consumed;
    }
    do {
        outcome.flushed = filter.flush(out.data(), outStep, &produced);
        if (outcome.flushed != 2)
            outcome.output.append(out.data(), produced);
    } while (outcome.flushed == 1);
    return outcome;
}

std::string compressed(const std::string& text)
{
    return run(*ZlibFilter::createCompressorStream(0), text, text.size() + 1, 100).output;
}

} // namespace

TEST(ZlibFilter, whatWentInComesOutWhateverTheSteps)
{
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "BT /F1 " + std::to_string(i * 7919 % 1000) + " Tf ET\n";
    for (const std::string& input : {std::string(), std::string("x"), text})
        for (const std::size_t step : {std::size_t(1), std::size_t(7), std::size_t(65536)}) {
            const Outcome outcome = run(*ZlibFilter::createDecompressorStream(), compressed(input), step, step);
            EXPECT_EQ(outcome.flushed, 0);
            EXPECT_TRUE(outcome.output == input) << input.size() << " bytes in steps of " << step;
        }
    EXPECT_LT(compressed(text).size(), text.size() / 5);
    EXPECT_FALSE(ZlibFilter::createCompressorStream(10));
}

TEST(ZlibFilter, theEndOfTheDataDecides)
{
    const std::string whole = compressed("some text that is long enough to be cut");
    const auto inflated = [](const std::string& data) {
        return run(*ZlibFilter::createDecompressorStream(), data, data.size() + 1, 1000);
    };
    EXPECT_EQ(inflated(whole + "garbage").output, "some text that is long enough to be cut");
    EXPECT_EQ(inflated(whole + "garbage").flushed, 0);
    EXPECT_EQ(inflated("").flushed, 0);
    EXPECT_EQ(inflated(whole.substr(0, 20)).flushed, 2);
    EXPECT_EQ(inflated(whole.substr(0, 1)).flushed, 2);
    EXPECT_FALSE(inflated("no zlib data").isProcessed);
    std::string corrupt = whole;
    corrupt[corrupt.size() - 1] ^= 1;
    EXPECT_FALSE(inflated(corrupt).isProcessed) << "the checksum counts";
}
