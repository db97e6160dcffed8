#include <tests/support/FlateData.h>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Tests;

namespace {

// What a decompressor makes of `input` that it gets in pieces of `step` bytes, with room for as many; nothing
// when it fails.
std::string inflated(const std::string& input, std::size_t step)
{
    const Ref<BlockFilter> filter = ZlibFilter::createDecompressorStream();
    std::string output, room(step, 0);
    std::size_t consumed = 0, produced = 0;
    for (std::size_t place = 0; place < input.size(); place += consumed) {
        const std::size_t length = std::min(step, input.size() - place);
        if (!filter->process(input.data() + place, length, room.data(), step, &consumed, &produced))
            return "";
        output.append(room, 0, produced);
    }
    int state = 1;
    while (state == 1) {
        state = filter->flush(room.data(), step, &produced);
        output.append(room, 0, produced);
    }
    return state == 0 ? output : "";
}

} // namespace

TEST(ZlibFilter, whatWentInComesOutWhateverTheSteps)
{
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "BT /F1 " + std::to_string(i * 7919 % 1000) + " Tf ET\n";
    for (const std::string& input : {std::string("x"), text})
        for (const std::size_t step : {1u, 7u, 65536u})
            EXPECT_TRUE(inflated(compressed(input), step) == input) << input.size() << " bytes in steps of " << step;
    EXPECT_LT(compressed(text).size(), text.size() / 5);
    EXPECT_FALSE(ZlibFilter::createCompressorStream(10));
}
