#include "../support/FlateData.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Tests;

namespace {

// All that comes out of a decompressor that gets `input` in pieces of `step` bytes, and has room for as many.
// What it fails at stands behind that in brackets.
std::string inflated(const std::string& input, std::size_t step = 1000)
{
    const Ref<BlockFilter> filter = ZlibFilter::createDecompressorStream();
    std::string output, room(step, 0);
    std::size_t consumed = 1, produced = 0;
    for (std::size_t place = 0; place < input.size() && consumed + produced > 0; place += consumed) {
        const std::size_t length = std::min(step, input.size() - place);
        if (!filter->process(input.data() + place, length, room.data(), step, &consumed, &produced))
            return output + "[process]";
        output.append(room, 0, produced);
    }
    int state = 1;
    while (state == 1) {
        state = filter->flush(room.data(), step, &produced);
        output += state == 2 ? "[flush]" : room.substr(0, produced);
    }
    return output;
}

} // namespace

TEST(ZlibFilter, whatWentInComesOutWhateverTheSteps)
{
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "BT /F1 " + std::to_string(i * 7919 % 1000) + " Tf ET\n";
    for (const std::string& input : {std::string(), std::string("x"), text})
        for (const std::size_t step : {1u, 7u, 65536u})
            EXPECT_TRUE(inflated(compressed(input), step) == input) << input.size() << " bytes in steps of " << step;
    EXPECT_LT(compressed(text).size(), text.size() / 5);
    EXPECT_FALSE(ZlibFilter::createCompressorStream(10));
}

TEST(ZlibFilter, theEndOfTheDataDecides)
{
    const std::string text = "some text that is long enough to be cut";
    const std::string whole = compressed(text);
    EXPECT_EQ(inflated(whole + "garbage"), text);
    EXPECT_EQ(inflated(""), "");
    EXPECT_EQ(inflated(whole.substr(0, 1)), "[flush]");
    EXPECT_NE(inflated(whole.substr(0, 20)).find("[flush]"), std::string::npos);
    EXPECT_EQ(inflated("no zlib data"), "[process]");
    EXPECT_EQ(inflated(corrupted(whole)), "[process]") << "the checksum counts";
}
